// The coverage noise: its tables against a plain re-implementation of the generator,
// and the fill's fixed points.
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

} // namespace

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
