// "Contaner Color CPP": a rectangle of colour; either button opens a picker (the host's,
// else the system's) and a colour picked is stored, shown and sent to the page.
#pragma once

#include "controls/win32/Contaner.h"

struct TColorSwatch : TContaner {
    static constexpr const char* kClassName = "Contaner Color CPP";
    static constexpr int32_t kSurfaceSwatchId = 1071; // its custom colours serve the fallback picker

    uint32_t Color = 0;             // Win32 colour value
    uint32_t CustomColors[16] = {}; // the system picker's row, kept for the swatch's life
    DibSection Canvas;
};

// Stores the colour and repaints at once.
void SetColor(TColorSwatch* swatch, uint32_t color);

// The host's picker through the record's colour services, asking "Select a Color" from
// `color`. A colour comes back in `color`; the user's cancel is a refusal; any other answer
// falls back to the system's picker owned by `owner` (the main dialog) with the surface
// swatch's custom colours. True when a colour was picked.
bool PickColor(HWND owner, uint32_t& color);
