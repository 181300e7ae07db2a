#include "presets/RandomEffects.h"

#include "state/Parameters.h"
#include "state/PathTable.h"
#include "platform/CRandom.h"
#include "platform/Clock.h"
#include "platform/FolderList.h"
#include "platform/ModulePath.h"
#include "presets/PresetFormat.h"
#include "presets/PresetHooks.h"
#include "presets/PresetLibrary.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

constexpr size_t kCatalogueNameLength = 32; // what a drawer row keeps of a file name

bool SameIgnoringCase(const std::string& a, const char* b) {
    if (a.size() != std::strlen(b)) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

void SetName(char* field, const std::string& value) {
    std::memset(field, 0, kNameLength);
    std::memcpy(field, value.data(), std::min(value.size(), size_t(kNameLength - 1)));
}

// truncate((v / 1000)² * 4 + 0.5)
uint8_t WashTypeFrom(int v) {
    const float x = float(v) / 1000.0f;
    return uint8_t(int(x * x * 4.0f + 0.5f));
}

// h above 200 counts as 100, so the upper half of the draws keep full intensity.
int32_t IntensityFrom(int h) {
    const int d = (h > 200 ? 100 : h) - 100;
    const float k = float(std::abs(d)) / 100.0f;
    return int32_t(k * 0.85f * k * float(d) + 100.0f);
}

uint32_t RandomStainColor() {
    const uint32_t g = uint32_t(CRandom() % 255);
    const uint32_t b = uint32_t(CRandom() % 255);
    const uint32_t r = uint32_t(CRandom() % 255);
    return g << 8 | b << 16 | r;
}

// From 100 up the field keeps what it holds: a parsed preset's coverage survives.
void RandomCoverage(int32_t& coverage) {
    const int c = CRandom() % 500;
    if (c < 100) coverage = int32_t(float(c) / 100.0f * float(-c));
}

bool LoadRandomPreset(const std::string& folder) {
    const std::string path = PickRandomFile(folder);
    return !path.empty() && LoadPresetPath(path.c_str());
}

std::string PresetsFolder(const char* kind) { return PathTable.Presets + kind + kPathSeparator; }

// A colour preset picked from the tones drawer into three colour fields.
void RandomTones(const RandomSources& sources, int64_t now, int kind, uint32_t& hi, uint32_t& mid, uint32_t& shadow,
                 char (&label)[kNameLength]) {
    const std::string* entry = RandomEntry(sources.tones, now);
    if (!entry) return;
    if (*entry == "Reset Colors") {
        std::strcpy(label, "Custom");
        if (kind == PresetSurfaceColors) ResetSurfaceColors();
        else ResetBackgroundColors(); // the layer's tones, not the record
        return;
    }
    if (!LoadPresetPath((PathTable.Colors + kPathSeparator + *entry).c_str())) return;
    std::string name = *entry;
    const size_t ext = std::strlen(kPresetExtension);
    if (name.size() > ext && name.compare(name.size() - ext, ext, kPresetExtension) == 0)
        name.resize(name.size() - ext);
    SetName(label, name);
    hi = PresetColorHi;
    mid = PresetColorMid;
    shadow = PresetColorShadow;
}

} // namespace

RandomSources ListRandomSources() {
    RandomSources sources;
    std::vector<FolderEntry> entries;
    if (ListFolder(PathTable.Data, "*.qzt", entries)) {
        size_t noTexture = SIZE_MAX;
        for (const FolderEntry& e : entries) {
            if (e.isDirectory) continue;
            if (noTexture == SIZE_MAX && SameIgnoringCase(e.name, kNoTextureName)) noTexture = sources.textures.size();
            sources.textures.push_back(e.name.substr(0, kCatalogueNameLength));
        }
        // Moved to the front by neighbour swaps, so the others keep their order.
        if (noTexture != SIZE_MAX)
            std::rotate(sources.textures.begin(), sources.textures.begin() + ptrdiff_t(noTexture),
                        sources.textures.begin() + ptrdiff_t(noTexture) + 1);
    }
    sources.tones.push_back("Reset Colors");
    if (ListFolder(PathTable.Colors, "*.qztpst", entries))
        for (const FolderEntry& e : entries)
            if (!e.isDirectory) sources.tones.push_back(e.name.substr(0, kCatalogueNameLength));
    return sources;
}

