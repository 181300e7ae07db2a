#include "dialog/FramePainters.h"

#include <algorithm>

ShadowWeights ReadShadowWeights(const PixelView& cornerBitmap) {
    ShadowWeights w{};
    const int32_t rows = std::min(cornerBitmap.height, kCornerRows);
    const int32_t columns = std::min(cornerBitmap.width, kCornerColumns);
    for (int32_t y = 0; y < rows; ++y)
        for (int32_t x = 0; x < columns; ++x)
            w[size_t(y) * kCornerColumns + size_t(x)] = float(cornerBitmap.At(x, y) & 0xFF) / 255.0f;
    return w;
}

namespace {

uint32_t Weighted(uint32_t color, float weight) {
    const auto part = [&](int shift) { return uint32_t(float((color >> shift) & 0xFF) * weight) << shift; };
    return part(16) | part(8) | part(0);
}

} // namespace

void PaintBand(const PixelView& band, const ShadowWeights& weights, uint32_t dialogColor, BandEdge outer) {
    const int32_t rows = std::min(band.height, kBandHeight);
    const int32_t corner = std::min(band.width, kCornerColumns);
    for (int32_t y = 0; y < rows; ++y) {
        const int32_t row = outer == BandEdge::Top ? y : band.height - 1 - y;
        for (int32_t x = 0; x < band.width; ++x) band.At(x, y) = 0;
        if (row < 0 || row >= kCornerRows) continue;
        for (int32_t c = 0; c < corner; ++c) {
            const uint32_t pixel = Weighted(dialogColor, ShadowWeightAt(weights, row, c));
            band.At(c, y) = pixel;
            band.At(band.width - 1 - c, y) = pixel;
        }
    }
}

void PaintHeaderStrip(const PixelView& strip, const PixelView& tile) {
    if (tile.width <= 0) return;
    const int32_t columns = std::min(tile.width, 4);
    const int32_t rows = std::min(strip.height, tile.height);
    for (int32_t y = 0; y < rows; ++y)
        for (int32_t x = 0; x < strip.width; ++x) strip.At(x, y) = tile.At(x % columns, y);
}
