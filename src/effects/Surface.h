// The surface: its texture as a height field (ReliefMap), lit into a shade per pixel, and
// the pass that colours the picture by that shade into SurfaceImage. The shade is made a
// row at a time as the pass needs it: a whole map of it would only cost memory.
// With Depth Perspective the picture is also shifted along the relief, and the washes'
// edge masks follow it. The colour maths itself is SurfaceColor's.
#pragma once

#include <cstdint>

extern uint8_t* ReliefMap; // one byte a pixel, rows of the stride of the View written last
// The surfaced picture, 4 bytes a pixel: its own buffer in a preview, WorkImage itself
// in a full-size render.
extern uint8_t* SurfaceImage;
extern bool SurfaceEntireNow; // SurfaceEntire as of the start of the surface pass

// The dialog shows the second surface alone.
bool ShowingSecondSurface();

// Fresh relief and (in a preview) surface buffers for the current work area; sets
// SurfaceShadeDirty.
void AllocateReliefBuffers();
void FreeReliefBuffers();

// The relief of surface 1, surface 2, or the depth-weighted average of both.
void BuildSurfaceRelief(bool first, bool second);
// Row y of the shade: the light's dot product with the relief's slopes, over a relief of
// width by height (limited by the work area) read with rows of reliefStride bytes; the
// last row and column extrapolate. Not limited to 0..1. out takes the row's width.
void BuildShadeRow(int32_t y, int32_t width, int32_t height, int32_t reliefStride, float* out);
// The whole pass, when SurfaceShadeDirty is set; clears it.
void ShadeSurface();
// One pixel: picture (in and out) and alpha through the surface colour at `shade`, the
// intensity and the pass code; stored at byte offset `offset` of SurfaceImage (and of
// WashAreaBuffer when it is kept).
void ApplySurfacePixel(int32_t picture[3], int32_t alpha, float shade, size_t offset, int32_t type);

// WorkImage's alpha from SourceImage's, scaled by the host's selection.
void SurfaceAlphaFromSource();
// SurfaceImage into WorkImage, blended with SourceImage by the selection.
void MergeSurfaceResult();
