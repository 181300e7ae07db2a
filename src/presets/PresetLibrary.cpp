#include "presets/PresetLibrary.h"

#include "state/Parameters.h"
#include "state/PathTable.h"
#include "platform/Alert.h"
#include "platform/FolderList.h"
#include "platform/ModulePath.h"
#include "presets/PresetFormat.h"
#include "presets/PresetHooks.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

PresetEngineHooks PresetHooks;
std::string PresetSubFolder[5];

namespace {

constexpr const char* kKindFolders[] = {"Basic", "Wash",   "Surface", "Background",
                                        "User",  "Colors", "Colors",  "BackPalette"};

bool EndsInSeparator(const std::string& s) { return !s.empty() && (s.back() == '/' || s.back() == '\\'); }

bool FileExists(const std::string& path) {
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return false;
    std::fclose(f);
    return true;
}

bool EndsWith(const std::string& s, const char* tail) {
    const size_t n = std::strlen(tail);
    return s.size() >= n && s.compare(s.size() - n, n, tail) == 0;
}

std::string WithoutExtension(const std::string& name) {
    const size_t n = std::strlen(kPresetExtension);
    return EndsWith(name, kPresetExtension) ? name.substr(0, name.size() - n) : name;
}

// The order of a sorted list box: case does not count.
bool ListBoxLess(const std::string& a, const std::string& b) {
    const size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        const int ca = std::tolower(static_cast<unsigned char>(a[i]));
        const int cb = std::tolower(static_cast<unsigned char>(b[i]));
        if (ca != cb) return ca < cb;
    }
    return a.size() < b.size();
}

} // namespace

const char* PresetKindFolder(int kind) { return kind >= 0 && kind <= 7 ? kKindFolders[kind] : nullptr; }

std::string PresetFolderPath(int kind, const std::string& category) {
    std::string path = PathTable.Presets + PresetKindFolder(kind) + kPathSeparator;
    if (kind <= PresetUser && !category.empty()) {
        path += category;
        if (!EndsInSeparator(category)) path += kPathSeparator;
    }
    return path;
}

std::string PresetListFolder(int kind) {
    return PresetFolderPath(kind, kind <= PresetUser ? PresetSubFolder[kind] : std::string());
}

std::string PresetFilePath(const std::string& name, int kind) {
    return PresetListFolder(kind) + name + kPresetExtension;
}

std::vector<std::string> FillPresetList(int kind) {
    std::vector<std::string> rows;
    if (!PresetKindFolder(kind)) return rows;
    const std::string folder = PresetListFolder(kind);
    const bool topLevel = kind > PresetUser || PresetSubFolder[kind].empty();
    std::vector<FolderEntry> entries;
    if (ListFolder(folder, "*", entries))
        for (const FolderEntry& e : entries) {
            if (!e.isDirectory || e.name == ".") continue;
            // ".." leads out of a sub-folder; at the top it would leave the kind's folder.
            if (e.name == ".." && topLevel) continue;
            rows.push_back("\t" + e.name);
        }
    if (ListFolder(folder, "*.qztpst", entries))
        for (const FolderEntry& e : entries)
            if (!e.isDirectory && e.isArchive) rows.push_back(WithoutExtension(e.name));
    if (kind == PresetBasic) {
        rows.insert(rows.begin(), {"Reset All", "Last Used Settings"});
    } else {
        std::stable_sort(rows.begin(), rows.end(), ListBoxLess);
    }
    return rows;
}

void EnterPresetFolder(int kind, const std::string& folderRow) {
    if (kind < 0 || kind > PresetUser || !IsFolderRow(folderRow)) return;
    std::string& sub = PresetSubFolder[kind];
    const std::string name = folderRow.substr(1);
    if (name == "..") {
        if (EndsInSeparator(sub)) sub.pop_back();
        const size_t cut = sub.find_last_of("/\\");
        sub = cut == std::string::npos ? std::string() : sub.substr(0, cut + 1);
    } else {
        sub += name;
        sub += kPathSeparator;
    }
}

