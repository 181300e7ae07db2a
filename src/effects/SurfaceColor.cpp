#include "effects/SurfaceColor.h"

#include "effects/ColorConversion.h"
#include "state/Parameters.h"

#include <algorithm>

namespace {

void Unpack(uint32_t color, float to[3]) {
    to[0] = float(color & 0xFF);
    to[1] = float((color >> 8) & 0xFF);
    to[2] = float((color >> 16) & 0xFF);
}

// Shadow and highlight meet the midtone colour at shade 0.65; the weight (0..1) is how
// much of the colours there is against plain grey.
void TriTone(const SurfaceColorSettings& c, float shade, float out[3]) {
    float wm, we;
    const float* end;
    if (shade <= 0.65f) {
        const float u = shade / 0.65f;
        wm = u * u * c.weight;
        we = (1.0f - u * u) * c.weight;
        end = c.shadow;
    } else {
        const float u = float(double(1.0f - shade) / 0.35);
        wm = u * c.weight;
        we = (1.0f - u) * c.weight;
        end = c.highlight;
    }
    const float grey = (1.0f - std::min(1.0f, we + wm)) * (shade * 255.0f);
    for (int i = 0; i < 3; ++i) out[i] = end[i] * we + c.midtone[i] * wm + grey;
}

float Enhance(int32_t p, float o) {
    const float fp = float(p);
    const float v = p >= 128 ? 255.0f - ((255.0f - o) * 2.0f) * (255.0f - fp) / 255.0f : (o * 2.0f) * fp / 255.0f;
    return float(uint8_t(int32_t(v)));
}

// Integer arithmetic with division toward zero throughout.
float Vivid(int32_t p, float o) {
    const int32_t t = int32_t(o);
    if (t >= 128) return float(std::min((p * 256) / (511 - 2 * t), 255));
    if (t == 0) return 0.0f;
    const int32_t x = ((p - 255) * 256) / (2 * t);
    return x + 255 < 0 ? 0.0f : float(uint8_t(x + 255));
}

float ColorBurn(int32_t p, float o) {
    const int32_t t = int32_t(o);
    if (t == 0) return 0.0f;
    return float(uint8_t(std::max(0, ((p - 255) * 256) / t + 255)));
}

// The tone's hue and saturation at the picture's lightness, multiplied in the shadows,
// screened in the lights; the rest a soft light of the tone on the picture.
void Colorize(const int32_t picture[3], const int32_t tone[3], float shade, float weight, float out[3]) {
    const HslColor pic = RgbToHsl255(picture[0], picture[1], picture[2]);
    const HslColor ton = RgbToHsl255(tone[0], tone[1], tone[2]);
    const RgbColor c = HslToRgb255(ton.h, ton.s, pic.l);
    const float colorized[3] = {float(c.r), float(c.g), float(c.b)};
    for (int i = 0; i < 3; ++i) {
        const float p = float(picture[i]);
        const float o = out[i];
        const float mul = o * p / 255.0f;
        const float scr = 255.0f - (255.0f - p) * (255.0f - o) / 255.0f;
        const float x = shade <= 0.5f ? mul * (1.0f - 2.0f * shade) + colorized[i] * (2.0f * shade)
                                      : scr * (2.0f * shade - 1.0f) + colorized[i] * (2.0f - 2.0f * shade);
        const float y = ((255.0f - p) * mul + p * scr) / 255.0f;
        out[i] = x * weight + (1.0f - weight) * y;
    }
}

inline void Tint(const int32_t picture[3], float tone[3]) {
    const float m = float(picture[0] + picture[1] + picture[2]) / 765.0f;
    float a[3];
    for (int i = 0; i < 3; ++i) {
        const float p = float(picture[i]);
        a[i] = std::min(p, tone[i]) * (1.0f - m) + m * p;
    }
    for (int i = 0; i < 3; ++i) tone[i] = std::min(std::max(a[i], tone[i]) * m + a[i] * (1.0f - m), 255.0f);
}

} // namespace

