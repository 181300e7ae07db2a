#include "presets/UiSettings.h"

#include "state/Parameters.h"
#include "state/PathTable.h"
#include "platform/UserStore.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

int32_t SharingResolution = 1024;
int32_t UseSoundForAuto = 1;

namespace {

constexpr int kIniLineSize = 256;

struct IniSetting {
    const char* key; // as it stands in the file
    const char* comment;
};

constexpr IniSetting kSettings[] = {
    {"tfeL", "\t\t\t\t;Left of window"},        {" poT", "\t\t\t\t;Top of window"},
    {"htdW", "\t\t\t\t;Width of window"},       {"thgH", "\t\t\t\t;Height of window"},
    {"tlsR", "\t\t\t\t;Resolution of sharing"}, {"nSsU", "\t\t\t\t;Use sound for Auto"},
};

int32_t& Field(UiSettingsRecord& r, int index) {
    switch (index) {
    case 0: return r.WindowLeft;
    case 1: return r.WindowTop;
    case 2: return r.WindowWidth;
    case 3: return r.WindowHeight;
    case 4: return r.SharingResolution;
    default: return r.UseSoundForAuto;
    }
}

UiSettingsRecord Current() {
    return {gParams->WindowLeft,   gParams->WindowTop, gParams->WindowWidth,
            gParams->WindowHeight, SharingResolution,  UseSoundForAuto};
}

uint32_t LittleEndianKey(const char* bytes) {
    return uint32_t(uint8_t(bytes[0])) | uint32_t(uint8_t(bytes[1])) << 8 | uint32_t(uint8_t(bytes[2])) << 16 |
           uint32_t(uint8_t(bytes[3])) << 24;
}

// A line up to a byte of 13 or less (signed), tabs as blanks, trailing blanks cut. As in
// the preset reader, a last line without its end byte is lost.
bool ReadIniLine(std::FILE* file, char (&line)[kIniLineSize]) {
    size_t n = 0;
    for (;;) {
        const int c = std::fgetc(file);
        if (c == EOF) return false;
        char byte = char(c);
        if (byte == '\t') byte = ' '; // made a blank before the test, so a tab never ends a line
        if (static_cast<signed char>(byte) <= 13) break;
        if (n < kIniLineSize - 1) line[n++] = byte;
    }
    while (n > 0 && line[n - 1] == ' ') --n;
    line[n] = 0;
    return true;
}

void TakeIniLine(const char* line, UiSettingsRecord& into) {
    if (std::strlen(line) < 4 || line[0] == ';') return;
    while (*line == ' ') ++line;
    if (std::strlen(line) < 4) return;
    const uint32_t key = LittleEndianKey(line);
    const char* value = line + 4;
    while (*value == ' ') ++value;
    for (int i = 0; i < 6; ++i)
        if (LittleEndianKey(kSettings[i].key) == key) {
            Field(into, i) = int32_t(std::strtol(value, nullptr, 10));
            return;
        }
}

} // namespace

std::string UiSettingsPath() { return PathTable.Plugin + kIniFileName; }

void ReadUiSettingsRecord(const std::string& path, UiSettingsRecord& into) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) return;
    char line[kIniLineSize];
    while (ReadIniLine(file, line)) TakeIniLine(line, into);
    std::fclose(file);
}

void WriteUiSettingsRecord(const std::string& path, const UiSettingsRecord& values) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) return;
    UiSettingsRecord v = values;
    std::fputs(";Parameters for Quenzit plug-in UI\n", file);
    for (int i = 0; i < 6; ++i)
        std::fprintf(file, "%s %d %s\n", kSettings[i].key, int(Field(v, i)), kSettings[i].comment);
    std::fclose(file);
}

void ReadUiSettingsFrom(const std::string& path) {
    if (!gParams) return;
    UiSettingsRecord r = Current();
    ReadUiSettingsRecord(path, r);
    gParams->WindowLeft = r.WindowLeft;
    gParams->WindowTop = r.WindowTop;
    gParams->WindowWidth = r.WindowWidth;
    gParams->WindowHeight = r.WindowHeight;
    SharingResolution = r.SharingResolution;
    UseSoundForAuto = r.UseSoundForAuto;
}

void ReadUiSettings() { ReadUiSettingsFrom(UiSettingsPath()); }

void WriteUiSettingsTo(const std::string& path) {
    if (gParams) WriteUiSettingsRecord(path, Current());
}

void WriteUiSettings() { WriteUiSettingsTo(UiSettingsPath()); }

uint32_t ReadNewVersionFlag() { return ReadUserValue("New version on server"); }

void WriteNewVersionFlag(uint32_t value) { WriteUserValue("New version on server", value); }
