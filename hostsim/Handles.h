// hostsim's handles: the host's movable memory blocks as a plug-in sees them through
// HandleProcs. A handle is a pointer to a master pointer, so `*h` is the data, as
// plug-ins expect. Misuse (double dispose, lock or resize of a disposed handle,
// unknown handles) is recorded, never crashes, so a test can fail on it.
#pragma once

#include "host/abi/HostInterface.h"

#include <string>
#include <vector>

namespace hostsim {

// The table the host hands out in FilterRecord.handleProcs.
const HandleProcs* GetHandleProcs();

// The same operations for the host's own use (descriptor handles, parameter blocks).
Handle NewHandle(int32 size);
void DisposeHandle(Handle h);
int32 HandleSize(Handle h);
OSErr SetHandleSize(Handle h, int32 size);
Ptr LockHandle(Handle h);
void UnlockHandle(Handle h);

bool IsLiveHandle(Handle h);
bool IsLocked(Handle h);
int LiveHandleCount();

// Whether new handles are zero-filled (hosts differ; a plug-in must not rely on it).
// When off, new blocks are filled with 0xA5.
void SetZeroFillNewHandles(bool zeroFill);

// Every misuse seen since the last call, in order; clears the list.
std::vector<std::string> TakeHandleMisuse();

} // namespace hostsim
