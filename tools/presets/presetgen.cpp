// qz-presetgen: writes the shipped preset library, our own looks, into
// <out>/{Basic,Wash,Surface,Background,Colors,BackPalette}. Deterministic: the same
// files on every run. Texture names are those of the texture library.
//   qz-presetgen OUT_FOLDER
#include "state/Parameters.h"
#include "presets/PresetFormat.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

FilterParameters gRecord;

void SetName(char* field, const char* value) {
    std::memset(field, 0, kNameLength);
    std::strncpy(field, value, kNameLength - 1);
}

std::string WriteKind(int kind) {
    std::FILE* f = std::tmpfile();
    if (!f || !WritePresetFile(f, kind)) {
        std::fprintf(stderr, "qz-presetgen: cannot write a preset\n");
        std::exit(1);
    }
    std::rewind(f);
    std::string text;
    for (int c; (c = std::fgetc(f)) != EOF;) text += char(c);
    std::fclose(f);
    return text;
}

void Save(const fs::path& folder, const std::string& name, const std::string& text) {
    fs::create_directories(folder);
    const fs::path path = folder / (name + kPresetExtension);
    std::FILE* f = std::fopen(path.string().c_str(), "wb");
    if (!f || std::fwrite(text.data(), 1, text.size(), f) != text.size() || std::fclose(f) != 0) {
        std::fprintf(stderr, "qz-presetgen: cannot write %s\n", path.string().c_str());
        std::exit(1);
    }
}

uint32_t Rgb(int r, int g, int b) { return uint32_t(r) | uint32_t(g) << 8 | uint32_t(b) << 16; }

struct WashLook {
    const char* name;
    const char* texture;
    uint8_t type;
    uint32_t stain;
    int intensity, scale, coverage, coverageScale, edgeDistance, edgeSoftness, angle;
    const char* texture2; // null: one wash
};

struct SurfaceLook {
    const char* name;
    const char* texture;
    uint8_t type;
    int depth, scale, brightness, contrast, hue;
    uint32_t hi, mid, shadow;
    const char* texture2;
};

struct BackgroundLook {
    const char* name;
    const char* texture;
    int scale, highlight, midtone, shadow, hue;
    uint32_t hi, mid, shadow2;
};

const WashLook kWashes[] = {
    {"Light_Scratches", "Fine_Scratches.qzt", 0, 0, 80, 0, 0, 100, 0, 0, 0, nullptr},
    {"Deep_Gouged", "Deep_Gouges.qzt", 0, 0, 140, 20, -20, 120, 0, 0, 90, nullptr},
    {"Coffee_Table", "Coffee_Rings.qzt", 1, Rgb(92, 58, 30), 110, 0, 0, 100, 0, 0, 0, nullptr},
    {"Flooded_Cellar", "Water_Stains.qzt", 1, Rgb(70, 80, 60), 120, 40, -10, 80, 10, 40, 0, nullptr},
    {"Sun_Bleached", "Light_Wear.qzt", 2, 0, 90, 0, -30, 140, 0, 0, 0, nullptr},
    {"Peeled_Away", "Peeling_Paint.qzt", 0, 0, 125, 10, 0, 100, 20, 60, 180, nullptr},
    {"Ink_Spill", "Ink_Splatter.qzt", 3, Rgb(20, 30, 90), 100, 0, -40, 60, 0, 0, 0, nullptr},
    {"Old_Film", "Film_Damage.qzt", 0, 0, 100, 0, 0, 100, 0, 0, 0, "Dust_And_Hair.qzt"},
    {"Rain_Soaked", "Rain_Worn.qzt", 1, Rgb(60, 60, 70), 95, 30, -15, 110, 0, 0, 270, "Water_Stains.qzt"},
    {"Battered_Crate", "Scuffed_Floor.qzt", 0, 0, 150, 0, 0, 100, 5, 30, 0, "Deep_Gouges.qzt"},
    {"Eroded_Sign", "Eroded_Grunge.qzt", 0, 0, 160, 0, -25, 90, 0, 0, 90, nullptr},
};

