// Mirror images and quarter turns.
#include "raster/Geometry.h"

#include <algorithm>
#include <cstring>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

bool SameLayout(const Raster& a, const Raster& b) {
    return a.Desc.rowBits == b.Desc.rowBits && a.Height() == b.Height() && a.Width() == b.Width() &&
           a.Planes == b.Planes;
}

// The new raster of a quarter turn: src's bounds transposed, no border, allocKind 0.
Raster* TurnedRaster(const Raster& src) {
    RasterRect bounds = src.Bounds;
    RectTranspose(bounds);
    Raster* made = NewRaster(src.Mode, bounds, src.Planes, src.Desc.depth, 0, 0);
    if (made && !made->Pixels()) FreeRaster(made);
    return made;
}

// dest[x] = src[n - 1 - x]; the two do not overlap.
void ReverseBytes(uint8_t* dest, const uint8_t* src, int64_t n) {
    int64_t x = 0;
#if defined(__SSE2__)
    for (; x + 16 <= n; x += 16) {
        __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + n - 16 - x));
        v = _mm_shuffle_epi32(v, _MM_SHUFFLE(0, 1, 2, 3));
        v = _mm_shufflelo_epi16(v, _MM_SHUFFLE(2, 3, 0, 1));
        v = _mm_shufflehi_epi16(v, _MM_SHUFFLE(2, 3, 0, 1));
        v = _mm_or_si128(_mm_slli_epi16(v, 8), _mm_srli_epi16(v, 8));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dest + x), v);
    }
#endif
    for (; x < n; ++x) dest[x] = src[n - 1 - x];
}

// Quarter turns go tile by tile, so that neither side is walked across whole rows
// per sample; every destination byte has exactly one source, so the order is free.
constexpr int64_t kTile = 64;

} // namespace

bool FlipRasterHor(Raster& dest, Raster& src) {
    if (!SameLayout(dest, src)) return false;
    uint8_t* d = dest.Pixels();
    const uint8_t* s = src.Pixels();
    if (!d || !s) return false;
    const int64_t rowBytes = dest.RowBytes();
    const int64_t destStep = std::max(1, dest.Desc.colBits / 8);
    const int64_t srcStep = std::max(1, src.Desc.colBits / 8);
    const int64_t lead = destStep > srcStep ? destStep - srcStep : 0;
    // Rows of all planes, borders included, as far as both blocks reach.
    const int64_t rows = std::min<int64_t>(int64_t(dest.Rows()) * dest.Planes,
                                           int64_t(std::min(dest.Storage.Bytes, src.Storage.Bytes)) / rowBytes);
    for (int64_t y = 0; y < rows; ++y) {
        uint8_t* dr = d + y * rowBytes;
        const uint8_t* sr = s + y * rowBytes;
        if (destStep == 1 && srcStep == 1) {
            ReverseBytes(dr, sr, rowBytes);
        } else {
            for (int64_t xd = lead, xs = 0; xd < rowBytes && xs < rowBytes; xd += destStep, xs += srcStep)
                dr[xd] = sr[rowBytes - 1 - xs];
        }
    }
    return true;
}

bool FlipRasterVer(Raster& dest, Raster& src) {
    if (!SameLayout(dest, src)) return false;
    uint8_t* d = dest.Pixels();
    const uint8_t* s = src.Pixels();
    if (!d || !s) return false;
    const int64_t rowBytes = dest.RowBytes();
    const int64_t height = dest.Height();
    const size_t limit = std::min(dest.Storage.Bytes, src.Storage.Bytes);
    // The destination runs on from plane to plane; each plane of the source starts one
    // plane further on. Without a border the two agree.
    int64_t at = 0;
    for (uint32_t p = 0; p < src.Planes; ++p) {
        const int64_t plane = int64_t(p) * src.PlaneBytes();
        for (int64_t i = 0; i < height; ++i, at += rowBytes) {
            const int64_t from = plane + (height - 1 - i) * rowBytes;
            if (uint64_t(at + rowBytes) > limit || uint64_t(from + rowBytes) > limit) return true;
            std::memcpy(d + at, s + from, size_t(rowBytes));
        }
    }
    return true;
}

