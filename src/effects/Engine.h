// The engine's stages as the render driver calls them. Each builder clears the
// dirty flag it answers for.
#pragma once

#include "effects/Background.h"
#include "effects/EffectLayer.h"
#include "effects/Surface.h"
#include "effects/WashMask.h"

void PrepareLayerTexture(EffectLayer& layer); // clears GeometryDirty
void CompositeWash(EffectLayer& layer);
void CompositeWashToMask(EffectLayer& layer);
