// Live, document and colour thumbnails against plain arithmetic: an image whose pixels
// encode their coordinates, grey pictures of known values, the engine's colour routines.
#include "pickers/Thumbnails.h"

#include "effects/EffectLayer.h"
#include "state/Parameters.h"
#include "state/PathTable.h"
#include "state/ViewState.h"
#include "state/WorkImages.h"

// After the parameters: zlib's global Byte would otherwise be shadowed by their own.
#include "raster/TextureTestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>
#include <vector>

namespace {

// gParams with defaults, and a 112 x 84 image that a crop at scale 1 and resolution 112
// maps one to one: red 40 + x, green 100 + y, alpha 255, then 0, then varying.
class LiveTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::memset(&params_, 0, sizeof params_);
        gParams = &params_;
        InitParameters();
        ViewWash = ViewSurface = 0;
        for (int32_t y = 0; y < 84; ++y)
            for (int32_t x = 0; x < 112; ++x) {
                uint8_t* p = &image_[(size_t(y) * 112 + x) * 4];
                p[0] = uint8_t(40 + x), p[1] = uint8_t(100 + y), p[2] = uint8_t(x * 2 + y);
                p[3] = uint8_t(x < 30 ? 255 : x < 60 ? 0 : x * 2 + y);
            }
        SourceRGBA = image_.data();
        SelectionWidth = 112, SelectionHeight = 84;
        DocumentThumb.resize(112 * 84 * 3);
        for (size_t i = 0; i < DocumentThumb.size(); ++i) DocumentThumb[i] = uint8_t(i * 7);
    }
    void TearDown() override {
        SourceRGBA = nullptr;
        DocumentThumb.clear();
        FreeUnderlay();
        FreeThumbBuffers();
        gParams = nullptr;
    }
    // A grey picture of value g(x, y), top row first; and a pixel's red, green, blue.
    template <typename F> static ThumbImage Grey(F g) {
        ThumbImage t{112, 84, 336, std::vector<uint8_t>(336 * 84)};
        for (int32_t y = 0; y < 84; ++y)
            for (int32_t x = 0; x < 112; ++x) std::memset(&t.bytes[size_t(83 - y) * 336 + size_t(x) * 3], g(x, y), 3);
        return t;
    }
    static std::array<int32_t, 3> Rgb(const ThumbImage& t, int32_t x, int32_t y) {
        const uint8_t* p = &t.bytes[size_t(83 - y) * 336 + size_t(x) * 3];
        return {p[2], p[1], p[0]};
    }
    FilterParameters params_;
    std::vector<uint8_t> image_ = std::vector<uint8_t>(112 * 84 * 4);
};

} // namespace

TEST(DocumentThumbTest, IsCentredAtStepFourWithTransparencyOverACheckerboard) {
    // 500 x 400, four planes: the crop starts at (26, 32), step 4; clear, opaque, half alpha.
    rastertest::RasterPtr rgba(NewRaster(3, RasterRect{0, 0, 400, 500}, 4, 8, 0, 0));
    const size_t plane = rgba->PlaneBytes();
    for (int32_t y = 0; y < 400; ++y)
        for (int32_t x = 0; x < 500; ++x) {
            uint8_t* p = rgba->Pixels() + size_t(y) * rgba->RowBytes() + x;
            p[0] = uint8_t(x), p[plane] = uint8_t(y), p[2 * plane] = 50;
            p[3 * plane] = x < 250 ? 0 : x < 400 ? 255 : 128;
        }
    BuildDocumentThumb(*rgba);
    auto at = [](int32_t i, int32_t j, int32_t c) { return DocumentThumb[(size_t(j) * 112 + i) * 3 + c]; };
    for (const auto& [i, j, check] :
         std::initializer_list<std::tuple<int, int, int>>{{0, 0, 204}, {8, 0, 255}, {8, 8, 204}})
        EXPECT_EQ(at(i, j, 1), check) << i << "," << j;
    EXPECT_EQ(at(60, 0, 0), uint8_t(26 + 240));
    EXPECT_EQ(at(60, 83, 1), uint8_t(32 + 332));
    const float a = 128.0f / 255.0f; // half clear, over a light square
    EXPECT_EQ(at(104, 0, 2), uint8_t(int32_t(50.0f * a + 255.0f * (1.0f - a))));
}

