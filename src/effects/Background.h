// The background: its texture mapped to three tone colours (optionally shifted in hue
// and saturation, or stretched by Enhanced) in BackgroundImage, which then shows
// behind the picture wherever the picture's alpha is below 255.
#pragma once

#include <cstdint>

struct EffectLayer;

extern uint8_t* BackgroundImage; // 4 bytes a pixel, rows of WorkRowBytes

// A fresh BackgroundImage for the current work area.
void AllocateBackgroundImage();
void FreeBackgroundImage();

// Colours the layer's View into BackgroundImage when ToneDirty is set; clears it.
void PlaceBackground(EffectLayer& layer);
// BackgroundImage behind WorkImage over the whole work area.
void CompositeBackground();
