// The staged render: the layers drawn in a fixed order into WorkImage with a
// percent mark at each stage. The same code serves the preview and the final run.
#pragma once

#include "effects/EffectLayer.h"
#include "state/ViewState.h"
#include "state/WorkImages.h"

#include <cstdint>

extern bool KeepWashArea;       // WashAreaBuffer is live in this run
extern uint8_t* WashAreaBuffer; // ImageHeight * WorkRowBytes bytes

// Set by RunFilter before a render.
extern bool WashToMaskRun;
extern bool BackgroundWithheld;
extern int32_t SurfacePassCode;

void RenderLayers(int32_t view);
void RenderWashLayer(EffectLayer& layer);
// The mask pass: the wash's keep values into the mask plane of the host's output.
void RenderWashToMask(EffectLayer& layer, const HostPlanes& out);
void ResetWorkImage();
void FreeWashAreaBuffer();
// Frees both washes' edge mask work; the next render makes it for the area then current.
void FreeWashMaskWork();
// The buffer handed over from a run to the mask pass of a later one (page memory of
// ImageHeight * WorkRowBytes bytes): adopted as this run's, or let go without freeing.
void AdoptWashAreaBuffer(uint8_t* buffer);
uint8_t* ReleaseWashAreaBuffer();
