#include "effects/ColorConversion.h"

#include <algorithm>

namespace {

// One channel's level at hue h of the circle: m1 and m2 are the low and high levels.
int32_t Hue240(int32_t m1, int32_t m2, int32_t h) {
    if (h < 0) h += 240 - 240 * (h / 240);
    if (h > 240) h = (h - 240) % 240;
    if (h < 40) return m1 + ((m2 - m1) * h + 20) / 40;
    if (h < 120) return m2;
    if (h < 160) return m1 + ((m2 - m1) * (160 - h) + 20) / 40;
    return m1;
}

// The same at scale 255, in double and rounded.
int32_t Ramp255(double m1, double m2, double h) {
    if (h > 255.0) h -= 255.0;
    if (h < 0.0) h += 255.0;
    if (h < 42.5) return int32_t(((m2 - m1) * (h / 42.5) + m1) * 255.0 + 0.5);
    if (h < 127.5) return int32_t(m2 * 255.0 + 0.5);
    if (h < 170.0) return int32_t(((m2 - m1) * ((170.0 - h) / 42.5) + m1) * 255.0 + 0.5);
    return int32_t(m1 * 255.0 + 0.5);
}

} // namespace

HlsColor RgbToHls240(int32_t r, int32_t g, int32_t b) {
    const int32_t hi = std::max({r, g, b});
    const int32_t lo = std::min({r, g, b});
    HlsColor c;
    c.l = ((hi + lo) * 240 + 255) / 510;
    if (hi == lo) {
        c.s = 0;
        c.h = 160;
        return c;
    }
    const int32_t d = hi - lo;
    if (c.l <= 120) c.s = (d * 240 + (hi + lo) / 2) / (hi + lo);
    else c.s = (d * 240 + (510 - hi - lo) / 2) / (510 - hi - lo);
    const int32_t rd = ((hi - r) * 40 + d / 2) / d;
    const int32_t gd = ((hi - g) * 40 + d / 2) / d;
    const int32_t bd = ((hi - b) * 40 + d / 2) / d;
    if (r == hi) c.h = bd - gd;
    else if (g == hi) c.h = 80 + rd - bd;
    else c.h = 160 + gd - rd;
    if (c.h < 0) c.h += 240;
    if (c.h > 240) c.h -= 240;
    return c;
}

RgbColor HlsToRgb240(int32_t h, int32_t l, int32_t s) {
    if (s == 0) {
        const int32_t v = l * 255 / 240;
        return {v, v, v};
    }
    const int32_t m2 = l <= 120 ? (l * (240 + s) + 120) / 240 : l + s - (l * s + 120) / 240;
    const int32_t m1 = 2 * l - m2;
    return {(Hue240(m1, m2, h + 80) * 255 + 120) / 240, (Hue240(m1, m2, h) * 255 + 120) / 240,
            (Hue240(m1, m2, h - 80) * 255 + 120) / 240};
}

HslColor RgbToHsl255(int32_t r, int32_t g, int32_t b) {
    const int32_t hi = std::max({r, g, b});
    const int32_t lo = std::min({r, g, b});
    const double l = double(hi + lo) * 0.5;
    double h = 0.0, s = 0.0;
    if (hi != lo) {
        const double d = double(hi - lo);
        // 511 and not 510 on the light side: the scale's own quirk.
        s = l < 128.0 ? d * 255.0 / double(hi + lo) : d * 255.0 / double(511 - hi - lo);
        if (r == hi) h = double(g - b) / d;
        else if (g == hi) h = double(b - r) / d + 2.0;
        else h = double(r - g) / d + 4.0;
        h *= 42.5;
        if (h < 0.0) h += 255.0;
        else if (h > 255.0) h -= 255.0;
    }
    return {int32_t(h + 0.5), int32_t(s + 0.5), int32_t(l + 0.5)};
}

RgbColor HslToRgb255(int32_t h, int32_t s, int32_t l) {
    if (s == 0) return {l, l, l};
    const double dl = double(l), ds = double(s);
    const double m2 = l < 128 ? (ds + 255.0) * dl / 65025.0 : (dl + ds - dl * ds / 255.0) / 255.0;
    const double m1 = dl / 127.5 - m2;
    return {Ramp255(m1, m2, double(h + 85)), Ramp255(m1, m2, double(h)), Ramp255(m1, m2, double(h - 85))};
}
