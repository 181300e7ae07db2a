// A wash meets the picture: one keep value a pixel (255 leaves it, 0 is the full
// effect), and the wash type says what the keep value does.
#include "effects/ByteFraction.h"
#include "effects/Engine.h"
#include "effects/Noise.h"
#include "effects/SurfaceColor.h"
#include "state/WorkImages.h"
#include "state/Progress.h"
#include "effects/RenderDriver.h"
#include "raster/Raster.h"

#include <algorithm>
#include <vector>

namespace {

uint8_t Min255(int32_t v) { return uint8_t(std::min(v, 255)); }

// The stain colour mixed into a pixel by the stain's brightness m.
int32_t ColorMix(int32_t p, int32_t c, float m) { return TruncToInt(BoostMix(float(c), float(p), m)); }

// The surface beneath the wash shows where the wash takes the picture away.
void BlendWashArea(uint8_t* pixel, const uint8_t* wash, float k) {
    if (k != 0.0f) {
        const float a = k / 255.0f;
        for (int i = 0; i < 3; ++i) pixel[i] = Min255(TruncToInt(float(wash[i]) * (1.0f - a) + float(pixel[i]) * a));
    } else {
        for (int i = 0; i < 3; ++i) pixel[i] = wash[i];
    }
}

struct WashInputs {
    const uint8_t* texture;
    const uint8_t* coverage;
    int32_t textureRow, coverageRow;
};

bool Inputs(EffectLayer& layer, WashInputs& in) {
    Raster* view = layer.View;
    Raster* coverage = layer.ActiveCoverage;
    if (!view || !coverage || !view->ImageOrigin() || !coverage->ImageOrigin()) return false;
    in = {view->ImageOrigin(), coverage->ImageOrigin(), view->RowBytes(), coverage->RowBytes()};
    return true;
}

// One row of pixels by their keep values k: a = k / 255 of the picture stays, the rest
// takes the type's colour. Whole keep values (the table's) read their fraction.
void ApplyWashType(uint8_t type, uint8_t* pixel, const float* keep, int32_t w, const int32_t rgb[3], float m,
                   bool whole) {
    if (type > 3) return; // no such type: the picture stays
    for (int32_t x = 0; x < w; ++x, pixel += 4) {
        const float k = keep[x];
        if (type == 0) {
            pixel[3] = uint8_t(TruncToInt(std::min(float(pixel[3]), k)));
            continue;
        }
        const float a = whole ? ByteFraction(uint8_t(k)) : k / 255.0f;
        const float b = 1.0f - a;
        for (int i = 0; i < 3; ++i) {
            const int32_t p = pixel[i];
            float q = 0.0f;
            if (type == 1) q = float(p * rgb[i] / 255);
            else if (type == 2) q = float(uint8_t(~(((255 - p) * (255 - rgb[i])) >> 8)));
            else q = float(ColorMix(p, rgb[i], m));
            pixel[i] = Min255(TruncToInt(q * b + float(p) * a));
        }
    }
}

} // namespace

