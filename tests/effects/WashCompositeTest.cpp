// The four wash types and both intensity regimes on pixels worked out by hand.
#include "EffectsFixture.h"

#include "effects/Engine.h"

#include <cstdlib>

using namespace effectstest;

namespace {

class WashCompositeTest : public EngineTest {
protected:
    // One pixel (r, g, b, alpha) under a texture sample t with full coverage and edge.
    std::vector<int> Wash(uint8_t type, int32_t intensity, uint8_t t, std::vector<uint8_t> pixel,
                          uint32_t stain = 0x00C83C80, uint8_t edge = 255, uint8_t inside = 1) {
        DestroyLayer(layer_);
        Work(1, 1);
        std::memcpy(work_.data(), pixel.data(), 4);
        layer_.View = layer_.Source = Plane(1, 1, 0, t);
        layer_.CoverageMask = Plane(1, 1, 3, 255);
        layer_.ActiveCoverage = layer_.CoverageMask;
        layer_.EdgeMaskWork = static_cast<uint8_t*>(std::calloc(1, 1));
        layer_.EdgeMaskWork[0] = edge;
        layer_.Inside = inside;
        layer_.WashType = type;
        layer_.StainRed = uint8_t(stain), layer_.StainGreen = uint8_t(stain >> 8),
        layer_.StainBlue = uint8_t(stain >> 16);
        layer_.Intensity = intensity;
        SetCurve(layer_, intensity);
        CompositeWash(layer_);
        return {work_[0], work_[1], work_[2], work_[3]};
    }
    using Px = std::vector<int>;
};

} // namespace

TEST_F(WashCompositeTest, EachTypeOnAHandComputedPixel) {
    // Keep value 77: a = 77 / 255, b = 178 / 255; stain (128, 60, 200).
    const std::vector<uint8_t> p = {201, 101, 13, 240};
    EXPECT_EQ(Wash(0, 100, 77, p), (Px{201, 101, 13, 77})) << "Erosion: alpha falls to k";
    EXPECT_EQ(Wash(0, 100, 250, p), (Px{201, 101, 13, 240})) << "but never rises";
    // Stain: 201 * 128 / 255 = 100 -> 100 b + 201 a = 130.5.
    EXPECT_EQ(Wash(1, 100, 77, p), (Px{130, 46, 10, 240}));
    // Bleach: red screen = ~((54 * 127) >> 8) = 229 -> 229 b + 201 a = 220.5.
    EXPECT_EQ(Wash(2, 100, 77, p), (Px{220, 126, 146, 240}));
    // Color: m = 388 / 765; red Q = 25728 (1 - m) / 255 + 329 m = 216.6 -> 216 b + 201 a = 211.5.
    EXPECT_EQ(Wash(3, 100, 77, p), (Px{211, 95, 82, 240}));
    // Bleach with a white stain fades toward white, with a black one it barely acts.
    EXPECT_EQ(Wash(2, 100, 77, p, 0x00FFFFFF), (Px{238, 208, 181, 240}));
    EXPECT_EQ(Wash(2, 100, 77, p, 0), (Px{201, 101, 13, 240}));
    EXPECT_EQ(Wash(2, 100, 0, {0, 0, 0, 255}, 0), (Px{1, 1, 1, 255})) << "black turns to 1";
    EXPECT_EQ(Wash(2, 100, 0, {0, 128, 255, 255}, 0x00FFFFFF), (Px{255, 255, 255, 255}));
    // A white texture keeps every pixel whatever the type.
    for (uint8_t type = 0; type < 4; ++type) EXPECT_EQ(Wash(type, 100, 255, p), (Px{201, 101, 13, 240}));
}

TEST_F(WashCompositeTest, IntensityRegimesAndTheEdge) {
    const std::vector<uint8_t> p = {10, 20, 30, 255};
    EXPECT_EQ(Wash(0, 100, 27, p)[3], 27) << "the table: identity at 100";
    EXPECT_EQ(Wash(0, 50, 27, p)[3], 141) << "27 + 228 * 50 / 100";
    EXPECT_EQ(Wash(0, 101, 27, p)[3], 25) << "(1 / 70 + 1) * -100 + 127 = 25.57";
    EXPECT_EQ(Wash(0, 101, 227, p)[3], 228) << "228.43";
    EXPECT_EQ(Wash(0, 200, 27, p)[3], 0) << "limited at 0";
    // Half the edge: v = (128 / 255) 27 + (127 / 255) 255 = 140.55.
    EXPECT_EQ(Wash(0, 100, 27, p, 0, 128)[3], 140);
    // Outside: an edge mask of 0 is full strength, 255 none.
    EXPECT_EQ(Wash(0, 100, 27, p, 0, 0, 0)[3], 27);
    EXPECT_EQ(Wash(0, 100, 27, p, 0, 255, 0)[3], 255);
}
