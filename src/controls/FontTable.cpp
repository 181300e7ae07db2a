#include "controls/FontTable.h"

#include <cmath>

float DpiScaleOf(int32_t dpi) { return std::sqrt(float(dpi) / 96.0f); }

int32_t Scaled(int32_t h, int32_t dpi) { return dpi <= 96 ? h : int32_t(DpiScaleOf(dpi) * float(h)); }

FontStyle FontFor(FontRole role, int32_t dpi) {
    switch (role) {
    case FontRole::Small: return {Scaled(13, dpi), 700, false};
    case FontRole::Thumb: return {Scaled(12, dpi), 400, false};
    case FontRole::Link: return {Scaled(15, dpi), 700, false};
    // Scaled twice: the dialogs that show links are laid out for this size.
    case FontRole::LinkUnder: return {Scaled(Scaled(15, dpi), dpi), 400, true};
    case FontRole::Label: return {Scaled(14, dpi), 900, false};
    // 2000 is past the usual 1000; GDI takes it as the boldest it has.
    case FontRole::Heavy: return {Scaled(14, dpi), 2000, false};
    case FontRole::Tab: return {Scaled(14, dpi), 700, false};
    // List boxes grow linearly with the dpi, not by its square root.
    case FontRole::List: return {dpi > 96 ? 13 * dpi / 96 : 13, 400, false};
    }
    return {};
}

FontStyle AboutFontFor(FontRole role) {
    FontStyle style = FontFor(role, 96);
    style.height = 14;
    return style;
}

PixelOffset LinkBackgroundOffset(int32_t x, int32_t y, int32_t dpi) {
    if (dpi <= 96) return {x, y};
    const float f = 96.0f / float(dpi);
    const float shift = dpi >= 121 ? 10.0f : 0.0f;
    return {int32_t(float(x) * f), int32_t(float(y) * f - shift)};
}
