#include "dialog/AboutLayout.h"

bool AboutBoxMoves(int32_t dpi) { return dpi > 96; }

LayoutBox AboutControlBox(const LayoutBox& placed, AboutControlKind kind, int32_t dpi) {
    if (!AboutBoxMoves(dpi)) return placed;
    const float f = 96.0f / float(dpi);
    const bool at120 = dpi == 120;
    const float lift = at120 ? 0.0f : 10.0f;
    const float widthFactor = kind == AboutControlKind::Link ? f : 1.0f - (1.0f - f) / (at120 ? 2.0f : 2.5f);
    return {int32_t(float(placed.x) * f), int32_t(float(placed.y) * f - lift),
            int32_t(float(placed.width) * widthFactor), placed.height};
}
