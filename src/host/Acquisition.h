// The picture every stage works on: SourceImage and WorkImage, four bytes a pixel
// (red, green, blue, alpha), made from whatever form the host holds.
#pragma once

#include <cstdint>

extern int32_t ImageWidth, ImageHeight;   // the out rectangle: the work images' size
extern int32_t FilterWidth, FilterHeight; // the filter rectangle: what textures are placed for
extern int32_t WorkPixelBytes, WorkRowBytes;
extern uint8_t* SourceImage;
extern uint8_t* WorkImage;
extern bool ModeIsCMYK;
extern bool Depth16;

// Filter pixels per work pixel (1 in a final run) and the work area's origin.
extern double PreviewScale;
extern double PreviewOriginX, PreviewOriginY;

// The host's selection mask of this run; HaveMask 0 means none.
extern bool HaveMask;
extern const uint8_t* HostMaskData;
extern int32_t HostMaskRowBytes;

// The host's planes hold transparency: at least 4 in an RGB-like mode, 5 in CMYK.
bool DocumentHasAlpha();

void AcquireSource();
// Samples LayerRaster at the preview's scale into outData (toHost) or SourceImage.
void CopyOriginalToOutput(bool toHost);
void FreeWorkImages();
