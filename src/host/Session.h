// What the shell keeps of the host's current call: the record, the data slot, the
// result, the small data block, and the run-wide switches every stage reads.
#pragma once

#include "state/DialogState.h"
#include "host/abi/HostInterface.h"

// The 10-byte data block the host keeps for us between calls.
struct PluginData {
    uint8 QueryForParameters; // 1: the dialog is wanted
    int16 ProxyRect[4];       // top, left, bottom, right
};
static_assert(sizeof(PluginData) == 10);

extern int16 gSelector;
extern FilterRecord* gFilterRecord; // null for selector 0
extern AboutRecord* gAboutRecord;   // selector 0 only
extern intptr_t* gDataSlot;
extern int16* gResult;
extern PluginData* gPluginData; // valid between LockHandles and UnlockHandles

extern bool HostActionSuites; // the host's action suites answered Prepare's test

// The basic suite of the current call, or null.
const SPBasicSuite* BasicSuite();

void SetResult(OSErr error);
bool ResultIsSet();

// Both blocks must exist: filterBadParameters without them, memFullErr if a lock fails.
void LockHandles();
// The data block (if any), then the parameter block (if any).
void UnlockHandles();
