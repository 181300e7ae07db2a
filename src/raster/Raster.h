// Raster: the one planar image object of the core. Texture data, noise fields,
// masks and the target layer's pixels all live in one.
//
// A raster is `Planes` planes stored one after the other; each plane is `Rows`
// rows of `Columns` bytes, where the image proper of Width by Height pixels is
// framed by `Border` pixels on all four sides. Memory comes from the page
// allocator, zero-filled, and only at the first call of Pixels(). The memory
// description `Desc` has the layout the host's pixel-reading call expects, so
// the shell can hand it over as it is (DescForHost).
//
// Sample (plane p, row y, column x) of the image proper, 8-bit:
//     Pixels() + p * PlaneBytes() + Desc.bitOffset / 8 + y * RowBytes() + x
//
// Every operation that answers a bool answers false when the memory cannot be
// had; the others then do nothing.
#pragma once

#include <cstddef>
#include <cstdint>

// Top, left, bottom, right; bottom and right exclusive.
struct RasterRect {
    int32_t top = 0;
    int32_t left = 0;
    int32_t bottom = 0;
    int32_t right = 0;
};

inline int32_t RectHeight(const RasterRect& r) { return r.bottom - r.top; }
inline int32_t RectWidth(const RasterRect& r) { return r.right - r.left; }
void RectOffset(RasterRect& r, int32_t dx, int32_t dy);
// Moves the rectangle to the origin, swaps bottom and right, moves it back.
void RectTranspose(RasterRect& r);

// Laid out as the host's pixel memory description; `data` is set only by DescForHost.
struct RasterMemoryDesc {
    void* data;
    int32_t rowBits;
    int32_t colBits;
    int32_t bitOffset;
    int32_t depth;
};

struct RasterStorage {
    void* Owned = nullptr;       // the page block, freed by ReleaseRaster
    uint8_t Mapped = 0;          // mapped memory is never used here
    void* Base = nullptr;        // first byte of plane 0, border included
    intptr_t MappingHandle = -1; // none
    size_t Bytes = 0;            // size of the page block
};

// Converts an RGB colour (components 0-255) to the components of colour mode
// `mode` in the host's numbering, one per plane, for FillRaster. Answers false
// when the mode has no conversion; `out` then keeps the RGB components.
using RasterColorConverter = bool (*)(uint16_t mode, const uint16_t rgb[3], uint16_t out[4]);
// The conversion FillRaster and the noise fill use. Only the default exists: the
// engine's rasters are grey or RGB, where it is exact. Mode 1 (grey) takes
// (299 R + 587 G + 114 B + 500) / 1000; every other mode takes R, G, B unchanged and
// 0 for a fourth plane.
extern RasterColorConverter RasterConvertColor;
bool DefaultRasterColorConverter(uint16_t mode, const uint16_t rgb[3], uint16_t out[4]);

struct Raster {
    uint16_t Mode = 0;
    RasterMemoryDesc Desc = {};
    RasterStorage Storage;
    RasterRect Bounds;
    uint32_t Border = 0;
    uint8_t Planes = 0;
    uint8_t AllocKind = 0;

    Raster() = default;
    ~Raster() { ReleaseRaster(); }
    Raster(const Raster&) = delete;
    Raster& operator=(const Raster&) = delete;

    // Sets the fields; allocates nothing (memory held from before is released).
    // depth 0 means 8.
    void MakeRaster(uint16_t mode, const RasterRect& bounds, uint8_t planes, int32_t depth, uint32_t border,
                    uint8_t allocKind);
    // Frees the memory; safe on an empty raster. Pixels() allocates anew afterwards.
    void ReleaseRaster();

    // Base of plane 0 with border; allocates on the first call. Null when the
    // layout is empty, too large for 32-bit plane sizes, or the system refuses.
    uint8_t* Pixels();
    uint8_t* PixelsIfAny() const { return static_cast<uint8_t*>(Storage.Base); }
    // First pixel of the image proper: Border rows and Border columns in.
    uint8_t* ImageOrigin();
    uint8_t* ImageOriginIfAny() const;
    RasterMemoryDesc* DescForHost();

    // Every byte of each plane, borders included, becomes that plane's component of
    // `rgb` converted to Mode (through RasterConvertColor; none for modes 7 and 8).
    bool FillRaster(const uint16_t rgb[3]);
    bool FillBlack();
    // Every byte of every plane, borders included, becomes 255 - byte.
    bool InvertRaster();
    // With at least 4 planes: plane 3 of the image proper becomes max(sample, v).
    void ForceAlpha(uint8_t v);
    // With at least 4 planes: plane 3 of the image proper becomes the larger of itself
    // and plane 0 of `other` at the same place.
    void MaxAlpha(Raster& other);

    int32_t Width() const { return RectWidth(Bounds); }
    int32_t Height() const { return RectHeight(Bounds); }
    int32_t Columns() const { return int32_t(2 * Border) + Width(); }
    int32_t Rows() const { return int32_t(2 * Border) + Height(); }
    int32_t RowBytes() const { return Desc.rowBits / 8; }
    // (rowBits * Rows) >> 3 in 32 bits, as the layout defines it.
    uint32_t PlaneBytes() const { return (uint32_t(Desc.rowBits) * uint32_t(Rows())) >> 3; }
};

// A heap raster: made with MakeRaster's arguments, or null when even the record
// cannot be had. FreeRaster releases and deletes it and clears the pointer.
Raster* NewRaster(uint16_t mode, const RasterRect& bounds, uint8_t planes, int32_t depth, uint32_t border,
                  uint8_t allocKind);
void FreeRaster(Raster*& raster);

// False unless rowBits, Height and Width agree; then copies plane bytes * dest
// Planes from src to dest, borders included.
bool CopyRaster(Raster& dest, Raster& src);

// For the first min(dest, src, 3) planes, inside `rect` (in the rasters' Bounds
// coordinates): d += (s - d) * m / 255, truncating toward zero; m from plane 0 of mask.
void BlendRaster(Raster& dest, Raster& src, Raster& mask, const RasterRect& rect);

// Copies the part of src that `rect` selects (rows and columns of src's image proper)
// to the centre of every plane of dest. False when either has no memory or the part
// would fall outside either raster.
bool CenterPasteRaster(Raster& dest, Raster& src, const RasterRect& rect);

// Zeroes `width` rows at the top and bottom and `width` columns at the left and right
// of plane 0, counted from the allocated edge.
void ClearRasterBorder(Raster& raster, int32_t width);

// The separable box blur of radius r over the whole allocated block (all planes, border
// included, as one array of rows of Columns bytes), divided by 2r + 1 in both passes.
// Horizontally the sum runs on along a row from samples 0 .. r; the block's last row
// is left out of that pass and comes back 0. Vertically the rows wrap around.
bool BoxBlurRaster(Raster& raster, int32_t r);

// 3 by 3 smoothing of plane 0, in place: 0.05 of the corners, 0.1 of the edge
// neighbours and 0.4 of the centre in f32, limited to 255. Rows 1 .. Height - 2 and
// columns 1 .. Width - 2 of the image proper; upper and left neighbours are already
// smoothed when read. Reports progress after each row.
void SmoothRaster3x3(Raster& raster);
