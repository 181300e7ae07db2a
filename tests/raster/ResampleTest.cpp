// Resampling and geometry against hand-computed pixels, and the tuned filter loops
// against a plain transcription of the filters kept here.
#include "TextureTestFiles.h"

#include "raster/Geometry.h"
#include "raster/Resample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace rastertest;

namespace {

RasterPtr Resample(Raster& src, double scale) {
    Raster* out = nullptr;
    EXPECT_TRUE(ResampleRaster(out, &src, scale, 0));
    return RasterPtr(out);
}

// The enlarging filter as written, pixel by pixel.
std::vector<uint8_t> PlainEnlarge(const uint8_t* s, int w, int h, int nw, int nh, double inv) {
    std::vector<uint8_t> out;
    float fy = 0.0f;
    for (int y = 0; y < nh; ++y, fy = float(double(fy) + inv)) {
        const int iy = int(fy), r0 = iy < h ? iy : h - 1, r1 = iy + 1 < h ? iy + 1 : h - 1;
        const float wy = fy - iy, a = (1 - wy) * (1 - wy), b = wy * wy;
        float fx = 0.0f;
        for (int x = 0; x < nw; ++x, fx = float(double(fx) + inv)) {
            const int ix = int(fx), c0 = ix < w ? ix : w - 1, c1 = ix + 1 < w ? ix + 1 : w - 1;
            const float wx = fx - ix, c = (1 - wx) * (1 - wx), d = wx * wx;
            float w00 = a + c, w01 = d + a, w10 = b + c, w11 = b + d;
            const float sum = w00 + w01 + w10 + w11;
            if (sum != 0) w00 /= sum, w01 /= sum, w10 /= sum, w11 /= sum;
            out.push_back(uint8_t(
                int(s[r0 * w + c0] * w00 + s[r0 * w + c1] * w01 + s[r1 * w + c0] * w10 + s[r1 * w + c1] * w11)));
        }
    }
    return out;
}

// The reducing filter as written.
std::vector<uint8_t> PlainReduce(const uint8_t* s, int w, int h, int nw, int nh, double inv) {
    std::vector<uint8_t> out;
    double Y = 0.0;
    for (int j = 0; j < nh; ++j) {
        const int y0 = int(Y);
        Y = Y + inv;
        const int last = std::min(h - 1, int(Y + 1.0)) - 1, rf = y0 < last ? last : y0;
        const double g = Y - rf;
        double X = 0.0;
        for (int i = 0; i < nw; ++i) {
            const int x0 = int(X);
            X = X + inv;
            const int lastc = std::min(w, int(X + 1.0)) - 1, cf = x0 < lastc ? lastc : x0;
            const double f = X - cf;
            uint32_t acc = 0;
            double wsum = 0;
            for (int r = y0; r < last; ++r) {
                for (int c = x0; c < lastc; ++c) acc += s[r * w + c], wsum += 1;
                acc += uint32_t(s[r * w + cf] * f), wsum += f;
            }
            for (int c = x0; c < lastc; ++c) acc += uint32_t(s[rf * w + c] * g), wsum += g;
            out.push_back(uint8_t(int((acc + uint32_t(s[rf * w + cf] * g * f)) / (wsum + g * f))));
        }
    }
    return out;
}

} // namespace

