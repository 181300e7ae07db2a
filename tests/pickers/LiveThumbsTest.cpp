// Live and document thumbnails against plain arithmetic: an image whose pixels encode
// their coordinates, grey pictures of known values, the engine's colour routines.
#include "pickers/Thumbnails.h"

#include "effects/ColorConversion.h"
#include "effects/EffectLayer.h"
#include "effects/SurfaceColor.h"
#include "state/Parameters.h"
#include "state/PathTable.h"
#include "state/ViewState.h"
#include "state/WorkImages.h"

// After the parameters: zlib's global Byte would otherwise be shadowed by their own.
#include "raster/TextureTestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

// gParams with defaults and a 112 x 84 image whose pixel (x, y) (top row first) is
// known, so that a crop at scale 1 and resolution 112 maps it one to one.
class LiveTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::memset(&params_, 0, sizeof params_);
        gParams = &params_;
        InitParameters();
        ViewWash = ViewSurface = 0;
        image_.resize(size_t(ThumbWidth) * ThumbHeight * 4);
        for (int32_t y = 0; y < ThumbHeight; ++y)
            for (int32_t x = 0; x < ThumbWidth; ++x) {
                uint8_t* p = &image_[(size_t(y) * ThumbWidth + x) * 4];
                p[0] = uint8_t(40 + x), p[1] = uint8_t(100 + y), p[2] = uint8_t(x * 2 + y);
                p[3] = uint8_t(x < 30 ? 255 : x < 60 ? 0 : x * 2 + y);
            }
        SourceRGBA = image_.data();
        SelectionWidth = ThumbWidth;
        SelectionHeight = ThumbHeight;
        DocumentThumb.assign(size_t(ThumbWidth) * ThumbHeight * 3, 0);
        for (size_t i = 0; i < DocumentThumb.size(); ++i) DocumentThumb[i] = uint8_t(i * 7);
        FreeUnderlay();
    }
    void TearDown() override {
        SourceRGBA = nullptr;
        SelectionWidth = SelectionHeight = 0;
        DocumentThumb.clear();
        FreeThumbBuffers();
        gParams = nullptr;
    }
    // A grey picture with the value g(x, y) (top row first).
    template <typename F> static ThumbImage Grey(F g) {
        ThumbImage t{ThumbWidth, ThumbHeight, ThumbStride, std::vector<uint8_t>(size_t(ThumbStride) * ThumbHeight)};
        for (int32_t y = 0; y < ThumbHeight; ++y)
            for (int32_t x = 0; x < ThumbWidth; ++x)
                std::memset(&t.bytes[size_t(ThumbHeight - 1 - y) * ThumbStride + size_t(x) * 3], g(x, y), 3);
        return t;
    }
    // Red, green, blue of picture pixel (x, y), top row first.
    static void Rgb(const ThumbImage& t, int32_t x, int32_t y, int32_t out[3]) {
        const uint8_t* p = &t.bytes[size_t(ThumbHeight - 1 - y) * ThumbStride + size_t(x) * 3];
        out[0] = p[2], out[1] = p[1], out[2] = p[0];
    }
    const uint8_t* Pixel(int32_t x, int32_t y) const { return &image_[(size_t(y) * ThumbWidth + x) * 4]; }
    FilterParameters params_;
    std::vector<uint8_t> image_;
};

} // namespace