const std::string* RandomEntry(const std::vector<std::string>& entries, int64_t now) {
    if (entries.empty()) return nullptr;
    CSeedRandom(uint32_t(uint64_t(now) * 12345678u));
    return &entries[size_t(CRandom()) % entries.size()];
}

std::string PickRandomFile(const std::string& folder) {
    std::vector<FolderEntry> all, entries;
    if (!ListFolder(folder, "*", all)) return std::string();
    for (const FolderEntry& e : all)
        if (e.name != "." && e.name != "..") entries.push_back(e);
    if (entries.empty()) return std::string();
    const FolderEntry& pick = entries[size_t(CRandom()) % entries.size()];
    std::string path = folder;
    if (!path.empty() && path.back() != '/' && path.back() != '\\') path += kPathSeparator;
    path += pick.name;
    return pick.isDirectory ? PickRandomFile(path) : path;
}

void RandomizeEffects(const RandomSources& sources, int64_t now) {
    ResetAllParameters();
    FilterParameters& p = *gParams;
    CSeedRandom(uint32_t(now));
    CRandom();

    bool washDone = false;
    if (CRandom() % 100 < 33) {
        const bool parsed = LoadRandomPreset(PresetsFolder("Basic"));
        if (parsed && CRandom() % 100 < 33) washDone = true;
    }
    if (!washDone) {
        LoadRandomPreset(PresetsFolder("Background"));
        LoadRandomPreset(PresetsFolder("Surface"));

        const int s = CRandom() % 1000;
        if (s >= 951) {
            SetName(p.WashFileName1, kNoTextureName);
        } else {
            if (const std::string* name = RandomEntry(sources.textures, now)) SetName(p.WashFileName1, *name);
            p.WashType1 = WashTypeFrom(s); // 4 for s of 936 and up: one past the last type, kept
            p.WashStainColor1 = RandomStainColor();
            const int a = CRandom();
            p.WashIntensity1 = IntensityFrom((a % 1000) / 2);
            p.WashFlipHor1 = uint8_t((a % 1000) & 1);
            p.WashFlipVer1 = uint8_t(CRandom() & 1);
            p.WashInvert1 = uint8_t(CRandom() % 100 > 95);
            p.WashAngle1 = ((a % 1000) & 3) * 90;
            RandomCoverage(p.WashCoverage1);
            if (p.WashCoverage1 != 0) {
                p.WashCoverageScale1 = std::min(CRandom() % 250, 100);
                p.WashRandomize1 = a % 1000;
            }

            const int t = CRandom() % 1000;
            if (t > 850) {
                p.SecondWashExists = 1;
                if (const std::string* name = RandomEntry(sources.textures, now)) SetName(p.WashFileName2, *name);
                p.WashType2 = WashTypeFrom(t);
                p.WashStainColor2 = RandomStainColor();
                const int b = CRandom() % 1000;
                p.WashIntensity2 = IntensityFrom(b / 2);
                p.WashFlipHor2 = uint8_t(b & 1);
                p.WashFlipVer2 = uint8_t(CRandom() & 1);
                p.WashInvert2 = uint8_t(CRandom() % 10 == 1);
                p.WashAngle2 = (b & 3) * 90;
                RandomCoverage(p.WashCoverage2);
                if (p.WashCoverage2 != 0) {
                    const int e = CRandom() % 1000;
                    p.WashCoverageScale2 = std::min(e / 5, 100);
                    p.WashRandomize2 = e;
                }
            }
        }
    }

    // rand() is drawn first, then the drawer and layer tests: each colour step draws its
    // chance whether or not it can apply.
    if (CRandom() % 100 < 20 && sources.tonesDrawer && p.UseSurface)
        RandomTones(sources, now, PresetSurfaceColors, p.SurfaceHighlightColor, p.SurfaceMidtoneColor,
                    p.SurfaceShadowColor, SurfaceColorsName);
    if (CRandom() % 100 < 20 && sources.tonesDrawer && p.UseBackground)
        RandomTones(sources, now, PresetBackgroundColors, p.BackgroundHighlightColor, p.BackgroundMidtoneColor,
                    p.BackgroundShadowColor, BackgroundColorsName);

    if (PresetHooks.RebuildAllLayers) PresetHooks.RebuildAllLayers();
    if (PresetHooks.RefreshCurrentPage) PresetHooks.RefreshCurrentPage();
    if (PresetHooks.ReconcileNavigator) PresetHooks.ReconcileNavigator();
}

void RandomizeEffects() { RandomizeEffects(ListRandomSources(), CurrentTimeSeconds()); }
