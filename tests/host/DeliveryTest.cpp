// Passes, pass-through and write-back of a run, through hostsim and the real PluginMain.
#include "ShellFixture.h"

#include "hostsim/ColorSpace.h"
#include "hostsim/Registry.h"
#include "host/Acquisition.h"
#include "host/ScriptParameters.h"
#include "host/RunFilter.h"
#include "host/Session.h"

#include <algorithm>
#include <cstring>

using namespace shelltest;

namespace {

bool Rendered(const hostsim::Host& host) {
    for (const auto& c : host.Progress())
        if (c.done == 100 && c.total == 100) return true;
    return false;
}

bool RecordedFlag(const hostsim::Host& host, const char (&key)[5]) {
    bool v = false;
    return host.Recorded().GetBoolean(FourCC(key), v) && v;
}

hostsim::Descriptor Off(std::initializer_list<std::pair<const char*, int32>> flags, bool wash = false) {
    hostsim::Descriptor d = AllEffectsOff();
    if (wash) {
        // A texture that cannot be found is white; inverted, it is a wash at full strength.
        d.PutText(FourCC("WFN1"), "Missing_Here.qzt");
        d.PutBoolean(FourCC("WIv1"), true);
    }
    for (auto [key, value] : flags) {
        const DescriptorKeyID k = FourCC(*reinterpret_cast<const char(*)[5]>(key));
        if (std::strcmp(key, "ILNS") == 0) d.PutInteger(k, value);
        else d.PutBoolean(k, value != 0);
    }
    return d;
}

} // namespace

TEST(Passes, EffectInNewLayerPassesThroughThenRenders) {
    auto host = MakeHost(RgbDocument(24, 16));
    const std::vector<uint8> before = host->Doc().TargetInterleaved();
    ASSERT_EQ(host->PlayAction(Off({{"NLBs", 1}}), plugInDialogDontDisplay), noErr);
    EXPECT_FALSE(Rendered(*host));
    EXPECT_EQ(host->Doc().TargetInterleaved(), before) << "the first pass changes nothing";
    EXPECT_TRUE(RecordedFlag(*host, "ILNL")) << "and leaves a note for the next run";

    // The host's action repeats the filter on the new layer with the note played back.
    auto next = MakeHost(RgbDocument(24, 16));
    ASSERT_EQ(next->PlayAction(Off({{"NLBs", 1}, {"ILNL", 1}}), plugInDialogDontDisplay), noErr);
    EXPECT_TRUE(Rendered(*next));
    EXPECT_FALSE(RecordedFlag(*next, "ILNL"));
    ExpectNoMisuse(*host);
    ExpectNoMisuse(*next);
}

TEST(Passes, SurfaceLayerWithoutPendingPassNeverRenders) {
    auto host = MakeHost(RgbDocument(20, 10));
    const std::vector<uint8> before = host->Doc().TargetInterleaved();
    hostsim::Descriptor d = Off({{"NLSf", 1}});
    d.PutText(FourCC("SFN1"), "Battleship.qzt");
    d.PutBoolean(FourCC("SfOn"), true);
    for (int run = 0; run < 3; ++run) {
        ASSERT_EQ(host->PlayAction(d, plugInDialogDontDisplay), noErr);
        EXPECT_FALSE(Rendered(*host)) << "run " << run;
        EXPECT_FALSE(RecordedFlag(*host, "ILNL")) << "no flag changes";
    }
    EXPECT_EQ(host->Doc().TargetInterleaved(), before);
}

TEST(Passes, WithoutActionSuitesEveryRunRenders) {
    hostsim::HostOptions options;
    options.omitSuites = {kPSActionReferenceSuite};
    auto host = MakeHost(RgbDocument(20, 10), options);
    ASSERT_EQ(host->PlayAction(Off({{"NLBs", 1}, {"NLBk", 1}}), plugInDialogDontDisplay), noErr);
    EXPECT_TRUE(Rendered(*host)) << "layer options are ignored";
    EXPECT_FALSE(RecordedFlag(*host, "ILNL"));
}

