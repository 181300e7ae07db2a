// The raster object and its whole-raster operations, against hand-computed pixels and
// brute-force versions of the stated rules.
#include "TextureTestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace rastertest;

namespace {

uint8_t& At(Raster& r, int plane, int y, int x) {
    return r.ImageOrigin()[size_t(plane) * r.PlaneBytes() + size_t(y) * r.RowBytes() + x];
}

bool AllEqual(Raster& r, uint8_t v) {
    const std::vector<uint8_t> b = Bytes(r);
    return std::all_of(b.begin(), b.end(), [v](uint8_t x) { return x == v; });
}

} // namespace

TEST(Raster, LayoutMemoryCopyAndFill) {
    Raster r, copy;
    r.MakeRaster(3, RasterRect{0, 0, 4, 6}, 3, 0, 1, 0);
    EXPECT_EQ(r.Desc.depth, 8) << "depth 0 means 8";
    EXPECT_EQ(r.PixelsIfAny(), nullptr) << "nothing allocated before Pixels";
    ASSERT_NE(r.Pixels(), nullptr);
    EXPECT_EQ(r.Storage.Bytes, size_t(8 * 6 * 3));
    EXPECT_EQ(r.ImageOrigin() - r.Pixels(), 8 + 1) << "one row and one byte in";
    EXPECT_TRUE(AllEqual(r, 0));
    // Copy takes the border along; inverting covers every byte.
    r.Pixels()[0] = 7;
    copy.MakeRaster(3, RasterRect{5, 5, 9, 11}, 3, 8, 1, 0);
    ASSERT_TRUE(CopyRaster(copy, r));
    ASSERT_TRUE(copy.InvertRaster());
    EXPECT_EQ(copy.Pixels()[0], 248);
    EXPECT_EQ(copy.Pixels()[copy.Storage.Bytes - 1], 255);
    // Fill goes through the colour hook (grey by default for mode 1) and writes borders.
    const uint16_t colour[3] = {200, 100, 50};
    ASSERT_TRUE(r.FillRaster(colour));
    for (int p = 0; p < 3; ++p) EXPECT_EQ(r.Pixels()[p * r.PlaneBytes()], colour[p]);
    Raster grey;
    grey.MakeRaster(1, RasterRect{0, 0, 2, 2}, 1, 8, 1, 0);
    ASSERT_TRUE(grey.FillRaster(colour));
    EXPECT_TRUE(AllEqual(grey, uint8_t((299 * 200 + 587 * 100 + 114 * 50 + 500) / 1000)));
}

TEST(Raster, AlphaTouchesTheImageProperOnly) {
    Raster r, mask, three;
    r.MakeRaster(3, RasterRect{0, 0, 3, 4}, 4, 8, 1, 0);
    mask.MakeRaster(1, RasterRect{0, 0, 3, 4}, 1, 8, 0, 0); // another stride
    three.MakeRaster(3, RasterRect{0, 0, 3, 4}, 3, 8, 1, 0);
    At(r, 3, 1, 1) = 250;
    At(mask, 0, 2, 3) = 180;
    r.ForceAlpha(100);
    r.MaxAlpha(mask);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(At(r, 3, y, x), (y == 1 && x == 1) ? 250 : (y == 2 && x == 3) ? 180 : 100);
    EXPECT_EQ(r.Pixels()[3 * r.PlaneBytes()], 0) << "border";
    EXPECT_EQ(At(r, 2, 0, 0), 0) << "colour planes";
    three.ForceAlpha(255);
    EXPECT_TRUE(AllEqual(three, 0)) << "three planes: nothing";
}

