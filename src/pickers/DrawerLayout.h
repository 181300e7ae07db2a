// Where a drawer's parts stand, how far its slide has got at each tick, and its
// background picture. Numbers are client pixels of the drawer window.
#pragma once

#include "controls/PixelView.h"
#include "dialog/DialogLayout.h"
#include "dialog/FramePainters.h"

#include <cstdint>

inline constexpr int32_t kTileWidth = 122, kTileHeight = 110, kTileColumns = 3;
inline constexpr int32_t kFirstTileId = 100;

int32_t RowsPerPageFor(int32_t drawerHeight);

// The parts that follow the drawer's size; the filter row and title stand still.
struct DrawerPlaces {
    LayoutBox title, panel, previous, next, cancel, live, select;
};
DrawerPlaces PlaceDrawerParts(int32_t width, int32_t height, int32_t rowsPerPage);
// Tile `index` (row by row) inside the panel.
LayoutBox TileBox(int32_t index);

// The filter row: the set label and combo (texture drawer only), the effect or category
// label and combo. A combo's height includes its list.
struct FilterRow {
    LayoutBox setLabel, setCombo, effectLabel, effectCombo;
};
FilterRow PlaceFilterRow(bool colourMode);

// One tick of the slide timer. `state` 1 opens, 255 closes; `percent` is advanced here.
struct SlideTick {
    bool finished = false; // the timer stops: stay in place (opening) or hide (closing)
    int32_t x = 0;         // where the window goes this tick, when not finished
    bool repaintInMove = false;
};
SlideTick AdvanceSlide(uint8_t state, float& percent, int32_t left, int32_t width);

// Opaque black with the two right-hand corners rounded into `face` (0x00RRGGBB) by the
// corner weights: row r from the top and from the bottom, column width - 20 + c taking
// the weight at column 19 - c.
void PaintDrawerBackground(const PixelView& view, const ShadowWeights& weights, uint32_t face);
