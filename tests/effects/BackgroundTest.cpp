// The background: tone colours by hand at the ends and the middle of the ramp, hue and
// saturation, Enhanced, and the composite behind the picture with and without a
// selection and Entire.
#include "EffectsFixture.h"

#include "effects/Background.h"
#include "effects/ColorConversion.h"

#include <array>
#include <cstdlib>

using namespace effectstest;

namespace {

using Px = std::array<int, 4>;

class BackgroundTest : public ParamsEngineTest {
protected:
    void SetUp() override {
        ParamsEngineTest::SetUp();
        DialogOpen = true; // the preview keeps BackgroundImage for the checks to read
        Work(4, 2);
        source_.assign(work_.size(), 0);
        SourceImage = source_.data();
        AllocateBackgroundImage();
        layer_.Kind = LayerBackground;
        // Shadow (0, 30, 100), midtone (155, 50, 50), highlight (255, 200, 0).
        SetLayerTones(layer_, 100, 100, 100, 0x0000C8FF, 0x0032329B, 0x00641E00);
    }
    void TearDown() override {
        DialogOpen = false;
        FreeBackgroundImage();
        SourceImage = nullptr;
        ParamsEngineTest::TearDown();
    }
    // Places a texture of the work area's size, samples given row by row.
    void Place(std::vector<uint8_t> samples) {
        FreeRaster(layer_.View);
        layer_.View = Plane(ImageWidth, ImageHeight, 0, 0);
        for (int32_t y = 0; y < ImageHeight; ++y)
            for (int32_t x = 0; x < ImageWidth; ++x) At(*layer_.View, y, x) = samples[size_t(y) * ImageWidth + x];
        layer_.ToneDirty = 1;
        PlaceBackground(layer_);
        layer_.Source = layer_.View; // freed with the layer
    }
    static Px Of(const uint8_t* p) { return {p[0], p[1], p[2], p[3]}; }
    Px Back(int32_t i) { return Of(BackgroundImage + size_t(i) * 4); }
    Px Work(int32_t i) { return Of(WorkImage + size_t(i) * 4); }
    using EngineTest::Work;
    std::vector<uint8_t> source_;
};

bool Near(const Px& a, const Px& b) {
    for (int i = 0; i < 4; ++i)
        if (std::abs(a[i] - b[i]) > 1) return false;
    return true;
}

} // namespace

TEST_F(BackgroundTest, ToneRampByHand) {
    Place({0, 255, 166, 100, 0, 0, 0, 0});
    EXPECT_TRUE(Near(Back(0), (Px{0, 30, 100, 255}))) << "black: the shadow colour";
    EXPECT_TRUE(Near(Back(1), (Px{255, 200, 0, 255}))) << "white: t is 1.0000001, the highlight";
    EXPECT_TRUE(Near(Back(2), (Px{155, 50, 50, 255}))) << "just above 0.65: the midtone";
    // 100 / 255: t = (0.65 - 0.392) * 1.5384616 = 0.397; shadow t + midtone (1 - t).
    EXPECT_EQ(Back(3), (Px{93, 42, 69, 255}));
    // Only while ToneDirty.
    layer_.View->FillBlack();
    PlaceBackground(layer_);
    EXPECT_EQ(Back(1)[0], 255);
    EXPECT_EQ(layer_.ToneDirty, 0);
}

TEST_F(BackgroundTest, SaturationHueAndEnhanced) {
    params_.BackgroundMidtone = 0; // no saturation: greys of the tone's lightness
    Place({0, 255, 166, 100, 0, 0, 0, 0});
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(Back(i)[0], Back(i)[1]);
        EXPECT_EQ(Back(i)[1], Back(i)[2]);
    }
    // A flat texture with Enhanced: nothing falls outside the range; the colour goes
    // through the conversions unchanged in hue.
    params_.BackgroundMidtone = 100;
    params_.BackgroundEnhanced = 1;
    Place(std::vector<uint8_t>(8, 100));
    const HlsColor hls = RgbToHls240(93, 42, 69);
    const RgbColor rgb = HlsToRgb240(hls.h, hls.l, hls.s);
    EXPECT_EQ(Back(5), (Px{rgb.r, rgb.g, rgb.b, 255}));
    // A full ramp: the darkest tenth darkens toward black, the brightest gains light.
    params_.BackgroundEnhanced = 0;
    params_.BackgroundHue = 10; // so the plain run goes through the conversions too
    Place({0, 10, 245, 255, 128, 128, 128, 128});
    const Px plain[5] = {Back(0), Back(1), Back(2), Back(3), Back(4)};
    params_.BackgroundEnhanced = 1;
    Place({0, 10, 245, 255, 128, 128, 128, 128});
    EXPECT_LT(RgbToHls240(Back(0)[0], Back(0)[1], Back(0)[2]).l, RgbToHls240(plain[0][0], plain[0][1], plain[0][2]).l);
    EXPECT_GT(RgbToHls240(Back(3)[0], Back(3)[1], Back(3)[2]).l, RgbToHls240(plain[3][0], plain[3][1], plain[3][2]).l);
    EXPECT_EQ(Back(4), plain[4]) << "the middle of the range is left alone";
}

