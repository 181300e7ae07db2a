// The About box's geometry by the screen's dpi. Its picture is 520 by 487 pixels at any
// dpi, while the template's controls grow with the dialog font: above 96 dpi the box is
// sized to the picture and each control is brought back over its part of it.
#pragma once

#include "dialog/DialogLayout.h"

inline constexpr int32_t kAboutClientWidth = 520, kAboutClientHeight = 487;

enum class AboutControlKind { Button, Link };

// True when the box and its controls are moved at `dpi` (above 96).
bool AboutBoxMoves(int32_t dpi);

// Where a control goes, from where the template put it (client pixels at `dpi`): x and y
// by f = 96 / dpi, y then 10 higher except at exactly 120 dpi; a link's width by f, a
// button's by only 1 - (1 - f) / 2.5 (or / 2 at 120 dpi), so that its larger text still
// fits; heights stay. Unchanged at 96 dpi and below.
LayoutBox AboutControlBox(const LayoutBox& placed, AboutControlKind kind, int32_t dpi);
