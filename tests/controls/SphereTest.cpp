// The rotor's angles, the offset pad's square and the sphere painter, against geometry and
// shading worked out here in double.
#include "controls/Sphere.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

constexpr double kDeg = 180.0 / 3.14159265358979323846;

// ---- Angles from points ----

TEST(RotorAngles, PointsGiveTheDirectionAndElevationOfTheSphere) {
    // 60 by 60: centre (30, 30), rim 28 away on a press and 30 on a drag.
    RotorAngles angles;
    RotorPress(angles, 60, 60, 30, 30);
    EXPECT_NEAR(angles.Beta, 90.0, 1e-4);
    EXPECT_EQ(angles.Alpha, 0.0f); // on the horizontal: the direction stays

    // The direction is the mathematician's angle with y up, wherever the point lies.
    for (int y = 0; y <= 60; y += 6) {
        for (int x = 0; x <= 60; x += 5) {
            if (y == 30) continue;
            RotorPress(angles, 60, 60, x, y);
            EXPECT_NEAR(angles.Alpha, std::atan2(30.0 - y, x - 30.0) * kDeg, 1e-3) << x << "," << y;
            EXPECT_EQ(angles.FirstAngle, angles.LastAngle);
            const double dist = std::hypot(x - 30.0, y - 30.0);
            EXPECT_NEAR(angles.Beta, std::acos(std::min(dist / 28.0, 1.0)) * kDeg, 1e-3);
        }
    }

    // A click near the rim sits lower than a drag to the same point.
    RotorPress(angles, 60, 60, 52, 30);
    const float pressed = angles.Beta;
    RotorDrag(angles, 60, 60, 52, 30);
    EXPECT_NEAR(pressed, std::acos(22.0 / 28.0) * kDeg, 1e-3);
    EXPECT_NEAR(angles.Beta, std::acos(22.0 / 30.0) * kDeg, 1e-3);
    EXPECT_LT(pressed, angles.Beta);

    // The horizontal through the centre keeps the last direction and moves only Beta.
    RotorPress(angles, 60, 60, 40, 20);
    EXPECT_NEAR(angles.Alpha, 45.0, 1e-3);
    RotorPress(angles, 60, 60, 10, 30);
    EXPECT_NEAR(angles.Alpha, 45.0, 1e-3);
    EXPECT_NEAR(angles.Beta, std::acos(20.0 / 28.0) * kDeg, 1e-3);
    RotorDrag(angles, 60, 60, 55, 30);
    EXPECT_NEAR(angles.Alpha, 45.0, 1e-3);

    // A drag leaves the window: the point is held at its edge, and the rim gives 0.
    KnobPoint knob = RotorDrag(angles, 60, 60, -40, 30);
    EXPECT_EQ(knob.x, 0);
    EXPECT_EQ(knob.y, 30);
    EXPECT_NEAR(angles.Beta, 0.0, 1e-4);
    knob = RotorDrag(angles, 60, 60, 500, -7);
    EXPECT_EQ(knob.x, 60);
    EXPECT_EQ(knob.y, 0);
    EXPECT_NEAR(angles.Alpha, 45.0, 1e-3);

    // A narrow window: the ratio counts the width only.
    RotorPress(angles, 80, 40, 40, 2);
    EXPECT_NEAR(angles.Beta, std::acos(18.0 / 38.0) * kDeg, 1e-3);

    // Round and round: the angle runs -180 to 180, so no turn is ever counted.
    RotorAngles turning;
    for (int step = 0; step < 3 * 36; ++step) {
        const double t = step * 10.0 / kDeg;
        RotorDrag(turning, 60, 60, int(30 + 25 * std::cos(t)), int(30 - 25 * std::sin(t)));
        EXPECT_GE(turning.Alpha, -180.0f);
        EXPECT_LE(turning.Alpha, 180.0f);
    }
    EXPECT_EQ(turning.Turns, 0.0f);
}

// ---- The offset pad's square ----

TEST(OffsetPad, PercentToPadAndBackTurnsTheYAxisOver) {
    for (int py = -100; py <= 100; py += 10) {
        for (int px = -100; px <= 100; px += 10) {
            float alpha = 0, beta = 0, x = 0, y = 0;
            PercentToPad(float(px), float(py), alpha, beta);
            PadToPercent(alpha, beta, x, y);
            EXPECT_NEAR(x, px, 0.02) << px << "," << py;
            EXPECT_NEAR(y, -py, 0.02) << px << "," << py;
        }
    }
    // The rim at 45 degrees is the square's corner; the centre is the middle.
    float x = 0, y = 0;
    PadToPercent(45.0f, 0.0f, x, y);
    EXPECT_NEAR(x, 100.0, 1e-3);
    EXPECT_NEAR(y, 100.0, 1e-3);
    PadToPercent(-135.0f, 0.0f, x, y);
    EXPECT_NEAR(x, -100.0, 1e-3);
    EXPECT_NEAR(y, -100.0, 1e-3);
    PadToPercent(0.0f, 90.0f, x, y);
    EXPECT_NEAR(x, 0.0, 1e-3);
    EXPECT_NEAR(y, 0.0, 1e-3);
}