void TintMix(const int32_t picture[3], float tone[3]) { Tint(picture, tone); }

float BoostMix(float c, float o, float m) { return std::min((o * c * (1.0f - m)) / 255.0f + (o + c) * m, 255.0f); }

SurfaceColorSettings ReadSurfaceColorSettings() {
    const FilterParameters& p = *gParams;
    SurfaceColorSettings c;
    c.brightness = float(p.SurfaceBrightness - 100);
    if (c.brightness > 0.0f) c.brightness *= 1.5f;
    c.hueShift = float(p.SurfaceHue) * 1.275f;
    c.weight = float(p.SurfaceMidtone) / 100.0f;
    Unpack(p.SurfaceShadowColor, c.shadow);
    Unpack(p.SurfaceMidtoneColor, c.midtone);
    Unpack(p.SurfaceHighlightColor, c.highlight);
    c.contrast = p.SurfaceContrast;
    return c;
}

void SurfaceColor(const int32_t picture[3], int32_t /*alpha*/, float shade, float out[3], int32_t tone[3],
                  int32_t type) {
    SurfaceColor(ReadSurfaceColorSettings(), picture, shade, out, tone, type);
}

namespace {

[[gnu::always_inline]] inline void ColorPixel(const SurfaceColorSettings& settings, const int32_t picture[3],
                                              float shade, float out[3], int32_t tone[3], int32_t type) {
    TriTone(settings, shade, out);
    for (int i = 0; i < 3; ++i) tone[i] = int32_t(out[i]);

    switch (type) {
    case SurfaceColorize: Colorize(picture, tone, shade, settings.weight, out); break;
    case SurfaceTint: Tint(picture, out); break;
    case SurfaceBoost: {
        const float m = float(picture[0] + picture[1] + picture[2]) / 765.0f;
        for (int i = 0; i < 3; ++i) out[i] = BoostMix(float(picture[i]), out[i], m);
        break;
    }
    case SurfaceEnhance:
        for (int i = 0; i < 3; ++i) out[i] = Enhance(picture[i], out[i]);
        break;
    case SurfaceVivid:
        for (int i = 0; i < 3; ++i) out[i] = Vivid(picture[i], out[i]);
        break;
    case SurfaceMultiply:
        for (int i = 0; i < 3; ++i) out[i] = float(picture[i]) * out[i] / 255.0f;
        break;
    case SurfaceColorBurn:
        for (int i = 0; i < 3; ++i) out[i] = ColorBurn(picture[i], out[i]);
        break;
    default: break; // the plain tone
    }

    if (settings.hueShift != 0.0f || settings.brightness != 0.0f) {
        const HlsColor hls = RgbToHls240(int32_t(out[0]), int32_t(out[1]), int32_t(out[2]));
        const RgbColor c = HlsToRgb240(int32_t(float(hls.h) + settings.hueShift), hls.l, hls.s);
        const int32_t shifted[3] = {c.r, c.g, c.b};
        for (int i = 0; i < 3; ++i)
            out[i] = float(std::clamp(int32_t(float(shifted[i]) + settings.brightness), 0, 255));
    }
    if (settings.contrast != 100) {
        const float c = settings.contrast <= 100 ? float(settings.contrast) / 100.0f
                                                 : float(settings.contrast - 100) / 30.0f + 1.0f;
        for (int i = 0; i < 3; ++i) out[i] = std::clamp((out[i] - 127.0f) * c + 127.0f, 0.0f, 255.0f);
    }
}

} // namespace

void SurfaceColor(const SurfaceColorSettings& settings, const int32_t picture[3], float shade, float out[3],
                  int32_t tone[3], int32_t type) {
    ColorPixel(settings, picture, shade, out, tone, type);
}

void SurfaceColorRow(const SurfaceColorSettings& settings, const int32_t* pictures, const float* shades, int32_t count,
                     int32_t type, float* out, int32_t* tones) {
    for (int32_t i = 0; i < count; ++i)
        ColorPixel(settings, pictures + 3 * i, shades[i], out + 3 * i, tones + 3 * i, type);
}
