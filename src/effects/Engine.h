// The engine's stages as the render driver calls them. Each builder clears the
// dirty flag it answers for.
#pragma once

#include "effects/Background.h"
#include "effects/EffectLayer.h"
#include "effects/LayerTexture.h"
#include "effects/Surface.h"
#include "effects/WashMask.h"
#include "state/WorkImages.h"

void CompositeWash(EffectLayer& layer);
void CompositeWashToMask(EffectLayer& layer, const HostPlanes& out);
