// The surface: relief from one or two textures, the shade against a scalar oracle,
// the pass with and without perspective, each pass code, and the merge by the selection.
#include "EffectsFixture.h"

#include "effects/Surface.h"
#include "effects/SurfaceColor.h"
#include "effects/WashMask.h"

#include <cmath>

using namespace effectstest;

namespace {

class SurfaceTest : public ParamsEngineTest {
protected:
    void SetUp() override {
        ParamsEngineTest::SetUp();
        Work(6, 5);
        source_.assign(work_.size(), 0);
        SourceImage = source_.data();
        AllocateReliefBuffers();
        params_.SecondSurfaceExists = 0;
    }
    void TearDown() override {
        for (EffectLayer* layer : {&SurfaceLayers[0], &SurfaceLayers[1], &WashLayers[0]}) DestroyLayer(*layer);
        FreeReliefBuffers();
        SurfacePassCode = 0;
        SourceImage = nullptr;
        ParamsEngineTest::TearDown();
    }
    // A surface texture with a border, so relief strides differ from the width.
    Raster* View(int surface, uint8_t (*sample)(int32_t x, int32_t y)) {
        EffectLayer& layer = SurfaceLayers[surface];
        FreeRaster(layer.Source); // the View too: at full size they are one
        layer.Source = layer.View = Plane(ImageWidth, ImageHeight, 2, 0);
        for (int32_t y = 0; y < ImageHeight; ++y)
            for (int32_t x = 0; x < ImageWidth; ++x) At(*layer.View, y, x) = sample(x, y);
        return layer.View;
    }
    uint8_t Relief(const Raster& view, int32_t x, int32_t y) { return ReliefMap[size_t(y) * view.RowBytes() + x]; }
    // The shade at (x, y) of the relief built from `view`.
    float Shade(const Raster& view, int32_t x, int32_t y) {
        std::vector<float> row(size_t(view.Width()));
        BuildShadeRow(y, view.Width(), view.Height(), view.RowBytes(), row.data());
        return row[size_t(x)];
    }
    uint8_t* Pixel(std::vector<uint8_t>& image, int32_t x, int32_t y) {
        return image.data() + size_t(y) * WorkRowBytes + size_t(x) * 4;
    }
    std::vector<uint8_t> source_;
};

uint8_t Ramp(int32_t x, int32_t y) { return uint8_t(40 * x + 7 * y); }
uint8_t Steps(int32_t x, int32_t y) { return uint8_t((x * 37 + y * 91) % 256); }
uint8_t Slope(int32_t x, int32_t) { return uint8_t(20 * x); }
uint8_t Flat(int32_t, int32_t) { return 200; }

} // namespace

TEST_F(SurfaceTest, ReliefIsTheDepthWeightedAverage) {
    const Raster* first = View(0, Ramp);
    params_.SurfaceDepth1 = 50;
    BuildSurfaceRelief(true, false);
    EXPECT_EQ(Relief(*first, 3, 4), uint8_t((40 * 3 + 28) / 2));
    // Two surfaces with one View and one depth: the depth divides out, leaving the
    // texture itself (so not the first one's relief, except at depth 100).
    View(1, Ramp);
    params_.SurfaceDepth2 = 50;
    BuildSurfaceRelief(true, true);
    for (int32_t y = 0; y < ImageHeight; ++y)
        for (int32_t x = 0; x < ImageWidth; ++x) EXPECT_EQ(Relief(*first, x, y), Ramp(x, y));
    // Depths 100 and 50 over different textures: (s2 * 0.5 + s1) / 1.5.
    View(1, Steps);
    params_.SurfaceDepth1 = 100;
    BuildSurfaceRelief(true, true);
    EXPECT_EQ(Relief(*first, 2, 1), uint8_t((Steps(2, 1) * 0.5 + Ramp(2, 1)) / 1.5));
    // The second alone, with its own depth.
    BuildSurfaceRelief(false, true);
    EXPECT_EQ(Relief(*SurfaceLayers[1].View, 4, 3), uint8_t(Steps(4, 3) / 2));
}