TEST_F(LiveTest, CropSourceFlipsRowsAndRepeatsTheEdgesOfASmallProxy) {
    std::vector<uint8_t> proxy(10 * 10 * 4);
    for (size_t i = 0; i < 100; ++i) proxy[i * 4] = uint8_t(i % 10), proxy[i * 4 + 1] = uint8_t(i / 10);
    SourceRGBA = proxy.data();
    SelectionWidth = SelectionHeight = 10;
    auto xy = [](int32_t i, int32_t j) { return ThumbSource[size_t(j) * 112 + i] & 0xFFFF; };
    auto code = [](uint32_t x, uint32_t y) { return x | y << 8; };
    // Two proxy pixels a thumbnail pixel: the crop runs off the proxy and its edges repeat.
    EXPECT_FLOAT_EQ(CropSource(2.0f, 10), 2.0f);
    EXPECT_EQ(xy(0, 0), code(0, 9)); // the bottom row is stored first
    EXPECT_EQ(xy(3, 2), code(6, 5));
    EXPECT_EQ(xy(111, 83), code(9, 0));
    SourceRGBA = nullptr;
    EXPECT_EQ(CropSource(4.0f, 2048), 4.0f);
}

TEST_F(LiveTest, WashTypesOverTheUnderlayAndWhiteLeavesThePicture) {
    const ThumbImage grey = Grey([](int32_t x, int32_t y) { return uint8_t(x * 2 + y); });
    const int32_t stain[3] = {200, 60, 130};
    params_.WashStainColor2 = uint32_t(stain[0] | stain[1] << 8 | stain[2] << 16);
    params_.SecondWashExists = 1;
    ViewWash = ViewCodeWashTwo;
    const float bright = 390.0f / 765.0f;
    for (uint8_t type = 0; type < 4; ++type) {
        params_.WashType2 = type;
        ThumbImage t = grey;
        RenderLive(t, kWashTarget, 1.0f, 112);
        for (const auto& [x, y] : {std::pair{10, 3}, std::pair{45, 80}, std::pair{70, 20}, std::pair{111, 83}}) {
            const uint8_t* s = &image_[(size_t(y) * 112 + x) * 4];
            const float m = float(uint8_t(x * 2 + y)) / 255.0f;
            const int32_t alpha = type == 0 ? int32_t(float(s[3]) * m) : s[3];
            for (int c = 0; c < 3; ++c) {
                const int32_t P = s[c], C = stain[c];
                const float q = type == 1 ? float(P * C / 255)
                                : type == 2
                                    ? float(255 - ((255 - P) * (255 - C) >> 8))
                                    : float(int32_t(std::min(
                                          float(P * C) * (1.0f - bright) / 255.0f + float(P + C) * bright, 255.0f)));
                const float v = type == 0 ? float(P) : std::min(q * (1.0f - m) + float(P) * m, 255.0f);
                const float ta = float(alpha) / 255.0f, under = DocumentThumb[(size_t(y) * 112 + x) * 3 + c];
                EXPECT_EQ(Rgb(t, x, y)[c], int32_t(alpha >= 255 ? v : v * ta + under * (1.0f - ta)))
                    << int(type) << " at " << x << "," << y << " channel " << c;
            }
        }
        // A white texture keeps every type's hands off an opaque picture.
        ThumbImage white = Grey([](int32_t, int32_t) { return uint8_t(255); });
        RenderLive(white, kWashTarget, 1.0f, 112);
        EXPECT_EQ(Rgb(white, 5, 40), (std::array<int32_t, 3>{45, 140, 50}));
    }
}

