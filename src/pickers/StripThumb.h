// The preset strip's pictures: the preset's background texture cropped grey at 61 x 61,
// tinted with the preset's own colours and amounts, and kept as "<name>.bmp" beside the
// preset so that later dialogs read it instead of inflating the texture.
#pragma once

#include "pickers/Filmstrip.h"

#include <cstdint>
#include <string>
#include <vector>

struct FilterParameters;

inline constexpr int32_t StripRowBytes = ((StripThumbWidth * 24 + 31) & ~31) / 8;

// The 40-byte header a device-independent bitmap of the strip's pictures is made with.
struct StripDibHeader {
    uint32_t size = 40;
    int32_t width = StripThumbWidth, height = StripThumbHeight;
    uint16_t planes = 1, bitCount = 24;
    uint32_t compression = 0, imageSize = 0;
    int32_t xPelsPerMeter = 0, yPelsPerMeter = 0;
    uint32_t colorsUsed = 0, colorsImportant = 0;
};
static_assert(sizeof(StripDibHeader) == 40);

// One picture, 24-bit, StripRowBytes a row, bottom-up: made at the strip's first layout,
// freed with it.
extern std::vector<uint8_t> StripPixels;
extern const StripDibHeader StripHeader;
void AllocateStripPixels();
void FreeStripPixels();

// Reads a strip preset into gParams: through the preset library with `asLoad` (the
// background's colour label then reads "Custom"), else the file alone. A palette written
// as a colour preset hands its three colours to the background. False when not read.
bool ReadStripPreset(const std::string& name, bool asLoad);

// The grey picture in StripPixels (first byte of each pixel) coloured by `p`'s
// background colours, amounts, hue and saturation, in place.
void TintStripPixels(const FilterParameters& p);

// The picture of `names[index]`: the cache file when it is exactly 61 x 61, else made
// (gParams put back afterwards) and cached, except "none", which shows the placeholder.
// False for no picture: an index out of range, a preset or texture that does not read.
bool MakeStripThumb(const std::vector<std::string>& names, int32_t index, ThumbImage& out);
