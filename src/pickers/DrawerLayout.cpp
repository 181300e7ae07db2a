#include "pickers/DrawerLayout.h"

#include <algorithm>

int32_t RowsPerPageFor(int32_t drawerHeight) { return (drawerHeight - 150) / kTileHeight; }

DrawerPlaces PlaceDrawerParts(int32_t width, int32_t height, int32_t rowsPerPage) {
    DrawerPlaces d;
    d.title = {(width - 199) / 2, 17, 199, 20};
    d.panel = {(width - 366) / 2, 85, kTileWidth * kTileColumns, rowsPerPage * kTileHeight};
    d.previous = {20, 16, 12, 25};
    d.next = {width - 32, 16, 12, 25};
    const int32_t b = (width - 302) / 2, y = height - 57;
    d.cancel = {b, y, 116, 38};
    d.live = {b + 131, y, 40, 38};
    d.select = {b + 186, y, 116, 38};
    return d;
}

LayoutBox TileBox(int32_t index) {
    return {index % kTileColumns * kTileWidth, index / kTileColumns * kTileHeight, kTileWidth, kTileHeight};
}

FilterRow PlaceFilterRow(bool colourMode) {
    // The labels are wider than their texts need in the small font: each reaches further
    // left, its right edge where it was, so that the right-aligned text is not cut.
    if (colourMode) return {{}, {}, {0, 60, 64, 12}, {69, 56, 280, 440}};
    return {{0, 60, 67, 12}, {72, 56, 120, 250}, {197, 60, 35, 12}, {237, 56, 125, 350}};
}

SlideTick AdvanceSlide(uint8_t state, float& percent, int32_t left, int32_t width) {
    SlideTick tick;
    const float p = percent;
    if (state == 0) return tick;
    if (p > 100.0f) {
        tick.finished = true;
        return tick;
    }
    if (state == 1) {
        tick.x = left + int32_t(-(1.0f - p / 100.0f) * float(width));
        tick.repaintInMove = p == 100.0f;
    } else {
        tick.x = left - int32_t(p / 100.0f * float(width));
        tick.repaintInMove = true;
    }
    percent = p + 10.0f;
    return tick;
}

void PaintDrawerBackground(const PixelView& view, const ShadowWeights& weights, uint32_t face) {
    for (int32_t y = 0; y < view.height; ++y)
        for (int32_t x = 0; x < view.width; ++x) view.At(x, y) = 0;
    const auto weighted = [&](float keep) {
        const auto part = [&](int shift) { return uint32_t(float((face >> shift) & 0xFF) * keep) << shift; };
        return part(16) | part(8) | part(0);
    };
    for (int32_t r = 0; r < kCornerRows; ++r)
        for (int32_t c = 0; c < kCornerColumns; ++c) {
            const int32_t x = view.width - kCornerColumns + c;
            if (x < 0) continue;
            const float coverage = 1.0f - ShadowWeightAt(weights, r, kCornerColumns - 1 - c);
            const uint32_t pixel = weighted(1.0f - coverage);
            if (r < view.height) view.At(x, r) = pixel;
            if (view.height - 1 - r >= 0) view.At(x, view.height - 1 - r) = pixel;
        }
}