bool RotateRaster90Ccw(Raster*& out, Raster& src) {
    const uint8_t* s = src.ImageOriginIfAny();
    if (!s) return false;
    Raster* made = TurnedRaster(src);
    if (!made) return false;
    uint8_t* d = made->Pixels();
    const int64_t newWidth = made->Width(), newHeight = made->Height();
    const int64_t srcRowBytes = src.RowBytes(), destRowBytes = made->RowBytes();
    // dest(H' - 1 - x, y) = src(y, x) for y < W' and x < H'.
    for (int64_t y0 = 0; y0 < newWidth; y0 += kTile)
        for (int64_t x0 = 0; x0 < newHeight; x0 += kTile)
            for (int64_t y = y0; y < std::min(y0 + kTile, newWidth); ++y) {
                const uint8_t* row = s + y * srcRowBytes;
                for (int64_t x = x0; x < std::min(x0 + kTile, newHeight); ++x)
                    d[(newHeight - 1 - x) * destRowBytes + y] = row[x];
            }
    out = made;
    return true;
}

bool RotateRaster90Cw(Raster*& out, Raster& src) {
    const uint8_t* s = src.ImageOriginIfAny();
    if (!s) return false;
    Raster* made = TurnedRaster(src);
    if (!made) return false;
    uint8_t* d = made->Pixels();
    const int64_t newWidth = made->Width(), newHeight = made->Height();
    const int64_t srcRowBytes = src.RowBytes(), destRowBytes = made->RowBytes();
    const int64_t rows = std::min<int64_t>(src.Height(), newHeight);
    const int64_t cols = std::min<int64_t>(src.Width(), newWidth);
    // The column is counted from the new height, as the system always has: every write
    // still lands inside plane 0 (its last is at (min(W, H) - 1) * H + W - 1 < W * H).
    for (int64_t y0 = 0; y0 < rows; y0 += kTile)
        for (int64_t x0 = 0; x0 < cols; x0 += kTile)
            for (int64_t y = y0; y < std::min(y0 + kTile, rows); ++y) {
                const uint8_t* row = s + y * srcRowBytes;
                uint8_t* column = d + (newHeight - 1 - y);
                for (int64_t x = x0; x < std::min(x0 + kTile, cols); ++x) column[x * destRowBytes] = row[x];
            }
    out = made;
    return true;
}

// The copy has no border, so a raster with one fails to copy and stays as it is. Without
// a border, flipping the copy back is flipping in place, which is what is done for
// 8-bit rasters: the same bytes without a second block.
namespace {

// Rasters of other depths flip back from a copy of themselves.
bool FlipThroughCopy(Raster& raster, bool (*flip)(Raster&, Raster&)) {
    Raster temp;
    temp.MakeRaster(raster.Mode, raster.Bounds, raster.Planes, raster.Desc.depth, 0, 0);
    return CopyRaster(temp, raster) && flip(raster, temp);
}

} // namespace

bool FlipRasterInPlaceHor(Raster& raster) {
    if (raster.Border != 0) return false;
    if (raster.Desc.depth != 8) return FlipThroughCopy(raster, FlipRasterHor);
    uint8_t* base = raster.Pixels();
    if (!base) return false;
    const int64_t rowBytes = raster.RowBytes();
    std::vector<uint8_t> row(static_cast<size_t>(rowBytes));
    const int64_t rows = int64_t(raster.Rows()) * raster.Planes;
    for (int64_t y = 0; y < rows; ++y) {
        uint8_t* r = base + y * rowBytes;
        std::memcpy(row.data(), r, size_t(rowBytes));
        ReverseBytes(r, row.data(), rowBytes);
    }
    return true;
}

bool FlipRasterInPlaceVer(Raster& raster) {
    if (raster.Border != 0) return false;
    if (raster.Desc.depth != 8) return FlipThroughCopy(raster, FlipRasterVer);
    uint8_t* base = raster.Pixels();
    if (!base) return false;
    const int64_t rowBytes = raster.RowBytes(), height = raster.Height();
    std::vector<uint8_t> row(static_cast<size_t>(rowBytes));
    for (uint32_t p = 0; p < raster.Planes; ++p) {
        uint8_t* plane = base + int64_t(p) * raster.PlaneBytes();
        for (int64_t i = 0; i < height / 2; ++i) {
            uint8_t* top = plane + i * rowBytes;
            uint8_t* bottom = plane + (height - 1 - i) * rowBytes;
            std::memcpy(row.data(), top, size_t(rowBytes));
            std::memcpy(top, bottom, size_t(rowBytes));
            std::memcpy(bottom, row.data(), size_t(rowBytes));
        }
    }
    return true;
}

bool TurnRasterCw(Raster*& raster) {
    Raster* turned = nullptr;
    if (!raster || !RotateRaster90Cw(turned, *raster)) return false;
    FreeRaster(raster);
    raster = turned;
    return true;
}

bool TurnRasterCcw(Raster*& raster) {
    Raster* turned = nullptr;
    if (!raster || !RotateRaster90Ccw(turned, *raster)) return false;
    FreeRaster(raster);
    raster = turned;
    return true;
}
