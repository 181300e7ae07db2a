#include "state/DialogState.h"

bool DialogOpen = false;
