// Fuzz target for what a drawer reads of each file while listing: a texture's header
// words (byte 0 even) and a colour preset's category line (byte 0 odd).
#include "pickers/Catalogue.h"

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    TextureEntry entry;
    if ((data[0] & 1) == 0) {
        ReadTextureHeader(data + 1, size - 1, entry);
        return 0;
    }
    if (size < 2) return 0;
    std::FILE* stream = fmemopen(const_cast<uint8_t*>(data + 1), size - 1, "rb");
    if (!stream) return 0;
    ReadPresetCategories(stream, entry);
    std::fclose(stream);
    if (entry.CategoryCount != int32_t(entry.Categories.size())) __builtin_trap();
    return 0;
}
