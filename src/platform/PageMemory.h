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
