#include "Handles.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <unordered_map>
#include <utility>

namespace hostsim {
namespace {

// The master pointer comes first so that the handle itself points at it.
struct Block {
    char* data = nullptr;
    int32 size = 0;
    int lockCount = 0;
    bool disposed = false;
};

struct Table {
    // Disposed blocks stay here as tombstones so that a second dispose is recognised.
    std::unordered_map<Handle, std::unique_ptr<Block>> blocks;
    std::vector<std::string> misuse;
    bool zeroFill = true;
};

Table& TheTable() {
    static Table table;
    return table;
}

Block* Find(Handle h, const char* operation) {
    Table& t = TheTable();
    auto it = t.blocks.find(h);
    if (it == t.blocks.end()) {
        t.misuse.push_back(std::string(operation) + " of a handle the host never made");
        return nullptr;
    }
    if (it->second->disposed) {
        t.misuse.push_back(std::string(operation) + " of a disposed handle");
        return nullptr;
    }
    return it->second.get();
}

Handle QZ_HOSTCALL NewProc(int32 size) { return NewHandle(size); }
void QZ_HOSTCALL DisposeProc(Handle h) { DisposeHandle(h); }
int32 QZ_HOSTCALL GetSizeProc(Handle h) { return HandleSize(h); }
OSErr QZ_HOSTCALL SetSizeProc(Handle h, int32 size) { return SetHandleSize(h, size); }
Ptr QZ_HOSTCALL LockProc(Handle h, Boolean) { return LockHandle(h); }
void QZ_HOSTCALL UnlockProc(Handle h) { UnlockHandle(h); }
void QZ_HOSTCALL RecoverSpaceProc(int32) {}

} // namespace

const HandleProcs* GetHandleProcs() {
    static const HandleProcs procs = {kCurrentHandleProcsVersion,
                                      kCurrentHandleProcsCount,
                                      NewProc,
                                      DisposeProc,
                                      GetSizeProc,
                                      SetSizeProc,
                                      LockProc,
                                      UnlockProc,
                                      RecoverSpaceProc,
                                      DisposeProc};
    return &procs;
}

Handle NewHandle(int32 size) {
    if (size < 0) return nullptr;
    auto block = std::make_unique<Block>();
    block->data = static_cast<char*>(std::malloc(size_t(size) + 1));
    if (!block->data) return nullptr;
    std::memset(block->data, TheTable().zeroFill ? 0 : 0xA5, size_t(size));
    block->size = size;
    Handle h = &block->data;
    TheTable().blocks[h] = std::move(block);
    return h;
}

void DisposeHandle(Handle h) {
    if (!h) return;
    Block* b = Find(h, "dispose");
    if (!b) return;
    std::free(b->data);
    b->data = nullptr;
    b->size = 0;
    b->disposed = true;
}

int32 HandleSize(Handle h) {
    Block* b = Find(h, "size");
    return b ? b->size : 0;
}

OSErr SetHandleSize(Handle h, int32 size) {
    Block* b = Find(h, "resize");
    if (!b || size < 0) return nilHandleErr;
    if (b->lockCount > 0) TheTable().misuse.push_back("resize of a locked handle");
    char* data = static_cast<char*>(std::realloc(b->data, size_t(size) + 1));
    if (!data) return memFullErr;
    if (size > b->size) std::memset(data + b->size, 0, size_t(size - b->size));
    b->data = data;
    b->size = size;
    return noErr;
}

Ptr LockHandle(Handle h) {
    Block* b = Find(h, "lock");
    if (!b) return nullptr;
    ++b->lockCount;
    return b->data;
}

void UnlockHandle(Handle h) {
    Block* b = Find(h, "unlock");
    if (b && b->lockCount > 0) --b->lockCount;
}

bool IsLiveHandle(Handle h) {
    auto& blocks = TheTable().blocks;
    auto it = blocks.find(h);
    return it != blocks.end() && !it->second->disposed;
}

bool IsLocked(Handle h) {
    auto& blocks = TheTable().blocks;
    auto it = blocks.find(h);
    return it != blocks.end() && it->second->lockCount > 0;
}

int LiveHandleCount() {
    int n = 0;
    for (auto& [h, b] : TheTable().blocks) n += !b->disposed;
    return n;
}

void SetZeroFillNewHandles(bool zeroFill) { TheTable().zeroFill = zeroFill; }

std::vector<std::string> TakeHandleMisuse() { return std::exchange(TheTable().misuse, {}); }

} // namespace hostsim
