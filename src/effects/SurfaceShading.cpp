// The surface pass: each pixel of the picture coloured by the shade under it.
#include "effects/ByteFraction.h"
#include "effects/SurfaceColor.h"
#include "effects/SurfaceInternal.h"
#include "effects/Surface.h"
#include "state/WorkImages.h"
#include "state/Parameters.h"
#include "state/Progress.h"
#include "effects/RenderDriver.h"
#include "raster/Raster.h"

#include <algorithm>
#include <cstring>
#include <vector>

bool SurfaceEntireNow = false;

namespace {

uint8_t ClampByte(float v) { return uint8_t(int32_t(std::clamp(v, 0.0f, 255.0f))); }

float SelectionAt(int32_t x, int32_t y) { return ByteFraction(HostMaskData[size_t(y) * HostMaskRowBytes + size_t(x)]); }

void KeepTone(size_t offset, const int32_t tone[3], int32_t alpha) {
    if (!WashAreaBuffer) return;
    uint8_t* to = WashAreaBuffer + offset;
    for (int i = 0; i < 3; ++i) to[i] = uint8_t(std::clamp(tone[i], 0, 255));
    to[3] = uint8_t(alpha);
}

// The washes' edge masks sampled at the mask row the picture came from; where a work
// row or column falls in the mask is worked out once for the pass.
class WashMaskFollow {
public:
    WashMaskFollow(int32_t w, int32_t h) {
        const FilterParameters& p = *gParams;
        if (!p.UseWash && !WashToMaskRun) return;
        for (int32_t i = 0; i < (p.SecondWashExists ? 2 : 1); ++i) {
            EffectLayer& wash = WashLayers[i];
            if (wash.EdgeMask && wash.EdgeMask->ImageOrigin() && wash.EdgeMaskWork) layers_[count_++] = &wash;
        }
        if (!count_) return;
        rows_.resize(static_cast<size_t>(h));
        columns_.resize(static_cast<size_t>(w));
        for (int32_t y = 0; y < h; ++y)
            rows_[size_t(y)] = int32_t(double(float(double(y) + PreviewOriginY)) * PreviewScale);
        for (int32_t x = 0; x < w; ++x)
            columns_[size_t(x)] = int32_t(double(float(double(x) + PreviewOriginX)) * PreviewScale);
    }

    void CopyRow(int32_t y, const int32_t* maskRows, int32_t w) const {
        for (int32_t i = 0; i < count_; ++i) {
            Raster& mask = *layers_[i]->EdgeMask;
            const uint8_t* origin = mask.ImageOrigin();
            uint8_t* to = layers_[i]->EdgeMaskWork + size_t(y) * ImageWidth;
            for (int32_t x = 0; x < w; ++x) {
                const int32_t mr = rows_[size_t(maskRows[x])], mc = columns_[size_t(x)];
                if (mr < 0 || mc < 0 || mr >= mask.Height() || mc >= mask.Width()) continue;
                to[x] = origin[size_t(mr) * mask.RowBytes() + mc];
            }
        }
    }

private:
    EffectLayer* layers_[2] = {};
    int32_t count_ = 0;
    std::vector<int32_t> rows_, columns_;
};

// What every pixel of a pass shares: the colour settings and the intensity.
struct SurfacePass {
    SurfaceColorSettings color = ReadSurfaceColorSettings();
    float intensity = float(gParams->SurfaceIntensity) / 100.0f;
};

// The coloured value mixed in by the intensity, or what the pass code wants, stored in
// SurfaceImage; picture takes the stored colour.
void StorePixel(const SurfacePass& pass, int32_t picture[3], int32_t alpha, const float colored[3],
                const int32_t tone[3], size_t offset) {
    const float m = pass.intensity;
    const int32_t toneTop = std::max({tone[0], tone[1], tone[2]});
    float out[3];
    int32_t a = alpha;
    if (SurfacePassCode == 1) {
        for (int i = 0; i < 3; ++i) out[i] = float(tone[i]);
        if (SurfaceEntireNow) {
            if (KeepWashArea) {
                KeepTone(offset, tone, toneTop);
                a = toneTop;
            } else {
                a = std::max(alpha, toneTop);
            }
        }
    } else if (SurfacePassCode == 2) {
        for (int i = 0; i < 3; ++i) out[i] = float(picture[i]);
        if (SurfaceEntireNow && KeepWashArea && WashAreaBuffer) std::memset(WashAreaBuffer + offset, 0, 4);
    } else {
        for (int i = 0; i < 3; ++i) out[i] = float(picture[i]) * (1.0f - m) + colored[i] * m;
        if (SurfaceEntireNow) {
            // Transparent pixels show the tone alone, as opaque as the tone is bright.
            const float q = ByteFraction(uint8_t(alpha));
            for (int i = 0; i < 3; ++i) out[i] = float(tone[i]) * (1.0f - q) + out[i] * q;
            if (KeepWashArea) KeepTone(offset, tone, toneTop);
            a = std::max(alpha, toneTop);
        }
    }
    uint8_t* to = SurfaceImage + offset;
    for (int i = 0; i < 3; ++i) {
        to[i] = ClampByte(out[i]);
        picture[i] = to[i];
    }
    to[3] = uint8_t(a);
}

} // namespace

