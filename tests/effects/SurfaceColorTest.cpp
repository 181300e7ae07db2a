// The surface's colour maths on pixels worked out by hand: the tri-tone ramp, the types,
// hue, brightness and contrast.
#include "EffectsFixture.h"

#include "effects/ColorConversion.h"
#include "effects/SurfaceColor.h"

#include <array>
#include <cmath>

using namespace effectstest;

namespace {

using Rgb = std::array<int32_t, 3>;

class SurfaceColorTest : public ParamsEngineTest {
protected:
    void SetUp() override {
        ParamsEngineTest::SetUp();
        params_.SurfaceMidtone = 100;             // the three colours alone
        params_.SurfaceShadowColor = 0x00963200;  // (0, 50, 150)
        params_.SurfaceMidtoneColor = 0x0000C8C8; // (200, 200, 0)
        params_.SurfaceHighlightColor = 0x00FFFFFF;
    }
    // A grey midtone of `level`, reached at shade 0.65.
    void GreyMidtone(uint32_t level) { params_.SurfaceMidtoneColor = level * 0x010101u; }
    Rgb Tone(float shade) {
        Color({0, 0, 0}, shade, SurfacePlainTone);
        return tone_;
    }
    Rgb Out(Rgb picture, float shade, int32_t type) {
        Color(picture, shade, type);
        return {int32_t(out_[0]), int32_t(out_[1]), int32_t(out_[2])};
    }
    void Color(Rgb picture, float shade, int32_t type) {
        SurfaceColor(picture.data(), 255, shade, out_, tone_.data(), type);
    }
    float out_[3] = {};
    Rgb tone_ = {};
};

int Farthest(const Rgb& a, const Rgb& b) {
    return std::max({std::abs(a[0] - b[0]), std::abs(a[1] - b[1]), std::abs(a[2] - b[2])});
}

} // namespace

TEST_F(SurfaceColorTest, TriToneMeetsTheMidtoneAtSixtyFivePercent) {
    EXPECT_EQ(Tone(0.0f), (Rgb{0, 50, 150}));
    EXPECT_EQ(Tone(1.0f), (Rgb{255, 255, 255}));
    EXPECT_EQ(Tone(0.65f), (Rgb{200, 200, 0}));
    EXPECT_LE(Farthest(Tone(std::nextafter(0.65f, 0.0f)), Rgb{200, 200, 0}), 1) << "from below";
    EXPECT_LE(Farthest(Tone(std::nextafter(0.65f, 1.0f)), Rgb{200, 200, 0}), 1) << "from above";
    // Halfway down the shadow side: u = 0.5, a quarter of the midtone, the rest shadow.
    EXPECT_EQ(Tone(0.325f), (Rgb{50, 87, 112}));
    params_.SurfaceMidtone = 0;
    EXPECT_EQ(Tone(0.4f), (Rgb{102, 102, 102})) << "no colour: plain grey of the shade";
}

TEST_F(SurfaceColorTest, VividAndEnhanceByHand) {
    // Tone 255: divisor 511 - 510 = 1, so P << 8 limited to 255.
    EXPECT_EQ(Out({200, 1, 0}, 1.0f, SurfaceVivid), (Rgb{255, 255, 0}));
    // Tone 100: ((200 - 255) << 8) / 200 = -70 -> 185; for 0 the sum falls below 0.
    GreyMidtone(100);
    EXPECT_EQ(Out({200, 0, 255}, 0.65f, SurfaceVivid), (Rgb{185, 0, 255}));
    // Tone 200: P 127 takes (400 * 127) / 255 = 199.2, P 128 takes 255 - 110 * 127 / 255 = 200.2.
    GreyMidtone(200);
    EXPECT_EQ(Out({127, 128, 0}, 0.65f, SurfaceEnhance), (Rgb{199, 200, 0}));
    // Multiply: 200 * 200 / 255; colour burn: ((200 - 255) << 8) / 200 + 255 = 185.
    EXPECT_EQ(Out({200, 255, 0}, 0.65f, SurfaceMultiply), (Rgb{156, 200, 0}));
    EXPECT_EQ(Out({200, 255, 0}, 0.65f, SurfaceColorBurn), (Rgb{185, 255, 0}));
}

TEST_F(SurfaceColorTest, ColorizeAndTintWithoutColourLeaveTheirBlends) {
    params_.SurfaceMidtone = 0;
    const float shade = 0.4f;
    const double o = double(shade * 255.0f); // the grey tone
    const Rgb picture = {200, 100, 50};
    // Colorize with M 0 is the soft light of the tone on the picture alone.
    Color(picture, shade, SurfaceColorize);
    for (int i = 0; i < 3; ++i) {
        const double p = picture[i];
        const double mul = o * p / 255.0, scr = 255.0 - (255.0 - p) * (255.0 - o) / 255.0;
        EXPECT_NEAR(out_[i], ((255.0 - p) * mul + p * scr) / 255.0, 1e-3) << i;
    }
    // Tint: the picture's brightness m = 350 / 765 lets the picture pull the grey tone.
    Color(picture, shade, SurfaceTint);
    const double m = 350.0 / 765.0;
    for (int i = 0; i < 3; ++i) {
        const double p = picture[i];
        const double a = std::min(p, o) * (1.0 - m) + m * p;
        EXPECT_NEAR(out_[i], std::max(a, o) * m + a * (1.0 - m), 1e-3) << i;
    }
}

TEST_F(SurfaceColorTest, HueBrightnessAndContrast) {
    params_.SurfaceMidtone = 0;
    // Grey 102 has L 96 at scale 240, back to 102; brightness 150 adds 50 * 1.5.
    params_.SurfaceBrightness = 150;
    EXPECT_EQ(Out({0, 0, 0}, 0.4f, SurfacePlainTone), (Rgb{177, 177, 177}));
    params_.SurfaceBrightness = 0;
    EXPECT_EQ(Out({0, 0, 0}, 0.4f, SurfacePlainTone), (Rgb{2, 2, 2})) << "darker by 100";
    params_.SurfaceBrightness = 100;
    // Contrast 100 leaves the float as it is; 101 stretches around 127.
    Color({0, 0, 0}, 0.4f, SurfacePlainTone);
    EXPECT_EQ(out_[0], 0.4f * 255.0f);
    params_.SurfaceContrast = 130;
    EXPECT_EQ(Out({0, 0, 0}, 0.4f, SurfacePlainTone), (Rgb{77, 77, 77})) << "(102 - 127) * 2 + 127";
    params_.SurfaceContrast = 100;
    // Hue 100 moves by 127.5: from the midtone's hue, past 240, round again.
    params_.SurfaceMidtone = 100;
    params_.SurfaceHue = 100;
    params_.SurfaceMidtoneColor = 0x00963200;
    const HlsColor before = RgbToHls240(0, 50, 150);
    const RgbColor wrapped = HlsToRgb240(before.h + 127 - 240, before.l, before.s);
    ASSERT_GT(before.h + 127, 240);
    EXPECT_EQ(Out({0, 0, 0}, 0.65f, SurfacePlainTone), (Rgb{wrapped.r, wrapped.g, wrapped.b}));
}