void CompositeWash(EffectLayer& layer) {
    WashInputs in;
    if (!WorkImage || !layer.EdgeMaskWork || !Inputs(layer, in)) return;
    const int32_t h = std::min({layer.View->Height(), layer.ActiveCoverage->Height() + 3, ImageHeight});
    const int32_t w = std::min({layer.View->Width(), layer.ActiveCoverage->Width() + 3, ImageWidth});
    if (h <= 0 || w <= 0) return;
    const int32_t rgb[3] = {layer.StainRed, layer.StainGreen, layer.StainBlue};
    const float m = float(rgb[0] + rgb[1] + rgb[2]) / 765.0f;
    const bool selection = HaveMask && HostMaskData;
    const bool contrast = layer.Intensity >= 101;
    const float gain = float(layer.Intensity - 100) / 70.0f + 1.0f;
    std::vector<float> keep(static_cast<size_t>(w));
    for (int32_t y = 0; y < h; ++y) {
        uint8_t* row = WorkImage + size_t(y) * WorkRowBytes;
        const uint8_t* washRow = KeepWashArea && WashAreaBuffer ? WashAreaBuffer + size_t(y) * WorkRowBytes : nullptr;
        const uint8_t* texture = in.texture + size_t(y) * in.textureRow;
        const uint8_t* coverage = in.coverage + size_t(y) * in.coverageRow;
        const uint8_t* edge = layer.EdgeMaskWork + size_t(y) * ImageWidth;
        const uint8_t* mask = selection ? HostMaskData + size_t(y) * HostMaskRowBytes : nullptr;
        // The keep value of each pixel first (and the surface beneath where it is kept),
        // then the type's formula over the row.
        for (int32_t x = 0; x < w; ++x) {
            const float t = float(texture[x]);
            const float c = ByteFraction(coverage[x]);
            const uint8_t e = layer.Inside ? edge[x] : uint8_t(255 - edge[x]);
            float s = c * ByteFraction(e);
            if (mask) s = s * ByteFraction(mask[x]);
            const float v = s * t + (1.0f - s) * 255.0f;
            float k;
            if (contrast) {
                // The contrast regime; the keep value stays a float.
                k = gain * (v - 127.0f) + 127.0f;
                k = std::clamp(k, 0.0f, 255.0f);
            } else {
                k = float(layer.Curve[size_t(TruncToInt(v) & 255)]);
            }
            if (washRow && k != 255.0f) {
                const uint8_t* wash = washRow + size_t(x) * 4;
                BlendWashArea(row + size_t(x) * 4, wash, k);
                k = std::max(k, float(wash[3]));
            }
            keep[size_t(x)] = k;
        }
        ApplyWashType(layer.WashType, row, keep.data(), w, rgb, m, !contrast);
        ReportStageProgress(y, h);
    }
}

void CompositeWashToMask(EffectLayer& layer, const HostPlanes& out) {
    if (!out.data) return;
    const int32_t planes = out.planes;
    if (planes < (ModeIsCMYK ? 6 : 5)) return;
    WashInputs in;
    if (!layer.EdgeMaskWork || !Inputs(layer, in)) return;
    const int32_t h = std::min({layer.View->Height(), layer.ActiveCoverage->Height() + 3, out.height});
    const int32_t w = std::min({layer.View->Width(), layer.ActiveCoverage->Width() + 3, out.width});
    if (h <= 0 || w <= 0) return;
    const bool readEdge = layer.EdgeThreshold != 0 || layer.EdgeBlur != 0;
    for (int32_t y = 0; y < h; ++y) {
        uint8_t* pixel = out.data + ptrdiff_t(y) * out.rowBytes;
        const uint8_t* washRow = KeepWashArea && WashAreaBuffer ? WashAreaBuffer + size_t(y) * WorkRowBytes : nullptr;
        for (int32_t x = 0; x < w; ++x, pixel += planes) {
            const float t = float(in.texture[size_t(y) * in.textureRow + x]);
            const float c = float(in.coverage[size_t(y) * in.coverageRow + x]) / 255.0f;
            int32_t e = 255;
            if (readEdge) {
                e = layer.EdgeMaskWork[size_t(y) * ImageWidth + x];
                if (!layer.Inside) e = 255 - e;
            }
            float s = c * (float(e) / 255.0f);
            if (HaveMask && HostMaskData) s = s * (float(HostMaskData[size_t(y) * HostMaskRowBytes + x]) / 255.0f);
            float k = float(layer.Curve[size_t(TruncToInt(s * t + (1.0f - s) * 255.0f) & 255)]);
            if (washRow) {
                const uint8_t* wash = washRow + size_t(x) * 4;
                // Scaled by the pixel's alpha in f32 and not truncated: the keep value stays
                // fractional into the blend, as in the colour pass.
                k = k * float(pixel[3]) / 255.0f;
                BlendWashArea(pixel, wash, k);
                pixel[3] = 255;
                k = std::max(k, float(wash[3]));
            }
            uint8_t& mask = pixel[planes - 1];
            mask = uint8_t(TruncToInt(std::min(float(mask), k)));
        }
        ReportStageProgress(y, h);
    }
}
