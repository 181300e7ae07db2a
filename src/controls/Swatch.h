// The colour swatch's picture: a rectangle of its colour framed by a pen that stands out
// from it, or, disabled, a smaller unframed patch on the dialog's face. Colours are Win32
// colour values (red in the low byte), as the swatch's record keeps them.
#pragma once

#include "controls/PixelView.h"

#include <cstdint>

// The frame's colour: under the mouse the exact inverse; otherwise each inverted channel d
// becomes d + 127 below 127, else d / 2.
uint32_t SwatchPen(uint32_t color, bool hover);

struct SwatchLook {
    uint32_t color = 0; // Win32 colour value
    bool hover = false;
    bool enabled = true;
    uint32_t face = 0; // the dialog's face colour, 0x00RRGGBB
};

// Enabled: the whole view framed one pixel wide in SwatchPen. Disabled: the face with the
// colour inset 4 pixels left and right and 3 top and bottom.
void PaintSwatch(const PixelView& view, const SwatchLook& look);
