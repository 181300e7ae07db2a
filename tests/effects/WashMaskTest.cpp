// Coverage cuts, the distance transform, the edge thresholds and the intensity curve.
#include "EffectsFixture.h"

#include "effects/WashMask.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace effectstest;

namespace {

class WashMaskTest : public EngineTest {
protected:
    // A wash whose noise is `noise` everywhere, on a 20 by 20 texture.
    void Noise(uint8_t noise, int32_t coverage) {
        DestroyLayer(layer_);
        layer_.Source = Plane(20, 20, 0, 128);
        layer_.CoverageNoise = Plane(20, 20, 3, noise);
        layer_.CoverageMask = Plane(20, 20, 3, 0);
        layer_.Coverage = coverage;
        layer_.CoverageDirty = 0;
    }
    uint8_t Centre() { return At(*layer_.ActiveCoverage, 10, 10); }
};

std::vector<uint32_t> Shape(int32_t w, int32_t h, const char* rows) {
    std::vector<uint32_t> map(size_t(w) * h);
    for (size_t i = 0; i < map.size(); ++i) map[i] = rows[i] == '#';
    return map;
}

} // namespace

TEST_F(WashMaskTest, CoverageCutsHardAndSoft) {
    struct Case {
        int32_t setting;
        uint8_t noise, mask;
    };
    const Case cases[] = {
        {0, 255, 255},                // threshold 255: everything covered
        {100, 0, 255},  {100, 1, 0},  // threshold 0: only noise 0 passes
        {50, 127, 255}, {50, 128, 0}, // 50 * 2.55 = 127.5, truncated
        {-100, 0, 128}, {-100, 10, 108}, {-100, 63, 2},   {-100, 64, 0}, {-100, 200, 0}, // 128 - 2n
        {-50, 0, 255},  {-50, 100, 169}, {-50, 140, 109}, // a 1.5, b 0: 1.5 (128 - n) + 127
    };
    for (const Case& c : cases) {
        Noise(c.noise, 7);
        SetLayerCoverage(layer_, c.setting);
        ASSERT_TRUE(layer_.ActiveCoverage);
        EXPECT_EQ(Centre(), c.mask) << "setting " << c.setting << ", noise " << c.noise;
        EXPECT_EQ(layer_.Coverage, c.setting);
        EXPECT_EQ(layer_.ActiveCoverage, layer_.CoverageMask);
    }
    // Coverage 0: after the frame clear and the blur, the image proper is still all white.
    Noise(3, 7);
    SetLayerCoverage(layer_, 0);
    for (int32_t y = 0; y < 20; ++y)
        for (int32_t x = 0; x < 20; ++x) ASSERT_EQ(At(*layer_.CoverageMask, y, x), 255) << y << "," << x;
    EXPECT_LT(layer_.CoverageMask->Pixels()[0], 255) << "the cleared frame darkens the allocated corner";
    // Same value again: nothing to do.
    At(*layer_.CoverageMask, 5, 5) = 9;
    SetLayerCoverage(layer_, 0);
    EXPECT_EQ(At(*layer_.CoverageMask, 5, 5), 9);
}

TEST_F(WashMaskTest, AFieldOf100WithStaleNoiseTurnsTheMaskWhite) {
    Noise(200, 100); // a real setting of 100 would leave noise 200 uncovered
    layer_.CoverageDirty = 1;
    EXPECT_TRUE(BuildCoverageNoise(layer_));
    EXPECT_EQ(layer_.CoverageDirty, 0);
    EXPECT_EQ(Centre(), 255);
    EXPECT_EQ(layer_.CoverageMask->Pixels()[0], 255) << "white to the allocated edge";
}

