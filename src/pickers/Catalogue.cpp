#include "pickers/Catalogue.h"

#include "online/TextureSets.h"
#include "platform/Alert.h"
#include "platform/FolderList.h"
#include "platform/ModulePath.h"
#include "state/Parameters.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>

int32_t RowsPerPage = 3;
int32_t SetFilterIndex = 0;
int32_t EffectFilterIndex = 0;
void* CatalogueAlertOwner = nullptr;

const char* const kEffectRows[22] = {"All Effects",      "No Texture/Solid",
                                     "Animal Patterns",  "Distress (Heavy)",
                                     "Distress (Light)", "Distress (Medium)",
                                     "Ephemeral",        "Erosion (Heavy)",
                                     "Erosion (Light)",  "Erosion (Medium)",
                                     "Fabrics",          "Industrial",
                                     "Leather",          "Metals",
                                     "Papers",           "Scratches",
                                     "Stone/Minerals",   "Texture (Heavy)",
                                     "Texture (Light)",  "Texture (Medium)",
                                     "Weathered/Aged",   "Woods"};

const char* const kCategoryRows[29] = {"All Categories",      "Red Tones",        "Orange Tones",
                                       "Yellow Tones",        "Green Tones",      "Blue Tones",
                                       "Pink Tones",          "Purple Tones",     "Black and White tones",
                                       "Brown Tones",         kCategorySeparator, "Cool Tones",
                                       "Dark Tones",          "Light Tones",      "Medium Tones",
                                       "Solid Tones",         "Pastel Tones",     "Vibrant Tones",
                                       "Warm Tones",          kCategorySeparator, "Atmospheric Tones",
                                       "Ephemeral Tones",     "Leather Tones",    "Metal Tones",
                                       "Paper Tones",         "Rust Tones",       "Plant/Natural Tones",
                                       "Stone/Mineral Tones", "Wood Tones"};

namespace {

constexpr const char* kSolidName = "Solid.qzt";

bool SameIgnoringCase(const char* a, const char* b) {
    for (; *a && *b; ++a, ++b) {
        const auto x = static_cast<unsigned char>(*a), y = static_cast<unsigned char>(*b);
        if ((x >= 'a' && x <= 'z' ? x - 32 : x) != (y >= 'a' && y <= 'z' ? y - 32 : y)) return false;
    }
    return *a == *b;
}

bool IsNoTextureOrSolid(const char* name) {
    return std::strcmp(name, kNoTextureName) == 0 || std::strcmp(name, kSolidName) == 0;
}

void ReadTextureFile(const std::string& path, TextureEntry& entry) {
    uint8_t header[kTextureHeaderBytes] = {};
    size_t got = 0;
    if (std::FILE* file = std::fopen(path.c_str(), "rb")) {
        got = std::fread(header, 1, sizeof header, file);
        std::fclose(file);
    }
    ReadTextureHeader(header, got, entry);
}

void ReadPresetFile(const std::string& path, TextureEntry& entry) {
    if (std::FILE* file = std::fopen(path.c_str(), "rb")) {
        ReadPresetCategories(file, entry);
        std::fclose(file);
    }
}

} // namespace

