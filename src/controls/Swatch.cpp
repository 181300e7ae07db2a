#include "controls/Swatch.h"

uint32_t SwatchPen(uint32_t color, bool hover) {
    uint32_t pen = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        uint32_t d = 255 - (color >> shift & 0xFF);
        if (!hover) d = d < 127 ? d + 127 : d / 2;
        pen |= d << shift;
    }
    return pen;
}

void PaintSwatch(const PixelView& view, const SwatchLook& look) {
    const int32_t w = view.width, h = view.height;
    const uint32_t fill = PixelOfColorRef(look.color);
    if (!look.enabled) {
        FillPixels(view, PixelRect{0, 0, w, h}, look.face);
        FillPixels(view, PixelRect{4, 3, w - 4, h - 3}, fill);
        return;
    }
    FillPixels(view, PixelRect{0, 0, w, h}, PixelOfColorRef(SwatchPen(look.color, look.hover)));
    FillPixels(view, PixelRect{1, 1, w - 1, h - 1}, fill);
}