TEST(DocumentThumbTest, TransparencyShowsTheCheckerboardAndMissingPlanesRepeat) {
    // 500 x 400 with four planes: the crop starts at (26, 32), step 4.
    rastertest::RasterPtr rgba(NewRaster(3, RasterRect{0, 0, 400, 500}, 4, 8, 0, 0));
    uint8_t* base = rgba->Pixels();
    const size_t plane = rgba->PlaneBytes();
    for (int32_t y = 0; y < 400; ++y)
        for (int32_t x = 0; x < 500; ++x) {
            uint8_t* p = base + size_t(y) * rgba->RowBytes() + x;
            p[0] = uint8_t(x), p[plane] = uint8_t(y), p[2 * plane] = 50;
            p[3 * plane] = x < 250 ? 0 : x < 400 ? 255 : 128; // clear, opaque, half
        }
    BuildDocumentThumb(*rgba);
    ASSERT_EQ(DocumentThumb.size(), size_t(112 * 84 * 3));
    auto at = [](int32_t i, int32_t j, int32_t c) { return DocumentThumb[(size_t(j) * 112 + i) * 3 + c]; };
    // Clear: 204 in the first square, 255 in its neighbours, 204 diagonally.
    for (int32_t c = 0; c < 3; ++c) {
        EXPECT_EQ(at(0, 0, c), 204);
        EXPECT_EQ(at(7, 7, c), 204);
        EXPECT_EQ(at(8, 0, c), 255);
        EXPECT_EQ(at(0, 8, c), 255);
        EXPECT_EQ(at(8, 8, c), 204);
    }
    // Opaque: the picture itself, at source (26 + 4i, 32 + 4j), top row first.
    EXPECT_EQ(at(60, 0, 0), uint8_t(26 + 240));
    EXPECT_EQ(at(60, 0, 1), 32);
    EXPECT_EQ(at(60, 83, 1), uint8_t(32 + 332));
    EXPECT_EQ(at(60, 0, 2), 50);
    // Half: colour x a + check x (1 - a).
    const float a = 128.0f / 255.0f;
    EXPECT_EQ(at(100, 0, 2), uint8_t(int32_t(50.0f * a + 204.0f * (1.0f - a)))); // square 12 + 0: even
    EXPECT_EQ(at(104, 0, 2), uint8_t(int32_t(50.0f * a + 255.0f * (1.0f - a))));

    // One plane: grey in all three. A picture smaller than the crop repeats its last pixels.
    rastertest::RasterPtr grey(NewRaster(1, RasterRect{0, 0, 20, 30}, 1, 8, 0, 0));
    for (int32_t y = 0; y < 20; ++y)
        for (int32_t x = 0; x < 30; ++x) grey->Pixels()[size_t(y) * grey->RowBytes() + x] = uint8_t(x + 10 * y);
    BuildDocumentThumb(*grey);
    for (int32_t c = 0; c < 3; ++c) {
        EXPECT_EQ(at(2, 1, c), 8 + 40);
        EXPECT_EQ(at(111, 83, c), 29 + 190);
    }
}

TEST_F(LiveTest, CropSourceFlipsRowsAndRepeatsTheEdgesOfASmallProxy) {
    std::vector<uint8_t> proxy(10 * 10 * 4);
    for (int32_t y = 0; y < 10; ++y)
        for (int32_t x = 0; x < 10; ++x) {
            uint8_t* p = &proxy[size_t(y * 10 + x) * 4];
            p[0] = uint8_t(x), p[1] = uint8_t(y), p[2] = 7, p[3] = 200;
        }
    SourceRGBA = proxy.data();
    SelectionWidth = SelectionHeight = 10;
    auto xy = [](int32_t i, int32_t j) {
        const uint32_t s = ThumbSource[size_t(j) * 112 + i];
        return std::pair<int32_t, int32_t>(int32_t(s & 0xFF), int32_t(s >> 8 & 0xFF));
    };
    // Two proxy pixels a thumbnail pixel: the crop runs off the proxy and its edges repeat.
    EXPECT_FLOAT_EQ(CropSource(2.0f, 10), 2.0f);
    ASSERT_EQ(ThumbSource.size(), size_t(112 * 84));
    EXPECT_EQ(xy(0, 0), std::make_pair(0, 9)); // the bottom row is stored first
    EXPECT_EQ(xy(3, 2), std::make_pair(6, 5));
    EXPECT_EQ(xy(111, 83), std::make_pair(9, 0));
    EXPECT_EQ(ThumbSource[0] >> 16, 7u | 200u << 8);
    // The same share of the width as 448 of 2048, centred.
    EXPECT_FLOAT_EQ(CropSource(4.0f, 2048), 4.0f / 204.8f);
    EXPECT_EQ(xy(0, 0), std::make_pair(4, 5));
    EXPECT_EQ(xy(111, 83), std::make_pair(6, 3));

    EXPECT_EQ(CropSource(-1.0f, 2048), -1.0f);
    SourceRGBA = nullptr;
    EXPECT_EQ(CropSource(4.0f, 2048), 4.0f);
}

