// A tile's picture area: the fill by hover, the thumbnail the right way up, and the
// crossed frame of a row without a picture, its lines shaded by how much of a pixel
// they cover.
#include "controls/PixelView.h"
#include "pickers/Thumbnails.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr int32_t kInnerWidth = 118, kInnerHeight = 106;
constexpr uint32_t kNormal = PixelOf(84, 84, 84), kLine = PixelOf(192, 192, 192);

uint32_t GreyPixel(float g) {
    const uint8_t v = uint8_t(int32_t(g + 0.5f));
    return PixelOf(v, v, v);
}

} // namespace

TEST(TilePaint, PictureIsCopiedTopRowFirstIntoTheHoverFill) {
    std::vector<uint32_t> bits(kInnerWidth * kInnerHeight, 1);
    const PixelView view{bits.data(), kInnerWidth, kInnerHeight, kInnerWidth};
    ThumbImage picture{112, 84, 336, std::vector<uint8_t>(336 * 84)};
    for (int32_t y = 0; y < 84; ++y)
        for (int32_t x = 0; x < 112; ++x) {
            uint8_t* p = &picture.bytes[size_t(83 - y) * 336 + size_t(x) * 3]; // bottom-up, blue first
            p[0] = 9, p[1] = uint8_t(y), p[2] = uint8_t(x);
        }
    PaintTile(view, true, &picture);
    EXPECT_EQ(view.At(0, 0), PixelOf(146, 146, 146));
    EXPECT_EQ(view.At(2, 50), PixelOf(146, 146, 146));
    EXPECT_EQ(view.At(3, 3), PixelOf(0, 0, 9));
    EXPECT_EQ(view.At(3 + 111, 3 + 83), PixelOf(111, 83, 9));
    EXPECT_EQ(view.At(3 + 20, 3 + 10), PixelOf(20, 10, 9));
    EXPECT_EQ(view.At(117, 105), PixelOf(146, 146, 146));
}

TEST(TilePaint, PlaceholderSidesAndDiagonalsBlendTowardsGreyByCoverage) {
    std::vector<uint32_t> bits(kInnerWidth * kInnerHeight, 1);
    const PixelView view{bits.data(), kInnerWidth, kInnerHeight, kInnerWidth};
    PaintTile(view, false, nullptr);
    // Sides: whole pixels of grey 192 along rows 3 and 87, columns 3 and 115.
    for (const auto& [x, y] : {std::pair{3, 3}, std::pair{60, 3}, std::pair{115, 40}, std::pair{115, 87},
                               std::pair{3, 87}, std::pair{3, 50}, std::pair{70, 87}})
        EXPECT_EQ(view.At(x, y), kLine) << x << "," << y;
    // The diagonal from (3, 3) drops 3 rows each 4 columns: at column 10 it runs a
    // quarter of the way from row 8's centre to row 9's; at column 7 it crosses row 6's.
    EXPECT_EQ(view.At(10, 8), GreyPixel(84.0f + 108.0f * 0.75f));
    EXPECT_EQ(view.At(10, 9), GreyPixel(84.0f + 108.0f * 0.25f));
    EXPECT_EQ(view.At(9, 7), GreyPixel(84.0f + 108.0f * 0.5f));
    EXPECT_EQ(view.At(7, 6), kLine);
    EXPECT_EQ(view.At(59, 45), kLine);
    // The other diagonal runs from (115, 3) down to (3, 87); away from the lines, the fill.
    EXPECT_EQ(view.At(111, 6), kLine);
    EXPECT_EQ(view.At(30, 40), kNormal);
    EXPECT_EQ(view.At(0, 0), kNormal);
    EXPECT_EQ(view.At(117, 105), kNormal);
    EXPECT_EQ(view.At(2, 2), kNormal);
}
