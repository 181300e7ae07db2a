#include "controls/SliderSteps.h"

#include <cmath>

int32_t SnapPosition(int32_t position, bool snapOn, float snapValue, float snapWindow) {
    if (snapOn && std::fabs(float(position) - snapValue) < snapWindow) return int32_t(snapValue);
    return position;
}

uint32_t SpinRangeParam(int32_t low, int32_t high) { return uint32_t(low & 0xFFFF) << 16 | uint32_t(high & 0xFFFF); }
