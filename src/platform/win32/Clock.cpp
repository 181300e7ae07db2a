#include "platform/Clock.h"
#include "platform/win32/Win32.h"

int64_t CurrentTimeSeconds() noexcept {
    // FILETIME counts 100 ns ticks since 1601; 11644473600 s separate it from 1970.
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    uint64_t ticks = (static_cast<uint64_t>(now.dwHighDateTime) << 32) | now.dwLowDateTime;
    return static_cast<int64_t>(ticks / 10000000u) - 11644473600;
}