void ApplySurfacePixel(int32_t picture[3], int32_t alpha, float shade, size_t offset, int32_t type) {
    const SurfacePass pass;
    float colored[3];
    int32_t tone[3];
    SurfaceColor(pass.color, picture, std::clamp(shade, 0.0f, 1.0f), colored, tone, type);
    StorePixel(pass, picture, alpha, colored, tone, offset);
}

void ShadeSurface() {
    if (!SurfaceShadeDirty) return;
    SurfaceShadeDirty = 0;
    if (!SurfaceLayers[0].View) return;
    const EffectLayer& shown = ShownSurface();
    Raster* view = shown.View;
    if (!view || !SourceImage || !WorkImage || !SurfaceImageReady()) return;
    const int32_t w = std::min(view->Width(), ImageWidth), h = std::min(view->Height(), ImageHeight);
    if (w <= 0 || h <= 0) return;
    const int32_t type = shown.SurfaceType;
    const int32_t stride = view->RowBytes();
    const float g2 = SlopeGain(1000.0);
    const int32_t shift = int32_t(g2 * 127.0f);
    // A View of another size than the relief was built for reads a fresh flat relief.
    if (ReliefBlock.Bytes < size_t(h - 1) * size_t(stride) + size_t(w) && !ReserveRelief(stride)) return;

    const ShadeLight light = SurfaceShadeLight();
    const SurfacePass pass;
    // One row at a time: the picture (as it lies on the relief), its alpha, the shade,
    // then the colour of the whole row, then the mix and store.
    const size_t n = static_cast<size_t>(w);
    std::vector<float> shade(n), colored(n * 3);
    std::vector<int32_t> pictures(n * 3), tones(n * 3), alphas(n), maskRows(n);
    const WashMaskFollow follow(w, h);
    SurfaceEntireNow = gParams->SurfaceEntire;
    const bool perspective = gParams->SurfacePerspectiveOn;
    for (int32_t y = h - 1; y >= 0; --y) {
        BuildShadeRow(light, y, view->Width(), view->Height(), stride, shade.data());
        for (float& v : shade) v = std::clamp(v, 0.0f, 1.0f);
        const uint8_t* relief = ReliefMap + size_t(y) * stride;
        const uint8_t* sourceRow = SourceImage + size_t(y) * WorkRowBytes;
        const uint8_t* workRow = WorkImage + size_t(y) * WorkRowBytes;
        for (int32_t x = 0; x < w; ++x) {
            int32_t* pixel = &pictures[size_t(x) * 3];
            if (perspective) {
                // The picture lies on the relief: shifted up by its height, lifted by
                // `shift` so the average stays in place, between two rows. The row below
                // takes 1 - f, so at depth 0 the picture still moves up a row; looks stored
                // with perspective depend on that shift.
                const float z = float(relief[x]) * g2;
                const int32_t zi = int32_t(z);
                const int32_t row = std::clamp(shift + y - zi, 0, h - 1);
                const float f = z - float(zi);
                const int32_t next = std::clamp(row + 1, 0, h - 1);
                const uint8_t* at = SourceImage + size_t(row) * WorkRowBytes + size_t(x) * 4;
                const uint8_t* below = SourceImage + size_t(next) * WorkRowBytes + size_t(x) * 4;
                for (int i = 0; i < 3; ++i) pixel[i] = int32_t(float(below[i]) * (1.0f - f) + float(at[i]) * f);
                alphas[size_t(x)] = int32_t(float(below[3]) * (1.0f - f) + float(at[3]) * f);
                maskRows[size_t(x)] = next;
            } else {
                for (int i = 0; i < 3; ++i) pixel[i] = sourceRow[size_t(x) * 4 + i];
                alphas[size_t(x)] = workRow[size_t(x) * 4 + 3];
                maskRows[size_t(x)] = y;
            }
        }
        SurfaceColorRow(pass.color, pictures.data(), shade.data(), w, type, colored.data(), tones.data());
        uint8_t* out = SurfaceImage + size_t(y) * WorkRowBytes;
        if (SurfacePassCode == 0 && !SurfaceEntireNow) {
            // The usual pass, StorePixel's mix alone, without its tests per pixel.
            const float m = pass.intensity;
            for (int32_t x = 0; x < w; ++x, out += 4) {
                for (int i = 0; i < 3; ++i) {
                    const size_t k = size_t(x) * 3 + size_t(i);
                    out[i] = ClampByte(float(pictures[k]) * (1.0f - m) + colored[k] * m);
                }
                out[3] = uint8_t(alphas[size_t(x)]);
            }
        } else {
            for (int32_t x = 0; x < w; ++x)
                StorePixel(pass, &pictures[size_t(x) * 3], alphas[size_t(x)], &colored[size_t(x) * 3],
                           &tones[size_t(x) * 3], size_t(y) * WorkRowBytes + size_t(x) * 4);
        }
        follow.CopyRow(y, maskRows.data(), w);
        // The pass runs upward, and so does its progress.
        ReportStageProgress(y, h);
    }
}