bool LoadPreset(const std::string& name, int kind) {
    if (!PresetKindFolder(kind)) return false;
    if (kind == PresetBasic || kind == PresetSurface || kind == PresetUser) std::strcpy(SurfaceColorsName, "Custom");
    if (kind == PresetBasic || kind == PresetBackground || kind == PresetUser || kind == PresetPalette)
        std::strcpy(BackgroundColorsName, "Custom");
    if (!LoadPresetPath(PresetFilePath(name, kind).c_str())) return false;
    if ((kind == PresetBasic || kind == PresetWash || kind == PresetSurface || kind == PresetUser) &&
        PresetHooks.ReconcileNavigator)
        PresetHooks.ReconcileNavigator();
    return true;
}

std::string PresetSaveName(const std::string& typed) {
    return typed.size() > 7 && EndsWith(typed, kPresetExtension) ? WithoutExtension(typed) : typed;
}

bool PresetNameFits(const std::string& name, int kind) {
    if (name.empty() || !PresetKindFolder(kind)) return false;
    // A separator or "..\" would lead out of the folder; ':' would write a stream of another file.
    for (unsigned char c : name)
        if (c < 32 || std::strchr("\\/:*?\"<>|", c)) return false;
    // CON, NUL, COM1... open a device whatever follows the first dot.
    std::string stem = name.substr(0, name.find('.'));
    while (!stem.empty() && stem.back() == ' ') stem.pop_back();
    for (char& c : stem) c = char(std::toupper(static_cast<unsigned char>(c)));
    for (const char* device : {"CON", "PRN", "AUX", "NUL"})
        if (stem == device) return false;
    if (stem.size() == 4 && (stem.compare(0, 3, "COM") == 0 || stem.compare(0, 3, "LPT") == 0) && stem[3] >= '0' &&
        stem[3] <= '9')
        return false;
    // One component of at most 255 characters, a whole path under the classic 260.
    const size_t file = name.size() + std::strlen(kPresetExtension);
    return file <= 255 && PresetFilePath(name, kind).size() < 260;
}

SaveResult SavePreset(int kind, const std::string& typedName, bool overwrite) {
    if (kind < PresetWash || kind > PresetBackgroundColors) return SaveResult::CannotCreate;
    const std::string name = PresetSaveName(typedName);
    if (name.empty()) return SaveResult::EmptyName;
    if (!PresetNameFits(name, kind)) {
        ShowAlert("Cannot Save File!", kAlertTitle, AlertIcon::Information);
        return SaveResult::CannotCreate;
    }
    const std::string path = PresetFilePath(name, kind);
    const bool exists = FileExists(path);
    if (exists && !overwrite) return SaveResult::Exists;
    std::FILE* file = std::fopen(path.c_str(), "wb");
    bool ok = file != nullptr;
    if (file) {
        ok = WritePresetFile(file, kind);
        ok = std::fclose(file) == 0 && ok;
    }
    if (!ok) {
        ShowAlert("Cannot Save File!", kAlertTitle, AlertIcon::Information);
        return SaveResult::CannotCreate;
    }
    return exists ? SaveResult::Overwritten : SaveResult::Created;
}

bool DeletePresetFile(const std::string& row, int kind) {
    if (IsFolderRow(row) || !PresetKindFolder(kind)) return false;
    return std::remove(PresetFilePath(row, kind).c_str()) == 0;
}

std::vector<std::string> ListPresetNames(int kind) {
    std::vector<std::string> names{"none"};
    if (!PresetKindFolder(kind)) return names;
    std::vector<FolderEntry> entries;
    if (ListFolder(PresetFolderPath(kind, std::string()), "*.qztpst", entries))
        for (const FolderEntry& e : entries) {
            if (e.isDirectory) continue;
            const std::string name = WithoutExtension(e.name);
            if (name != "none") names.push_back(name);
        }
    return names;
}