TEST_F(LiveTest, WashTypesOverTheUnderlayAndWhiteLeavesThePicture) {
    // Grey m varies with the column and row; the image's alpha is 255, 0 and in between.
    const ThumbImage grey = Grey([](int32_t x, int32_t y) { return uint8_t(x * 2 + y); });
    const int32_t stain[3] = {200, 60, 130};
    params_.WashStainColor2 = uint32_t(stain[0] | stain[1] << 8 | stain[2] << 16);
    params_.SecondWashExists = 1;
    ViewWash = ViewCodeWashTwo;
    const float bright = float(stain[0] + stain[1] + stain[2]) / 765.0f;
    for (uint8_t type = 0; type < 4; ++type) {
        params_.WashType2 = type;
        ThumbImage t = grey;
        EXPECT_FLOAT_EQ(RenderLive(t, kWashTarget, 1.0f, 112), 1.0f);
        for (const auto& [x, y] : {std::pair{10, 3}, std::pair{45, 80}, std::pair{70, 20}, std::pair{111, 83}}) {
            const uint8_t* s = Pixel(x, y);
            const float m = float(uint8_t(x * 2 + y)) / 255.0f;
            int32_t alpha = s[3];
            float want[3];
            for (int c = 0; c < 3; ++c) {
                const int32_t P = s[c], C = stain[c];
                const float q =
                    type == 1 ? float(P * C / 255)
                    : type == 2
                        ? float((~((255 - P) * (255 - C) >> 8)) & 255)
                        : float(int32_t(std::min((P * C * (1.0f - bright)) / 255.0f + float(P + C) * bright, 255.0f)));
                want[c] = type == 0 ? float(P) : std::min(q * (1.0f - m) + float(P) * m, 255.0f);
            }
            if (type == 0) alpha = int32_t(float(alpha) * m);
            int32_t got[3];
            Rgb(t, x, y, got);
            for (int c = 0; c < 3; ++c) {
                const float ta = float(alpha) / 255.0f;
                const float under = DocumentThumb[(size_t(y) * 112 + x) * 3 + c];
                const float v = alpha >= 255 ? want[c] : want[c] * ta + under * (1.0f - ta);
                EXPECT_EQ(got[c], int32_t(v)) << int(type) << " at " << x << "," << y << " channel " << c;
            }
        }
        // A white texture keeps every type's hands off an opaque picture.
        ThumbImage white = Grey([](int32_t, int32_t) { return uint8_t(255); });
        RenderLive(white, kWashTarget, 1.0f, 112);
        int32_t got[3];
        Rgb(white, 5, 40, got);
        EXPECT_EQ(got[0], Pixel(5, 40)[0]);
        EXPECT_EQ(got[2], Pixel(5, 40)[2]);
    }
}

