// Fuzz target for the preset reader: the line reader, the tokens and every key's action.
// Byte 0: bit 0 puts the right first line in front, so the fuzzer reaches the keys;
// bit 1 starts under version 1. Every name must stay within its field.
#include "host/Parameters.h"
#include "presets/PresetFormat.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    std::FILE* stream = std::tmpfile();
    if (!stream) return 0;
    if (data[0] & 1) std::fputs("Quenzit Press Preset;\n", stream);
    std::fwrite(data + 1, 1, size - 1, stream);
    std::rewind(stream);

    static FilterParameters record;
    gParams = &record;
    ResetAllParameters();
    PresetVersion = (data[0] & 2) ? 1 : 2;
    char line[kPresetLineSize];
    if (ReadPresetLine(stream, line) && std::strncmp(line, kPresetHeader, std::strlen(kPresetHeader)) == 0)
        LoadPresetFile(stream);
    std::fclose(stream);

    for (const char* name : {record.WashFileName1, record.WashFileName2, record.BackgroundFileName,
                             record.SurfaceFileName1, record.SurfaceFileName2})
        if (std::memchr(name, 0, kNameLength) == nullptr) __builtin_trap();
    return 0;
}