TEST(Passes, EffectOnMaskIsIgnoredInAFlatDocument) {
    auto host = MakeHost(RgbDocument(20, 10));
    ASSERT_EQ(host->PlayAction(Off({{"NLWs", 1}}), plugInDialogDontDisplay), noErr);
    EXPECT_TRUE(Rendered(*host));
    hostsim::Descriptor settings;
    ASSERT_TRUE(host->GetRegistry().Get(kSettingsKey, settings));
    int32 low = -1, high = -1;
    EXPECT_TRUE(settings.GetInteger(FourCC("SvE1"), low) && settings.GetInteger(FourCC("SE11"), high));
    EXPECT_EQ(low, 0) << "no wash mask is kept";
    EXPECT_EQ(high, 0);
}

TEST(Passes, MaskPassCopiesEveryPlaneThroughTheKeptBuffers) {
    // Run one renders without the wash and keeps its masks; the host saves their addresses.
    hostsim::HostOptions options;
    options.registry = std::make_shared<hostsim::Registry>();
    options.filterLayerMasks = true;
    auto first = MakeHost(RgbDocument(16, 8, 4), options);
    ASSERT_EQ(first->PlayAction(Off({{"NLWs", 1}}, true), plugInDialogDontDisplay), noErr);
    EXPECT_TRUE(Rendered(*first));
    hostsim::Descriptor settings;
    ASSERT_TRUE(options.registry->Get(kSettingsKey, settings));
    int32 low = 0;
    EXPECT_TRUE(settings.GetInteger(FourCC("SvE1"), low) && low != 0) << "wash 1's mask is kept";

    // Run two, on a layer with a mask plane, is the mask pass.
    hostsim::Document masked = RgbDocument(16, 8, 4);
    masked.Target().layerMask.assign(masked.PixelCount(), 200);
    auto second = MakeHost(masked, options);
    const std::vector<uint8> before = second->Doc().Target().pixels;
    ASSERT_EQ(second->PlayAction(Off({{"NLWs", 1}, {"ILNW", 1}}, true), plugInDialogDontDisplay), noErr);
    EXPECT_FALSE(RecordedFlag(*second, "ILNW")) << "the mask pass clears its note";
    EXPECT_EQ(second->Doc().Target().pixels, before) << "colours are copied";
    const std::vector<uint8>& mask = second->Doc().Target().layerMask;
    EXPECT_TRUE(std::any_of(mask.begin(), mask.end(), [](uint8 m) { return m != 200; }))
        << "the wash went into the mask plane";
    ExpectNoMisuse(*second);
}

TEST(Passes, MaskPassTakesTheKeptWashAreaAndFillsTheLayer) {
    // A surface over the whole layer that takes in the wash's area: run one keeps, beside
    // the wash's mask, the picture the surface made under the wash, and hands it on.
    hostsim::HostOptions options;
    options.registry = std::make_shared<hostsim::Registry>();
    options.filterLayerMasks = true;
    hostsim::Descriptor look = Off({{"NLWs", 1}, {"SfEn", 1}, {"SInW", 1}}, true);
    look.PutText(FourCC("SFN1"), "Missing_Here.qzt");
    look.PutBoolean(FourCC("SfOn"), true);
    hostsim::Document doc = RgbDocument(16, 8, 4);
    doc.Target().transparency.assign(doc.PixelCount(), 128); // half transparent
    auto first = MakeHost(doc, options);
    ASSERT_EQ(first->PlayAction(look, plugInDialogDontDisplay), noErr);
    hostsim::Descriptor settings;
    ASSERT_TRUE(options.registry->Get(kSettingsKey, settings));
    int32 area = 0;
    EXPECT_TRUE(settings.GetInteger(FourCC("SbSR"), area) && area != 0) << "the wash area is kept";

    // Run two, the mask pass: the kept area blends into the colours and the layer becomes
    // opaque where the pass reaches; the mask takes the wash.
    doc.Target().layerMask.assign(doc.PixelCount(), 200);
    auto second = MakeHost(doc, options);
    const std::vector<uint8> before = second->Doc().Target().pixels;
    hostsim::Descriptor pass = look;
    pass.PutBoolean(FourCC("ILNW"), true);
    ASSERT_EQ(second->PlayAction(pass, plugInDialogDontDisplay), noErr);
    const hostsim::Layer& after = second->Doc().Target();
    EXPECT_EQ(after.transparency, std::vector<uint8>(doc.PixelCount(), 255)) << "the layer is opaque";
    EXPECT_NE(after.pixels, before) << "the kept area shows in the colours";
    const std::vector<uint8>& mask = second->Doc().Target().layerMask;
    EXPECT_TRUE(std::any_of(mask.begin(), mask.end(), [](uint8 m) { return m < 200; }));
    ExpectNoMisuse(*second);

    // The pass took the buffers: the settings keep no address, and a host that plays the
    // step once more gets a plain mask pass, not a second use of freed memory.
    ASSERT_TRUE(options.registry->Get(kSettingsKey, settings));
    int32 kept = -1;
    EXPECT_TRUE(settings.GetInteger(FourCC("SbSR"), area) && settings.GetInteger(FourCC("SvE1"), kept));
    EXPECT_EQ(area, 0);
    EXPECT_EQ(kept, 0);
    auto again = MakeHost(doc, options);
    ASSERT_EQ(again->PlayAction(pass, plugInDialogDontDisplay), noErr);
    EXPECT_EQ(again->Doc().Target().transparency, doc.Target().transparency) << "nothing kept, nothing blended";
    ExpectNoMisuse(*again);
}