void SurfaceAlphaFromSource() {
    if (!SourceImage || !WorkImage) return;
    const bool mask = HaveMask && HostMaskData;
    for (int32_t y = 0; y < ImageHeight; ++y) {
        const uint8_t* s = SourceImage + size_t(y) * WorkRowBytes;
        uint8_t* d = WorkImage + size_t(y) * WorkRowBytes;
        for (int32_t x = 0; x < ImageWidth; ++x) {
            const uint8_t a = s[size_t(x) * 4 + 3];
            d[size_t(x) * 4 + 3] = mask ? uint8_t(int32_t(SelectionAt(x, y) * float(a))) : a;
        }
    }
}

void MergeSurfaceResult() {
    if (!SourceImage || !WorkImage || !SurfaceImageReady()) return;
    if (!(HaveMask && HostMaskData)) {
        if (SurfaceImage != WorkImage) std::memcpy(WorkImage, SurfaceImage, size_t(ImageHeight) * WorkRowBytes);
        return;
    }
    // Surfacing stays inside the selection, blended by its soft edge.
    for (int32_t y = 0; y < ImageHeight; ++y) {
        const uint8_t* s = SourceImage + size_t(y) * WorkRowBytes;
        const uint8_t* f = SurfaceImage + size_t(y) * WorkRowBytes;
        uint8_t* d = WorkImage + size_t(y) * WorkRowBytes;
        for (int32_t x = 0; x < ImageWidth; ++x) {
            const float m = SelectionAt(x, y);
            for (int i = 0; i < 4; ++i) {
                const size_t k = size_t(x) * 4 + i;
                d[k] = uint8_t(int32_t(float(s[k]) * (1.0f - m) + float(f[k]) * m));
            }
        }
    }
}
