#include "TextureLibrary.h"
#include "TextureFamilies.h"

#include <cstring>

using synth::Canvas;
using synth::Texture;
using namespace effect;

namespace {

// Texture sets, as the drawer's set filter lists them.
//
// | id | name      | what it holds                                                  |
// |----|-----------|----------------------------------------------------------------|
// |  1 | Core      | the defaults and the two reserved files                        |
// |  2 | Grunge    | scratches, cracks, wear, splatter, stains, film damage          |
// |  3 | Materials | fabrics, leather, metals, stone, wood, paper, plaster           |
// |  4 | Nature    | animal coats and scales, bark, dried mud, frost, condensation,  |
// |    |           | smoke                                                           |
constexpr uint32_t kCore = 1, kGrunge = 2, kMaterials = 3, kNature = 4;
constexpr int kGrey = 1, kColour = 3;

const std::vector<TextureSet> kSets = {
    {kCore, "Core"}, {kGrunge, "Grunge"}, {kMaterials, "Materials"}, {kNature, "Nature"}};

// Every shipped texture. Sizes are 4:3; the generator and its parameters are the
// design, the seed makes it one particular sheet.
const std::vector<TextureSpec> kCatalogue = {
    // --- Reserved and default files -------------------------------------------------
    {"No_Texture.qzt", 64, 64, kGrey, kCore, 0,
     [](const Canvas& c, uint64_t) { return family::Flat(c, 255); }, 0},
    {"Solid.qzt", 64, 64, kGrey, kCore, 0,
     [](const Canvas& c, uint64_t) { return family::Flat(c, 255); }, 0},
    {"Scratched.qzt", 2400, 1800, kGrey, kCore, Scratches | DistressMedium | ErosionLight,
     [](const Canvas& c, uint64_t s) {
         return family::Scratches(c, s, {.fine = 900, .deep = 35, .scuffs = 45, .pits = 500});
     },
     101},
    {"General_Store.qzt", 2000, 1500, kGrey, kCore,
     DistressHeavy | ErosionMedium | Weathered | Woods,
     [](const Canvas& c, uint64_t s) { return family::PaintedBoards(c, s, {}); }, 102},
    {"Rusted.qzt", 2000, 1500, kColour, kCore, Metals | ErosionHeavy | Weathered | Industrial,
     [](const Canvas& c, uint64_t s) { return family::Rust(c, s, 0.05f); }, 103},
    {"Battleship.qzt", 2400, 1800, kGrey, kCore, Metals | Industrial | TextureMedium,
     [](const Canvas& c, uint64_t s) { return family::SteelPlates(c, s); }, 104},
    {"Fiberglass.qzt", 1600, 1200, kGrey, kCore, Industrial | Fabrics | TextureMedium,
     [](const Canvas& c, uint64_t s) { return family::FibreMat(c, s); }, 105},

    // --- Grunge ---------------------------------------------------------------------
    {"Fine_Scratches.qzt", 1600, 1200, kGrey, kGrunge, Scratches | DistressLight | TextureLight,
     [](const Canvas& c, uint64_t s) {
         return family::Scratches(c, s,
                                  {.mottle = 0.03f,
                                   .smudge = 0.05f,
                                   .fine = 1600,
                                   .deep = 0,
                                   .scuffs = 20,
                                   .pits = 150,
                                   .darkness = 0.6f,
                                   .length = 0.8f});
     },
     201},
    {"Deep_Gouges.qzt", 2000, 1500, kGrey, kGrunge, Scratches | DistressHeavy | ErosionMedium,
     [](const Canvas& c, uint64_t s) {
         return family::Scratches(c, s,
                                  {.smudge = 0.2f,
                                   .fine = 500,
                                   .deep = 140,
                                   .scuffs = 30,
                                   .pits = 900,
                                   .darkness = 0.92f,
                                   .length = 1.3f});
     },
     202},
    {"Scuffed_Floor.qzt", 1600, 1200, kGrey, kGrunge, Scratches | DistressMedium | Weathered,
     [](const Canvas& c, uint64_t s) {
         return family::Scratches(c, s,
                                  {.smudge = 0.18f,
                                   .fine = 500,
                                   .deep = 10,
                                   .scuffs = 160,
                                   .pits = 300,
                                   .darkness = 0.75f,
                                   .length = 0.6f,
                                   .dirX = 0.94f,
                                   .dirY = 0.34f,
                                   .dirBias = 0.6f});
     },
     203},
    {"Cracked_Paint_Heavy.qzt", 2000, 1500, kGrey, kGrunge,
     DistressHeavy | ErosionHeavy | Weathered,
     [](const Canvas& c, uint64_t s) {
         return family::Cracks(c, s, {.cell = 70.0f, .width = 0.06f, .fine = 0.7f, .loss = 0.4f});
     },
     204},
    {"Cracked_Paint_Light.qzt", 1600, 1200, kGrey, kGrunge,
     DistressLight | ErosionLight | Weathered,
     [](const Canvas& c, uint64_t s) {
         return family::Cracks(c, s,
                               {.cell = 110.0f,
                                .warp = 30.0f,
                                .width = 0.025f,
                                .fine = 0.3f,
                                .loss = 0.05f,
                                .curl = 0.12f,
                                .base = 0.95f,
                                .under = 0.35f});
     },
     205},
    {"Crackle_Glaze.qzt", 2000, 1500, kGrey, kGrunge, TextureLight | Weathered | DistressLight,
     [](const Canvas& c, uint64_t s) {
         return family::Cracks(c, s,
                               {.cell = 36.0f,
                                .warp = 10.0f,
                                .width = 0.02f,
                                .fine = 0.8f,
                                .loss = 0.0f,
                                .curl = 0.06f,
                                .base = 0.94f,
                                .under = 0.3f});
     },
     206},
    {"Peeling_Paint.qzt", 2000, 1500, kGrey, kGrunge, ErosionMedium | DistressMedium | Weathered,
     [](const Canvas& c, uint64_t s) {
         return family::Wear(c, s,
                             {.scale = 260.0f,
                              .coverage = 0.35f,
                              .edge = 0.3f,
                              .rim = 0.2f,
                              .speckle = 0.2f,
                              .under = 0.22f});
     },
     207},
    {"Eroded_Grunge.qzt", 1600, 1200, kGrey, kGrunge, ErosionHeavy | DistressHeavy | TextureHeavy,
     [](const Canvas& c, uint64_t s) {
         return family::Wear(c, s,
                             {.scale = 150.0f,
                              .coverage = 0.55f,
                              .edge = 0.2f,
                              .rim = 0.1f,
                              .speckle = 0.7f,
                              .pores = 0.4f,
                              .under = 0.1f});
     },
     208},
    {"Light_Wear.qzt", 1600, 1200, kGrey, kGrunge, ErosionLight | DistressLight,
     [](const Canvas& c, uint64_t s) {
         return family::Wear(c, s,
                             {.scale = 110.0f,
                              .coverage = 0.1f,
                              .edge = 0.12f,
                              .rim = 0.0f,
                              .speckle = 0.45f,
                              .under = 0.35f});
     },
     209},
    {"Rain_Worn.qzt", 1600, 1200, kGrey, kGrunge, ErosionMedium | Weathered,
     [](const Canvas& c, uint64_t s) {
         return family::Wear(c, s,
                             {.scale = 120.0f,
                              .coverage = 0.3f,
                              .edge = 0.2f,
                              .rim = 0.05f,
                              .speckle = 0.3f,
                              .under = 0.2f,
                              .streak = 2.5f});
     },
     210},
    {"Sponge_Grunge.qzt", 1600, 1200, kGrey, kGrunge, TextureHeavy | DistressHeavy | ErosionHeavy,
     [](const Canvas& c, uint64_t s) {
         return family::Wear(c, s,
                             {.scale = 90.0f,
                              .coverage = 0.4f,
                              .edge = 0.1f,
                              .rim = 0.0f,
                              .speckle = 0.9f,
                              .pores = 0.9f,
                              .under = 0.08f});
     },
     211},
    {"Grunge_Splatter.qzt", 1600, 1200, kGrey, kGrunge, DistressMedium | Ephemeral | ErosionMedium,
     [](const Canvas& c, uint64_t s) {
         return family::Splatter(c, s,
                                 {.blobs = 45,
                                  .size = 45.0f,
                                  .mist = 5000,
                                  .drips = 0.35f,
                                  .softness = 1.0f,
                                  .tone = 0.12f,
                                  .texture = 0.35f});
     },
     212},
    {"Ink_Splatter.qzt", 1600, 1200, kGrey, kGrunge, Ephemeral | DistressLight,
     [](const Canvas& c, uint64_t s) {
         return family::Splatter(c, s,
                                 {.blobs = 14,
                                  .size = 38.0f,
                                  .mist = 1500,
                                  .drips = 0.0f,
                                  .softness = 0.5f,
                                  .tone = 0.05f,
                                  .texture = 0.08f});
     },
     213},
    {"Water_Stains.qzt", 1600, 1200, kGrey, kGrunge, Ephemeral | Weathered | ErosionLight,
     [](const Canvas& c, uint64_t s) {
         return family::Stains(c, s, {.stains = 16, .size = 230.0f, .strength = 0.6f});
     },
     214},
    {"Coffee_Rings.qzt", 1600, 1200, kGrey, kGrunge, Ephemeral | DistressLight | Papers,
     [](const Canvas& c, uint64_t s) {
         return family::Stains(c, s,
                               {.stains = 12, .size = 120.0f, .rings = 0.85f, .strength = 0.5f});
     },
     215},
    {"Film_Damage.qzt", 2000, 1500, kGrey, kGrunge, Scratches | Weathered | DistressMedium,
     [](const Canvas& c, uint64_t s) {
         return family::Specks(c, s, {.lines = 28, .dust = 2500, .hairs = 25, .blotch = 0.14f});
     },
     216},
    {"Dust_And_Hair.qzt", 1600, 1200, kGrey, kGrunge, DistressLight | Ephemeral | Weathered,
     [](const Canvas& c, uint64_t s) {
         return family::Specks(c, s, {.lines = 0, .dust = 4000, .hairs = 70, .blotch = 0.04f});
     },
     217},

    // --- Materials ------------------------------------------------------------------
    {"Canvas_Weave.qzt", 1600, 1200, kColour, kMaterials, Fabrics | TextureMedium,
     [](const Canvas& c, uint64_t s) { return family::Weave(c, s, {.pitch = 7.0f}); }, 301},
    {"Burlap.qzt", 1600, 1200, kColour, kMaterials, Fabrics | TextureHeavy,
     [](const Canvas& c, uint64_t s) {
         return family::Weave(c, s,
                              {.pitch = 16.0f,
                               .gap = 0.35f,
                               .wobble = 0.3f,
                               .slub = 0.4f,
                               .fuzz = 0.5f,
                               .warp = {150, 112, 66},
                               .weft = {160, 122, 74}});
     },
     302},
    {"Denim.qzt", 1600, 1200, kColour, kMaterials, Fabrics | TextureLight,
     [](const Canvas& c, uint64_t s) {
         return family::Weave(c, s,
                              {.pitch = 6.0f,
                               .twill = true,
                               .gap = 0.05f,
                               .wobble = 0.1f,
                               .slub = 0.35f,
                               .fuzz = 0.25f,
                               .streaks = 0.5f,
                               .warp = {44, 66, 116},
                               .weft = {170, 176, 188},
                               .fade = 0.3f});
     },
     303},
    {"Linen.qzt", 1600, 1200, kGrey, kMaterials, Fabrics | TextureLight,
     [](const Canvas& c, uint64_t s) {
         return family::Weave(c, s,
                              {.pitch = 4.0f,
                               .gap = 0.12f,
                               .wobble = 0.2f,
                               .slub = 0.6f,
                               .fuzz = 0.2f,
                               .colour = false});
     },
     304},
    {"Leather_Grain.qzt", 1600, 1200, kColour, kMaterials, Leather | TextureMedium,
     [](const Canvas& c, uint64_t s) {
         return family::Leather(c, s, {.dark = {70, 38, 20}, .light = {176, 110, 62}});
     },
     305},
    {"Worn_Leather.qzt", 1600, 1200, kColour, kMaterials, Leather | Weathered | DistressLight,
     [](const Canvas& c, uint64_t s) {
         return family::Leather(c, s,
                                {.grain = 7.0f,
                                 .creases = 0.8f,
                                 .wear = 0.35f,
                                 .dark = {40, 22, 14},
                                 .light = {120, 70, 38}});
     },
     306},
    {"Brushed_Steel.qzt", 1600, 1200, kGrey, kMaterials, Metals | Scratches | TextureLight,
     [](const Canvas& c, uint64_t s) { return family::BrushedMetal(c, s); }, 307},
    {"Diamond_Plate.qzt", 2000, 1500, kGrey, kMaterials, Metals | Industrial | TextureHeavy,
     [](const Canvas& c, uint64_t s) { return family::TreadPlate(c, s); }, 308},
    {"Galvanized_Steel.qzt", 1600, 1200, kGrey, kMaterials, Metals | Industrial | TextureLight,
     [](const Canvas& c, uint64_t s) { return family::Galvanized(c, s); }, 309},
    {"Hammered_Copper.qzt", 1600, 1200, kColour, kMaterials, Metals | TextureMedium,
     [](const Canvas& c, uint64_t s) { return family::HammeredCopper(c, s); }, 310},
    {"Rust_Streaks.qzt", 2000, 1500, kColour, kMaterials,
     Metals | Weathered | ErosionMedium | Industrial,
     [](const Canvas& c, uint64_t s) { return family::RustStreaks(c, s); }, 311},
    {"Corroded_Steel.qzt", 1600, 1200, kColour, kMaterials, Metals | ErosionHeavy | Weathered,
     [](const Canvas& c, uint64_t s) { return family::Rust(c, s, 0.45f); }, 312},
    {"Concrete.qzt", 2000, 1500, kGrey, kMaterials, Industrial | Stone | TextureMedium,
     [](const Canvas& c, uint64_t s) { return family::Concrete(c, s); }, 313},
    {"Asphalt.qzt", 1600, 1200, kGrey, kMaterials, Industrial | Stone | TextureHeavy,
     [](const Canvas& c, uint64_t s) {
         return family::Aggregate(c, s, {.grain = 7.0f, .binder = 0.1f, .lo = 0.2f, .hi = 0.7f});
     },
     314},
    {"Sandpaper.qzt", 1200, 900, kGrey, kMaterials, TextureLight | Industrial,
     [](const Canvas& c, uint64_t s) {
         return family::Aggregate(
             c, s, {.grain = 2.6f, .binder = 0.3f, .lo = 0.35f, .hi = 0.6f, .relief = 0.6f});
     },
     315},
    {"Stucco.qzt", 1600, 1200, kGrey, kMaterials, TextureHeavy | Stone,
     [](const Canvas& c, uint64_t s) {
         return family::Plaster(c, s, {.scale = 40.0f, .knock = 0.2f, .relief = 4.0f});
     },
     316},
    {"Old_Plaster.qzt", 1600, 1200, kGrey, kMaterials, TextureMedium | Weathered,
     [](const Canvas& c, uint64_t s) {
         return family::Plaster(c, s,
                                {.scale = 140.0f, .knock = 0.9f, .relief = 1.5f, .cracks = 1.0f});
     },
     317},
    {"Brick_Wall.qzt", 2000, 1500, kColour, kMaterials, Industrial | Stone | Weathered,
     [](const Canvas& c, uint64_t s) { return family::BrickWall(c, s); }, 318},
    {"Marble.qzt", 2000, 1500, kColour, kMaterials, Stone | TextureLight,
     [](const Canvas& c, uint64_t s) { return family::Marble(c, s); }, 319},
    {"Granite.qzt", 1600, 1200, kColour, kMaterials, Stone | TextureMedium,
     [](const Canvas& c, uint64_t s) { return family::Granite(c, s); }, 320},
    {"Slate.qzt", 1600, 1200, kGrey, kMaterials, Stone | TextureMedium,
     [](const Canvas& c, uint64_t s) { return family::Slate(c, s); }, 321},
    {"Sandstone.qzt", 1600, 1200, kColour, kMaterials, Stone | ErosionLight | Weathered,
     [](const Canvas& c, uint64_t s) { return family::Sandstone(c, s); }, 322},
    {"Oak_Planks.qzt", 2400, 1800, kColour, kMaterials, Woods,
     [](const Canvas& c, uint64_t s) { return family::Wood(c, s, {.knots = 0.15f}); }, 323},
    {"Pine_Board.qzt", 1600, 1200, kColour, kMaterials, Woods | TextureLight,
     [](const Canvas& c, uint64_t s) {
         return family::Wood(c, s,
                             {.plank = 400.0f,
                              .ring = 22.0f,
                              .knots = 1.0f,
                              .early = {228, 194, 142},
                              .late = {140, 80, 36}});
     },
     324},
    {"Barn_Wood.qzt", 2000, 1500, kGrey, kMaterials, Woods | Weathered | DistressMedium,
     [](const Canvas& c, uint64_t s) {
         return family::Wood(c, s,
                             {.plank = 220.0f, .ring = 8.0f, .knots = 0.4f, .weathered = true});
     },
     325},
    {"Parchment.qzt", 1600, 1200, kColour, kMaterials, Papers | Weathered,
     [](const Canvas& c, uint64_t s) {
         return family::Paper(c, s,
                              {.tint = {236, 220, 180},
                               .blotch = 0.09f,
                               .fibres = 0.6f,
                               .foxing = 0.6f,
                               .edges = 0.9f});
     },
     326},
    {"Kraft_Paper.qzt", 1600, 1200, kColour, kMaterials, Papers | TextureLight,
     [](const Canvas& c, uint64_t s) {
         return family::Paper(c, s, {.tint = {196, 152, 104}, .blotch = 0.24f, .fibres = 1.0f});
     },
     327},
    {"Watercolor_Paper.qzt", 1600, 1200, kGrey, kMaterials, Papers | TextureLight,
     [](const Canvas& c, uint64_t s) {
         return family::Paper(c, s,
                              {.tint = {245, 245, 245},
                               .blotch = 0.02f,
                               .fibres = 0.3f,
                               .tooth = 1.0f,
                               .colour = false});
     },
     328},
    {"Crumpled_Paper.qzt", 2000, 1500, kGrey, kMaterials, Papers | TextureMedium,
     [](const Canvas& c, uint64_t s) { return family::CrumpledPaper(c, s); }, 329},

    // --- Nature ----------------------------------------------------------------------
    {"Leopard_Spots.qzt", 1600, 1200, kColour, kNature, AnimalPatterns,
     [](const Canvas& c, uint64_t s) { return family::Leopard(c, s); }, 401},
    {"Zebra_Stripes.qzt", 1600, 1200, kGrey, kNature, AnimalPatterns,
     [](const Canvas& c, uint64_t s) { return family::Zebra(c, s); }, 402},
    {"Giraffe_Patches.qzt", 1600, 1200, kColour, kNature, AnimalPatterns,
     [](const Canvas& c, uint64_t s) { return family::Giraffe(c, s); }, 403},
    {"Snake_Scales.qzt", 1600, 1200, kColour, kNature, AnimalPatterns | Leather,
     [](const Canvas& c, uint64_t s) { return family::SnakeScales(c, s); }, 404},
    {"Crocodile_Hide.qzt", 2000, 1500, kColour, kNature, AnimalPatterns | Leather | TextureHeavy,
     [](const Canvas& c, uint64_t s) { return family::CrocodileHide(c, s); }, 405},
    {"Tree_Bark.qzt", 1600, 1200, kColour, kNature, Woods | TextureHeavy,
     [](const Canvas& c, uint64_t s) { return family::TreeBark(c, s); }, 406},
    {"Dry_Mud_Cracks.qzt", 2000, 1500, kColour, kNature, ErosionHeavy | Stone | TextureHeavy,
     [](const Canvas& c, uint64_t s) {
         return family::MudCracks(c, s,
                                  {.cell = 130.0f,
                                   .warp = 40.0f,
                                   .width = 0.07f,
                                   .fine = 0.5f,
                                   .loss = 0.0f,
                                   .curl = 0.35f,
                                   .base = 0.75f,
                                   .under = 0.1f});
     },
     407},
    {"Frost.qzt", 1600, 1200, kGrey, kNature, Ephemeral | TextureLight,
     [](const Canvas& c, uint64_t s) { return family::Frost(c, s); }, 408},
    {"Condensation.qzt", 1600, 1200, kGrey, kNature, Ephemeral | TextureMedium,
     [](const Canvas& c, uint64_t s) { return family::Condensation(c, s); }, 409},
    {"Smoke.qzt", 1600, 1200, kGrey, kNature, Ephemeral,
     [](const Canvas& c, uint64_t s) { return family::Smoke(c, s); }, 410},
};

} // namespace

const std::vector<TextureSet>& TextureSets() { return kSets; }

const std::vector<TextureSpec>& TextureCatalogue() { return kCatalogue; }

const TextureSpec* FindTextureSpec(const std::string& name) {
    for (const TextureSpec& s : kCatalogue)
        if (name == s.name) return &s;
    return nullptr;
}

Texture RenderTexture(const TextureSpec& entry, int width, int height) {
    const Canvas canvas(width > 0 ? width : entry.width, height > 0 ? height : entry.height);
    return entry.make(canvas, entry.seed);
}
