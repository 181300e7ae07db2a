// Surface 2 alone, built into the relief at its own View's stride while the pass reads at
// the shown surface's: nothing outside the relief is touched (the sanitizer build watches),
// and the pass reads what a relief of the shown stride would hold.
#include "EffectsFixture.h"

#include "effects/Surface.h"

using namespace effectstest;

namespace {

uint8_t Sample(int32_t x, int32_t y) { return uint8_t((x * 37 + y * 91) % 255 + 1); }

class SurfaceStride : public ParamsEngineTest {
protected:
    void TearDown() override {
        for (EffectLayer* layer : {&SurfaceLayers[0], &SurfaceLayers[1]}) DestroyLayer(*layer);
        FreeReliefBuffers();
        SourceImage = nullptr;
        ParamsEngineTest::TearDown();
    }
    Raster* View(int surface, uint32_t border) {
        EffectLayer& layer = SurfaceLayers[surface];
        DestroyLayer(layer);
        layer.Source = layer.View = Plane(ImageWidth, ImageHeight, border, 0);
        for (int32_t y = 0; y < ImageHeight; ++y)
            for (int32_t x = 0; x < ImageWidth; ++x) At(*layer.View, y, x) = Sample(x, y);
        return layer.View;
    }
};

} // namespace

TEST_F(SurfaceStride, SecondSurfaceAloneOverAWiderOrNarrowerView) {
    Work(6, 5);
    std::vector<uint8_t> source(work_.size(), 90);
    SourceImage = source.data();
    params_.SecondSurfaceExists = 1;
    params_.SurfaceDepth2 = 100; // the relief is the sample itself
    params_.SurfacePerspectiveOn = 1;
    // Borders give the strides: surface 1's 8 or 14, surface 2's 26 (wider) or 6 (narrower).
    for (auto [border1, border2] : {std::pair<uint32_t, uint32_t>{1, 10}, {4, 0}}) {
        AllocateReliefBuffers();
        const int32_t shown = View(0, border1)->RowBytes();
        const int32_t written = View(1, border2)->RowBytes();
        BuildSurfaceRelief(false, true);
        ASSERT_NE(ReliefMap, nullptr);

        // A relief of the shown stride, fresh (zero), written at the second View's stride;
        // whatever falls past its end is not there to be read.
        std::vector<uint8_t> model(size_t(ImageHeight) * size_t(shown), 0);
        for (int32_t y = 0; y < ImageHeight; ++y)
            for (int32_t x = 0; x < ImageWidth; ++x)
                if (size_t(y) * size_t(written) + size_t(x) < model.size())
                    model[size_t(y) * size_t(written) + size_t(x)] = Sample(x, y);
        for (int32_t y = 0; y < ImageHeight; ++y)
            for (int32_t x = 0; x < ImageWidth; ++x)
                ASSERT_EQ(ReliefMap[size_t(y) * size_t(shown) + size_t(x)],
                          model[size_t(y) * size_t(shown) + size_t(x)])
                    << "x " << x << " y " << y << ", strides " << shown << " and " << written;

        // The pass reads the relief at the shown stride, perspective included, and shades.
        std::fill(work_.begin(), work_.end(), uint8_t(255));
        SurfaceShadeDirty = 1;
        ShadeSurface();
        EXPECT_NE(work_[0], 255) << "the pass ran";
        FreeReliefBuffers();
    }
}