TEST_F(LiveTest, BackgroundToneMeetsTheMidtoneAtSixtyFivePercentFromBothSides) {
    SetLayerTones(BackgroundLayer, 0, 0, 0, 0x00E6F0FA, 0x00C89664, 0x001E140A); // high, mid, shadow
    BackgroundLayer.Invert = 0;
    params_.BackgroundHue = 0;
    params_.BackgroundMidtone = 100;
    // 165 / 255 lies just below 0.65, 166 / 255 just above.
    ThumbImage t = Grey([](int32_t x, int32_t) { return uint8_t(x < 20 ? 0 : x < 40 ? 165 : x < 60 ? 166 : 255); });
    ThumbImage plain = t;
    EXPECT_FLOAT_EQ(RenderLive(t, kBackgroundTarget, 3.0f, 2048), 3.0f);
    int32_t c[3];
    const int32_t shadow[3] = {10, 20, 30}, mid[3] = {100, 150, 200}, high[3] = {250, 240, 230};
    for (const auto& [x, want] : {std::pair{0, shadow}, std::pair{30, mid}, std::pair{50, mid}, std::pair{80, high}}) {
        Rgb(t, x, 10, c);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(c[i], want[i], 1) << x << " channel " << i;
    }
    // Below the meeting point the shadow pulls, above it the highlight.
    Rgb(t, 30, 10, c);
    EXPECT_LT(c[0], 100);
    Rgb(t, 50, 10, c);
    EXPECT_GE(c[0], 100);

    // The invert flag swaps the ends; a hue and saturation shift goes through the 240 scale.
    BackgroundLayer.Invert = 1;
    ThumbImage inverted = plain;
    RenderLive(inverted, kBackgroundTarget, 1.0f, 2048);
    Rgb(inverted, 0, 0, c);
    EXPECT_NEAR(c[2], 230, 1);
    BackgroundLayer.Invert = 0;
    params_.BackgroundHue = 40;
    params_.BackgroundMidtone = 50;
    ThumbImage shifted = plain;
    RenderLive(shifted, kBackgroundTarget, 1.0f, 2048);
    const float t1 = (1.0f - 0.65f) * 2.857143f;
    int32_t end[3];
    for (int i = 0; i < 3; ++i) end[i] = int32_t(float(high[i]) * t1 + float(mid[i]) * (1.0f - t1));
    const HlsColor hls = RgbToHls240(end[0], end[1], end[2]);
    const RgbColor want = HlsToRgb240(int32_t(float(hls.h) + 40 * 1.275f), hls.l, int32_t(float(hls.s) * 0.5f));
    Rgb(shifted, 100, 0, c);
    const int32_t w[3] = {want.r, want.g, want.b};
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(c[i], std::clamp(w[i], 0, 255), 1);
}

TEST_F(LiveTest, SurfaceLightOfARampIsEvenToTheEdgesAndColoursTheImage) {
    params_.SurfaceLightAlpha = 30.0f;
    params_.SurfaceLightBeta = 50.0f;
    params_.SurfaceDepth1 = 64;
    params_.SurfaceEntire = 0;
    ThumbDepthScale = 64.0f / 150.0f;
    EffectLayer layer;
    ThumbSurfaceLayer = &layer;
    // A linear ramp stays linear under the smoothing and the edges extrapolate it: one slope.
    ThumbPixels = Grey([](int32_t x, int32_t) { return uint8_t(x * 2); }).bytes;
    BuildLightMap(1.0f);
    ASSERT_EQ(ThumbLighting.size(), size_t(112 * 84));
    const float first = ThumbLighting[0];
    for (float v : ThumbLighting) ASSERT_NEAR(v, first, 1e-4f);
    // The slope turned round turns the light's side round about the flat value.
    layer.Invert = 1;
    BuildLightMap(1.0f);
    const float turned = ThumbLighting[500];
    ThumbPixels = Grey([](int32_t, int32_t) { return uint8_t(90); }).bytes;
    BuildLightMap(1.0f);
    const float flat = ThumbLighting[500];
    EXPECT_NEAR(first - flat, flat - turned, 1e-4f);
    EXPECT_NE(first, flat);

    // Each pixel: the engine's surface colour of the image at the clamped light, over the
    // document where the image is transparent.
    layer.Invert = 0;
    ThumbImage t = Grey([](int32_t x, int32_t y) { return uint8_t(x + y); });
    EXPECT_FLOAT_EQ(RenderLive(t, kSurfaceTarget, 1.0f, 112), 1.0f);
    for (const auto& [x, y] : {std::pair{10, 3}, std::pair{45, 80}, std::pair{70, 20}}) {
        const uint8_t* s = Pixel(x, y);
        const int32_t picture[3] = {s[0], s[1], s[2]};
        float out[3];
        int32_t tone[3];
        const float shade = std::clamp(ThumbLighting[size_t(83 - y) * 112 + x], 0.0f, 1.0f);
        SurfaceColor(picture, s[3], shade, out, tone, params_.SurfaceType1);
        int32_t got[3];
        Rgb(t, x, y, got);
        const float a = float(s[3]) / 255.0f;
        for (int c = 0; c < 3; ++c) {
            const float v = std::clamp(out[c], 0.0f, 255.0f);
            const float under = DocumentThumb[(size_t(y) * 112 + x) * 3 + c];
            EXPECT_EQ(got[c], int32_t(s[3] >= 255 ? v : v * a + under * (1.0f - a))) << x << "," << y;
        }
    }
    ThumbSurfaceLayer = nullptr;
}

