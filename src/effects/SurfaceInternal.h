// What the surface's two files share: the blocks behind its buffers and the light.
#pragma once

#include "effects/EffectLayer.h"
#include "platform/PageMemory.h"

#include <cstdint>

extern PageBlock ReliefBlock, SurfaceBlock;

// The surface whose View sizes the pass: the second while it is shown alone.
const EffectLayer& ShownSurface();
// SurfaceImage is WorkImage in a full-size render, else a block of the work area's size.
bool SurfaceImageReady();
// Makes ReliefMap hold ImageHeight rows of `stride` bytes; false when it cannot.
bool ReserveRelief(int32_t stride);

// sqrt(depth / 100) * 150 / PreviewScale / divisor: the slope of the relief per pixel
// of the work area, steeper in a preview by its scale.
float SlopeGain(double divisor);

// The light vector and the slope gain of the shade, worked out once for a pass.
struct ShadeLight {
    float x = 0.0f, y = 0.0f, z = 0.0f, gain = 0.0f;
};
ShadeLight SurfaceShadeLight();
// The pass's own row of shade: its caller has checked the row and the relief's size.
void BuildShadeRow(const ShadeLight& light, int32_t y, int32_t width, int32_t height, int32_t reliefStride, float* out);
