#include "effects/Background.h"

#include "effects/ByteFraction.h"
#include "effects/ColorConversion.h"
#include "effects/EffectLayer.h"
#include "host/Acquisition.h"
#include "host/DialogState.h"
#include "host/Parameters.h"
#include "host/Progress.h"
#include "host/RenderDriver.h"
#include "host/ViewState.h"
#include "platform/PageMemory.h"
#include "raster/Raster.h"

#include <algorithm>

uint8_t* BackgroundImage = nullptr;

namespace {

PageBlock BackgroundBlock;

size_t WorkAreaBytes() { return size_t(ImageHeight) * size_t(WorkRowBytes); }

// The texture's range in tone, narrowed by a tenth of the span at each end.
struct EnhancedRange {
    float lo = 0.0f, hi = 0.0f;
};

EnhancedRange FindRange(const EffectLayer& layer, const uint8_t* samples, int32_t stride, int32_t w, int32_t h) {
    int32_t smallest = 255, largest = 0;
    for (int32_t y = 0; y < h; ++y)
        for (int32_t x = 0; x < w; ++x) {
            const int32_t v = layer.Curve[samples[size_t(y) * stride + x]];
            smallest = std::min(smallest, v);
            largest = std::max(largest, v);
        }
    EnhancedRange r{float(smallest) / 255.0f, float(largest) / 255.0f};
    if (r.hi - r.lo != 0.0f) {
        const double span = double(r.hi) - double(r.lo);
        r.lo = float(double(r.lo) + span * 0.1);
        r.hi = float(double(r.hi) - span * 0.1);
    }
    return r;
}

} // namespace

void AllocateBackgroundImage() {
    BackgroundBlock.Replace(WorkAreaBytes());
    BackgroundImage = static_cast<uint8_t*>(BackgroundBlock.Data);
}

void FreeBackgroundImage() {
    BackgroundBlock.Free();
    BackgroundImage = nullptr;
}

void PlaceBackground(EffectLayer& layer) {
    if (!layer.ToneDirty || !layer.View) return;
    Raster& view = *layer.View;
    const uint8_t* samples = view.ImageOrigin();
    if (!samples || !BackgroundBlock.Reserve(WorkAreaBytes())) return;
    BackgroundImage = static_cast<uint8_t*>(BackgroundBlock.Data);
    const FilterParameters& p = *gParams;
    const int32_t h = std::min(view.Height(), ImageHeight), w = std::min(view.Width(), ImageWidth);
    const int32_t stride = view.RowBytes();
    const float hueShift = float(p.BackgroundHue) * 1.275f;
    const float saturation = float(p.BackgroundMidtone) / 100.0f;
    const bool enhanced = p.BackgroundEnhanced != 0;
    const EnhancedRange range = enhanced ? FindRange(layer, samples, stride, w, h) : EnhancedRange{};
    const bool shiftColors = !(hueShift == 0.0f && saturation == 1.0f && !enhanced);
    const float shadow[3] = {float(layer.ShadowRed), float(layer.ShadowGreen), float(layer.ShadowBlue)};
    const float midtone[3] = {float(layer.MidtoneRed), float(layer.MidtoneGreen), float(layer.MidtoneBlue)};
    const float highlight[3] = {float(layer.HighlightRed), float(layer.HighlightGreen), float(layer.HighlightBlue)};

    for (int32_t y = 0; y < h; ++y) {
        const uint8_t* row = samples + size_t(y) * stride;
        uint8_t* out = BackgroundImage + size_t(y) * WorkRowBytes;
        for (int32_t x = 0; x < w; ++x, out += 4) {
            const float v = ByteFraction(layer.Curve[row[x]]);
            int32_t c[3];
            if (v <= 0.65f) {
                const float t = (0.65f - v) * 1.5384616f;
                for (int i = 0; i < 3; ++i) c[i] = int32_t(shadow[i] * t + midtone[i] * (1.0f - t));
            } else {
                const float t = (v - 0.65f) * 2.857143f;
                for (int i = 0; i < 3; ++i) c[i] = int32_t(highlight[i] * t + midtone[i] * (1.0f - t));
            }
            if (shiftColors) {
                HlsColor hls = RgbToHls240(c[0], c[1], c[2]);
                hls.h = int32_t(float(hls.h) + hueShift);
                hls.s = int32_t(float(hls.s) * saturation);
                if (enhanced && v < range.lo) {
                    // The darkest tenth falls away into black.
                    const float f = std::max(0.0f, 1.0f - (range.lo - v) * 4.0f);
                    hls.l = int32_t(float(hls.l) * f);
                    hls.s = int32_t(float(hls.s) * f);
                } else if (enhanced && v > range.hi) {
                    // The brightest tenth gains light and colour.
                    const float f = (v - range.hi) * 5.0f + 1.0f;
                    hls.s = std::min(int32_t(float(hls.s) * f), 240);
                    hls.l = std::min(int32_t(float(hls.l) * f), 240);
                }
                const RgbColor rgb = HlsToRgb240(hls.h, hls.l, hls.s);
                c[0] = rgb.r, c[1] = rgb.g, c[2] = rgb.b;
            }
            for (int i = 0; i < 3; ++i) out[i] = uint8_t(std::clamp(c[i], 0, 255));
            out[3] = 255;
        }
        ReportProgress(float(ProgressPercent + ProgressSpan * y / h), 100);
    }
    layer.ToneDirty = 0;
}

void CompositeBackground() {
    if (!BackgroundImage || !SourceImage || !WorkImage || BackgroundBlock.Bytes < WorkAreaBytes()) return;
    const FilterParameters& p = *gParams;
    bool entire = p.BackgroundEntire && DocumentHasAlpha();
    // A wash or a surface shown alone in the preview keeps its own transparency.
    if (DialogOpen && ((ActiveTab == TabWash && (ViewWash == ViewCodeWashOne || ViewWash == ViewCodeWashTwo)) ||
                       (ActiveTab == TabSurface &&
                        (ViewSurface == ViewCodeSurfaceOne || ViewSurface == ViewCodeSurfaceTwo))))
        entire = false;
    const bool selection = HaveMask && HostMaskData;
    for (int32_t y = 0; y < ImageHeight; ++y) {
        const uint8_t* back = BackgroundImage + size_t(y) * WorkRowBytes;
        const uint8_t* source = SourceImage + size_t(y) * WorkRowBytes;
        uint8_t* work = WorkImage + size_t(y) * WorkRowBytes;
        const uint8_t* mask = selection ? HostMaskData + size_t(y) * HostMaskRowBytes : nullptr;
        for (int32_t x = 0; x < ImageWidth; ++x, back += 4, source += 4, work += 4) {
            // An opaque pixel keeps its colour exactly (the background's weight is 0) and
            // its alpha, unless Entire sets it from the selection.
            if (work[3] == 255 && !(entire && mask)) continue;
            const float a = ByteFraction(work[3]);
            const float b = 1.0f - a;
            if (!mask) {
                for (int i = 0; i < 3; ++i) work[i] = uint8_t(int32_t(float(back[i]) * b + float(work[i]) * a));
                work[3] = entire ? 255 : std::max(work[3], source[3]);
            } else {
                // Outside the selection the source takes the background's place.
                const float m = ByteFraction(mask[x]);
                const float n = 1.0f - m;
                for (int i = 0; i < 3; ++i)
                    work[i] = uint8_t(int32_t((float(source[i]) * n + float(back[i]) * m) * b + float(work[i]) * a));
                work[3] = entire ? uint8_t(int32_t(std::max(m * 255.0f, float(source[3])))) : std::max(work[3], source[3]);
            }
        }
    }
}
