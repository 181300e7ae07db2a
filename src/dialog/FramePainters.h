// The dialog's own pictures around the preview, painted into PixelViews: the black bands
// with rounded ends above and below the preview, and the header strip between the two
// header bitmaps. WM_PAINT only blits what these draw.
#pragma once

#include "controls/PixelView.h"
#include "dialog/DialogLayout.h"
#include "resources/ArtIds.h"

#include <array>
#include <cstddef>
#include <cstdint>

inline constexpr int32_t kCornerRows = art::kCornerRows, kCornerColumns = art::kCornerColumns;

// Grey / 255 of the corner bitmap, kCornerRows by kCornerColumns, row 0 and column 0 the
// outer corner.
using ShadowWeights = std::array<float, kCornerRows * kCornerColumns>;
inline float ShadowWeightAt(const ShadowWeights& w, int32_t row, int32_t column) {
    return w[size_t(row) * kCornerColumns + size_t(column)];
}

// From the corner bitmap as painted (top row first; the blue byte is its grey). A
// picture smaller than the weights leaves the rest at 0.
ShadowWeights ReadShadowWeights(const PixelView& cornerBitmap);

enum class BandEdge { Top, Bottom }; // where the band's outer edge lies

// A band of the view's size (kBandHeight rows): black, its first and last
// kCornerColumns pixels the dialog's colour times the weight at that row and column,
// mirrored at the right end. Row 0 of the weights is the outer edge: the top scan line
// of the upper band, the bottom one of the lower band.
void PaintBand(const PixelView& band, const ShadowWeights& weights, uint32_t dialogColor, BandEdge outer);

// The header strip: the view filled by repeating the first 4 columns of the header tile
// (rows beyond the tile's height stay as they are).
void PaintHeaderStrip(const PixelView& strip, const PixelView& tile);
