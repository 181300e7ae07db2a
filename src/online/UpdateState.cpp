#include "online/UpdateState.h"

bool NewVersionKnown = false;
