// The surface every painter of the user interface draws into: 32-bit pixels,
// 0x00RRGGBB, top row first, `stride` pixels from one row to the next. A DIB section's
// bits are one (the win32/ halves blit them); a std::vector is another, in the tests.
// Painters are pure functions of their inputs into a PixelView.
#pragma once

#include <cstdint>

struct PixelRect {
    int32_t left = 0, top = 0, right = 0, bottom = 0;
};

struct PixelView {
    uint32_t* bits = nullptr;
    int32_t width = 0, height = 0;
    int32_t stride = 0; // pixels

    uint32_t& At(int32_t x, int32_t y) const { return bits[int64_t(y) * stride + x]; }
    bool Contains(int32_t x, int32_t y) const { return x >= 0 && y >= 0 && x < width && y < height; }
};

// 0x00RRGGBB from components, the way a DIB section stores them.
constexpr uint32_t PixelOf(uint8_t r, uint8_t g, uint8_t b) { return uint32_t(r) << 16 | uint32_t(g) << 8 | b; }
// A Win32 colour value (red in the low byte, as records keep colours) as a pixel.
constexpr uint32_t PixelOfColorRef(uint32_t c) { return (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF); }

// Fills the part of `rect` that lies inside the view; nothing outside is touched.
void FillPixels(const PixelView& view, const PixelRect& rect, uint32_t color);
