#include "pickers/Catalogue.h"

#include "presets/PresetFormat.h"
#include "raster/AWashFile.h"

#include <cstring>

namespace {

uint32_t WordAt(const uint8_t* bytes, size_t offset) {
    return uint32_t(bytes[offset]) | uint32_t(bytes[offset + 1]) << 8 | uint32_t(bytes[offset + 2]) << 16 |
           uint32_t(bytes[offset + 3]) << 24;
}

} // namespace

void ReadTextureHeader(const uint8_t* bytes, size_t size, TextureEntry& entry) {
    entry.Extra = entry.EffectMask = entry.SetId = 0;
    // Older files and short reads belong to no set and no category.
    if (size < kTextureHeaderBytes || WordAt(bytes, 0) != kTextureMagic) return;
    entry.SetId = WordAt(bytes, 20);
    entry.Extra = WordAt(bytes, 24);
    entry.EffectMask = WordAt(bytes, 28);
}

void ReadPresetCategories(std::FILE* file, TextureEntry& entry) {
    entry.CategoryCount = 0;
    entry.Categories.clear();
    // Our own writer puts the category on line 4; the shipped library repeats it on line 5.
    char line[kPresetLineSize];
    for (int number = 1; number <= 5; ++number) {
        if (!ReadPresetLine(file, line)) return;
        if (number < 4) continue;
        const char* at = line;
        while (*at == ' ') ++at;
        if (std::strncmp(at, "rgtC", 4) != 0) continue;
        at += 4;
        char value[kPresetLineSize];
        ReadNameToken(at, value, sizeof value);
        // A line end the reader kept is no part of the value.
        size_t length = std::strlen(value);
        while (length > 0 && (value[length - 1] == '\r' || value[length - 1] == '\n' || value[length - 1] == ' '))
            value[--length] = 0;
        const char* piece = value;
        for (;;) {
            const char* bar = std::strchr(piece, '|');
            entry.Categories.emplace_back(piece, bar ? size_t(bar - piece) : std::strlen(piece));
            if (!bar) break;
            piece = bar + 1;
        }
        entry.CategoryCount = int32_t(entry.Categories.size());
        return;
    }
}