TEST_F(SurfaceTest, ShadeMapFollowsTheLightAndExtrapolatesAtTheEdges) {
    params_.SurfaceLightAlpha = 58.0f;
    params_.SurfaceLightBeta = 35.0f;
    const double pi = 3.141592;
    const double a = pi - 58.0 * pi / 180.0, b = pi - 35.0 * pi / 180.0;
    const double lx = std::cos(a) * std::cos(b), ly = std::sin(a) * std::cos(b), lz = std::sin(b);

    // Depth 0: flat, gain 0, the shade is lz everywhere.
    const Raster* view = View(0, Steps);
    params_.SurfaceDepth1 = 0;
    BuildSurfaceRelief(true, false);
    for (int32_t y = 0; y < ImageHeight; ++y)
        for (int32_t x = 0; x < ImageWidth; ++x) EXPECT_NEAR(Shade(*view, x, y), lz, 1e-6);

    // A slope along x at depth 100: every column has the same shade, the last one too.
    params_.SurfaceDepth1 = 100;
    view = View(0, Slope);
    BuildSurfaceRelief(true, false);
    const double g = 150.0 / 5000.0;
    for (int32_t y = 0; y < ImageHeight; ++y)
        for (int32_t x = 0; x < ImageWidth; ++x)
            EXPECT_NEAR(Shade(*view, x, y), 20.0 * lx * g + lz, 1e-5) << x << "," << y;

    // Any relief against the plain formula, inner points and the last row and column.
    view = View(0, Steps);
    BuildSurfaceRelief(true, false);
    for (auto [x, y] : {std::pair{1, 1}, {3, 2}, {5, 2}, {2, 4}, {5, 4}}) {
        const int h = Steps(x, y);
        const int down = y + 1 < ImageHeight ? Steps(x, y + 1) : 2 * h - Steps(x, y - 1);
        const int right = x + 1 < ImageWidth ? Steps(x + 1, y) : 2 * h - Steps(x - 1, y);
        EXPECT_NEAR(Shade(*view, x, y), ((down - h) * ly + (right - h) * lx) * g + lz, 1e-5) << x << "," << y;
    }
    // The preview's scale steepens the slopes per pixel by that factor.
    PreviewScale = 2.0;
    EXPECT_NEAR(Shade(*view, 1, 1), ((Steps(1, 2) - Steps(1, 1)) * ly + (Steps(2, 1) - Steps(1, 1)) * lx) * g / 2 + lz,
                1e-5);
}

TEST_F(SurfaceTest, PerspectiveShiftsThePictureAndTheWashMaskAlongTheRelief) {
    // Source rows of 5 * y; intensity 0 lets the picture through the colour maths.
    Work(3, 40);
    source_.assign(work_.size(), 0);
    SourceImage = source_.data();
    AllocateReliefBuffers();
    for (int32_t y = 0; y < ImageHeight; ++y)
        for (int32_t x = 0; x < ImageWidth; ++x) std::memset(Pixel(source_, x, y), 5 * y, 4);
    params_.SurfaceIntensity = 0;
    params_.SurfaceDepth1 = 0;
    params_.SurfacePerspectiveOn = 1;
    View(0, Flat);
    BuildSurfaceRelief(true, false);
    SurfaceAlphaFromSource();
    ShadeSurface();
    // Depth 0: z and f are 0, and the whole weight goes to the row below, so the picture
    // moves up by one row (the last row stays).
    for (int32_t y = 0; y < ImageHeight; ++y)
        EXPECT_EQ(Pixel(work_, 1, y)[0], 5 * std::min(y + 1, ImageHeight - 1)) << y;

    // Depth 100: g2 = 0.15, shift = int(19.05) = 19; relief 200 lifts by z = 30 and a
    // millionth, so row y reads rows y - 11 and y - 10, almost all of the second.
    params_.SurfaceDepth1 = 100;
    params_.UseWash = 1;
    WashLayers[0].EdgeMask = Plane(3, 40, 1, 0);
    for (int32_t y = 0; y < 40; ++y)
        for (int32_t x = 0; x < 3; ++x) At(*WashLayers[0].EdgeMask, y, x) = uint8_t(y);
    WashLayers[0].EdgeMaskWork = static_cast<uint8_t*>(std::calloc(size_t(3) * 40, 1));
    BuildSurfaceRelief(true, false);
    ShadeSurface();
    EXPECT_EQ(Pixel(work_, 1, 20)[0], 49) << "row 10 (50) with a trace of row 9 (45), truncated";
    EXPECT_EQ(Pixel(work_, 1, 20)[3], 49) << "alpha moves with the picture";
    EXPECT_EQ(Pixel(work_, 1, 3)[0], 4) << "above the top: rows 0 and 1";
    EXPECT_EQ(WashLayers[0].EdgeMaskWork[20 * 3 + 1], 10) << "the wash mask comes from the row below";
    params_.UseWash = 0;
}

