// The raster object: layout, lazy page memory, copy and invert.
#include "raster/Raster.h"

#include "platform/PageMemory.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

void RectOffset(RasterRect& r, int32_t dx, int32_t dy) {
    r.top += dy;
    r.bottom += dy;
    r.left += dx;
    r.right += dx;
}

void RectTranspose(RasterRect& r) {
    const int32_t top = r.top, left = r.left;
    RectOffset(r, -left, -top);
    const int32_t bottom = r.bottom;
    r.bottom = r.right;
    r.right = bottom;
    RectOffset(r, left, top);
}

void Raster::MakeRaster(uint16_t mode, const RasterRect& bounds, uint8_t planes, int32_t depth, uint32_t border,
                        uint8_t allocKind) {
    ReleaseRaster();
    const int64_t d = depth == 0 ? 8 : depth;
    Mode = mode;
    Bounds = bounds;
    Border = border;
    Planes = planes;
    AllocKind = allocKind;
    // Worked out in 64 bits; a layout whose strides do not fit the description's
    // 32-bit fields gets rowBits 0, which Pixels() refuses.
    const int64_t columns = 2 * int64_t(border) + (int64_t(bounds.right) - bounds.left);
    const int64_t rowBits = columns * d;
    const int64_t bitOffset = (rowBits + d) * int64_t(border);
    constexpr int64_t kMax = std::numeric_limits<int32_t>::max();
    const bool fits = d > 0 && d <= 32 && columns > 0 && rowBits <= kMax && bitOffset <= kMax;
    Desc.data = nullptr;
    Desc.rowBits = fits ? int32_t(rowBits) : 0;
    Desc.colBits = int32_t(d);
    Desc.bitOffset = fits ? int32_t(bitOffset) : 0;
    Desc.depth = int32_t(d);
}

void Raster::ReleaseRaster() {
    Desc.data = nullptr;
    FreePages(Storage.Owned, Storage.Bytes);
    Storage.Owned = nullptr;
    Storage.Base = nullptr;
    Storage.Bytes = 0;
    Storage.Mapped = 0;
    Storage.MappingHandle = -1;
}

uint8_t* Raster::Pixels() {
    if (Storage.Base) return static_cast<uint8_t*>(Storage.Base);
    const int64_t columns = 2 * int64_t(Border) + (int64_t(Bounds.right) - Bounds.left);
    const int64_t rows = 2 * int64_t(Border) + (int64_t(Bounds.bottom) - Bounds.top);
    if (Desc.rowBits <= 0 || columns <= 0 || rows <= 0 || rows > std::numeric_limits<int32_t>::max() || Planes == 0)
        return nullptr;
    // Plane sizes are 32-bit quantities: refuse a layout whose plane would wrap.
    if (uint64_t(Desc.rowBits) * uint64_t(rows) > std::numeric_limits<uint32_t>::max()) return nullptr;
    const uint64_t bytes = uint64_t(columns) * uint64_t(rows) * Planes; // one byte a sample
    if (bytes > std::numeric_limits<size_t>::max()) return nullptr;
    void* block = AllocatePages(size_t(bytes));
    if (!block) return nullptr;
    Storage.Owned = block;
    Storage.Base = block;
    Storage.Bytes = size_t(bytes);
    return static_cast<uint8_t*>(block);
}

uint8_t* Raster::ImageOrigin() {
    uint8_t* base = Pixels();
    return base ? base + Desc.bitOffset / 8 : nullptr;
}

uint8_t* Raster::ImageOriginIfAny() const {
    uint8_t* base = PixelsIfAny();
    return base ? base + Desc.bitOffset / 8 : nullptr;
}

RasterMemoryDesc* Raster::DescForHost() {
    Desc.data = Pixels();
    return &Desc;
}

bool Raster::InvertRaster() {
    uint8_t* p = Pixels();
    if (!p) return false;
    const size_t n = std::min<size_t>(size_t(PlaneBytes()) * Planes, Storage.Bytes);
    // 255 - b is b with every bit flipped: eight bytes at a time.
    size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        uint64_t word;
        std::memcpy(&word, p + i, 8);
        word = ~word;
        std::memcpy(p + i, &word, 8);
    }
    for (; i < n; ++i) p[i] = uint8_t(255 - p[i]);
    return true;
}

Raster* NewRaster(uint16_t mode, const RasterRect& bounds, uint8_t planes, int32_t depth, uint32_t border,
                  uint8_t allocKind) {
    Raster* raster = new (std::nothrow) Raster;
    if (raster) raster->MakeRaster(mode, bounds, planes, depth, border, allocKind);
    return raster;
}

void FreeRaster(Raster*& raster) {
    delete raster; // the destructor releases the memory
    raster = nullptr;
}

bool CopyRaster(Raster& dest, Raster& src) {
    if (dest.Desc.rowBits != src.Desc.rowBits || dest.Height() != src.Height() || dest.Width() != src.Width())
        return false;
    uint8_t* d = dest.Pixels();
    uint8_t* s = src.Pixels();
    if (!d || !s) return false;
    // Never beyond either block, whatever the plane counts say.
    size_t n = size_t(dest.PlaneBytes()) * dest.Planes;
    n = std::min(n, std::min(dest.Storage.Bytes, src.Storage.Bytes));
    std::memcpy(d, s, n);
    return true;
}
