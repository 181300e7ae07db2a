// Clock: wall-clock time for dates stored by the user store.
#pragma once

#include <cstdint>

// Seconds since 1970-01-01 00:00 UTC, as time() gives them.
int64_t CurrentTimeSeconds() noexcept;