TEST(DistanceTransform, HandCheckedShapes) {
    // A 3 by 3 block inside a frame of zeros.
    std::vector<uint32_t> map = Shape(5, 5,
                                      "....."
                                      ".###."
                                      ".###."
                                      ".###."
                                      ".....");
    EXPECT_EQ(DistanceTransform(map.data(), 5, 5), 4);
    const std::vector<uint32_t> block = {0, 0, 0, 0, 0, 0, 1, 1, 1, 0, 0, 1, 4, 1, 0, 0, 1, 1, 1, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(map, block);
    // One zero in a field of ones: exact squared distances.
    map = Shape(5, 4,
                "#####"
                "##.##"
                "#####"
                "#####");
    EXPECT_EQ(DistanceTransform(map.data(), 5, 4), 8);
    const std::vector<uint32_t> point = {5, 2, 1, 2, 5, 4, 1, 0, 1, 4, 5, 2, 1, 2, 5, 8, 5, 4, 5, 8};
    EXPECT_EQ(map, point);
    // No zero at all: every word keeps its start.
    map = Shape(3, 2, "######");
    EXPECT_EQ(DistanceTransform(map.data(), 3, 2), 18);
}

TEST(DistanceTransform, RandomShapesStayNearTheTrueDistance) {
    uint32_t seed = 17;
    const auto next = [&seed] { return (seed = seed * 1103515245u + 12345u) >> 16; };
    double worst = 0.0;
    for (int round = 0; round < 40; ++round) {
        const int32_t w = 3 + int32_t(next() % 30), h = 3 + int32_t(next() % 30);
        const uint32_t density = 1 + next() % 30; // percent of zeros
        std::vector<uint32_t> map(size_t(w) * h);
        for (auto& v : map) v = next() % 100 < density ? 0 : 1;
        map[0] = 0;
        const std::vector<uint32_t> shape = map;
        const int32_t largest = DistanceTransform(map.data(), w, h);
        int64_t trueLargest = 0;
        for (int32_t y = 0; y < h; ++y)
            for (int32_t x = 0; x < w; ++x) {
                int64_t best = INT64_MAX;
                for (int32_t v = 0; v < h; ++v)
                    for (int32_t u = 0; u < w; ++u)
                        if (!shape[size_t(v) * w + u])
                            best = std::min<int64_t>(best, int64_t(x - u) * (x - u) + int64_t(y - v) * (y - v));
                const uint32_t got = map[size_t(y) * w + x];
                // Always the distance to some zero, so never below the nearest one.
                ASSERT_GE(int64_t(got), best);
                worst = std::max(worst, std::sqrt(double(got)) - std::sqrt(double(best)));
                trueLargest = std::max(trueLargest, best);
            }
        EXPECT_GE(largest, trueLargest);
    }
    EXPECT_LT(worst, 0.5) << "four-point mapping errs by a fraction of a pixel at most";
}

TEST_F(WashMaskTest, EdgeDistanceThresholdsAndSoftness) {
    // A 9 by 5 document, no selection, no alpha: the deepest point is 3 from the frame.
    Work(9, 5);
    layer_.Source = Plane(9, 5, 0, 0);
    BuildEdgeSource(layer_);
    EXPECT_EQ(layer_.Distances.LargestDistanceSquared, 9);
    const auto row = [this](int32_t y) {
        std::vector<int> v;
        for (int32_t x = 0; x < 9; ++x) v.push_back(At(*layer_.EdgeMask, y, x));
        return v;
    };
    // Distance 0: 255 inside the frame.
    SetLayerEdgeDistance(layer_, 0);
    BuildWashEdge(layer_);
    EXPECT_EQ(layer_.EdgeThreshold, 0);
    for (int32_t y = 0; y < 5; ++y) EXPECT_EQ(row(y), std::vector<int>(9, 255));
    EXPECT_EQ(layer_.EdgeMask->Pixels()[0], 0);
    // 99: t = int(4 * 99 / 100) = 3, so only the centre row, 3 deep, stays.
    SetLayerEdgeDistance(layer_, 99);
    BuildWashEdge(layer_);
    EXPECT_EQ(layer_.EdgeThreshold, 9);
    EXPECT_EQ(row(2), (std::vector<int>{0, 0, 255, 255, 255, 255, 255, 0, 0}));
    EXPECT_EQ(row(1), std::vector<int>(9, 0));
    // 100: t = 4; nothing remains.
    SetLayerEdgeDistance(layer_, 100);
    BuildWashEdge(layer_);
    EXPECT_EQ(layer_.EdgeThreshold, 16);
    EXPECT_EQ(row(2), std::vector<int>(9, 0));
    // Softness is a percentage of the same depth, halved: (3 + 1) * 200 / 200 / 2.
    SetLayerEdgeSoftness(layer_, 250);
    EXPECT_EQ(layer_.EdgeSoftness, 200);
    EXPECT_EQ(layer_.EdgeBlur, 2);
    SetLayerEdgeSoftness(layer_, 99);
    EXPECT_EQ(layer_.EdgeBlur, 0);
}

TEST_F(WashMaskTest, AWholeRectangleNeedsNoTransform) {
    // Without a selection the edge is the frame; its map is worked out, not transformed.
    // It must be what the transform of the framed block gives, at every depth.
    for (auto [w, h] : {std::pair{1, 1}, {2, 3}, {9, 5}, {17, 23}, {64, 7}, {100, 100}, {101, 40}}) {
        Work(w, h);
        DestroyLayer(layer_);
        layer_.Source = Plane(w, h, 0, 0);
        BuildEdgeSource(layer_);
        const int32_t columns = w + 2, rows = h + 2;
        std::vector<uint32_t> words(size_t(columns) * rows);
        for (int32_t y = 0; y < rows; ++y)
            for (int32_t x = 0; x < columns; ++x)
                words[size_t(y) * columns + x] = x > 0 && y > 0 && x < columns - 1 && y < rows - 1;
        EXPECT_EQ(layer_.Distances.LargestDistanceSquared, DistanceTransform(words.data(), columns, rows))
            << w << "x" << h;
        for (int32_t distance : {0, 13, 50, 99}) {
            SetLayerEdgeSoftness(layer_, 0);
            SetLayerEdgeDistance(layer_, distance);
            BuildWashEdge(layer_);
            const uint8_t* mask = layer_.EdgeMask->Pixels();
            for (size_t i = 0; i < words.size(); ++i) {
                const bool ring = i < size_t(columns) || i >= words.size() - columns || i % columns == 0 ||
                                  i % columns == size_t(columns - 1);
                const uint8_t expected = ring || int64_t(words[i]) < layer_.EdgeThreshold ? 0 : 255;
                ASSERT_EQ(mask[i], expected) << w << "x" << h << " distance " << distance << " at " << i;
            }
        }
    }
}

TEST_F(WashMaskTest, CurvesAroundOneHundred) {
    SetCurve(layer_, 99);
    EXPECT_EQ(layer_.CurveParameter, 99);
    EXPECT_EQ(layer_.Curve[0], 2);     // 0 + 255 / 100
    EXPECT_EQ(layer_.Curve[127], 128); // 127 + 128 / 100
    EXPECT_EQ(layer_.Curve[255], 255);
    SetCurve(layer_, 100);
    EXPECT_EQ(layer_.CurveParameter, 0);
    EXPECT_EQ(layer_.Curve, IdentityCurve());
    SetCurve(layer_, 101);
    EXPECT_EQ(layer_.CurveParameter, 1);
    EXPECT_EQ(layer_.Curve[126], 125); // 126 - 126 / 100
    EXPECT_EQ(layer_.Curve[127], 128); // 127 + 128 / 100
    EXPECT_EQ(layer_.Curve[50], 50);
    EXPECT_EQ(layer_.Curve[200], 200);
    SetCurve(layer_, 200);
    EXPECT_EQ(layer_.Curve[126], 0);
    EXPECT_EQ(layer_.Curve[127], 255);
}
