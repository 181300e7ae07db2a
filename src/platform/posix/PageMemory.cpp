// Page memory from anonymous mappings, which the kernel hands out zero-filled.
#include "platform/PageMemory.h"

#include <sys/mman.h>

namespace {

constexpr size_t kHugePage = size_t(2) << 20;

} // namespace

void* AllocatePages(size_t bytes) noexcept {
    if (bytes == 0) return nullptr;
    void* pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) return nullptr;
    // Work images run to hundreds of megabytes: first touches of large pages cost far
    // fewer faults. Only a hint; where the kernel declines nothing changes.
    if (bytes >= 4 * kHugePage) madvise(pages, bytes, MADV_HUGEPAGE);
    return pages;
}

void FreePages(void* pages, size_t bytes) noexcept {
    if (pages) munmap(pages, bytes);
}
