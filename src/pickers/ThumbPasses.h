// The pixel passes the live and the colour thumbnails share, over the work buffers.
// Internal to the pickers: the dialog calls the entry points of Thumbnails.h.
#pragma once

#include <cstdint>

struct EffectLayer;

// The background's tri-tone of a grey picture (112 x 84, bottom-up, 3 bytes a pixel,
// `stride` apart) in place, with the layer's colours and invert flag and the hue and
// saturation of gParams.
void BackgroundPass(uint8_t* pixels, int32_t stride, const EffectLayer& layer);
// ThumbSource from the current image; false (buffers as they were) without one.
bool CropSourceInto(float scale, int32_t resolution, float& usedScale);
// ThumbSource coloured by the selected surface over ThumbLighting into ThumbPixels,
// shown over DocumentThumb where it is transparent.
void SurfacePass();
