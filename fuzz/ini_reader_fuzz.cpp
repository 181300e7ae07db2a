// Fuzz target for the ini reader: any bytes as "Quenzit.ini", read into a fresh record.
#include "state/Parameters.h"
#include "presets/UiSettings.h"

#include <cstdint>
#include <cstdio>
#include <string>

#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::string path = "/tmp/qz-ini-fuzz-" + std::to_string(getpid()) + ".ini";
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) return 0;
    std::fwrite(data, 1, size, file);
    std::fclose(file);

    static FilterParameters record;
    gParams = &record;
    ResetAllParameters();
    ReadUiSettingsFrom(path);
    return 0;
}
