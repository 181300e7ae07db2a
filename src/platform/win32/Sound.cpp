// A sound from memory through the multimedia library, without waiting for its end.
#include "platform/SoundBackend.h"
#include "platform/win32/Win32.h"

#include <mmsystem.h>

bool SystemPlayWave(const void* wave, size_t /*size*/) noexcept {
    return PlaySoundA(static_cast<LPCSTR>(wave), nullptr, SND_MEMORY | SND_ASYNC | SND_NODEFAULT) != FALSE;
}
