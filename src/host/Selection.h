// The selection mask and SourceRGBA built from the host's input planes and the target
// layer's transparency (the globals live with the work images).
#pragma once

#include "state/WorkImages.h"

void BuildSelectionMask();