TEST_F(LiveTest, WashTilesShowTheBackgroundUnderTheRightWayUp) {
    // A background texture dark in its top half, light in its bottom half.
    const std::string folder = (ProcessTempDir() / "underlay").string();
    std::filesystem::create_directories(folder);
    std::vector<uint8_t> plane(size_t(448) * 336);
    for (size_t i = 0; i < plane.size(); ++i) plane[i] = i / 448 < 168 ? 0 : 255;
    rastertest::WriteTexture(folder + "/Back.qzt", false, 448, 336, 1, rastertest::Compress(plane));
    std::strcpy(params_.BackgroundFileName, "Back.qzt");
    params_.UseBackground = 1;
    params_.BackgroundHue = 0;
    params_.BackgroundMidtone = 100;
    SetLayerTones(BackgroundLayer, 0, 0, 0, 0x00FFFFFF, 0x00808080, 0x00000000);
    BackgroundLayer.Invert = 0;
    PrepareUnderlay(4.0f, 2048, folder.c_str());
    ASSERT_EQ(ThumbUnderlay.size(), size_t(112 * 84 * 3));

    // Erosion by a black wash takes the picture away where it is opaque too.
    params_.WashType1 = 0;
    ThumbImage t = Grey([](int32_t, int32_t) { return uint8_t(0); });
    RenderLive(t, kWashTarget, 1.0f, 112);
    int32_t c[3];
    Rgb(t, 10, 5, c);
    EXPECT_EQ(c[0], 0);
    Rgb(t, 10, 80, c);
    EXPECT_GE(c[0], 254);
    FreeUnderlay();
    EXPECT_TRUE(ThumbUnderlay.empty());
    params_.UseBackground = 0;
    PrepareUnderlay(4.0f, 2048, folder.c_str());
    EXPECT_EQ(ThumbUnderlay, DocumentThumb);
}

TEST_F(LiveTest, ColourPresetTonesTheBaseAndLeavesEverythingElseAsItWas) {
    const std::filesystem::path colours = ProcessTempDir() / "Colors";
    std::filesystem::create_directories(colours);
    const std::string keptColors = PathTable.Colors;
    PathTable.Colors = colours.string();
    {
        // Colours red, green and blue, and a line a colour preset has no business holding.
        std::ofstream preset(colours / "Primary.qztpst");
        preset << "Quenzit Press Preset;\nVersion 2;\n1pTW 3 \t;Type of Wash1\nlCiH 255 \t;Hightlight Color\n"
                  "lCdM 65280 \t;Midtone Color\nlCdS 16711680 \t;Shadow Color\n";
    }
    SetLayerTones(BackgroundLayer, 0, 0, 0, 0x00102030, 0x00405060, 0x00708090);
    params_.BackgroundHue = 0;
    params_.BackgroundMidtone = 100;
    const FilterParameters before = params_;
    const ThumbImage base = Grey([](int32_t x, int32_t) { return uint8_t(x * 2); });

    ThumbImage out;
    ASSERT_TRUE(RenderColourThumb(base, kBackgroundTarget, "Primary.qztpst", out));
    EXPECT_EQ(std::memcmp(&before, &params_, sizeof before), 0);
    EXPECT_EQ(BackgroundLayer.HighlightRed, 0x30);
    EXPECT_EQ(BackgroundLayer.ShadowBlue, 0x70);
    // The same as the background pass with the preset's colours in the layer.
    SetLayerTones(BackgroundLayer, 0, 0, 0, 0x000000FF, 0x0000FF00, 0x00FF0000);
    ThumbImage want = base;
    RenderLive(want, kBackgroundTarget, 4.0f, 2048);
    EXPECT_EQ(out.bytes, want.bytes);
    int32_t c[3];
    Rgb(out, 0, 0, c);
    EXPECT_EQ(c[2], 255); // black is the shadow end: blue

    EXPECT_FALSE(RenderColourThumb(base, kBackgroundTarget, "Missing.qztpst", out));
    PathTable.Colors = keptColors;
}
