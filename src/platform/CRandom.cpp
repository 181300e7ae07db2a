// CRandom: the Windows C runtime's rand() recurrence, independent of the OS.
#include "platform/CRandom.h"

#include <atomic>

namespace {

std::atomic<uint32_t> gState{1};

} // namespace

void CSeedRandom(uint32_t seed) noexcept { gState.store(seed, std::memory_order_relaxed); }

int CRandom() noexcept {
    // A compare-exchange loop keeps concurrent callers free of data races; the
    // sequence is only reproducible from one thread anyway.
    uint32_t state = gState.load(std::memory_order_relaxed);
    uint32_t next;
    do {
        next = state * 214013u + 2531011u;
    } while (!gState.compare_exchange_weak(state, next, std::memory_order_relaxed));
    return static_cast<int>((next >> 16) & 0x7fffu);
}
