// The painters' surface: fills stay inside the view and inside their rectangle.
#include "controls/PixelView.h"

#include <gtest/gtest.h>

#include <vector>

TEST(PixelView, FillIsClippedToTheViewAndItsRectangle) {
    // A 5 by 3 view inside a wider buffer: the column past its right edge is another's.
    std::vector<uint32_t> buffer(6 * 3, 7);
    const PixelView view{buffer.data(), 5, 3, 6};
    const uint32_t gold = PixelOf(255, 215, 108);
    EXPECT_EQ(gold, 0xFFD76Cu);
    FillPixels(view, PixelRect{-4, 1, 3, 99}, gold);
    for (int32_t y = 0; y < 3; ++y)
        for (int32_t x = 0; x < 6; ++x)
            EXPECT_EQ(buffer[size_t(y) * 6 + x], y >= 1 && x < 3 ? gold : 7u) << x << "," << y;
    // Empty and inverted rectangles, and ones wholly outside, touch nothing.
    const std::vector<uint32_t> before = buffer;
    for (const PixelRect r :
         {PixelRect{2, 2, 2, 3}, PixelRect{4, 0, 1, 3}, PixelRect{5, 0, 9, 3}, PixelRect{0, -5, 5, 0}})
        FillPixels(view, r, 1);
    EXPECT_EQ(buffer, before);
}
