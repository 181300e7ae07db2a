#include "platform/Clock.h"

#include <ctime>

int64_t CurrentTimeSeconds() noexcept { return static_cast<int64_t>(std::time(nullptr)); }
