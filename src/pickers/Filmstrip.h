// The preset strip of the Background page without windows: the presets it lists, where
// its tiles and arrows stand, where a slide is at each tick, which slot the mouse is
// over, and one frame painted into a PixelView. The win32/ half routes messages and blits.
#pragma once

#include "controls/PixelView.h"
#include "pickers/BmpFile.h"

#include <cstdint>
#include <string>
#include <vector>

inline constexpr int32_t StripThumbWidth = 61, StripThumbHeight = 61;
inline constexpr int32_t kStripTilesShown = 5;
inline constexpr int32_t kStripArrowWidth = 20;
inline constexpr int32_t kStripPrevId = 1004, kStripNextId = 1003;
inline constexpr int32_t kStripTimerId = 1, kStripTimerMs = 30;

struct StripGeometry {
    int32_t Width = 0, Height = 0;
    int32_t TilePitch = 0, TileHeight = 0;
    int32_t StripLeft = 0, StripTop = 0, StripWidth = 0, StripHeight = 0;
    PixelRect PrevButton, NextButton; // in the strip's window
};

// 355 x 63: five tiles of 63 between two arrows 20 wide.
StripGeometry LayOutStrip();

// "none" first, then the presets of `folder` without ".qztpst", leaving out one named
// "none". Count is the number of archived files found, and Names has that many rows:
// without a "none.qztpst" of its own the folder's last preset is not reached.
struct StripPresets {
    std::vector<std::string> Names;
    int32_t Count = 0;
};
StripPresets ListPresets(const std::string& folder);
// The strip's own folder: the presets folder's "BackPalette".
std::string StripFolder();

struct StripMotion {
    int32_t Count = 0, PageCount = 0, Page = 0;
    uint8_t SlideDirection = 0; // 0 idle, 1 forward, 255 backward
    float SlidePercent = 0;
};

// Pages of five for `count` pictures, back at the first.
void ResetMotion(StripMotion& m, int32_t count);
// An arrow pressed: false while a slide runs (the press does nothing).
bool StartSlide(StripMotion& m, bool forward);
// One timer tick; true when the slide ended at it, the page turned and held in range.
bool TickSlide(StripMotion& m);
bool PrevEnabled(const StripMotion& m);
bool NextEnabled(const StripMotion& m);

// The tiles a frame shows: indices first .. last - 1, the first at x = shift.
struct StripFrame {
    int32_t first = 0, last = 0, shift = 0;
};
StripFrame FrameOf(const StripMotion& m, int32_t pitch);

// The mouse at window point (x, y): over the pictures, and which slot of the five.
bool InsideStrip(const StripGeometry& g, int32_t x, int32_t y);
int32_t SlotAt(const StripGeometry& g, int32_t x);

// The picture area (StripWidth x StripHeight) for the frame: face colour, then a tile per
// index, black under the hovered slot, white otherwise, its picture at (1, 1) or a cross.
void PaintStrip(const PixelView& view, const StripGeometry& g, const StripMotion& m, int32_t hoverSlot,
                const std::vector<ThumbImage>& thumbs, uint32_t face);