const SurfaceLook kSurfaces[] = {
    {"Riveted_Hull", "Battleship.qzt", 1, 60, 0, 100, 100, 0, Rgb(255, 255, 255), Rgb(200, 200, 0), Rgb(150, 50, 0),
     nullptr},
    {"Canvas_Print", "Canvas_Weave.qzt", 0, 35, 20, 105, 95, 0, Rgb(250, 245, 230), Rgb(190, 170, 140), Rgb(80, 60, 40),
     nullptr},
    {"Denim_Patch", "Denim.qzt", 1, 45, 0, 100, 110, -10, Rgb(230, 235, 255), Rgb(70, 90, 150), Rgb(20, 30, 60),
     nullptr},
    {"Brushed_Plate", "Brushed_Steel.qzt", 2, 30, 0, 110, 120, 0, Rgb(255, 255, 255), Rgb(170, 175, 180),
     Rgb(40, 45, 50), nullptr},
    {"Hammered", "Hammered_Copper.qzt", 3, 70, 10, 100, 100, 5, Rgb(255, 220, 180), Rgb(190, 110, 60), Rgb(70, 30, 10),
     nullptr},
    {"Cracked_Earth", "Dry_Mud_Cracks.qzt", 1, 80, 0, 95, 105, 0, Rgb(240, 220, 180), Rgb(160, 120, 80),
     Rgb(60, 40, 20), nullptr},
    {"Stucco_Wall", "Stucco.qzt", 0, 50, 30, 100, 100, 0, Rgb(250, 248, 240), Rgb(200, 190, 170), Rgb(100, 90, 80),
     "Old_Plaster.qzt"},
    {"Bark", "Tree_Bark.qzt", 4, 90, 0, 100, 115, 0, Rgb(220, 200, 160), Rgb(120, 90, 50), Rgb(40, 25, 10), nullptr},
    {"Glazed_Pot", "Crackle_Glaze.qzt", 1, 40, 0, 110, 100, 0, Rgb(255, 255, 250), Rgb(150, 190, 170), Rgb(40, 70, 60),
     nullptr},
    {"Diamond_Floor", "Diamond_Plate.qzt", 2, 65, 40, 100, 110, 0, Rgb(255, 255, 255), Rgb(160, 160, 165),
     Rgb(30, 30, 35), "Galvanized_Steel.qzt"},
    {"Reptile", "Snake_Scales.qzt", 1, 55, 0, 100, 100, 20, Rgb(230, 240, 190), Rgb(110, 140, 60), Rgb(30, 45, 15),
     nullptr},
};

const BackgroundLook kBackgrounds[] = {
    {"Rust_Bucket", "Rusted.qzt", 0, 100, 100, 100, 0, Rgb(255, 200, 0), Rgb(155, 50, 50), Rgb(100, 30, 0)},
    {"Red_Brick", "Brick_Wall.qzt", 30, 100, 80, 100, 0, Rgb(240, 180, 150), Rgb(160, 70, 50), Rgb(60, 20, 15)},
    {"Marble_Hall", "Marble.qzt", 0, 100, 60, 90, 0, Rgb(255, 255, 250), Rgb(200, 195, 190), Rgb(90, 85, 80)},
    {"Parchment_Scroll", "Parchment.qzt", 10, 100, 70, 100, 0, Rgb(250, 235, 200), Rgb(210, 180, 130),
     Rgb(120, 90, 50)},
    {"Kraft_Wrap", "Kraft_Paper.qzt", 0, 90, 60, 100, 0, Rgb(230, 200, 150), Rgb(180, 140, 90), Rgb(90, 60, 30)},
    {"Oak_Table", "Oak_Planks.qzt", 20, 100, 50, 100, 0, Rgb(230, 190, 130), Rgb(150, 100, 50), Rgb(60, 35, 15)},
    {"Granite_Slab", "Granite.qzt", 0, 100, 50, 100, -10, Rgb(220, 220, 225), Rgb(130, 125, 130), Rgb(40, 35, 40)},
    {"Sandstone_Cliff", "Sandstone.qzt", 40, 100, 70, 100, 5, Rgb(250, 220, 170), Rgb(200, 150, 100), Rgb(110, 70, 40)},
    {"Leopard", "Leopard_Spots.qzt", 0, 100, 100, 100, 0, Rgb(250, 210, 130), Rgb(180, 120, 40), Rgb(30, 20, 10)},
    {"Corroded_Tank", "Corroded_Steel.qzt", 0, 100, 90, 100, 0, Rgb(200, 220, 200), Rgb(100, 110, 90), Rgb(50, 35, 25)},
    {"Crocodile", "Crocodile_Hide.qzt", 20, 100, 60, 100, 0, Rgb(200, 210, 160), Rgb(90, 100, 50), Rgb(25, 30, 10)},
};

