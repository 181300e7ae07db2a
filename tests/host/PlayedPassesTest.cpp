// Runs the shell takes only when a host plays them: the background's pass into a layer of
// its own, the surface's pass notes, 16-bit documents and a cancelled dialog.
#include "ShellFixture.h"

#include "state/Parameters.h"

#include <algorithm>
#include <cstring>

using namespace shelltest;

namespace {

// Every effect off but the one given a texture that cannot be found (white, a full effect).
hostsim::Descriptor Only(const char* textureKey, std::initializer_list<std::pair<const char*, int32>> values) {
    hostsim::Descriptor d = AllEffectsOff();
    d.PutText(FourCC(*reinterpret_cast<const char(*)[5]>(textureKey)), "Missing_Here.qzt");
    for (auto [key, value] : values) {
        const DescriptorKeyID k = FourCC(*reinterpret_cast<const char(*)[5]>(key));
        if (std::strcmp(key, "ILNS") == 0) d.PutInteger(k, value);
        else d.PutBoolean(k, value != 0);
    }
    return d;
}

bool Recorded(const hostsim::Host& host, const char (&key)[5]) {
    bool v = false;
    return host.Recorded().GetBoolean(FourCC(key), v) && v;
}

std::vector<uint8> Played(hostsim::Document doc, const hostsim::Descriptor& played,
                          std::unique_ptr<hostsim::Host>* keep = nullptr) {
    auto host = MakeHost(std::move(doc));
    EXPECT_EQ(host->PlayAction(played, plugInDialogDontDisplay), noErr);
    ExpectNoMisuse(*host);
    std::vector<uint8> out = host->Doc().TargetInterleaved();
    if (keep) *keep = std::move(host);
    return out;
}

// A second picture of the same size with other colours and the same transparency.
hostsim::Document Other(int32 w, int32 h) {
    hostsim::Document doc = RgbDocument(w, h, 4);
    for (uint8& v : doc.Target().pixels) v = uint8(255 - v);
    return doc;
}

} // namespace

// Background in a new layer below: the run after the note holds the background back and
// renders the rest; the host's next step, played with ILNB, renders the background alone
// (view 3: the work image cleared first, so the picture plays no part).
TEST(PlayedPasses, BackgroundInANewLayerHeldBackThenAlone) {
    const int32 w = 20, h = 12;
    std::unique_ptr<hostsim::Host> host;
    const std::vector<uint8> input = RgbDocument(w, h, 4).TargetInterleaved();
    Played(RgbDocument(w, h, 4), Only("BkFN", {{"NLBk", 1}}), &host);
    EXPECT_TRUE(Recorded(*host, "ILNL")) << "the first run only leaves its note";

    const std::vector<uint8> held = Played(RgbDocument(w, h, 4), Only("BkFN", {{"NLBk", 1}, {"ILNL", 1}}), &host);
    const std::vector<uint8> usual = Played(RgbDocument(w, h, 4), Only("BkFN", {}));
    EXPECT_NE(usual, input) << "the background shows in an ordinary run";
    EXPECT_EQ(held, input) << "the background is held back, and nothing else is on";
    EXPECT_TRUE(Recorded(*host, "BkOn")) << "and put back on for the next step";
    EXPECT_FALSE(Recorded(*host, "ILNL"));

    const std::vector<uint8> alone = Played(RgbDocument(w, h, 4), Only("BkFN", {{"NLBk", 1}, {"ILNB", 1}}), &host);
    EXPECT_FALSE(Recorded(*host, "ILNB")) << "the pass clears its note";
    EXPECT_NE(alone, input);
    EXPECT_EQ(alone, Played(Other(w, h), Only("BkFN", {{"NLBk", 1}, {"ILNB", 1}})))
        << "the background alone does not depend on the picture";
}

// The surface's own layer: ILNS 1 renders the surface alone, any other value the picture
// without it (the surface pass stores the picture itself); both clear the note.
TEST(PlayedPasses, SurfacePassNotesPlayedThroughRunFilter) {
    const int32 w = 16, h = 10;
    const std::vector<uint8> input = RgbDocument(w, h, 4).TargetInterleaved();
    std::unique_ptr<hostsim::Host> host;
    const std::vector<uint8> without = Played(RgbDocument(w, h, 4), Only("SFN1", {{"NLSf", 1}, {"ILNS", 2}}), &host);
    EXPECT_EQ(without, input) << "pass 2 is the picture without the surface";
    int32 note = -1;
    EXPECT_TRUE(host->Recorded().GetInteger(FourCC("ILNS"), note));
    EXPECT_EQ(note, 0);

    const std::vector<uint8> alone = Played(RgbDocument(w, h, 4), Only("SFN1", {{"NLSf", 1}, {"ILNS", 1}}), &host);
    const std::vector<uint8> usual = Played(RgbDocument(w, h, 4), Only("SFN1", {}));
    EXPECT_NE(alone, input);
    EXPECT_NE(alone, usual) << "pass 1 stores the tone, not the mix";
    EXPECT_TRUE(host->Recorded().GetInteger(FourCC("ILNS"), note));
    EXPECT_EQ(note, 0);
}

// A 16-bit document is taken as bytes with half the host's row step on the way out, and
// the full step on the way in: row y of the first half of the buffer receives the first
// half of the host's row y, and the second half of the buffer is left as it was.
TEST(PlayedPasses, SixteenBitDocumentsHalveTheRowSteps) {
    const int32 w = 5, h = 3, planes = 3;
    std::vector<uint8> bytes;
    for (int32 y = 0; y < h; ++y)
        for (int32 x = 0; x < w; ++x)
            for (int p = 0; p < planes; ++p) {
                const uint16 v = uint16((x * 7 + y * 13 + p * 61) * 100);
                bytes.push_back(uint8(v & 0xFF));
                bytes.push_back(uint8(v >> 8));
            }
    auto host = MakeHost(hostsim::MakeDocument(w, h, plugInModeRGB48, 16, bytes, planes));
    ASSERT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), noErr);
    const size_t row = size_t(w) * planes * 2, half = row / 2;
    std::vector<uint8> expected = bytes;
    for (int32 y = 0; y < h; ++y)
        std::copy_n(bytes.begin() + ptrdiff_t(y * row), half, expected.begin() + ptrdiff_t(y * half));
    EXPECT_EQ(host->Doc().TargetInterleaved(), expected);
}

// A dialog that is cancelled puts back the three values scripts carry, as they stood
// before the played step overlaid them.
TEST(PlayedPasses, CancelPutsBackAmountDispositionAndIgnoreSelection) {
    hostsim::Descriptor played = AllEffectsOff();
    played.PutUnitFloat(FourCC("Amnt"), unitPercent, 80.0);
    played.PutEnumerated(FourCC("disP"), FourCC("mooD"), FourCC("moD3"));
    played.PutBoolean(FourCC("ignS"), true);
    auto host = MakeHost(RgbDocument(8, 8));
    // This build has no dialog: asking for it cancels.
    ASSERT_EQ(host->PlayAction(played, plugInDialogDisplay), userCanceledErr);
    const FilterParameters record = *reinterpret_cast<FilterParameters*>(*host->Parameters());
    EXPECT_EQ(record.Amount, 50);
    EXPECT_EQ(record.Disposition, 1);
    EXPECT_EQ(record.IgnoreSelection, 0);
    EXPECT_EQ(record.WashFileName1[0], 'N') << "the played step did overlay the rest";
}