// ---- The painter ----

struct Grey {
    double v; // the shade, or the blend's weight below
    double k; // depth over 11: 1 and more is the shade alone
};

// One pixel of the sphere with the light at (alpha, beta), in double.
Grey Shade(int x, int y, int r, double alpha, double beta, bool pad) {
    const double A = (alpha + 90) / kDeg, B = beta / kDeg;
    double L[3] = {std::sin(A) * std::cos(B), std::cos(A) * std::cos(B), std::sin(B)};
    const double ll = std::sqrt(L[0] * L[0] + L[1] * L[1] + L[2] * L[2]);
    for (double& c : L) c /= ll;
    const double z = std::sqrt(double(r * r - x * x - y * y)), zd = z == 0 ? 1 : z;
    const double n[3] = {x / zd, y / zd, 1};
    const double nn = std::sqrt(n[0] * n[0] + n[1] * n[1] + 1);
    const double d = (n[0] * L[0] + n[1] * L[1] + n[2] * L[2]) / nn;
    double c = d * d * d;
    if (!pad) c += std::pow(c, 20);
    return {std::min(std::max(c * 205 + 50, 0.0), 255.0), z / 11};
}

int Channel(uint32_t pixel, int shift) { return int(pixel >> shift & 0xFF); }

TEST(SpherePainter, ShadesEachPixelAsTheLightFalls) {
    const uint32_t face = PixelOf(240, 200, 160);
    std::vector<uint32_t> bits(60 * 60);
    const PixelView view{bits.data(), 60, 60, 60};
    for (bool pad : {false, true}) {
        PaintSphere(view, SphereLook{30.0f, 40.0f, pad, true, face});
        // Inside, on the rim's fade, and outside the disc.
        for (auto [x, y] : {std::pair{0, 0}, {8, -10}, {-15, 12}, {20, 20}, {-27, -3}, {5, 29}, {29, 10}, {-25, -25}}) {
            const uint32_t got = view.At(30 + x, 30 + y);
            if (x * x + y * y > 900) {
                EXPECT_EQ(got, face) << x << "," << y;
                continue;
            }
            const Grey g = Shade(x, y, 30, 30.0, 40.0, pad);
            for (int shift : {16, 8, 0}) {
                const double f = Channel(face, shift);
                const double want = g.k >= 1 ? g.v : g.k > 0 ? std::min(f * (1 - g.k) + g.v * g.k, 255.0) : f;
                EXPECT_NEAR(Channel(got, shift), want, 1.0) << x << "," << y << (pad ? " pad" : "");
            }
        }
    }

    // The highlight: the lit sphere and the pad part most near the light, and there each
    // is its own formula, the pad's without the highlight.
    std::vector<uint32_t> flatBits(60 * 60);
    const PixelView flat{flatBits.data(), 60, 60, 60};
    PaintSphere(view, SphereLook{30.0f, 40.0f, false, true, face});
    PaintSphere(flat, SphereLook{30.0f, 40.0f, true, true, face});
    int best = 0, bx = 0, by = 0;
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 60; ++x)
            if (int d = Channel(view.At(x, y), 0) - Channel(flat.At(x, y), 0); d > best && flat.At(x, y) != 0)
                best = d, bx = x, by = y; // the pad's black knob left aside
    EXPECT_GE(best, 15);
    EXPECT_NEAR(Channel(view.At(bx, by), 0), Shade(bx - 30, by - 30, 30, 30.0, 40.0, false).v, 1.0);
    EXPECT_NEAR(Channel(flat.At(bx, by), 0), Shade(bx - 30, by - 30, 30, 30.0, 40.0, true).v, 1.0);
    EXPECT_GT(bx, 30); // towards the light: right and up
    EXPECT_LT(by, 30);

    // The knob: black when enabled, grey when not, a 7-pixel cross on the direction.
    const double m = 30 * 0.99 * std::cos(40 / kDeg), u = -30 / kDeg;
    const int kx = int(std::cos(u) * m + 30 + 0.5), ky = int(std::sin(u) * m + 30 + 0.5);
    for (bool enabled : {true, false}) {
        PaintSphere(view, SphereLook{30.0f, 40.0f, true, enabled, face});
        const uint32_t pen = enabled ? 0 : 0x7F7F7F;
        for (int i = -3; i <= 3; ++i) {
            EXPECT_EQ(view.At(kx + i, ky), pen) << i;
            EXPECT_EQ(view.At(kx, ky + i), pen) << i;
        }
        EXPECT_NE(view.At(kx + 4, ky), pen);
        EXPECT_NE(view.At(kx + 1, ky + 1), pen);
    }

    // A narrow window keeps the sphere round: r is the smaller half.
    std::vector<uint32_t> wide(80 * 40);
    const PixelView narrow{wide.data(), 80, 40, 80};
    PaintSphere(narrow, SphereLook{0.0f, 90.0f, false, true, face});
    EXPECT_EQ(narrow.At(40 + 25, 20), face);
    EXPECT_EQ(narrow.At(40, 20), PixelOf(255, 255, 255));
}

} // namespace
