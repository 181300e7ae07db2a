#include "host/Dialog.h"

// Builds without windows (the native one, driven by hostsim and the command line) have
// no dialog, so an interactive run there is a cancelled one.
bool OpenDialog() { return DialogStandIn ? DialogStandIn() : false; }

void ShowAboutBox(void* hostWindow) {
    if (AboutStandIn) AboutStandIn(hostWindow);
}
