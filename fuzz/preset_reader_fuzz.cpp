// Fuzz target for the preset reader: the line reader, the tokens and every key's action.
// Byte 0: bit 0 puts the right first line in front, so the fuzzer reaches the keys;
// bit 1 starts under version 1. Every name must stay within its field.
#include "state/Parameters.h"
#include "presets/PresetFormat.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    std::string text = (data[0] & 1) ? "Quenzit Press Preset;\n" : "";
    text.append(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (text.empty()) return 0;
    std::FILE* stream = fmemopen(text.data(), text.size(), "rb");
    if (!stream) return 0;

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
