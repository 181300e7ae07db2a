// The coverage noise: its tables against a plain re-implementation of the generator, both
// fills against a plain re-implementation of the noise, and the fill's fixed points.
#include "EffectsFixture.h"

#include "effects/Noise.h"

#include <cmath>
#include <memory>
#include <utility>

using namespace effectstest;

namespace {

// The generator written out again, apart from the engine's.
struct Lcg {
    uint32_t state;
    int Next() {
        state = state * 214013u + 2531011u;
        return int((state >> 16) & 0x7fff);
    }
};

// Noise2 as plainly as it can be written: the lattice cell, the quintic fade, the four
// gradients and two interpolations, with nothing worked out ahead.
double PlainNoise2(const NoiseField& f, double x, double y) {
    const double tx = x + 4096.0, ty = y + 4096.0;
    const int32_t kx = int32_t(tx), ky = int32_t(ty);
    const int32_t bx0 = kx & 127, bx1 = (bx0 + 1) & 127, by0 = ky & 127, by1 = (by0 + 1) & 127;
    const double rx0 = tx - kx, rx1 = rx0 - 1.0, ry0 = ty - ky, ry1 = ry0 - 1.0;
    const int32_t i = f.Perm[bx0], j = f.Perm[bx1];
    const int32_t b00 = f.Perm[i + by0], b10 = f.Perm[j + by0], b01 = f.Perm[i + by1], b11 = f.Perm[j + by1];
    const double sx = ((rx0 * 6 - 15) * rx0 + 10) * rx0 * rx0 * rx0;
    const double sy = ((ry0 * 6 - 15) * ry0 + 10) * ry0 * ry0 * ry0;
    double u = rx0 * f.Gradient[b00][0] + ry0 * f.Gradient[b00][1];
    double v = rx1 * f.Gradient[b10][0] + ry0 * f.Gradient[b10][1];
    const double a = u + sx * (v - u);
    u = rx0 * f.Gradient[b01][0] + ry1 * f.Gradient[b01][1];
    v = rx1 * f.Gradient[b11][0] + ry1 * f.Gradient[b11][1];
    const double b = u + sx * (v - u);
    return a + sy * (b - a);
}

double PlainFractal(const NoiseField& f, double x, double y) {
    return PlainNoise2(f, x, y) + 0.5 * PlainNoise2(f, 2 * x, 2 * y) + 0.25 * PlainNoise2(f, 4 * x, 4 * y) +
           0.125 * PlainNoise2(f, 8 * x, 8 * y) + 0.0625 * PlainNoise2(f, 16 * x, 16 * y);
}

} // namespace

TEST(CoverageNoise, FillsAgreeWithThePlainNoiseAtEveryPixel) {
    // Black to white: amplitude 127 about a middle of 127.
    for (auto [seed, feature] : {std::pair{123, 128.0}, {7, 8.0}, {4242, 60.0}, {99, 256.0}}) {
        auto field = std::make_unique<NoiseField>();
        MakeNoiseField(*field, seed);
        std::unique_ptr<Raster, void (*)(Raster*)> full(Plane(300, 41, 3, 0), [](Raster* p) { FreeRaster(p); });
        ASSERT_TRUE(FillNoiseFull(full.get(), seed, kNoiseBlack, kNoiseWhite, feature));
        const int32_t w = full->Columns(), h = full->Rows();
        const double frequency = 256.0 / feature, stepX = frequency / w, stepY = frequency / h;
        for (int32_t r = 0; r < h; ++r) {
            double x = 0.0; // the fill steps along a row by addition
            for (int32_t c = 0; c < w; ++c, x += stepX) {
                const double sum = PlainFractal(*field, x, r * stepY);
                const uint8_t expected = uint8_t((TruncToInt(127 * sum) & 255) + 127);
                ASSERT_EQ(full->Pixels()[size_t(r) * w + c], expected) << seed << " " << r << "," << c;
            }
        }
        // The preview's fill, seen through an origin, from the texture's size.
        std::unique_ptr<Raster, void (*)(Raster*)> texture(Plane(900, 600, 0, 0), [](Raster* p) { FreeRaster(p); });
        std::unique_ptr<Raster, void (*)(Raster*)> preview(Plane(60, 30, 3, 0), [](Raster* p) { FreeRaster(p); });
        PreviewOriginX = 13.5;
        PreviewOriginY = 7.25;
        ASSERT_TRUE(FillNoisePreview(texture.get(), preview.get(), seed, kNoiseBlack, kNoiseWhite, feature));
        const double px = frequency / 900, py = frequency / 600;
        for (int32_t r = 0; r < preview->Rows(); ++r)
            for (int32_t c = 0; c < preview->Columns(); ++c) {
                const double sum = PlainFractal(*field, PreviewOriginX * px + c * px, PreviewOriginY * py + r * py);
                ASSERT_EQ(preview->Pixels()[size_t(r) * preview->Columns() + c], uint8_t(TruncToInt(127 * sum) + 127));
            }
        PreviewOriginX = PreviewOriginY = 0.0;
    }
}

TEST(CoverageNoise, FieldFollowsTheRecurrenceAndLeavesItsState) {
    for (int32_t seed : {123, 0, -7, 99991}) {
        auto field = std::make_unique<NoiseField>();
        MakeNoiseField(*field, seed);
        Lcg r{uint32_t(seed)};
        int perm[256];
        for (int i = 0; i < 256; ++i) {
            perm[i] = i;
            const double x = (r.Next() % 512 - 256) / 256.0, y = (r.Next() % 512 - 256) / 256.0;
            const double n = std::hypot(x, y);
            EXPECT_NEAR(field->Gradient[i][0], x / n, 1e-12) << seed << " " << i;
            EXPECT_NEAR(field->Gradient[i][1], y / n, 1e-12);
            EXPECT_EQ(field->Gradient[i + 256][0], field->Gradient[i][0]);
        }
        for (int i = 1; i < 256; ++i) {
            const int n = i + 1;
            const int limit = 32768 - 32768 % n; // draws at or above it would favour small j
            int v;
            do v = r.Next();
            while (32768 % n != 0 && v >= limit);
            std::swap(perm[i], perm[v % n]);
        }
        for (int i = 0; i < 512; ++i) ASSERT_EQ(field->Perm[i], perm[i % 256]) << seed << " " << i;
        // Whoever draws next continues the same sequence.
        EXPECT_EQ(NoiseRandom(), r.Next());
    }
}

TEST(CoverageNoise, LatticeCornersAreZeroAndTheFullFillStartsAtTheMiddle) {
    auto field = std::make_unique<NoiseField>();
    MakeNoiseField(*field, 123);
    EXPECT_EQ(Noise2(*field, 0.0, 0.0), 0.0);
    EXPECT_EQ(Noise2(*field, 5.0, 128.0), 0.0);
    EXPECT_EQ(FractalNoise(*field, 0.0, 0.0), 0.0);
    // The lattice repeats every 128 units.
    EXPECT_EQ(Noise2(*field, 0.3, 0.7), Noise2(*field, 128.3, 0.7));

    for (double feature : {0.0, 128.0, 256.0, 1000.0}) {
        std::unique_ptr<Raster, void (*)(Raster*)> r(Plane(17, 9, 3, 0), [](Raster* p) { FreeRaster(p); });
        ASSERT_TRUE(FillNoiseFull(r.get(), 42, kNoiseBlack, kNoiseWhite, feature));
        EXPECT_EQ(r->Pixels()[0], 127) << "top-left corner of the block, feature " << feature;
    }
}
