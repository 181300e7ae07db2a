// FitRasterToScreen: the window of a large texture that the preview shows.
#include "effects/LayerTexture.h"

#include "effects/EffectLayer.h"
#include "raster/Raster.h"
#include "state/WorkImages.h"
#include "state/Progress.h"
#include "state/DialogState.h"

#include <algorithm>
#include <cstring>

bool FitRasterToScreen(EffectLayer& layer, Raster*& out, Raster& src) {
    if (!DialogOpen) return false;
    // The preview scale is a single-precision quantity here, as everywhere in placement.
    const float s = float(PreviewScale);
    const uint8_t* origin = src.ImageOriginIfAny();
    if (!origin || !(s > 0.0f)) return false;
    const int64_t srcWidth = src.Width(), srcHeight = src.Height();
    const int64_t pw = int64_t(float(srcWidth) / s), ph = int64_t(float(srcHeight) / s);
    if (pw <= ImageWidth && ph <= ImageHeight) return false;

    const int32_t cw = int32_t(std::min(float(ImageWidth) * s, float(srcWidth)));
    const int32_t ch = int32_t(std::min(float(ImageHeight) * s, float(srcHeight)));
    Raster* made = NewRaster(1, RasterRect{0, 0, ch, cw}, 1, 8, 0, 1);
    if (!made || !made->Pixels()) {
        FreeRaster(made);
        return false;
    }
    const int64_t ox = int64_t(float(PreviewOriginX) * s + float(layer.OffsetX));
    const int64_t oy = int64_t(float(PreviewOriginY) * s + float(layer.OffsetY));
    // Only what lies inside the texture is copied; offsets kept by MoveLayer never
    // reach past it, so this clip only matters for inconsistent settings.
    const int64_t x0 = std::max<int64_t>(ox, 0), x1 = std::min<int64_t>(ox + cw, srcWidth);
    uint8_t* d = made->Pixels();
    for (int32_t row = 0; row < ch; ++row) {
        const int64_t y = oy + row;
        if (y >= 0 && y < srcHeight && x0 < x1)
            std::memcpy(d + int64_t(row) * made->RowBytes() + (x0 - ox), origin + y * src.RowBytes() + x0,
                        size_t(x1 - x0));
        ReportStageProgress(row, ch);
    }
    out = made;
    return true;
}
