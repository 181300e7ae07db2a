// The dialog's skin: every picture of art::kBitmaps, the two cursors, the icon and the Auto
// button's sound, drawn and synthesised here. Nothing is read but the fonts.
#pragma once

#include "Canvas.h"
#include "Font.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace artgen {

struct Fonts {
    Font sans, bold;
};
// DejaVu Sans and DejaVu Sans Bold from `folder` (Debian's fonts-dejavu-core).
bool LoadFonts(const std::string& folder, Fonts& fonts, std::string& error);

// Every bitmap of art::kBitmaps by id, at its size.
std::map<int, Canvas> DrawBitmaps(const Fonts& fonts);

// A picture with straight alpha: red, green, blue, alpha, rows top to bottom.
struct RgbaImage {
    int width = 0, height = 0;
    std::vector<uint8_t> pixels;
};
struct CursorImage {
    RgbaImage image;
    int hotX = 0, hotY = 0;
};
CursorImage DrawCursor(int id); // art::kCursorPreviewDrag or art::kCursorPreviewHover
RgbaImage DrawIcon(const Fonts& fonts, int size);

// The Auto button's sound: signed 16-bit samples, one channel, at art::kSoundRate.
std::vector<int16_t> SynthesiseAutoSound();

} // namespace artgen
