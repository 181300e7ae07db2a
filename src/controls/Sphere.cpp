#include "controls/Sphere.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kDegreesPerRadian = 57.29579143313326;
constexpr double kPi = 3.141592; // the rotor's own pi: angles round-trip through it

// Steps shared by a press and a drag; radius is the distance that counts as the rim.
void AnglesFromPoint(RotorAngles& angles, int32_t width, int32_t height, int32_t x, int32_t y, float radius) {
    const int32_t a = width >> 1, b = height >> 1;
    const float dist = std::sqrt(float((a - x) * (a - x) + (b - y) * (b - y)));
    const float ratio = radius > 0 ? std::clamp(dist / radius, -1.0f, 1.0f) : 1.0f;
    angles.Beta = float(std::acos(ratio) * kDegreesPerRadian);
    // On the horizontal through the centre the direction is undefined: keep the last one.
    if (y != b) {
        double angle = std::atan(float(x - a) / float(y - b)) * kDegreesPerRadian - 90.0;
        if (y < b) angle += 180.0;
        angles.LastAngle = float(angle);
    }
    angles.Alpha = angles.Turns * 360.0f + angles.LastAngle;
}

// cos of the angle within its quadrant, folded to at most 45 degrees: dividing by it
// stretches the disc onto the square.
double SquareStretch(double alpha) {
    const double e = std::fabs(alpha) - std::trunc(std::fabs(alpha) / 90.0) * 90.0;
    const double radians = e * kPi / 180.0;
    return e <= 45.0 ? std::cos(radians) : std::cos(1.570796 - radians);
}

} // namespace

void RotorPress(RotorAngles& angles, int32_t width, int32_t height, int32_t x, int32_t y) {
    // Two pixels short of the rim: a click near the edge stays a little above it.
    AnglesFromPoint(angles, width, height, x, y, float((width >> 1) - 2));
    angles.FirstAngle = angles.LastAngle;
}

KnobPoint RotorDrag(RotorAngles& angles, int32_t width, int32_t height, int32_t x, int32_t y) {
    angles.PrevAngle = angles.LastAngle;
    const KnobPoint knob{std::clamp(x, 0, std::max(width, 0)), std::clamp(y, 0, std::max(height, 0))};
    AnglesFromPoint(angles, width, height, knob.x, knob.y, float(width >> 1));
    if (angles.PrevAngle > 300.0f && angles.LastAngle < 90.0f) angles.Turns += 1.0f;
    if (angles.PrevAngle < 90.0f && angles.LastAngle > 300.0f) angles.Turns -= 1.0f;
    return knob;
}

void PadToPercent(float alpha, float beta, float& px, float& py) {
    const double u = alpha * (-kPi / 180.0), c = std::cos(beta * kPi / 180.0);
    double x = std::cos(u) * (c * 100.0), y = -(std::sin(u) * (c * 100.0));
    const double q = SquareStretch(alpha);
    if (q != 0) x /= q, y /= q;
    px = float(x);
    py = float(y);
}

void PercentToPad(float px, float py, float& alpha, float& beta) {
    alpha = float(std::atan2(-py, px) * kDegreesPerRadian);
    const double q = SquareStretch(alpha);
    const double u = q * px, w = q * -py, m = u * u + w * w;
    beta = float(std::atan2(std::sqrt(std::max(0.0, 10000.0 - m)), std::sqrt(m)) * kDegreesPerRadian);
}

void PaintSphere(const PixelView& view, const SphereLook& look) {
    FillPixels(view, PixelRect{0, 0, view.width, view.height}, look.face);
    const int32_t a = view.width >> 1, b = view.height >> 1, r = std::min(a, b), r2 = r * r;
    const float pi = float(kPi);
    const float A = (look.alpha + 90.0f) * pi / 180.0f, B = look.beta * pi / 180.0f;
    float lx = std::sin(A) * std::cos(B), ly = std::cos(A) * std::cos(B), lz = std::sin(B);
    float length = std::sqrt(lx * lx + ly * ly + lz * lz);
    if (length == 0) length = 1;
    lx /= length, ly /= length, lz /= length;
    const float face[3] = {float(look.face >> 16 & 0xFF), float(look.face >> 8 & 0xFF), float(look.face & 0xFF)};

    for (int32_t y = -b; y <= b; ++y) {
        for (int32_t x = -a; x <= a; ++x) {
            const int32_t rest = r2 - x * x - y * y;
            if (rest < 0 || !view.Contains(a + x, b + y)) continue;
            const float z = std::sqrt(float(rest));
            const float k = z / 11.0f; // the outer 11 pixels of depth fade into the face
            if (k <= 0) continue;
            const float zd = z == 0 ? 1.0f : z;
            const float nx = float(x) / zd, ny = float(y) / zd;
            float n = std::sqrt(nx * nx + ny * ny + 1.0f);
            if (n == 0) n = 1;
            const float d = (nx * lx + ny * ly + lz) / n;
            float c = d * d * d;
            if (!look.offsetPad) c = std::pow(c, 20.0f) + c; // the light's bright point
            const float v = std::clamp(c * 205.0f + 50.0f, 0.0f, 255.0f);
            uint32_t& pixel = view.At(a + x, b + y);
            if (k >= 1) {
                const uint8_t g = uint8_t(v);
                pixel = PixelOf(g, g, g);
            } else {
                uint8_t ch[3];
                for (int i = 0; i < 3; ++i) ch[i] = uint8_t(std::min(face[i] * (1.0f - k) + v * k, 255.0f));
                pixel = PixelOf(ch[0], ch[1], ch[2]);
            }
        }
    }

    if (!look.offsetPad) return;
    const float u = look.alpha * (-pi / 180.0f), m = float(r) * 0.99f * std::cos(B);
    const int32_t kx = int32_t(std::cos(u) * m + float(a) + 0.5f), ky = int32_t(std::sin(u) * m + float(b) + 0.5f);
    const uint32_t pen = look.enabled ? 0 : PixelOf(0x7F, 0x7F, 0x7F);
    // Lines from 3 before to 4 past the knob, the end point left out as GDI does.
    FillPixels(view, PixelRect{kx - 3, ky, kx + 4, ky + 1}, pen);
    FillPixels(view, PixelRect{kx, ky - 3, kx + 1, ky + 4}, pen);
}