namespace {

// The stated rule, each output from scratch: the horizontal sum at column x is samples
// 0 .. min(Columns - 1, r + 1) - 1 plus, for every step x' = 1 .. x, the sample at
// min(Columns - 1, x' + r) less the one at max(0, x' - r - 1); every row of the block
// but the last. The vertical pass averages the 2r + 1 rows around each row, wrapping.
std::vector<uint8_t> BruteBoxBlur(const std::vector<uint8_t>& block, int rows, int cols, int r) {
    std::vector<uint8_t> h(block.size(), 0), out(block.size());
    for (int y = 0; y + 1 < rows; ++y)
        for (int x = 0; x < cols; ++x) {
            const uint8_t* s = &block[size_t(y) * cols];
            long sum = 0;
            for (int i = 0; i < std::min(cols - 1, r + 1); ++i) sum += s[i];
            for (int step = 1; step <= x; ++step) sum += s[std::min(cols - 1, step + r)] - s[std::max(0, step - r - 1)];
            h[size_t(y) * cols + x] = uint8_t(sum / (2 * r + 1));
        }
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < cols; ++x) {
            long sum = 0;
            for (int k = -r; k <= r; ++k) sum += h[size_t(((y + k) % rows + rows) % rows) * cols + x];
            out[size_t(y) * cols + x] = uint8_t(sum / (2 * r + 1));
        }
    return out;
}

} // namespace

TEST(Raster, BoxBlurFollowsItsRule) {
    // Radius 0 changes nothing but the block's last row, which comes back 0.
    RasterPtr r = Make(6, 5, Noise(30, 3));
    const std::vector<uint8_t> before = Bytes(*r);
    ASSERT_TRUE(BoxBlurRaster(*r, 0));
    std::vector<uint8_t> expected = before;
    std::fill(expected.end() - 6, expected.end(), 0);
    EXPECT_EQ(Bytes(*r), expected);
    // As callers use it (border ring cleared), two planes as one block, a row start that
    // is not 0 (its deficit stays along the row), and a radius wider than the rows.
    struct Case {
        int planes, border, radius;
    };
    for (const Case c : {Case{1, 1, 1}, Case{1, 3, 2}, Case{2, 1, 1}, Case{1, 0, 1}, Case{1, 0, 9}}) {
        Raster b;
        b.MakeRaster(1, RasterRect{0, 0, 7, 9}, uint8_t(c.planes), 8, uint32_t(c.border), 0);
        const std::vector<uint8_t> noise = Noise(size_t(b.Rows()) * b.Columns() * c.planes, 11);
        std::copy(noise.begin(), noise.end(), b.Pixels());
        if (c.border) ClearRasterBorder(b, 1);
        expected = BruteBoxBlur(Bytes(b), b.Rows() * c.planes, b.Columns(), c.radius);
        ASSERT_TRUE(BoxBlurRaster(b, c.radius));
        EXPECT_EQ(Bytes(b), expected) << c.planes << " planes, border " << c.border << ", radius " << c.radius;
    }
}

TEST(Raster, SmoothingIsInPlaceOnPlaneZero) {
    Raster r;
    r.MakeRaster(1, RasterRect{0, 0, 3, 4}, 1, 8, 1, 0);
    std::fill(r.Pixels(), r.Pixels() + 30, uint8_t(100));
    At(r, 0, 1, 1) = 200;
    SmoothRaster3x3(r);
    // 0.05 * 400 + 0.1 * 400 + 0.4 * 200 = 140; its right neighbour then sees 140 on
    // its left: 0.05 * 400 + 0.1 * 440 + 0.4 * 100 = 104 (110 with the old 200).
    EXPECT_EQ(At(r, 0, 1, 1), 140);
    EXPECT_EQ(At(r, 0, 1, 2), 104);
    EXPECT_EQ(At(r, 0, 0, 1), 100) << "first row untouched";
    EXPECT_EQ(At(r, 0, 1, 3), 100) << "last column untouched";
    RasterPtr white = Make(4, 4, std::vector<uint8_t>(16, 255));
    SmoothRaster3x3(*white);
    EXPECT_TRUE(AllEqual(*white, 255)) << "limited to 255";
    RasterPtr flat = Make(5, 2, Noise(10, 1));
    const std::vector<uint8_t> before = Bytes(*flat);
    SmoothRaster3x3(*flat);
    EXPECT_EQ(Bytes(*flat), before) << "fewer than 3 rows: left alone";
}
