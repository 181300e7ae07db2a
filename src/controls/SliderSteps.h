// The slider's value model apart from its windows.
#pragma once

#include <cstdint>

// A trackbar position near the snap value falls onto it: within the window (exclusive) on
// either side, when snapping is on.
int32_t SnapPosition(int32_t position, bool snapOn, float snapValue, float snapWindow);

// The up-down control's range as UDM_SETRANGE takes it: the lower bound in the high word,
// the upper in the low word, each as 16 bits.
uint32_t SpinRangeParam(int32_t low, int32_t high);
