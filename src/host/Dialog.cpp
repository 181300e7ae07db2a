#include "host/Dialog.h"

bool (*DialogStandIn)() = nullptr;
