// The preset text format (.qztpst): the writer, by kind of preset, and the reader,
// which overlays gParams key by key and rewrites version 1 files on the way in.
// The lines a preset holds are listed in PresetFormat.cpp as field names of
// kParameterFields; the file key is the field's key with its bytes reversed.
#pragma once

#include <cstdint>
#include <cstdio>

enum PresetKind : int32_t {
    PresetBasic = 0,
    PresetWash = 1,
    PresetSurface = 2,
    PresetBackground = 3,
    PresetUser = 4,
    PresetSurfaceColors = 5,
    PresetBackgroundColors = 6,
    PresetPalette = 7,
};

inline constexpr const char* kPresetHeader = "Quenzit Press Preset;";
inline constexpr const char* kPresetExtension = ".qztpst";
inline constexpr int kPresetLineSize = 1024; // read buffer; longer lines are cut, not overrun

// The version the reader applies: starts at 2 and keeps the last "Version" line
// seen, so a file without one is read as the file before it was.
extern int PresetVersion;
// A colour preset's three colours land here; the caller decides where they go.
extern uint32_t PresetColorHi, PresetColorMid, PresetColorShadow;

// Writes a whole preset of `kind` from gParams and the link flags. Kinds 1 to 6 are
// what the Save buttons write; 0 is written as 4 and 7 as 6, for the shipped library.
// False when a write fails.
bool WritePresetFile(std::FILE* file, int kind);

// One line: bytes up to and including the first one at most 13 as a signed byte,
// tabs as blanks, then a zero. False at end of file (a partial line is lost).
bool ReadPresetLine(std::FILE* file, char (&line)[kPresetLineSize]);

// The line loop, for a file positioned after its first line. Overlays gParams.
void LoadPresetFile(std::FILE* file);

// Opens `path`, checks the first line and parses. False, with gParams untouched,
// when the file cannot be opened or its first line is wrong.
bool LoadPresetPath(const char* path);

// Token readers, exposed for the ini reader and the tests. `text` is advanced past
// what was taken.
int32_t ReadIntToken(const char*& text);
double ReadFloatToken(const char*& text);
// Copies into `out` (size `outSize`, always terminated) and answers the name's full length.
size_t ReadNameToken(const char*& text, char* out, size_t outSize);
