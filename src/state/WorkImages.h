// The picture every stage works on and what the shell tells the engine about the
// document: SourceImage and WorkImage, four bytes a pixel (red, green, blue, alpha),
// the filter rectangle, the selection. The shell fills these from the host's record;
// the engine reads them as plain values and never sees the record itself.
#pragma once

#include <climits>
#include <cstdint>

extern int32_t ImageWidth, ImageHeight;   // the out rectangle: the work images' size
extern int32_t FilterWidth, FilterHeight; // the filter rectangle: what textures are placed for
extern int32_t WorkPixelBytes, WorkRowBytes;
extern uint8_t* SourceImage;
extern uint8_t* WorkImage;
extern bool ModeIsCMYK;
extern bool Depth16;
extern int32_t DocumentPlanes; // the host's planes per pixel, transparency included

// Far edges of the host's filter rectangle, which offsets are clamped against. The
// shell sets them with FilterWidth and FilterHeight; while they are kFilterEdgeUnset
// the rectangle is taken to start at 0, 0.
inline constexpr int32_t kFilterEdgeUnset = INT32_MIN;
extern int32_t FilterRectRight, FilterRectBottom;
// The edges in force: the shell's, or the filter's size while they are unset.
int32_t FilterRightEdge();
int32_t FilterBottomEdge();

// Filter pixels per work pixel (1 in a final run) and the work area's origin.
extern double PreviewScale;
extern double PreviewOriginX, PreviewOriginY;

// The host's selection mask of this run; HaveMask 0 means none.
extern bool HaveMask;
extern const uint8_t* HostMaskData;
extern int32_t HostMaskRowBytes;

// The shape the filter works through: the layer's transparency times the host's
// selection mask, one byte a pixel, and the same pixels as RGBA with that alpha.
extern uint8_t* SelectionMask; // SelectionRowLength bytes a row
extern uint8_t* SourceRGBA;    // four bytes a pixel
extern int32_t SelectionRowLength;
extern int32_t SelectionWidth, SelectionHeight;

// The document's planes hold transparency: at least 4 in an RGB-like mode, 5 in CMYK.
bool DocumentHasAlpha();

// Page memory of both work images, ImageHeight * WorkRowBytes bytes each.
void FreeWorkImages();
void FreeSelectionMask();

// The host's output planes as the mask pass writes them: interleaved, `planes` bytes a
// pixel with the mask last, `rowBytes` apart, `width` by `height` pixels.
struct HostPlanes {
    uint8_t* data = nullptr;
    int32_t rowBytes = 0;
    int32_t planes = 0;
    int32_t width = 0, height = 0;
};
