// The wash's masks: coverage (noise against Coverage), the edge mask (distance from
// the selection's edge against Edge Distance, blurred by Edge Softness) and the
// intensity curve.
#pragma once

#include "effects/EffectLayer.h"

#include <cstdint>

// Returns whether it ran; clears CoverageDirty.
bool BuildCoverageNoise(EffectLayer& layer);
void SetLayerCoverage(EffectLayer& layer, int32_t value);
void BuildEdgeSource(EffectLayer& layer);
void BuildWashEdge(EffectLayer& layer);
void SetLayerEdgeDistance(EffectLayer& layer, int32_t value);
void SetLayerEdgeSoftness(EffectLayer& layer, int32_t value);
void SetCurve(EffectLayer& layer, int32_t intensity);

// Squared Euclidean distance of every non-zero word to the nearest zero word, in place,
// by four-point sequential mapping; returns the largest.
int32_t DistanceTransform(uint32_t* map, int32_t width, int32_t height);
