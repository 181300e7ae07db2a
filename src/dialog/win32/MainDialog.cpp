#include "dialog/DialogIds.h"
#include "host/Dialog.h"

// The modal dialog comes here; until it does, an interactive run is a cancelled one.
bool OpenDialog() { return DialogStandIn ? DialogStandIn() : false; }
