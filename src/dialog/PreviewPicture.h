// The preview's picture: the host's output buffer turned into the 24-bit bottom-up pixels
// of a device bitmap, and the picture of what lies under a transparent layer. Pure
// functions of plain buffers; the preview control makes the bitmap and blits it.
#pragma once

#include "raster/Raster.h"

#include <cstdint>
#include <vector>

// The host's output as the dialog's render leaves it: interleaved planes, red, green, blue
// (CMYK documents too, the preview shows RGB), then alpha; 16-bit samples run 0 to 32768.
struct PreviewSource {
    const void* data = nullptr;
    int32_t rowBytes = 0;
    int32_t planes = 0;
    int32_t columns = 0, rows = 0; // the output rectangle's size
    bool depth16 = false;
    bool cmyk = false;
};

// What lies under the layer, three bytes (red, green, blue) a pixel, `width` pixels a row.
struct UnderImage {
    std::vector<uint8_t> pixels;
    int32_t width = 0, height = 0;
    bool Exists() const { return !pixels.empty(); }
};

struct PreviewPicture {
    int32_t width = 0, height = 0; // width a multiple of 4
    int32_t drawX = 0, drawY = 0;  // the picture's corner in the control: small ones are centred
    std::vector<uint8_t> bgr;      // bottom row first, blue, green, red; empty: no picture
};

// Width the lesser of the control's and the columns, down to a multiple of 4; height the
// lesser of the control's and the rows. 16-bit samples: 255 when the value masked with
// 0xFF80 is above 32640, else value >> 7, alpha ignored. 8-bit with 3 planes: copied;
// with 4 or more, colour * a (+ under * (1 - a) when there is an under-image and the
// document is not CMYK with fewer than 5 planes); fewer than 3 planes: black. No picture
// when there is no buffer or no memory.
PreviewPicture BuildPreviewPicture(const PreviewSource& source, const UnderImage* under, int32_t controlWidth,
                                   int32_t controlHeight);

// The checkerboard under a transparent layer: 7 by 7 cells of 255 and 204, 255 where
// exactly one of x / 7 and y / 7 is odd.
uint8_t CheckerValue(int32_t x, int32_t y);

// The layers below sampled at the preview's scale for every pixel of a width by height
// work image: column truncate((originX + x) * scale), row likewise, clamped. Four planes
// or more are laid over the checkerboard by their alpha; fewer are copied (a single
// plane as grey).
UnderImage BuildUnderImage(Raster& below, int32_t width, int32_t height, double originX, double originY, double scale);
