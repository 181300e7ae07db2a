#include "effects/Background.h"

#include "effects/ByteFraction.h"
#include "effects/ColorConversion.h"
#include "effects/EffectLayer.h"
#include "state/WorkImages.h"
#include "state/DialogState.h"
#include "state/Parameters.h"
#include "state/Progress.h"
#include "effects/RenderDriver.h"
#include "state/ViewState.h"
#include "platform/PageMemory.h"
#include "raster/Raster.h"

#include <algorithm>
#include <utility>
#include <vector>

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

namespace {

// How one placement colours the texture, worked out once.
struct Toning {
    float shadow[3], midtone[3], highlight[3];
    float hueShift, saturation;
    bool enhanced, shiftColors;
    EnhancedRange range;
};

Toning ToningOf(const EffectLayer& layer, const uint8_t* samples, int32_t stride, int32_t w, int32_t h) {
    const FilterParameters& p = *gParams;
    Toning t = {{float(layer.ShadowRed), float(layer.ShadowGreen), float(layer.ShadowBlue)},
                {float(layer.MidtoneRed), float(layer.MidtoneGreen), float(layer.MidtoneBlue)},
                {float(layer.HighlightRed), float(layer.HighlightGreen), float(layer.HighlightBlue)},
                float(p.BackgroundHue) * 1.275f,
                float(p.BackgroundMidtone) / 100.0f,
                p.BackgroundEnhanced != 0,
                false,
                {}};
    t.shiftColors = !(t.hueShift == 0.0f && t.saturation == 1.0f && !t.enhanced);
    if (t.enhanced) t.range = FindRange(layer, samples, stride, w, h);
    return t;
}

void PlaceRow(const Toning& t, const EffectLayer& layer, const uint8_t* row, int32_t w, uint8_t* out) {
    for (int32_t x = 0; x < w; ++x, out += 4) {
        const float v = ByteFraction(layer.Curve[row[x]]);
        int32_t c[3];
        if (v <= 0.65f) {
            const float f = (0.65f - v) * 1.5384616f;
            for (int i = 0; i < 3; ++i) c[i] = int32_t(t.shadow[i] * f + t.midtone[i] * (1.0f - f));
        } else {
            const float f = (v - 0.65f) * 2.857143f;
            for (int i = 0; i < 3; ++i) c[i] = int32_t(t.highlight[i] * f + t.midtone[i] * (1.0f - f));
        }
        if (t.shiftColors) {
            HlsColor hls = RgbToHls240(c[0], c[1], c[2]);
            hls.h = int32_t(float(hls.h) + t.hueShift);
            hls.s = int32_t(float(hls.s) * t.saturation);
            if (t.enhanced && v < t.range.lo) {
                // The darkest tenth falls away into black.
                const float f = std::max(0.0f, 1.0f - (t.range.lo - v) * 4.0f);
                hls.l = int32_t(float(hls.l) * f);
                hls.s = int32_t(float(hls.s) * f);
            } else if (t.enhanced && v > t.range.hi) {
                // The brightest tenth gains light and colour.
                const float f = (v - t.range.hi) * 5.0f + 1.0f;
                hls.s = std::min(int32_t(float(hls.s) * f), 240);
                hls.l = std::min(int32_t(float(hls.l) * f), 240);
            }
            const RgbColor rgb = HlsToRgb240(hls.h, hls.l, hls.s);
            c[0] = rgb.r, c[1] = rgb.g, c[2] = rgb.b;
        }
        for (int i = 0; i < 3; ++i) out[i] = uint8_t(std::clamp(c[i], 0, 255));
        out[3] = 255;
    }
}

// Whether the background fills the document's transparent parts too.
bool FillsEverything() {
    if (!gParams->BackgroundEntire || !DocumentHasAlpha()) return false;
    // A wash or a surface shown alone in the preview keeps its own transparency.
    return !(DialogOpen &&
             ((ActiveTab == TabWash && (ViewWash == ViewCodeWashOne || ViewWash == ViewCodeWashTwo)) ||
              (ActiveTab == TabSurface && (ViewSurface == ViewCodeSurfaceOne || ViewSurface == ViewCodeSurfaceTwo))));
}

// Row y of the background `back` behind WorkImage's row.
void CompositeRow(int32_t y, const uint8_t* back, bool entire) {
    const uint8_t* source = SourceImage + size_t(y) * WorkRowBytes;
    uint8_t* work = WorkImage + size_t(y) * WorkRowBytes;
    const uint8_t* mask = HaveMask && HostMaskData ? HostMaskData + size_t(y) * HostMaskRowBytes : nullptr;
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

// A full-size placement composed its rows as it went; the composite has nothing left.
bool ComposedWhilePlacing = false;

} // namespace

void PlaceBackground(EffectLayer& layer) {
    ComposedWhilePlacing = false;
    if (!layer.ToneDirty || !layer.View) return;
    Raster& view = *layer.View;
    const uint8_t* samples = view.ImageOrigin();
    // At full size the background is seen once, by the composite that follows: each row
    // goes behind the picture as soon as it is coloured, and no whole image is kept.
    const bool direct = !DialogOpen && SourceImage && WorkImage;
    if (!samples || (!direct && !BackgroundBlock.Reserve(WorkAreaBytes()))) return;
    if (!direct) BackgroundImage = static_cast<uint8_t*>(BackgroundBlock.Data);
    const int32_t h = std::min(view.Height(), ImageHeight), w = std::min(view.Width(), ImageWidth);
    const int32_t stride = view.RowBytes();
    const Toning toning = ToningOf(layer, samples, stride, w, h);
    const bool entire = FillsEverything();
    std::vector<uint8_t> line(direct ? size_t(WorkRowBytes) : 0);
    for (int32_t y = 0; y < h; ++y) {
        uint8_t* out = direct ? line.data() : BackgroundImage + size_t(y) * WorkRowBytes;
        PlaceRow(toning, layer, samples + size_t(y) * stride, w, out);
        if (direct) CompositeRow(y, line.data(), entire);
        ReportStageProgress(y, h);
    }
    if (direct) {
        // Rows the texture does not reach have no background, as in a fresh image.
        std::fill(line.begin(), line.end(), uint8_t(0));
        for (int32_t y = std::max(h, 0); y < ImageHeight; ++y) CompositeRow(y, line.data(), entire);
        ComposedWhilePlacing = true;
    }
    layer.ToneDirty = 0;
}

void CompositeBackground() {
    if (std::exchange(ComposedWhilePlacing, false)) return;
    if (!BackgroundImage || !SourceImage || !WorkImage || BackgroundBlock.Bytes < WorkAreaBytes()) return;
    const bool entire = FillsEverything();
    for (int32_t y = 0; y < ImageHeight; ++y) CompositeRow(y, BackgroundImage + size_t(y) * WorkRowBytes, entire);
}