struct ColorLook {
    const char* name;
    const char* categories;
    uint32_t hi, mid, shadow;
};

const ColorLook kColors[] = {
    {"Crimson", "Red Tones|Vibrant Tones|Warm Tones", Rgb(255, 200, 200), Rgb(190, 30, 40), Rgb(70, 0, 10)},
    {"Brick_Dust", "Red Tones|Stone/Mineral Tones", Rgb(240, 190, 170), Rgb(160, 70, 50), Rgb(60, 20, 15)},
    {"Tangerine", "Orange Tones|Vibrant Tones", Rgb(255, 230, 180), Rgb(240, 130, 20), Rgb(110, 40, 0)},
    {"Rust_Flakes", "Orange Tones|Rust Tones|Metal Tones", Rgb(255, 200, 0), Rgb(155, 50, 50), Rgb(100, 30, 0)},
    {"Mustard", "Yellow Tones|Warm Tones", Rgb(255, 245, 190), Rgb(200, 170, 40), Rgb(80, 60, 0)},
    {"Straw", "Yellow Tones|Light Tones|Plant/Natural Tones", Rgb(255, 250, 220), Rgb(230, 210, 140),
     Rgb(140, 110, 50)},
    {"Moss", "Green Tones|Plant/Natural Tones", Rgb(220, 235, 190), Rgb(100, 130, 50), Rgb(30, 45, 10)},
    {"Verdigris", "Green Tones|Metal Tones|Cool Tones", Rgb(210, 245, 230), Rgb(80, 160, 140), Rgb(20, 60, 50)},
    {"Deep_Sea", "Blue Tones|Dark Tones|Cool Tones", Rgb(150, 190, 230), Rgb(30, 70, 130), Rgb(0, 15, 40)},
    {"Sky_Wash", "Blue Tones|Pastel Tones|Atmospheric Tones", Rgb(245, 250, 255), Rgb(160, 200, 240),
     Rgb(70, 100, 150)},
    {"Blossom", "Pink Tones|Pastel Tones|Light Tones", Rgb(255, 240, 245), Rgb(240, 170, 200), Rgb(150, 80, 110)},
    {"Fuchsia", "Pink Tones|Vibrant Tones", Rgb(255, 210, 240), Rgb(220, 40, 150), Rgb(80, 0, 50)},
    {"Plum", "Purple Tones|Dark Tones", Rgb(230, 200, 240), Rgb(110, 50, 120), Rgb(35, 10, 40)},
    {"Lavender_Mist", "Purple Tones|Ephemeral Tones|Pastel Tones", Rgb(250, 245, 255), Rgb(190, 170, 225),
     Rgb(100, 80, 140)},
    {"Newsprint", "Black and White tones|Paper Tones", Rgb(250, 250, 245), Rgb(150, 150, 145), Rgb(20, 20, 20)},
    {"Charcoal", "Black and White tones|Dark Tones|Solid Tones", Rgb(200, 200, 200), Rgb(70, 70, 70), Rgb(0, 0, 0)},
    {"Saddle", "Brown Tones|Leather Tones", Rgb(240, 210, 170), Rgb(140, 80, 40), Rgb(50, 25, 10)},
    {"Walnut", "Brown Tones|Wood Tones|Dark Tones", Rgb(220, 180, 140), Rgb(110, 70, 40), Rgb(35, 20, 10)},
    {"Old_Paper", "Paper Tones|Light Tones|Warm Tones", Rgb(255, 250, 235), Rgb(225, 205, 160), Rgb(130, 100, 60)},
    {"Fog", "Atmospheric Tones|Medium Tones|Cool Tones", Rgb(240, 240, 245), Rgb(170, 175, 185), Rgb(90, 95, 105)},
    {"Smoke_Veil", "Ephemeral Tones|Medium Tones", Rgb(235, 235, 235), Rgb(140, 140, 150), Rgb(60, 60, 70)},
    {"Slate_Roof", "Stone/Mineral Tones|Cool Tones|Solid Tones", Rgb(200, 205, 215), Rgb(90, 95, 110), Rgb(30, 32, 40)},
    {"Pine_Resin", "Wood Tones|Warm Tones|Plant/Natural Tones", Rgb(255, 235, 190), Rgb(200, 150, 80), Rgb(90, 55, 20)},
    {"Gunmetal", "Metal Tones|Dark Tones|Medium Tones", Rgb(210, 215, 220), Rgb(100, 105, 115), Rgb(25, 28, 32)},
    {"Tan_Hide", "Leather Tones|Medium Tones|Warm Tones", Rgb(245, 220, 185), Rgb(175, 125, 75), Rgb(70, 40, 15)},
};

