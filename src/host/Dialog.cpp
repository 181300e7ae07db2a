#include "host/Dialog.h"

// There is no dialog in this build yet, so an interactive run is a cancelled one.
bool OpenDialog() { return false; }
