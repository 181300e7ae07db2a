#include "online/UpdateState.h"

bool NewVersionKnown = false;
float LatestVersion = 0.0f;
