#include "controls/PixelView.h"

#include <algorithm>

void FillPixels(const PixelView& view, const PixelRect& rect, uint32_t color) {
    const int32_t left = std::max(rect.left, 0), right = std::min(rect.right, view.width);
    const int32_t top = std::max(rect.top, 0), bottom = std::min(rect.bottom, view.height);
    if (left >= right) return;
    for (int32_t y = top; y < bottom; ++y) std::fill(&view.At(left, y), &view.At(left, y) + (right - left), color);
}
