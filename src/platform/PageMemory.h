// Page memory: large zero-filled blocks straight from the operating system,
// for rasters and scratch planes that should not fragment the heap.
#pragma once

#include <cstddef>

// Reserves and commits `bytes` of read-write memory, zero-filled. Returns null
// for 0 bytes or when the system refuses (never aborts, whatever the size).
void* AllocatePages(size_t bytes) noexcept;

// Returns a block from AllocatePages; `bytes` is the size it was asked for.
// Null is ignored.
void FreePages(void* pages, size_t bytes) noexcept;

// A page block that remembers its size, for work buffers that are replaced whole.
struct PageBlock {
    void* Data = nullptr;
    size_t Bytes = 0;

    PageBlock() = default;
    PageBlock(const PageBlock&) = delete;
    PageBlock& operator=(const PageBlock&) = delete;
    ~PageBlock() { Free(); }

    // Frees the old block and takes a fresh zero-filled one; false when refused.
    bool Replace(size_t bytes) noexcept {
        Free();
        Data = AllocatePages(bytes);
        Bytes = Data ? bytes : 0;
        return Data != nullptr;
    }
    // Keeps the block when it is large enough already.
    bool Reserve(size_t bytes) noexcept { return Bytes >= bytes && Data ? true : Replace(bytes); }
    void Free() noexcept {
        FreePages(Data, Bytes);
        Data = nullptr;
        Bytes = 0;
    }
};
