// CenterPasteRaster and ClearRasterBorder.
#include "raster/Raster.h"

#include <algorithm>
#include <cstring>

namespace {

// Whether [offset, offset + n) lies inside a block of `size` bytes.
bool Inside(int64_t offset, int64_t n, size_t size) { return offset >= 0 && n >= 0 && uint64_t(offset + n) <= size; }

} // namespace

bool CenterPasteRaster(Raster& dest, Raster& src, const RasterRect& rect) {
    const uint8_t* srcOrigin = src.ImageOriginIfAny();
    uint8_t* destOrigin = dest.ImageOrigin();
    if (!srcOrigin || !destOrigin) return false;
    const int64_t rectHeight = RectHeight(rect);
    const int64_t rectWidth = RectWidth(rect);
    const int64_t srcRowBytes = src.RowBytes();
    const int64_t destRowBytes = dest.RowBytes();
    // The centring halves are unsigned shifts; a part larger than dest would put them
    // far outside it, so such a paste is refused.
    const int64_t dh = int64_t(dest.Height()) - rectHeight;
    const int64_t dw = int64_t(dest.Width()) - rectWidth;
    if (dh < 0 || dw < 0 || rectHeight <= 0) return false;
    const int64_t n = std::min<int64_t>(srcRowBytes, rectWidth * src.Desc.colBits / 8);
    const int64_t srcFirst = (srcOrigin - src.PixelsIfAny()) + int64_t(rect.top) * srcRowBytes + rect.left;
    const int64_t destFirst =
        (destOrigin - dest.PixelsIfAny()) + int64_t(uint32_t(dh) >> 1) * destRowBytes + (uint32_t(dw) >> 1);
    for (uint32_t p = 0; p < dest.Planes; ++p) {
        const int64_t s = srcFirst + int64_t(p) * src.PlaneBytes();
        const int64_t d = destFirst + int64_t(p) * dest.PlaneBytes();
        const int64_t lastRow = rectHeight - 1;
        if (!Inside(s, n, src.Storage.Bytes) || !Inside(s + lastRow * srcRowBytes, n, src.Storage.Bytes) ||
            !Inside(d, n, dest.Storage.Bytes) || !Inside(d + lastRow * destRowBytes, n, dest.Storage.Bytes))
            return false;
        for (int64_t row = 0; row < rectHeight; ++row)
            std::memcpy(dest.PixelsIfAny() + d + row * destRowBytes, src.PixelsIfAny() + s + row * srcRowBytes,
                        size_t(n));
    }
    return true;
}

void ClearRasterBorder(Raster& raster, int32_t width) {
    uint8_t* base = raster.Pixels();
    if (!base || width <= 0) return;
    const int32_t columns = raster.Columns();
    const int32_t rows = raster.Rows();
    const size_t rowBytes = size_t(raster.RowBytes());
    const int32_t w = std::min(width, std::max(rows, columns));
    for (int32_t y = 0; y < rows; ++y) {
        uint8_t* row = base + size_t(y) * rowBytes;
        if (y < w || y >= rows - w) {
            std::memset(row, 0, size_t(columns));
        } else {
            const int32_t side = std::min(w, columns);
            std::memset(row, 0, size_t(side));
            std::memset(row + columns - side, 0, size_t(side));
        }
    }
}
