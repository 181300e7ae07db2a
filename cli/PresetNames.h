// The looks a data folder ships, by kind and name: "-p NAME" and "quenzit preset list".
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

struct ShippedPreset {
    std::string kind; // the folder under Presets: Basic, Wash, Surface, Background, User, Colors...
    std::string name; // the file's name without extension, '_' shown as ' '
    std::filesystem::path path;
};

// Every preset file under DATA/Presets, by kind, then name (upper case, ordinal).
std::vector<ShippedPreset> ShippedPresets(const std::filesystem::path& data);

// `arg` as a preset file: an existing file as it is, else a shipped look by name ("Coffee
// Table on Bark", "Coffee_Table_on_Bark.qztpst", or "Basic/Coffee Table on Bark" when a name
// is in several kinds), compared without regard to case, blanks or underscores. False with
// the reason, and the nearest names, in `error`.
bool FindPresetFile(const std::string& arg, const std::filesystem::path& data, std::string& path, std::string& error);

// "KIND  NAME" lines of the looks of one kind (any case), or of all when `kind` is empty.
// False when no such kind exists.
bool ListPresets(const std::filesystem::path& data, const std::string& kind, std::FILE* out);
