// The background's colours at thumbnail size: the tri-tone ramp that meets the midtone at
// 0.65, and the hue and saturation shift through the engine's 240-scale conversions.
#include "pickers/ThumbPasses.h"
#include "pickers/Thumbnails.h"

#include "effects/ColorConversion.h"
#include "effects/EffectLayer.h"
#include "state/Parameters.h"

#include <algorithm>

namespace {

uint8_t ToByte(int32_t v) { return uint8_t(std::clamp(v, 0, 255)); }

void TriTone(float g, const EffectLayer& layer, float colour[3]) {
    const float shadow[3] = {float(layer.ShadowRed), float(layer.ShadowGreen), float(layer.ShadowBlue)};
    const float mid[3] = {float(layer.MidtoneRed), float(layer.MidtoneGreen), float(layer.MidtoneBlue)};
    const float high[3] = {float(layer.HighlightRed), float(layer.HighlightGreen), float(layer.HighlightBlue)};
    if (g <= 0.65f) {
        const float t = (0.65f - g) * 1.5384616f;
        for (int c = 0; c < 3; ++c) colour[c] = shadow[c] * t + mid[c] * (1.0f - t);
    } else {
        const float t = (g - 0.65f) * 2.857143f;
        for (int c = 0; c < 3; ++c) colour[c] = high[c] * t + mid[c] * (1.0f - t);
    }
}

} // namespace

void ShiftHueSaturation(const float colour[3], float hueOffset, float saturation, uint8_t bgr[3]) {
    int32_t r = int32_t(colour[0]), g = int32_t(colour[1]), b = int32_t(colour[2]);
    if (hueOffset != 0.0f || saturation != 1.0f) {
        const HlsColor hls = RgbToHls240(r, g, b);
        const RgbColor shifted =
            HlsToRgb240(int32_t(float(hls.h) + hueOffset), hls.l, int32_t(float(hls.s) * saturation));
        r = shifted.r;
        g = shifted.g;
        b = shifted.b;
    }
    bgr[0] = ToByte(b);
    bgr[1] = ToByte(g);
    bgr[2] = ToByte(r);
}

void BackgroundPass(uint8_t* pixels, int32_t stride, const EffectLayer& layer) {
    const float hue = float(gParams->BackgroundHue) * 1.275f;
    const float saturation = float(gParams->BackgroundMidtone) / 100.0f;
    for (int32_t y = 0; y < ThumbHeight; ++y) {
        uint8_t* p = pixels + size_t(y) * size_t(stride);
        for (int32_t x = 0; x < ThumbWidth; ++x, p += 3) {
            float g = float(p[0]) / 255.0f;
            if (layer.Invert) g = 1.0f - g;
            float colour[3];
            TriTone(g, layer, colour);
            ShiftHueSaturation(colour, hue, saturation, p);
        }
    }
}
