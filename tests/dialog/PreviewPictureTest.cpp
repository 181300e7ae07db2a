// The preview's picture from hand-made output buffers, and the checkerboard under a
// transparent layer, against arithmetic done here.
#include "dialog/PreviewPicture.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Blue, green, red of picture pixel (x, y), y counted from the top.
std::vector<uint8_t> At(const PreviewPicture& p, int32_t x, int32_t y) {
    const uint8_t* d = p.bgr.data() + (size_t(p.height - 1 - y) * p.width + x) * 3;
    return {d[0], d[1], d[2]};
}

} // namespace

TEST(PreviewPicture, SizeCentringAndRowOrder) {
    // 10 by 3 pixels of 3 planes: the picture is 8 wide, bottom row first, centred.
    std::vector<uint8_t> out(10 * 3 * 3);
    for (size_t i = 0; i < out.size(); ++i) out[i] = uint8_t(i);
    const PreviewSource src{out.data(), 30, 3, 10, 3, false, false};
    const PreviewPicture p = BuildPreviewPicture(src, nullptr, 200, 100);
    EXPECT_EQ(p.width, 8);
    EXPECT_EQ(p.height, 3);
    EXPECT_EQ(p.drawX, 95);
    EXPECT_EQ(p.drawY, 48);
    EXPECT_EQ(At(p, 0, 0), (std::vector<uint8_t>{2, 1, 0}));
    EXPECT_EQ(At(p, 7, 2), (std::vector<uint8_t>{2 * 30 + 23, 2 * 30 + 22, 2 * 30 + 21}));
    // A control smaller than the picture: no centring, the picture cut to the control.
    const PreviewPicture small = BuildPreviewPicture(src, nullptr, 7, 2);
    EXPECT_EQ(small.width, 4);
    EXPECT_EQ(small.height, 2);
    EXPECT_EQ(small.drawX, 0);
    EXPECT_EQ(At(small, 0, 0), (std::vector<uint8_t>{2, 1, 0}));
    // No buffer, no picture.
    EXPECT_TRUE(BuildPreviewPicture(PreviewSource{}, nullptr, 200, 100).bgr.empty());
}

TEST(PreviewPicture, SixteenBitsTransparencyAndFewPlanes) {
    // 16 bits: 32641 and 32768 give 255, 1000 gives 1000 >> 7; alpha is not looked at.
    std::vector<uint16_t> deep = {32641, 32768, 1000, 0, 128, 255, 32640, 0};
    for (int i = 0; i < 3; ++i) deep.insert(deep.end(), {0, 0, 0, 0});
    PreviewPicture p = BuildPreviewPicture(PreviewSource{deep.data(), 32, 4, 4, 1, true, false}, nullptr, 4, 1);
    EXPECT_EQ(At(p, 0, 0), (std::vector<uint8_t>{7, 255, 255}));
    EXPECT_EQ(At(p, 1, 0), (std::vector<uint8_t>{255, 1, 1}));

    // 8 bits, alpha 128 over an under-image of 100 everywhere: 200 a + 100 (1 - a).
    UnderImage under;
    under.width = 4, under.height = 1;
    under.pixels.assign(12, 100);
    // Four pixels of red 200, green 50, blue 0, alpha 128 (and 255 in a fifth plane).
    const auto pixels = [](int planes) {
        std::vector<uint8_t> v;
        const uint8_t pixel[5] = {200, 50, 0, 128, 255};
        for (int x = 0; x < 4; ++x) v.insert(v.end(), pixel, pixel + planes);
        return v;
    };
    std::vector<uint8_t> rgba = pixels(4);
    const std::vector<uint8_t> cmyka = pixels(5);
    const float a = 128.0f / 255.0f;
    const uint8_t overRed = uint8_t(200.0f * a + 100.0f * (1.0f - a));  // 150
    const uint8_t overGreen = uint8_t(50.0f * a + 100.0f * (1.0f - a)); // 75
    const uint8_t aloneRed = uint8_t(200.0f * a);                       // 100
    EXPECT_EQ(overRed, 150);
    p = BuildPreviewPicture(PreviewSource{rgba.data(), 16, 4, 4, 1, false, false}, &under, 4, 1);
    EXPECT_EQ(At(p, 2, 0), (std::vector<uint8_t>{49, overGreen, overRed}));
    // Without the under-image the colour is only weighted.
    p = BuildPreviewPicture(PreviewSource{rgba.data(), 16, 4, 4, 1, false, false}, nullptr, 4, 1);
    EXPECT_EQ(At(p, 0, 0)[2], aloneRed);
    // CMYK with 4 planes has no under-image; with 5 it has.
    p = BuildPreviewPicture(PreviewSource{rgba.data(), 16, 4, 4, 1, false, true}, &under, 4, 1);
    EXPECT_EQ(At(p, 0, 0)[2], aloneRed);
    p = BuildPreviewPicture(PreviewSource{cmyka.data(), 20, 5, 4, 1, false, true}, &under, 4, 1);
    EXPECT_EQ(At(p, 0, 0)[2], overRed);
    // Alpha 255 is a plain copy.
    rgba[3] = 255;
    p = BuildPreviewPicture(PreviewSource{rgba.data(), 16, 4, 4, 1, false, false}, &under, 4, 1);
    EXPECT_EQ(At(p, 0, 0), (std::vector<uint8_t>{0, 50, 200}));
    // Two planes: black.
    p = BuildPreviewPicture(PreviewSource{rgba.data(), 8, 2, 4, 1, false, false}, nullptr, 4, 1);
    EXPECT_EQ(p.bgr, std::vector<uint8_t>(12, 0));
}

