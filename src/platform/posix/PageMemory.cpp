// Page memory from anonymous mappings, which the kernel hands out zero-filled.
#include "platform/PageMemory.h"

#include <sys/mman.h>

void* AllocatePages(size_t bytes) noexcept {
    if (bytes == 0) return nullptr;
    void* pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return pages == MAP_FAILED ? nullptr : pages;
}

void FreePages(void* pages, size_t bytes) noexcept {
    if (pages) munmap(pages, bytes);
}
