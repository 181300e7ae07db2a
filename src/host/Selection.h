// The selection mask and SourceRGBA built from the host's input planes and the target
// layer's transparency (the globals live with the work images).
#pragma once

#include "state/WorkImages.h"

void BuildSelectionMask();
// After a preview fetch: the host's mask as it now stands, then the pair for the proxy,
// which the drawers' live tiles crop.
void BuildPreviewSelection();
