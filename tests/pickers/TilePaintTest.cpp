// A tile's picture area: the thumbnail the right way up, and the crossed frame of a row
// without one, its lines shaded by how much of a pixel they cover.
#include "controls/PixelView.h"
#include "pickers/Thumbnails.h"

#include <gtest/gtest.h>

#include <vector>

TEST(TilePaint, PictureTopRowFirstOrAPlaceholderBlendedByCoverage) {
    std::vector<uint32_t> bits(118 * 106, 1);
    const PixelView view{bits.data(), 118, 106, 118};
    ThumbImage picture{112, 84, 336, std::vector<uint8_t>(336 * 84)};
    for (int32_t y = 0; y < 84; ++y)
        for (int32_t x = 0; x < 112; ++x) {
            uint8_t* p = &picture.bytes[size_t(83 - y) * 336 + size_t(x) * 3]; // bottom-up, blue first
            p[0] = 9, p[1] = uint8_t(y), p[2] = uint8_t(x);
        }
    PaintTile(view, true, &picture);
    EXPECT_EQ(view.At(2, 50), PixelOf(146, 146, 146));
    EXPECT_EQ(view.At(3, 3), PixelOf(0, 0, 9));
    EXPECT_EQ(view.At(3 + 20, 3 + 83), PixelOf(20, 83, 9));

    PaintTile(view, false, nullptr);
    const uint32_t line = PixelOf(192, 192, 192);
    auto grey = [](float coverage) {
        const uint8_t v = uint8_t(int32_t(84.0f + 108.0f * coverage + 0.5f));
        return PixelOf(v, v, v);
    };
    // Sides along rows 3 and 87 and columns 3 and 115; diagonals dropping 3 rows in 4
    // columns, so at column 10 a quarter of the way from row 8's centre to row 9's.
    for (const auto& [x, y] : {std::pair{60, 3}, std::pair{115, 40}, std::pair{3, 87}, std::pair{7, 6},
                               std::pair{59, 45}, std::pair{111, 6}})
        EXPECT_EQ(view.At(x, y), line) << x << "," << y;
    EXPECT_EQ(view.At(10, 8), grey(0.75f));
    EXPECT_EQ(view.At(10, 9), grey(0.25f));
    EXPECT_EQ(view.At(30, 40), PixelOf(84, 84, 84));
    EXPECT_EQ(view.At(2, 2), PixelOf(84, 84, 84));
}
