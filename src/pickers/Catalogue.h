// The list behind a drawer: the files of one folder, what each one is, and which of them
// the drawer's filter lets through; the rows of the filter combos. The drawer owns the
// arrays; paging and selection work on them here, without a window.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

inline constexpr int kEntryNameLength = 32; // a longer file name is cut, and no longer matches its file

// One row of the catalogue.
struct TextureEntry {
    char Name[kEntryNameLength + 1] = {};
    float ThumbScale = 4.0f;                       // source pixels per thumbnail pixel
    int32_t ThumbResolution = 2048;                // the texture width ThumbScale refers to
    int32_t SourceIndex = 0;                       // in ShownEntries: the row's place in AllEntries
    uint8_t Clipped = 0;                           // too small for the full 4:1 thumbnail
    uint32_t Extra = 0, EffectMask = 0, SetId = 0; // header words at 24, 28 and 20
    int32_t CategoryCount = 0;                     // colour presets only
    std::vector<std::string> Categories;
};

enum : uint8_t { kTextureDrawer = 0, kColourDrawer = 3 }; // DrawerMode

// The drawer's list state, apart from its windows.
struct Catalogue {
    uint8_t DrawerMode = kTextureDrawer;
    int32_t FileCount = 0;
    int32_t SelectedIndex = -1; // into ShownEntries
    int32_t ShownCount = 0, PageCount = 1, CurrentPage = 0;
    std::vector<TextureEntry> AllEntries, ShownEntries;
    char Folder[1024] = {}; // without a trailing separator
    char CurrentName[64] = {};
};

// Shared by both drawers.
extern int32_t RowsPerPage;       // starts at 3
extern int32_t SetFilterIndex;    // selected row of the set combo
extern int32_t EffectFilterIndex; // selected row of the effect or category combo

// Where the list's alert hangs (the main dialog's window); null for none.
extern void* CatalogueAlertOwner;

inline constexpr size_t kTextureHeaderBytes = 52;
// The set id, extra word and effect mask of a texture file's first `size` bytes; zeros
// unless they are a whole header of the current form.
void ReadTextureHeader(const uint8_t* bytes, size_t size, TextureEntry& entry);
// A colour preset's categories from its category line, split at "|"; none without one.
void ReadPresetCategories(std::FILE* file, TextureEntry& entry);

// Builds AllEntries from `folder` (texture files, or colour presets in colour mode with
// "Reset Colors" as row 0). False when nothing was found or no memory was had.
bool ListFolder(Catalogue& list, const char* folder);
// Builds ShownEntries, ShownCount and PageCount. In colour mode `category` is the text
// of the category combo's selected row, null when every row passes (no combo, row 0, -1).
void ApplyFilter(Catalogue& list, const char* category = nullptr);
bool PassesFilter(const Catalogue& list, const TextureEntry& entry, const char* category = nullptr);
// CurrentName = name; SelectedIndex and CurrentPage follow the first shown row of that name.
void SelectByName(Catalogue& list, const char* name);

// Rows of the filter combos, in order.
std::vector<std::string> TextureSetRows(); // the two fixed rows, then TextureSets
extern const char* const kEffectRows[22];
extern const char* const kCategoryRows[29];
inline constexpr const char* kCategorySeparator = "            "; // twelve blanks, not selectable
