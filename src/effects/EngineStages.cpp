// The stages before their texture work exists: they keep the flags honest so the
// driver's bookkeeping and progress are exactly those of a full render.
// (PrepareLayerTexture lives with the texture loading.)
#include "effects/Engine.h"

void BuildSurfaceRelief(bool, bool) {}
void SurfaceAlphaFromSource() {}
void ShadeSurface() {}
void MergeSurfaceResult() {}
void PlaceBackground() {}
void CompositeBackground() {}
