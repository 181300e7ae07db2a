// Page memory from VirtualAlloc, which commits zero-filled pages.
#include "platform/PageMemory.h"
#include "platform/win32/Win32.h"

void* AllocatePages(size_t bytes) noexcept {
    if (bytes == 0) return nullptr;
    return VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void FreePages(void* pages, size_t /*bytes*/) noexcept {
    // MEM_RELEASE frees the whole reservation and requires a size of 0.
    if (pages) VirtualFree(pages, 0, MEM_RELEASE);
}
