// The document beyond inData: selection mask, layer reads and layer properties.
#include "ShellFixture.h"

#include "host/ChannelAccess.h"
#include "host/Selection.h"
#include "host/Session.h"

#include <cstring>
#include <functional>

using namespace shelltest;

namespace {

// A stand-in entry point: at Start it runs `probe` with the shell's globals pointing at
// the host's record, as the dialog would.
std::function<void()> gProbe;
void QZ_HOSTCALL ProbeEntry(int16 selector, void* record, intptr_t* data, int16* result) {
    if (selector != filterSelectorStart) return;
    gSelector = selector;
    gFilterRecord = static_cast<FilterRecord*>(record);
    gDataSlot = data;
    gResult = result;
    gProbe();
    gFilterRecord = nullptr;
}

void Probe(hostsim::Document doc, std::function<void()> probe) {
    gProbe = std::move(probe);
    hostsim::Host host(std::move(doc), {}, ProbeEntry);
    host.Call(filterSelectorStart);
    for (const std::string& m : host.TakeMisuse()) ADD_FAILURE() << m;
}

hostsim::Layer SolidLayer(const char* name, int32 pixels, std::array<uint8, 3> rgb, bool visible = true) {
    hostsim::Layer layer;
    layer.name = name;
    layer.visible = visible;
    for (int32 i = 0; i < pixels; ++i) layer.pixels.insert(layer.pixels.end(), rgb.begin(), rgb.end());
    return layer;
}

uint8 Sample(Raster& r, int plane, int32 y, int32 x) {
    return r.ImageOrigin()[size_t(plane) * r.PlaneBytes() + size_t(y) * r.RowBytes() + x];
}

} // namespace

TEST(Selection, MaskScalesTransparency) {
    hostsim::Document doc = RgbDocument(4, 2, 4);
    for (int i = 0; i < 8; ++i) doc.Target().transparency[size_t(i)] = i < 4 ? 255 : 100;
    doc.selection.assign(8, 128);
    hostsim::HostOptions options;
    options.writesOutsideSelection = true;
    auto host = MakeHost(std::move(doc), options);
    ASSERT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), noErr);
    ASSERT_NE(SelectionMask, nullptr);
    EXPECT_EQ(SelectionMask[0], 128) << "128 over 255";
    EXPECT_EQ(SelectionMask[4], 50) << "128 over 100";
    EXPECT_EQ(SourceRGBA[4 * 4 + 3], 50);
}

TEST(ChannelAccess, TargetLayerAndTheVisibleLayersBelow) {
    const int32 w = 6, h = 4, n = w * h;
    hostsim::Document doc = RgbDocument(w, h, 4);
    hostsim::Layer target = doc.layers[0];
    target.name = "Top";
    for (size_t i = 0; i < target.transparency.size(); ++i) target.transparency[i] = uint8(i * 10);
    doc.layers = {SolidLayer("Ground", n, {10, 20, 30}), SolidLayer("Hidden", n, {200, 0, 0}, false), target};
    doc.targetLayer = 2;
    Probe(doc, [&] {
        EXPECT_EQ(ChannelCount(), 3);
        auto name = TargetLayerName();
        ASSERT_TRUE(name);
        EXPECT_STREQ(name.get(), "Top");
        EXPECT_TRUE(LayerVisible("Ground"));
        EXPECT_FALSE(LayerVisible("Hidden"));
        EXPECT_FALSE(LayerVisible("Nowhere"));

        ReadDocumentLayers();
        ASSERT_NE(LayerRaster, nullptr);
        ASSERT_NE(MergedBelow, nullptr);
        EXPECT_EQ(LayerRaster->Planes, 4);
        for (int32 y = 0; y < h; ++y)
            for (int32 x = 0; x < w; ++x) {
                const size_t i = size_t(y) * w + x;
                EXPECT_EQ(Sample(*LayerRaster, 1, y, x), target.pixels[i * 3 + 1]);
                EXPECT_EQ(Sample(*LayerRaster, 3, y, x), target.transparency[i]) << "transparency in plane 3";
                // The lowest visible layer has no transparency: a straight, opaque copy.
                EXPECT_EQ(Sample(*MergedBelow, 0, y, x), 10);
                EXPECT_EQ(Sample(*MergedBelow, 2, y, x), 30);
                EXPECT_EQ(Sample(*MergedBelow, 3, y, x), 255);
            }
        FreeDocumentLayers();
    });
}