TEST_F(LiveTest, BackgroundToneMeetsTheMidtoneAtSixtyFivePercentFromBothSides) {
    SetLayerTones(BackgroundLayer, 0, 0, 0, 0x00E6F0FA, 0x00C89664, 0x001E140A); // high, mid, shadow
    BackgroundLayer.Invert = 0;
    params_.BackgroundHue = 0;
    params_.BackgroundMidtone = 100;
    // 165 / 255 lies just below 0.65, 166 / 255 just above.
    const ThumbImage plain = Grey([](int32_t x, int32_t) {
        return uint8_t(x < 20 ? 0 : x < 40 ? 165 : x < 60 ? 166 : 255);
    });
    ThumbImage t = plain;
    EXPECT_FLOAT_EQ(RenderLive(t, kBackgroundTarget, 3.0f, 2048), 3.0f);
    const std::array<int32_t, 3> shadow{10, 20, 30}, mid{100, 150, 200}, high{250, 240, 230};
    for (const auto& [x, want] : {std::pair{0, shadow}, std::pair{30, mid}, std::pair{50, mid}, std::pair{80, high}})
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(Rgb(t, x, 10)[i], want[i], 1) << x << " channel " << i;
}

TEST_F(LiveTest, SurfaceLightOfARampIsEvenToTheEdges) {
    params_.SurfaceLightAlpha = 30.0f;
    params_.SurfaceLightBeta = 50.0f;
    params_.SurfaceDepth1 = 64;
    ThumbDepthScale = 64.0f / 150.0f;
    EffectLayer layer;
    ThumbSurfaceLayer = &layer;
    // A linear ramp stays linear under the smoothing and the edges extrapolate it: one slope.
    ThumbPixels = Grey([](int32_t x, int32_t) { return uint8_t(x * 2); }).bytes;
    BuildLightMap(1.0f);
    const float first = ThumbLighting[0];
    for (float v : ThumbLighting) ASSERT_NEAR(v, first, 1e-4f);
    // A flat picture is lit by the light's height alone, a slope more or less.
    ThumbPixels = Grey([](int32_t, int32_t) { return uint8_t(90); }).bytes;
    BuildLightMap(1.0f);
    EXPECT_NE(first, ThumbLighting[500]);
    ThumbSurfaceLayer = nullptr;
}

TEST_F(LiveTest, ColourPresetsToneTheBaseAndTouchNothingElse) {
    const std::string folder = (ProcessTempDir() / "live").string();
    std::filesystem::create_directories(folder + "/Colors");
    // A colour preset's three colours tone the base; a line it has no business holding,
    // and the layer's own colours, stay as they were.
    std::ofstream(folder + "/Colors/Primary.qztpst") << "Quenzit Press Preset;\nVersion 2;\n1pTW 3 \t;Type\n"
                                                        "lCiH 255 \t;H\nlCdM 65280 \t;M\nlCdS 16711680 \t;S\n";
    const std::string keptColors = PathTable.Colors;
    PathTable.Colors = folder + "/Colors";
    const FilterParameters before = params_;
    const ThumbImage base = Grey([](int32_t x, int32_t) { return uint8_t(x * 2); });
    SetLayerTones(BackgroundLayer, 0, 0, 0, 0x00FFFFFF, 0x00808080, 0x00000000);
    params_.BackgroundHue = 0, params_.BackgroundMidtone = 100;
    ThumbImage out;
    ASSERT_TRUE(RenderColourThumb(base, kBackgroundTarget, "Primary.qztpst", out));
    PathTable.Colors = keptColors;
    EXPECT_EQ(std::memcmp(&before, &params_, sizeof before), 0);
    EXPECT_EQ(BackgroundLayer.HighlightRed, 0xFF);
    SetLayerTones(BackgroundLayer, 0, 0, 0, 0x000000FF, 0x0000FF00, 0x00FF0000);
    ThumbImage want = base;
    RenderLive(want, kBackgroundTarget, 4.0f, 2048);
    EXPECT_EQ(out.bytes, want.bytes);
    EXPECT_EQ(Rgb(out, 0, 0), (std::array<int32_t, 3>{0, 0, 255})); // black takes the shadow: blue
}
