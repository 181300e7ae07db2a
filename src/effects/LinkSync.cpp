#include "effects/LinkSync.h"

// The carrying is being built; the pages and the navigator already pass by here.
void SyncWashLinks() {}
void SyncSurfaceLinks() {}
void SyncBackgroundLinks() {}