TEST_F(SurfaceTest, EachPassCodeAndEntire) {
    // At shade 1 the ramp gives the highlight colour alone: the tone (40, 80, 120).
    params_.SurfaceMidtone = 100;
    params_.SurfaceHighlightColor = 0x00785028;
    params_.SurfaceType1 = SurfacePlainTone;
    SurfaceImage = WorkImage;
    auto apply = [&](std::array<int32_t, 3> p, int32_t alpha) {
        ApplySurfacePixel(p.data(), alpha, 1.0f, 0, SurfacePlainTone);
        return std::array<int, 4>{work_[0], work_[1], work_[2], work_[3]};
    };
    using Px = std::array<int, 4>;
    EXPECT_EQ(apply({200, 100, 0}, 90), (Px{40, 80, 120, 90}));
    params_.SurfaceIntensity = 50;
    EXPECT_EQ(apply({200, 100, 0}, 90), (Px{120, 90, 60, 90})) << "half picture, half colour";

    // Entire: a transparent pixel shows the tone, as opaque as its brightest channel.
    SurfaceEntireNow = true;
    EXPECT_EQ(apply({200, 100, 0}, 0), (Px{40, 80, 120, 120}));
    EXPECT_EQ(apply({200, 100, 0}, 255), (Px{120, 90, 60, 255}));
    std::vector<uint8_t> washArea(work_.size(), 9);
    WashAreaBuffer = washArea.data();
    KeepWashArea = true;
    apply({200, 100, 0}, 51);
    EXPECT_EQ((Px{washArea[0], washArea[1], washArea[2], washArea[3]}), (Px{40, 80, 120, 120}));

    // Pass 1 delivers the tone; pass 2 the picture, clearing the kept wash area.
    SurfacePassCode = 1;
    EXPECT_EQ(apply({200, 100, 0}, 51), (Px{40, 80, 120, 120})) << "kept area: alpha is the tone's";
    KeepWashArea = false;
    EXPECT_EQ(apply({200, 100, 0}, 200), (Px{40, 80, 120, 200}));
    SurfacePassCode = 2;
    KeepWashArea = true;
    EXPECT_EQ(apply({200, 100, 0}, 51), (Px{200, 100, 0, 51}));
    EXPECT_EQ((Px{washArea[0], washArea[1], washArea[2], washArea[3]}), (Px{0, 0, 0, 0}));
    KeepWashArea = false;
    WashAreaBuffer = nullptr;
    SurfaceEntireNow = false;
}

TEST_F(SurfaceTest, SelectionScalesAlphaAndBlendsTheSurfaceIn) {
    for (size_t i = 0; i < source_.size(); ++i) source_[i] = uint8_t(i % 4 == 3 ? 200 : 100);
    std::vector<uint8_t> mask(size_t(ImageWidth) * ImageHeight, 128);
    mask[0] = 0;
    HaveMask = true;
    HostMaskData = mask.data();
    HostMaskRowBytes = ImageWidth;
    SurfaceAlphaFromSource();
    EXPECT_EQ(work_[3], 0);
    EXPECT_EQ(work_[7], uint8_t(128.0f / 255.0f * 200.0f)) << "100";
    // A surface of 250 merges by the mask: 100 * (1 - m) + 250 * m.
    std::fill(work_.begin(), work_.end(), uint8_t(250));
    MergeSurfaceResult();
    EXPECT_EQ(work_[0], 100) << "outside the selection: the source";
    EXPECT_EQ(work_[4], uint8_t(100.0f * (127.0f / 255.0f) + 250.0f * (128.0f / 255.0f)));
    EXPECT_EQ(work_[7], uint8_t(200.0f * (127.0f / 255.0f) + 250.0f * (128.0f / 255.0f)));
    HaveMask = false;
    HostMaskData = nullptr;
}
