// No sound device is used off Windows: the command line and the tests stay silent.
#include "platform/SoundBackend.h"

bool SystemPlayWave(const void* /*wave*/, size_t /*size*/) noexcept { return false; }
