// Washes through the whole plug-in, driven by hostsim, with textures of known values
// in a data folder of the test's own.
#include "effects/TextureFolder.h"
#include "ShellFixture.h"

#include "platform/Alert.h"

#include <algorithm>

using namespace shelltest;

namespace {

class WashHostTest : public ::testing::Test {
protected:
    void Texture(const char* name, int32 w, int32 h, uint8 value) { folder_.Texture(name, w, h, value); }
    // Only the washes are on.
    static hostsim::Descriptor Washes(const char* first, int32 type1, const char* second = nullptr, int32 type2 = 0) {
        hostsim::Descriptor d;
        for (DescriptorKeyID key : {FourCC("SFN1"), FourCC("SFN2"), FourCC("BkFN")}) d.PutText(key, "No_Texture.qzt");
        d.PutText(FourCC("WFN1"), first);
        d.PutInteger(FourCC("WTp1"), type1);
        d.PutBoolean(FourCC("W2Ex"), second != nullptr);
        if (second) {
            d.PutText(FourCC("WFN2"), second);
            d.PutInteger(FourCC("WTp2"), type2);
        }
        return d;
    }
    effectstest::TextureFolder folder_{"wash"};
    AlertCapture alerts_; // the surfaces and background have no files here
};

} // namespace

TEST_F(WashHostTest, AWhiteTextureChangesNothingWhateverTheType) {
    Texture("White.qzt", 24, 16, 255);
    for (int planes : {3, 4}) {
        for (int32 type = 0; type < 4; ++type) {
            auto host = MakeHost(RgbDocument(24, 16, planes));
            const hostsim::Layer before = host->Doc().Target();
            hostsim::Descriptor d = Washes("White.qzt", type, "White.qzt", 3 - type);
            ASSERT_EQ(host->PlayAction(d, plugInDialogDontDisplay), noErr);
            EXPECT_EQ(host->Doc().Target().pixels, before.pixels) << planes << " planes, type " << type;
            EXPECT_EQ(host->Doc().Target().transparency, before.transparency);
            ExpectNoMisuse(*host);
        }
    }
}

TEST_F(WashHostTest, ErosionLowersAlphaAndWashesTakeTheMinimum) {
    Texture("Grey100.qzt", 24, 16, 100);
    Texture("Grey60.qzt", 24, 16, 60);
    Texture("Grey160.qzt", 24, 16, 160);
    struct Case {
        const char* first;
        const char* second;
        int limit;
    };
    for (const Case& c : {Case{"Grey100.qzt", nullptr, 100}, Case{"Grey100.qzt", "Grey60.qzt", 60},
                          Case{"Grey60.qzt", "Grey100.qzt", 60}, Case{"Grey100.qzt", "Grey160.qzt", 100}}) {
        auto host = MakeHost(RgbDocument(24, 16, 4));
        const hostsim::Layer before = host->Doc().Target();
        ASSERT_EQ(host->PlayAction(Washes(c.first, 0, c.second, 0), plugInDialogDontDisplay), noErr);
        const hostsim::Layer& after = host->Doc().Target();
        EXPECT_EQ(after.pixels, before.pixels) << "Erosion leaves the colour";
        ASSERT_EQ(after.transparency.size(), before.transparency.size());
        size_t lowered = 0;
        for (size_t i = 0; i < before.transparency.size(); ++i) {
            ASSERT_EQ(after.transparency[i], std::min<int>(before.transparency[i], c.limit)) << c.first << " at " << i;
            lowered += after.transparency[i] < before.transparency[i];
        }
        EXPECT_GT(lowered, before.transparency.size() / 2);
    }
}

TEST_F(WashHostTest, OutsideTheEdgeAMaskOfZeroIsFullStrength) {
    const int32 w = 20, h = 12;
    Texture("Black.qzt", w, h, 0);
    for (bool inside : {false, true}) {
        auto host = MakeHost(OpaqueDocument(w, h));
        hostsim::Descriptor d = Washes("Black.qzt", 0);
        d.PutInteger(FourCC("EDs1"), 50); // deepest point 6: below 3 from the edge the mask is 0
        d.PutBoolean(FourCC("Isd1"), inside);
        ASSERT_EQ(host->PlayAction(d, plugInDialogDontDisplay), noErr);
        const std::vector<uint8>& alpha = host->Doc().Target().transparency;
        ASSERT_EQ(alpha.size(), size_t(w) * h);
        for (int32 y = 0; y < h; ++y)
            for (int32 x = 0; x < w; ++x) {
                const bool nearEdge = std::min({x, y, w - 1 - x, h - 1 - y}) < 2;
                EXPECT_EQ(alpha[size_t(y) * w + x], nearEdge == inside ? 255 : 0)
                    << (inside ? "inside" : "outside") << " at " << x << "," << y;
            }
    }
}
