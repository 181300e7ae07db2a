// Alpha and blending over the image proper: ForceAlpha, MaxAlpha, BlendRaster.
#include "raster/Raster.h"

#include <algorithm>

void Raster::ForceAlpha(uint8_t v) {
    if (Planes < 4) return;
    uint8_t* origin = ImageOrigin();
    if (!origin) return;
    uint8_t* alpha = origin + size_t(3) * PlaneBytes();
    const size_t rowBytes = size_t(RowBytes());
    for (int32_t y = 0; y < Height(); ++y) {
        uint8_t* row = alpha + size_t(y) * rowBytes;
        for (int32_t x = 0; x < Width(); ++x) row[x] = std::max(row[x], v);
    }
}

void Raster::MaxAlpha(Raster& other) {
    if (Planes < 4) return;
    uint8_t* origin = ImageOrigin();
    const uint8_t* theirs = other.ImageOrigin();
    if (!origin || !theirs) return;
    uint8_t* alpha = origin + size_t(3) * PlaneBytes();
    const int32_t height = std::min(Height(), other.Height());
    const int32_t width = std::min(Width(), other.Width());
    for (int32_t y = 0; y < height; ++y) {
        uint8_t* row = alpha + size_t(y) * RowBytes();
        const uint8_t* o = theirs + size_t(y) * other.RowBytes();
        for (int32_t x = 0; x < width; ++x) row[x] = std::max(row[x], o[x]);
    }
}

void BlendRaster(Raster& dest, Raster& src, Raster& mask, const RasterRect& rect) {
    uint8_t* d0 = dest.ImageOrigin();
    const uint8_t* s0 = src.ImageOrigin();
    const uint8_t* m0 = mask.ImageOrigin();
    if (!d0 || !s0 || !m0) return;
    // rect is in Bounds coordinates (the callers pass the rasters' common bounds).
    int32_t top = rect.top, bottom = rect.bottom, left = rect.left, right = rect.right;
    for (const Raster* r : {&dest, &src, &mask}) {
        top = std::max(top, r->Bounds.top);
        left = std::max(left, r->Bounds.left);
        bottom = std::min(bottom, r->Bounds.bottom);
        right = std::min(right, r->Bounds.right);
    }
    const int planes = std::min<int>(std::min(dest.Planes, src.Planes), 3);
    for (int p = 0; p < planes; ++p) {
        uint8_t* dp = d0 + size_t(p) * dest.PlaneBytes();
        const uint8_t* sp = s0 + size_t(p) * src.PlaneBytes();
        for (int32_t y = top; y < bottom; ++y) {
            uint8_t* d = dp + size_t(y - dest.Bounds.top) * dest.RowBytes();
            const uint8_t* s = sp + size_t(y - src.Bounds.top) * src.RowBytes();
            const uint8_t* m = m0 + size_t(y - mask.Bounds.top) * mask.RowBytes();
            for (int32_t x = left; x < right; ++x) {
                uint8_t& dv = d[x - dest.Bounds.left];
                const int sv = s[x - src.Bounds.left];
                const int mv = m[x - mask.Bounds.left];
                dv = uint8_t(dv + (sv - dv) * mv / 255);
            }
        }
    }
}