TEST(PreviewPicture, UnderImageCheckerboardAndSampling) {
    EXPECT_EQ(CheckerValue(0, 0), 204);
    EXPECT_EQ(CheckerValue(6, 6), 204);
    EXPECT_EQ(CheckerValue(7, 0), 255);
    EXPECT_EQ(CheckerValue(3, 10), 255);
    EXPECT_EQ(CheckerValue(7, 7), 204);
    EXPECT_EQ(CheckerValue(14, 7), 255);

    // Four planes, 40 by 20: red = column, green = row, alpha 0 left of column 20, 51
    // from there to 29, 255 beyond.
    Raster below;
    below.MakeRaster(3, RasterRect{0, 0, 20, 40}, 4, 8, 0, 0);
    uint8_t* o = below.Pixels();
    ASSERT_NE(o, nullptr);
    const size_t plane = below.PlaneBytes();
    for (int32_t y = 0; y < 20; ++y)
        for (int32_t x = 0; x < 40; ++x) {
            uint8_t* s = below.ImageOrigin() + size_t(y) * below.RowBytes() + x;
            s[0] = uint8_t(x), s[plane] = uint8_t(y), s[2 * plane] = 9;
            s[3 * plane] = x < 20 ? 0 : x < 30 ? 51 : 255;
        }
    // Scale 2 from origin (1, 0): column 2 (1 + x), row 2 y, clamped at 39 and 19.
    const UnderImage u = BuildUnderImage(below, 25, 12, 1.0, 0.0, 2.0);
    ASSERT_EQ(u.pixels.size(), size_t(25 * 12 * 3));
    const auto px = [&](int32_t x, int32_t y) { return u.pixels.data() + (size_t(y) * 25 + x) * 3; };
    EXPECT_EQ(px(0, 0)[0], 204); // column 2: transparent, a light cell
    EXPECT_EQ(px(7, 0)[1], 255); // column 16: transparent, the other cell
    const float a = 51.0f / 255.0f;
    EXPECT_EQ(px(10, 3)[0], uint8_t(22.0f * a + 255.0f * (1.0f - a))); // column 22, cell (1, 0)
    EXPECT_EQ(px(10, 3)[1], uint8_t(6.0f * a + 255.0f * (1.0f - a)));
    EXPECT_EQ(px(20, 11)[0], 39); // column 42 clamped to 39, opaque
    EXPECT_EQ(px(20, 11)[1], 19); // row 22 clamped to 19

    // Fewer planes are copied, one plane as grey.
    Raster grey;
    grey.MakeRaster(1, RasterRect{0, 0, 2, 2}, 1, 8, 0, 0);
    ASSERT_NE(grey.Pixels(), nullptr);
    grey.ImageOrigin()[1] = 77;
    const UnderImage g = BuildUnderImage(grey, 2, 1, 0.0, 0.0, 1.0);
    EXPECT_EQ(g.pixels, (std::vector<uint8_t>{0, 0, 0, 77, 77, 77}));
}
