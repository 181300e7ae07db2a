#include "host/Session.h"

#include "state/Parameters.h"

int16 gSelector = 0;
FilterRecord* gFilterRecord = nullptr;
AboutRecord* gAboutRecord = nullptr;
intptr_t* gDataSlot = nullptr;
int16* gResult = nullptr;
PluginData* gPluginData = nullptr;
bool HostActionSuites = false;

const SPBasicSuite* BasicSuite() {
    if (gSelector == filterSelectorAbout) return gAboutRecord ? gAboutRecord->sSPBasic : nullptr;
    return gFilterRecord ? gFilterRecord->sSPBasic : nullptr;
}

void SetResult(OSErr error) {
    if (gResult) *gResult = error;
}

bool ResultIsSet() { return gResult && *gResult != noErr; }

namespace {
Handle DataHandle() { return gDataSlot ? reinterpret_cast<Handle>(*gDataSlot) : nullptr; }
} // namespace

void LockHandles() {
    const Handle parameters = gFilterRecord->parameters;
    const Handle data = DataHandle();
    if (!parameters || !data || !gFilterRecord->handleProcs) {
        SetResult(filterBadParameters);
        return;
    }
    const HandleProcs* procs = gFilterRecord->handleProcs;
    gParams = reinterpret_cast<FilterParameters*>(procs->lockProc(parameters, true));
    gPluginData = reinterpret_cast<PluginData*>(procs->lockProc(data, true));
    if (!gParams || !gPluginData) SetResult(memFullErr);
}

void UnlockHandles() {
    const HandleProcs* procs = gFilterRecord->handleProcs;
    if (!procs) return;
    if (Handle data = DataHandle()) procs->unlockProc(data);
    if (Handle parameters = gFilterRecord->parameters) procs->unlockProc(parameters);
    gParams = nullptr;
    gPluginData = nullptr;
}