void ApplyWash(const WashLook& w) {
    gRecord.UseWash = 1;
    SetName(gRecord.WashFileName1, w.texture);
    gRecord.WashType1 = w.type;
    gRecord.WashStainColor1 = w.stain;
    gRecord.WashIntensity1 = w.intensity;
    gRecord.WashScale1 = w.scale;
    gRecord.WashCoverage1 = w.coverage;
    gRecord.WashCoverageScale1 = w.coverageScale;
    gRecord.WashEdgeDistance1 = w.edgeDistance;
    gRecord.WashEdgeSoftness1 = w.edgeSoftness;
    gRecord.WashAngle1 = w.angle;
    gRecord.SecondWashExists = w.texture2 != nullptr;
    if (w.texture2) {
        SetName(gRecord.WashFileName2, w.texture2);
        gRecord.WashType2 = 0;
        gRecord.WashIntensity2 = w.intensity * 3 / 4;
        gRecord.WashAngle2 = (w.angle + 90) % 360;
        gRecord.WashScale2 = w.scale + 20;
    }
}

void ApplySurface(const SurfaceLook& s) {
    gRecord.UseSurface = 1;
    SetName(gRecord.SurfaceFileName1, s.texture);
    gRecord.SurfaceType1 = s.type;
    gRecord.SurfaceDepth1 = s.depth;
    gRecord.SurfaceScale1 = s.scale;
    gRecord.SurfaceBrightness = s.brightness;
    gRecord.SurfaceContrast = s.contrast;
    gRecord.SurfaceHue = s.hue;
    gRecord.SurfaceHighlightColor = s.hi;
    gRecord.SurfaceMidtoneColor = s.mid;
    gRecord.SurfaceShadowColor = s.shadow;
    gRecord.SecondSurfaceExists = s.texture2 != nullptr;
    if (s.texture2) {
        SetName(gRecord.SurfaceFileName2, s.texture2);
        gRecord.SurfaceDepth2 = s.depth / 2;
        gRecord.SurfaceScale2 = s.scale;
    }
}

void ApplyBackground(const BackgroundLook& b) {
    gRecord.UseBackground = 1;
    SetName(gRecord.BackgroundFileName, b.texture);
    gRecord.BackgroundScale = b.scale;
    gRecord.BackgroundHighlight = b.highlight;
    gRecord.BackgroundMidtone = b.midtone;
    gRecord.BackgroundShadow = b.shadow;
    gRecord.BackgroundHue = b.hue;
    gRecord.BackgroundHighlightColor = b.hi;
    gRecord.BackgroundMidtoneColor = b.mid;
    gRecord.BackgroundShadowColor = b.shadow2;
}