TEST_F(BackgroundTest, CompositeFillsWhatThePictureLets) {
    DocumentPlanes = 4;
    std::fill(BackgroundImage, BackgroundImage + work_.size(), uint8_t(200));
    // Work pixels: opaque, transparent, half; source alphas 0, 255, 90.
    const uint8_t work[] = {10, 10, 10, 255, 10, 10, 10, 0, 10, 10, 10, 128};
    const uint8_t source[] = {50, 50, 50, 0, 50, 50, 50, 255, 50, 50, 50, 90};
    auto run = [&] {
        std::memcpy(work_.data(), work, sizeof work);
        std::memcpy(source_.data(), source, sizeof source);
        CompositeBackground();
    };
    run();
    EXPECT_EQ(Work(0), (Px{10, 10, 10, 255}));
    EXPECT_EQ(Work(1), (Px{200, 200, 200, 255})) << "the background where the picture was eroded";
    EXPECT_EQ(Work(2), (Px{104, 104, 104, 128})) << "200 * 127 / 255 + 10 * 128 / 255";
    // Entire fills the document's transparent parts too.
    params_.BackgroundEntire = 1;
    run();
    EXPECT_EQ(Work(2)[3], 255);
    // Selection: outside it the source takes the background's place.
    std::vector<uint8_t> mask(size_t(ImageWidth) * ImageHeight, 0);
    mask[2] = 255;
    HaveMask = true;
    HostMaskData = mask.data();
    HostMaskRowBytes = ImageWidth;
    run();
    EXPECT_EQ(Work(1), (Px{50, 50, 50, 255})) << "unselected: the source";
    EXPECT_EQ(Work(2), (Px{104, 104, 104, 255})) << "selected: the background, alpha max(m, source)";
    EXPECT_EQ(Work(0)[3], 0) << "Entire outside the selection: max(0, source alpha 0)";
    params_.BackgroundEntire = 0;
    run();
    EXPECT_EQ(Work(0)[3], 255) << "without Entire: the larger of the two alphas";
    HaveMask = false;
    HostMaskData = nullptr;
    DocumentPlanes = 0;
}

TEST_F(BackgroundTest, FullSizeComposesEachRowAsItIsPlaced) {
    Work(5, 3);
    source_.assign(work_.size(), 0);
    SourceImage = source_.data();
    const std::vector<uint8_t> texture = {0, 40, 90, 166, 255, 3, 77, 200, 128, 9, 250, 60, 1, 2, 180};
    auto picture = [&] {
        for (size_t i = 0; i < work_.size(); ++i) {
            work_[i] = uint8_t(i % 4 == 3 ? (i * 37) % 256 : i * 11);
            source_[i] = uint8_t(i % 4 == 3 ? (i * 53) % 256 : i * 7);
        }
    };
    // The preview's way: the whole background, then the composite.
    AllocateBackgroundImage();
    picture();
    Place(texture);
    CompositeBackground();
    const std::vector<uint8_t> kept = work_;
    // The final run's way gives the same picture, and leaves BackgroundImage untouched.
    DialogOpen = false;
    FreeBackgroundImage();
    AllocateBackgroundImage();
    picture();
    Place(texture);
    CompositeBackground();
    EXPECT_EQ(work_, kept);
    EXPECT_EQ(Back(0), (Px{0, 0, 0, 0}));
}