TEST(WriteBack, FlatPicturesDarkenByTransparency) {
    FilterRecord record{};
    std::vector<uint8> out(2 * 3, 0xEE);
    record.planes = 3;
    record.outData = out.data();
    record.outRowBytes = 6;
    record.imageMode = plugInModeRGBColor;
    gFilterRecord = &record;
    uint8 work[8] = {200, 101, 7, 128, 200, 101, 7, 255};
    WorkImage = work;
    ImageWidth = 2, ImageHeight = 1, WorkRowBytes = 8;
    ModeIsCMYK = Depth16 = DialogOpen = false;
    WriteBack();
    const float f = 128.0f / 255.0f;
    EXPECT_EQ(out[0], uint8(200.0f * f));
    EXPECT_EQ(out[1], uint8(101.0f * f));
    EXPECT_EQ(out[2], 3) << "7 * 128 / 255 = 3.51 truncates";
    EXPECT_EQ(out[3], 200) << "opaque pixels go out as they are";
    WorkImage = nullptr;
    gFilterRecord = nullptr;
}

TEST(WriteBack, TransparencyGoesOutUnchanged) {
    auto host = MakeHost(RgbDocument(33, 17, 4));
    const std::vector<uint8> before = host->Doc().TargetInterleaved();
    ASSERT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), noErr);
    EXPECT_EQ(host->Doc().TargetInterleaved(), before) << "alpha copied, colours not un-premultiplied";
}

TEST(WriteBack, CmykGoesThroughTheColourServices) {
    for (int planes : {4, 5}) {
        auto host = MakeHost(RgbDocument(19, 7, planes, plugInModeCMYKColor));
        std::vector<uint8> expected = host->Doc().TargetInterleaved();
        ASSERT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), noErr);
        for (size_t i = 0; i < expected.size(); i += planes) {
            Color8 c = {expected[i], expected[i + 1], expected[i + 2], expected[i + 3]};
            hostsim::Convert8(2, 0, &c, 1);
            if (planes == 4) c[0] = 255; // alpha 255 darkens nothing
            hostsim::Convert8(0, 2, &c, 1);
            std::memcpy(&expected[i], c, 4);
        }
        EXPECT_EQ(host->Doc().TargetInterleaved(), expected) << planes << " planes";
    }
}

TEST(WriteBack, CmykRowsWiderThanOneConversionComeBackUnchanged) {
    // Inks made from RGB colours, so CMYK -> RGB -> CMYK is exact and every effect off must
    // give the document back. A row of 32800 takes two conversion runs each way.
    for (int planes : {4, 5}) {
        const int32 width = 32800;
        std::vector<uint8> pixels = TestCard(width, 2, planes);
        for (size_t i = 0; i < pixels.size(); i += size_t(planes)) {
            Color8 c = {0, pixels[i], pixels[i + 1], pixels[i + 2]};
            if (i % 7 == 0) c[1] = 0, c[2] = 50, c[3] = 0; // the colour that once lost its inks
            hostsim::Convert8(0, 2, &c, 1);
            std::memcpy(&pixels[i], c, 4);
        }
        auto host = MakeHost(hostsim::MakeDocument(width, 2, plugInModeCMYKColor, 8, pixels, planes));
        const std::vector<uint8> before = host->Doc().TargetInterleaved();
        ASSERT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), noErr);
        EXPECT_TRUE(host->Doc().TargetInterleaved() == before) << planes << " planes";
        ExpectNoMisuse(*host);
    }
}