TEST(Resample, HandComputedPixels) {
    // Scale 1.0 takes the reducing filter and gives the picture back, all planes.
    const std::vector<uint8_t> picture = Noise(37 * 23 * 3, 5);
    RasterPtr colour = Make(37, 23, picture, 3);
    EXPECT_EQ(Bytes(*Resample(*colour, 1.0)), picture);

    // Enlarging 0 100 / 200 40 by 2 (steps of 0.5). A grid point weighs 2, 1, 1, 0
    // before normalising: 0 * 0.5 + 100 * 0.25 + 200 * 0.25. A cell centre weighs 0.25
    // each. At x = 1 the right neighbour clamps onto itself: 100 * 0.75 + 40 * 0.25.
    RasterPtr two = Make(2, 2, {0, 100, 200, 40});
    RasterPtr big = Resample(*two, 2.0);
    ASSERT_EQ(big->Width(), 4);
    EXPECT_EQ(big->Pixels()[0], 75);
    EXPECT_EQ(big->Pixels()[1 * 4 + 1], 85);
    EXPECT_EQ(big->Pixels()[2], 85);

    // Reducing 4 by 4 to 2 by 2: rows stop at Height - 1, so the second output row is
    // row 2 alone and row 3 is never read; columns reach the last one.
    RasterPtr four = Make(4, 4, {10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120, 130, 140, 150, 160});
    EXPECT_EQ(Bytes(*Resample(*four, 0.5)), (std::vector<uint8_t>{35, 55, 95, 115}));
    // 3 by 3 to 2 by 2, truncating: (1 + 2 + 4 + 5) / 4, (3 + 6) / 2, (7 + 8) / 2, 9.
    RasterPtr three = Make(3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_EQ(Bytes(*Resample(*three, 0.5)), (std::vector<uint8_t>{3, 4, 7, 9}));

    // A 1 by 1 source: every sample is the one, but normalised f32 weights need not sum
    // to exactly 1, so a pixel may come out one lower. The corner is exact.
    for (uint8_t v : {uint8_t(1), uint8_t(77), uint8_t(255)}) {
        RasterPtr one = Make(1, 1, {v});
        RasterPtr out = Resample(*one, 7.3);
        ASSERT_EQ(out->Width(), 7);
        EXPECT_EQ(out->Pixels()[0], v);
        for (uint8_t p : Bytes(*out)) ASSERT_TRUE(p == v || p == v - 1) << int(p) << " from " << int(v);
    }
}

TEST(Resample, TunedLoopsGiveThePlainFiltersBytes) {
    const int w = 53, h = 31;
    const std::vector<uint8_t> picture = Noise(size_t(w) * h * 2, 9);
    RasterPtr src = Make(w, h, picture, 2);
    for (double scale : {1.0001, 1.37, 2.5, 3.0, 4.1234567, 7.2, 0.999, 0.5, 0.37, 0.1}) {
        RasterPtr out = Resample(*src, scale);
        const int nw = out->Width(), nh = out->Height();
        ASSERT_EQ(nw, int(std::trunc(w * scale + 0.5)));
        for (int p = 0; p < 2; ++p) {
            const uint8_t* plane = picture.data() + size_t(p) * w * h;
            const std::vector<uint8_t> expected = scale > 1.0 ? PlainEnlarge(plane, w, h, nw, nh, 1.0 / scale)
                                                              : PlainReduce(plane, w, h, nw, nh, 1.0 / scale);
            const uint8_t* got = out->Pixels() + size_t(p) * out->PlaneBytes();
            EXPECT_TRUE(std::equal(expected.begin(), expected.end(), got)) << "scale " << scale << " plane " << p;
        }
    }
}

TEST(Geometry, FlipsMirrorEveryPlane) {
    const int w = 37, h = 3; // rows longer than the 16-byte steps of the reversal
    const std::vector<uint8_t> picture = Noise(size_t(w) * h * 3, 2);
    RasterPtr src = Make(w, h, picture, 3), hor = Make(w, h, {}, 3), ver = Make(w, h, {}, 3);
    ASSERT_TRUE(FlipRasterHor(*hor, *src));
    ASSERT_TRUE(FlipRasterVer(*ver, *src));
    for (int p = 0; p < 3; ++p)
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                const uint8_t v = picture[size_t(p) * w * h + y * w + x];
                ASSERT_EQ(hor->Pixels()[p * w * h + y * w + (w - 1 - x)], v);
                ASSERT_EQ(ver->Pixels()[p * w * h + (h - 1 - y) * w + x], v);
            }
    // In place, as the layer operations flip Source: the bytes of flipping a copy.
    RasterPtr a = Make(w, h, picture, 3), b = Make(w, h, picture, 3);
    ASSERT_TRUE(FlipRasterInPlaceHor(*a));
    ASSERT_TRUE(FlipRasterInPlaceVer(*b));
    EXPECT_EQ(Bytes(*a), Bytes(*hor));
    EXPECT_EQ(Bytes(*b), Bytes(*ver));
}

TEST(Geometry, QuarterTurnsOfOneHundredByFifty) {
    const int w = 100, h = 50;
    const std::vector<uint8_t> picture = Noise(size_t(w) * h, 4);
    RasterPtr src = Make(w, h, picture);
    Raster* raw = nullptr;
    ASSERT_TRUE(RotateRaster90Ccw(raw, *src));
    RasterPtr ccw(raw);
    ASSERT_EQ(ccw->Width(), 50);
    ASSERT_EQ(ccw->Height(), 100);
    // A true counter-clockwise turn: new (r, c) is old (c, W - 1 - r).
    for (int r = 0; r < 100; ++r)
        for (int c = 0; c < 50; ++c) ASSERT_EQ(ccw->Pixels()[r * 50 + c], picture[c * w + (w - 1 - r)]);

    // Clockwise counts the column from the new height (100): the 50 by 50 square read
    // lands one row down and 49 columns on, and rows 0 and 51 on stay 0.
    ASSERT_TRUE(RotateRaster90Cw(raw, *src));
    RasterPtr cw(raw);
    const std::vector<uint8_t> bytes = Bytes(*cw);
    EXPECT_EQ(bytes[99], picture[0]);
    EXPECT_EQ(bytes[49 * 50 + 50], picture[49 * w + 49]);
    EXPECT_TRUE(std::all_of(bytes.begin(), bytes.begin() + 50, [](uint8_t v) { return v == 0; }));
    EXPECT_TRUE(std::all_of(bytes.begin() + 51 * 50, bytes.end(), [](uint8_t v) { return v == 0; }));
    Raster* thrice = Make(w, h, picture).release();
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(TurnRasterCcw(thrice));
    EXPECT_NE(Bytes(*RasterPtr(thrice)), bytes) << "not three counter-clockwise turns";
}
