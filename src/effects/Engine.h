// The engine's stages as the render driver calls them. Each builder clears the
// dirty flag it answers for.
#pragma once

#include "effects/EffectLayer.h"

void PrepareLayerTexture(EffectLayer& layer); // clears GeometryDirty
void BuildCoverageNoise(EffectLayer& layer);  // clears CoverageDirty
void BuildWashEdge(EffectLayer& layer);       // clears EdgeDirty
void CompositeWash(EffectLayer& layer);
void CompositeWashToMask(EffectLayer& layer);
void BuildSurfaceRelief(bool useFirst, bool useSecond);
void SurfaceAlphaFromSource();
void ShadeSurface();
void MergeSurfaceResult();
void PlaceBackground();
void CompositeBackground();
