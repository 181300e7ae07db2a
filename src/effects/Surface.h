// The surface: its texture as a height field (ReliefMap), lit into a shade per pixel
// (ShadeMap), and the pass that colours the picture by that shade into SurfaceImage.
// With Depth Perspective the picture is also shifted along the relief, and the washes'
// edge masks follow it. The colour maths itself is SurfaceColor's.
#pragma once

#include <cstdint>

extern uint8_t* ReliefMap; // one byte a pixel, rows of the stride of the View written last
extern float* ShadeMap;    // one f32 a pixel, rows of WorkRowBytes / 4
// The surfaced picture, 4 bytes a pixel: its own buffer in a preview, WorkImage itself
// in a full-size render.
extern uint8_t* SurfaceImage;
extern bool SurfaceEntireNow; // SurfaceEntire as of the start of the surface pass

// The dialog shows the second surface alone.
bool ShowingSecondSurface();

// Fresh relief, shade and (in a preview) surface buffers for the current work area;
// sets SurfaceShadeDirty.
void AllocateReliefBuffers();
void FreeReliefBuffers();

// The relief of surface 1, surface 2, or the depth-weighted average of both.
void BuildSurfaceRelief(bool first, bool second);
// The light's dot product with the relief's slopes, over width by height (limited by the
// work area), the relief read with rows of reliefStride bytes.
void BuildShadeMap(int32_t width, int32_t height, int32_t reliefStride);
// The whole pass, when SurfaceShadeDirty is set; clears it.
void ShadeSurface();
// One pixel: picture (in and out) and alpha through the surface colour, the intensity
// and the pass code; stored at byte offset `offset` of SurfaceImage (and of
// WashAreaBuffer when it is kept). shadeIndex indexes ShadeMap.
void ApplySurfacePixel(int32_t picture[3], int32_t alpha, size_t shadeIndex, size_t offset, int32_t type);

// WorkImage's alpha from SourceImage's, scaled by the host's selection.
void SurfaceAlphaFromSource();
// SurfaceImage into WorkImage, blended with SourceImage by the selection.
void MergeSurfaceResult();
