// A tile's picture area, painted off-screen: its fill, then the thumbnail or, for a row
// without one, a crossed frame.
#include "controls/PixelView.h"
#include "pickers/Thumbnails.h"

#include <cmath>
#include <cstdlib>
#include <utility>

namespace {

constexpr uint32_t kHoverFill = PixelOf(146, 146, 146);
constexpr uint32_t kNormalFill = PixelOf(84, 84, 84);
constexpr float kLineGrey = 192.0f;

// Moves the pixel towards the line's grey by `coverage` (0..1).
void Blend(const PixelView& view, int32_t x, int32_t y, float coverage) {
    if (coverage <= 0.0f || !view.Contains(x, y)) return;
    uint32_t& pixel = view.At(x, y);
    uint32_t result = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
        const float c = float((pixel >> shift) & 0xFF);
        result |= uint32_t(int32_t(c + (kLineGrey - c) * coverage + 0.5f)) << shift;
    }
    pixel = result;
}

// A line between whole-pixel points, each step along the longer axis shared between the
// two pixels the line passes between by how near it runs to each.
void AntialiasedLine(const PixelView& view, int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    const bool steep = std::abs(y1 - y0) > std::abs(x1 - x0);
    if (steep) {
        std::swap(x0, y0);
        std::swap(x1, y1);
    }
    if (x0 > x1) {
        std::swap(x0, x1);
        std::swap(y0, y1);
    }
    const float gradient = x1 == x0 ? 0.0f : float(y1 - y0) / float(x1 - x0);
    for (int32_t x = x0; x <= x1; ++x) {
        const float y = float(y0) + gradient * float(x - x0);
        const float base = std::floor(y);
        const float part = y - base;
        const int32_t near = int32_t(base);
        if (steep) {
            Blend(view, near, x, 1.0f - part);
            Blend(view, near + 1, x, part);
        } else {
            Blend(view, x, near, 1.0f - part);
            Blend(view, x, near + 1, part);
        }
    }
}

} // namespace

void PaintPlaceholder(const PixelView& view, int32_t left, int32_t top, int32_t right, int32_t bottom) {
    AntialiasedLine(view, left, top, right, bottom);
    AntialiasedLine(view, right, top, left, bottom);
    AntialiasedLine(view, left, top, right, top);
    AntialiasedLine(view, right, top, right, bottom);
    AntialiasedLine(view, right, bottom, left, bottom);
    AntialiasedLine(view, left, bottom, left, top);
}

void PaintTile(const PixelView& view, bool hover, const ThumbImage* picture) {
    FillPixels(view, PixelRect{0, 0, view.width, view.height}, hover ? kHoverFill : kNormalFill);
    // The off-screen picture area sits 2 pixels into the tile.
    const int32_t left = ThumbLeft - 2, top = ThumbTop - 2;
    if (!picture || picture->width <= 0 || picture->height <= 0 ||
        picture->bytes.size() < size_t(picture->stride) * size_t(picture->height)) {
        PaintPlaceholder(view, left, top, left + ThumbWidth, top + ThumbHeight);
        return;
    }
    for (int32_t y = 0; y < picture->height; ++y) {
        const uint8_t* from = picture->bytes.data() + size_t(picture->height - 1 - y) * size_t(picture->stride);
        for (int32_t x = 0; x < picture->width; ++x, from += 3)
            if (view.Contains(left + x, top + y)) view.At(left + x, top + y) = PixelOf(from[2], from[1], from[0]);
    }
}
