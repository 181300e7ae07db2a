// The two colour conversion families on greys, primaries and a sweep of the cube, and
// the deterministic sine and cosine the light vector is made from.
#include "effects/ColorConversion.h"
#include "effects/Trig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace {

int Distance(const RgbColor& c, int r, int g, int b) {
    return std::max({std::abs(c.r - r), std::abs(c.g - g), std::abs(c.b - b)});
}

} // namespace

TEST(ColorConversion, GreysHaveNoSaturationAndKeepTheirLevel) {
    for (int v = 0; v < 256; ++v) {
        const HlsColor hls = RgbToHls240(v, v, v);
        EXPECT_EQ(hls.h, 160);
        EXPECT_EQ(hls.s, 0);
        EXPECT_EQ(hls.l, (2 * v * 240 + 255) / 510);
        EXPECT_LE(Distance(HlsToRgb240(hls.h, hls.l, hls.s), v, v, v), 1) << v;
        const HslColor hsl = RgbToHsl255(v, v, v);
        EXPECT_EQ(hsl.h, 0);
        EXPECT_EQ(hsl.s, 0);
        EXPECT_EQ(hsl.l, v);
        EXPECT_EQ(Distance(HslToRgb255(hsl.h, hsl.s, hsl.l), v, v, v), 0) << v;
    }
}

TEST(ColorConversion, PrimariesByHand) {
    // Scale 240: red has L = (255 * 240 + 255) / 510 = 120, S = (61200 + 127) / 255 = 240,
    // H = Bd - Gd = 40 - 40 = 0; green and blue sit a third and two thirds round.
    const HlsColor red = RgbToHls240(255, 0, 0);
    EXPECT_EQ((std::array{red.h, red.l, red.s}), (std::array{0, 120, 240}));
    EXPECT_EQ(RgbToHls240(0, 255, 0).h, 80);
    EXPECT_EQ(RgbToHls240(0, 0, 255).h, 160);
    EXPECT_EQ(Distance(HlsToRgb240(0, 120, 240), 255, 0, 0), 0);
    EXPECT_EQ(Distance(HlsToRgb240(80, 120, 240), 0, 255, 0), 0);
    EXPECT_EQ(Distance(HlsToRgb240(160, 120, 240), 0, 0, 255), 0);
    // Scale 255: red has l = 127.5 -> 128, s = 255 * 255 / 255; back, m2 = 1 and
    // m1 = 128 / 127.5 - 1, so green and blue come out int(m1 * 255 + 0.5) = 1.
    const HslColor red255 = RgbToHsl255(255, 0, 0);
    EXPECT_EQ((std::array{red255.h, red255.s, red255.l}), (std::array{0, 255, 128}));
    EXPECT_EQ(Distance(HslToRgb255(0, 255, 128), 255, 1, 1), 0);
    EXPECT_EQ(RgbToHsl255(0, 255, 0).h, 85);
    EXPECT_EQ(RgbToHsl255(0, 0, 255).h, 170);
}

TEST(ColorConversion, RoundTripsOverTheCubeStayWithinTheirRounding) {
    int worst240 = 0, worst255 = 0;
    for (int r = 0; r < 256; r += 3)
        for (int g = 0; g < 256; g += 5)
            for (int b = 0; b < 256; b += 7) {
                const HlsColor hls = RgbToHls240(r, g, b);
                ASSERT_TRUE(hls.h >= 0 && hls.h <= 240 && hls.l >= 0 && hls.l <= 240 && hls.s >= 0 && hls.s <= 240);
                worst240 = std::max(worst240, Distance(HlsToRgb240(hls.h, hls.l, hls.s), r, g, b));
                const HslColor hsl = RgbToHsl255(r, g, b);
                ASSERT_TRUE(hsl.h >= 0 && hsl.h <= 255 && hsl.s >= 0 && hsl.s <= 255 && hsl.l >= 0 && hsl.l <= 255);
                worst255 = std::max(worst255, Distance(HslToRgb255(hsl.h, hsl.s, hsl.l), r, g, b));
            }
    // 240 steps of hue and saturation lose up to four levels; the 511 of the scale-255
    // saturation as much again.
    EXPECT_LE(worst240, 4);
    EXPECT_LE(worst255, 4);
}

TEST(ColorConversion, HueWrapsPastTheCircleBothWays) {
    for (int h = 0; h <= 240; h += 10) {
        const RgbColor c = HlsToRgb240(h, 100, 200);
        EXPECT_EQ(Distance(HlsToRgb240(h + 240, 100, 200), c.r, c.g, c.b), 0) << h;
        if (h > 0) {
            EXPECT_EQ(Distance(HlsToRgb240(h - 240, 100, 200), c.r, c.g, c.b), 0) << h;
        }
    }
}

TEST(PortableTrig, AgreesWithTheLibraryToTheLastPlaces) {
    for (double x = -10.0; x <= 10.0; x += 0.001) {
        EXPECT_NEAR(PortableSin(x), std::sin(x), 4e-16) << x;
        EXPECT_NEAR(PortableCos(x), std::cos(x), 4e-16) << x;
    }
    EXPECT_EQ(PortableSin(0.0), 0.0);
    EXPECT_EQ(PortableCos(0.0), 1.0);
}
