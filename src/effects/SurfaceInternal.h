// What the surface's two files share: the blocks behind its buffers and the light.
#pragma once

#include "effects/EffectLayer.h"
#include "platform/PageMemory.h"

#include <cstdint>

extern PageBlock ReliefBlock, ShadeBlock, SurfaceBlock;

// The surface whose View sizes the pass: the second while it is shown alone.
const EffectLayer& ShownSurface();
// SurfaceImage is WorkImage in a full-size render, else a block of the work area's size.
bool SurfaceImageReady();
// Makes ReliefMap hold ImageHeight rows of `stride` bytes; false when it cannot.
bool ReserveRelief(int32_t stride);

struct LightVector {
    float x = 0.0f, y = 0.0f, z = 0.0f;
};
LightVector SurfaceLight();
// sqrt(depth / 100) * 150 / PreviewScale / divisor: the slope of the relief per pixel
// of the work area, steeper in a preview by its scale.
float SlopeGain(double divisor);