TEST(ChannelAccess, TwoLayersOfTheSameNameEndAtTheLower) {
    const int32 n = 9;
    hostsim::Document doc = RgbDocument(3, 3);
    doc.layers = {SolidLayer("Twin", n, {1, 2, 3}), SolidLayer("Twin", n, {7, 8, 9})};
    doc.targetLayer = 1;
    Probe(doc, [&] {
        ReadDocumentLayers();
        ASSERT_NE(LayerRaster, nullptr);
        EXPECT_EQ(Sample(*LayerRaster, 0, 1, 1), 1) << "the lower of the two is read";
        FreeDocumentLayers();
    });
}

TEST(ChannelAccess, WithoutUsableLayersMergedBelowIsBlack) {
    hostsim::HostOptions options;
    options.documentInfoMaxVersion = 1; // no layer list to walk
    gProbe = [] {
        FreeDocumentLayers();
        ReadDocumentLayers();
        EXPECT_EQ(LayerRaster, nullptr);
        ASSERT_NE(MergedBelow, nullptr);
        EXPECT_EQ(Sample(*MergedBelow, 0, 0, 0), 0);
        EXPECT_EQ(Sample(*MergedBelow, 2, 2, 2), 0);
        FreeDocumentLayers();
    };
    hostsim::Host host(RgbDocument(3, 3), options, ProbeEntry);
    host.Call(filterSelectorStart);
}

// --- Hosts that read otherwise ---------------------------------------------------

namespace {

void ProbeWith(hostsim::Document doc, hostsim::HostOptions options, std::function<void()> probe) {
    gProbe = std::move(probe);
    hostsim::Host host(std::move(doc), std::move(options), ProbeEntry);
    host.Call(filterSelectorStart);
    for (const std::string& m : host.TakeMisuse()) ADD_FAILURE() << m;
}

} // namespace

TEST(ChannelAccess, WithoutTheSuiteTheClassicReadGivesTheSameLayers) {
    const int32 w = 5, h = 3, n = w * h;
    hostsim::Document doc = RgbDocument(w, h, 4);
    hostsim::Layer target = doc.layers[0];
    target.name = "Top";
    doc.layers = {SolidLayer("Ground", n, {40, 50, 60}), target};
    doc.targetLayer = 1;
    hostsim::HostOptions options;
    options.omitSuites = {kPSChannelPortsSuite};
    ProbeWith(doc, options, [&] {
        ReadDocumentLayers();
        ASSERT_NE(LayerRaster, nullptr);
        ASSERT_NE(MergedBelow, nullptr);
        for (int32 y = 0; y < h; ++y)
            for (int32 x = 0; x < w; ++x) {
                const size_t i = size_t(y) * w + x;
                EXPECT_EQ(Sample(*LayerRaster, 2, y, x), target.pixels[i * 3 + 2]);
                EXPECT_EQ(Sample(*LayerRaster, 3, y, x), target.transparency[i]);
                EXPECT_EQ(Sample(*MergedBelow, 1, y, x), 50);
            }
        FreeDocumentLayers();
    });
}

TEST(ChannelAccess, APortThatCannotBeReadEndsTheReadAsHostInsufficient) {
    ProbeWith(RgbDocument(4, 4), {}, [] {
        ReadChannelDesc channel{};
        channel.port = reinterpret_cast<PIChannelPort>(uintptr_t(0x5EED)); // no port the host made
        Raster* raster = NewRaster(1, RasterRect{0, 0, 4, 4}, 1, 8, 0, 0);
        EXPECT_FALSE(ReadChannelToRaster(&channel, raster));
        EXPECT_EQ(*gResult, errPlugInHostInsufficient);
        FreeRaster(raster);
        SetResult(noErr);
    });
}