bool ListFolder(Catalogue& list, const char* folder) {
    std::string path = folder ? folder : "";
    if (!path.empty() && (path.back() == '/' || path.back() == '\\')) path.pop_back();
    std::snprintf(list.Folder, sizeof list.Folder, "%s", path.c_str());
    list.FileCount = 0;
    list.AllEntries.clear();

    const bool colours = list.DrawerMode == kColourDrawer;
    std::vector<FolderEntry> hits;
    if (!ListFolder(list.Folder, colours ? "*.qztpst" : "*.qzt", hits)) return false;
    // A folder is no texture, and the repeat run's own listing leaves folders out too.
    hits.erase(std::remove_if(hits.begin(), hits.end(), [](const FolderEntry& e) { return e.isDirectory; }),
               hits.end());
    if (hits.empty()) return false;
    const size_t count = hits.size() + (colours ? 1 : 0);
    try {
        list.AllEntries.resize(count);
    } catch (const std::bad_alloc&) {
        list.AllEntries.clear();
        ShowAlert("Cannot allocate memory in TPicker::InitWSHList", kAlertTitle, AlertIcon::Information,
                  AlertButtons::Ok, CatalogueAlertOwner);
        return false;
    }
    list.FileCount = int32_t(count);

    size_t row = 0;
    if (colours) {
        TextureEntry& reset = list.AllEntries[row++];
        std::strcpy(reset.Name, "Reset Colors");
        reset.ThumbScale = 0.0f;
        reset.ThumbResolution = 0;
    }
    size_t noTexture = SIZE_MAX;
    const std::string base = std::string(list.Folder) + kPathSeparator;
    for (const FolderEntry& hit : hits) {
        TextureEntry& entry = list.AllEntries[row];
        std::snprintf(entry.Name, sizeof entry.Name, "%s", hit.name.c_str());
        entry.ThumbScale = 4.0f;
        entry.Clipped = 0;
        entry.ThumbResolution = 2048;
        if (colours) {
            ReadPresetFile(base + hit.name, entry);
        } else {
            ReadTextureFile(base + hit.name, entry);
            if (noTexture == SIZE_MAX && SameIgnoringCase(entry.Name, kNoTextureName)) noTexture = row;
        }
        ++row;
    }
    for (size_t r = noTexture; r != SIZE_MAX && r > 0; --r) std::swap(list.AllEntries[r], list.AllEntries[r - 1]);
    return true;
}

bool PassesFilter(const Catalogue& list, const TextureEntry& entry, const char* category) {
    if (list.DrawerMode == kColourDrawer) {
        if (!category || std::strlen(category) >= 64) return true;
        if (entry.Categories.empty() || entry.CategoryCount < 1) return false;
        return std::find(entry.Categories.begin(), entry.Categories.end(), category) != entry.Categories.end();
    }
    const int32_t s = SetFilterIndex, e = EffectFilterIndex;
    bool pass = true;
    if (s == 1) return IsNoTextureOrSolid(entry.Name);
    if (s != 0 && s != -1) pass = s - 2 >= 0 && s - 2 < TextureSetCount && entry.SetId == TextureSets[s - 2].SetId;
    if (e < 1) return pass;
    if (!pass && e != 1) return false;
    if (e == 1) return IsNoTextureOrSolid(entry.Name);
    return e - 1 < 32 && (entry.EffectMask >> (e - 1) & 1u) != 0;
}

void ApplyFilter(Catalogue& list, const char* category) {
    list.ShownEntries.clear();
    // Row 0 is always shown; with no rows at all it stands blank.
    list.ShownEntries.emplace_back();
    if (!list.AllEntries.empty()) {
        list.ShownEntries[0] = list.AllEntries[0];
        list.ShownEntries[0].SourceIndex = 0;
    }
    for (size_t row = 1; row < list.AllEntries.size(); ++row) {
        if (!PassesFilter(list, list.AllEntries[row], category)) continue;
        list.ShownEntries.push_back(list.AllEntries[row]);
        list.ShownEntries.back().SourceIndex = int32_t(row);
    }
    list.ShownCount = int32_t(list.ShownEntries.size());
    const int32_t perPage = std::max(RowsPerPage, 1) * 3;
    list.PageCount = list.ShownCount / perPage + (list.ShownCount % perPage ? 1 : 0);
}

void SelectByName(Catalogue& list, const char* name) {
    std::snprintf(list.CurrentName, sizeof list.CurrentName, "%s", name ? name : "");
    list.SelectedIndex = -1;
    for (int32_t i = 0; i < list.ShownCount && i < int32_t(list.ShownEntries.size()); ++i) {
        if (!SameIgnoringCase(list.ShownEntries[size_t(i)].Name, list.CurrentName)) continue;
        list.SelectedIndex = i;
        list.CurrentPage = std::clamp(i / (std::max(RowsPerPage, 1) * 3), 0, std::max(list.PageCount - 1, 0));
        return;
    }
}

std::vector<std::string> TextureSetRows() {
    std::vector<std::string> rows{"All Textures Sets", "No Texture/Solid"};
    for (int i = 0; i < TextureSetCount; ++i) rows.emplace_back(TextureSets[i].Name);
    return rows;
}