// The category stands on line 4, where the format puts it, and again on line 5, where
// the colour drawer's listing looks.
std::string WithCategories(std::string text, const char* categories) {
    const std::string empty = "rgtC Empty \t\t\t\t;Preset Category \n";
    const size_t at = text.find(empty);
    const std::string line = std::string("rgtC ") + categories + " \t\t\t\t;Preset Category \n";
    text.replace(at, empty.size(), line + line);
    return text;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: qz-presetgen OUT_FOLDER\n");
        return 2;
    }
    const fs::path out = argv[1];
    gParams = &gRecord;

    for (const WashLook& w : kWashes) {
        ResetAllParameters();
        ApplyWash(w);
        Save(out / "Wash", w.name, WriteKind(PresetWash));
    }
    for (const SurfaceLook& s : kSurfaces) {
        ResetAllParameters();
        ApplySurface(s);
        Save(out / "Surface", s.name, WriteKind(PresetSurface));
    }
    for (const BackgroundLook& b : kBackgrounds) {
        ResetAllParameters();
        ApplyBackground(b);
        Save(out / "Background", b.name, WriteKind(PresetBackground));
    }
    // Whole looks: a wash, a surface and a background of their own tables, turned so that
    // no two looks share a wash and a surface; every fourth has no background, every fifth no
    // surface.
    const size_t nw = std::size(kWashes), ns = std::size(kSurfaces), nb = std::size(kBackgrounds);
    for (size_t i = 0; i < 16; ++i) {
        ResetAllParameters();
        ApplyWash(kWashes[i % nw]);
        const SurfaceLook& surface = kSurfaces[(i * 3 + 1 + i / nw) % ns];
        ApplySurface(surface);
        ApplyBackground(kBackgrounds[(i * 7 + 2) % nb]);
        if (i % 4 == 3) gRecord.UseBackground = 0;
        if (i % 5 == 4) {
            gRecord.UseSurface = 0;
            SetName(gRecord.SurfaceFileName1, kNoTextureName);
        }
        const std::string name = std::string(kWashes[i % nw].name) + "_on_" + surface.name;
        Save(out / "Basic", name, WriteKind(PresetBasic));
    }
    for (const ColorLook& c : kColors) {
        ResetAllParameters();
        gRecord.SurfaceHighlightColor = c.hi;
        gRecord.SurfaceMidtoneColor = c.mid;
        gRecord.SurfaceShadowColor = c.shadow;
        Save(out / "Colors", c.name, WithCategories(WriteKind(PresetSurfaceColors), c.categories));
    }
    // The background strip's presets: each a background texture with a palette of the
    // colour looks, darker in the shadows. Amounts stay at 100: the strip's pictures take
    // whole hundreds only. "none" is the strip's first tile, no background at all.
    for (size_t i = 0; i < 16; ++i) {
        const ColorLook& c = kColors[(i * 7) % std::size(kColors)];
        ResetAllParameters();
        ApplyBackground(kBackgrounds[(i * 5 + 3) % nb]);
        gRecord.BackgroundHighlight = gRecord.BackgroundMidtone = gRecord.BackgroundShadow = 100;
        gRecord.BackgroundHue = 0;
        gRecord.BackgroundHighlightColor = c.hi;
        gRecord.BackgroundMidtoneColor = c.mid;
        gRecord.BackgroundShadowColor = (c.shadow >> 1) & 0x007F7F7F;
        Save(out / "BackPalette", std::string(c.name) + "_Palette", WriteKind(PresetBackground));
    }
    ResetAllParameters();
    gRecord.UseBackground = 0;
    SetName(gRecord.BackgroundFileName, kNoTextureName);
    Save(out / "BackPalette", "none", WriteKind(PresetBackground));
    return 0;
}
