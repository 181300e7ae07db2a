// The background: its texture mapped to three tone colours (optionally shifted in hue
// and saturation, or stretched by Enhanced) in BackgroundImage, which then shows
// behind the picture wherever the picture's alpha is below 255.
#pragma once

#include <cstdint>

struct EffectLayer;

// 4 bytes a pixel, rows of WorkRowBytes. A preview keeps it between renders; a full-size
// render puts each row behind the picture as it is coloured and keeps none.
extern uint8_t* BackgroundImage;

// A fresh BackgroundImage for the current work area.
void AllocateBackgroundImage();
void FreeBackgroundImage();

// Colours the layer's View into BackgroundImage when ToneDirty is set; clears it. At full
// size it composes the rows straight away, and the composite then finds nothing to do.
void PlaceBackground(EffectLayer& layer);
// BackgroundImage behind WorkImage over the whole work area.
void CompositeBackground();
