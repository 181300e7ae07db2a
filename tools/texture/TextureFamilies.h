// Texture families: one function per kind of material, each shaped by a parameter
// record, so that one family gives several library entries. All work on the virtual
// canvas (1600 units wide); `seed` makes each entry its own.
#pragma once

#include "TextureSynth.h"

namespace family {

using synth::Canvas;
using synth::Rgb;
using synth::Texture;

// ---- Surface damage (grey, for washes: white leaves the picture alone) ----

struct ScratchParams {
    float base = 0.93f;                             // level of the untouched surface
    float mottle = 0.05f;                           // low-frequency unevenness
    float smudge = 0.12f;                           // darkening of grimy patches
    int fine = 700;                                 // thin scratches
    int deep = 30;                                  // wide dark scratches with a raised burr
    int scuffs = 30;                                // clusters of short parallel marks
    int pits = 400;                                 // small dents
    float darkness = 0.8f;                          // strength of the marks
    float length = 1.0f;                            // scale of scratch lengths
    float dirX = 0.0f, dirY = 0.0f, dirBias = 0.0f; // preferred direction, 0..1 bias
};
Texture Scratches(const Canvas& c, uint64_t seed, const ScratchParams& p);

struct BoardParams {
    float wear = 0.38f;                        // threshold of the paint loss, higher = more loss
    float boardMin = 70.0f, boardMax = 115.0f; // board heights in units
};
Texture PaintedBoards(const Canvas& c, uint64_t seed, const BoardParams& p);

struct CrackParams {
    float cell = 90.0f;                // size of the paint islands
    float warp = 25.0f;                // irregularity of their outlines
    float width = 0.05f;               // crack width as a part of a cell
    float fine = 0.6f;                 // amount of the second, finer crack network
    float loss = 0.25f;                // share of islands that have flaked off
    float curl = 0.25f;                // darkening of lifted island edges
    float base = 0.92f, under = 0.25f; // paint and ground levels
};
synth::Field CrackField(const Canvas& c, uint64_t seed, const CrackParams& p);
Texture Cracks(const Canvas& c, uint64_t seed, const CrackParams& p);
Texture MudCracks(const Canvas& c, uint64_t seed, const CrackParams& p);

struct WearParams {
    float scale = 220.0f;  // size of the worn areas
    float coverage = 0.3f; // share eroded
    float edge = 0.25f;    // dark rim along the break
    float rim = 0.15f;     // lifted light edge
    float speckle = 0.3f;  // specks and pinholes
    float pores = 0.0f;    // sponge-like holes
    float under = 0.15f;   // level of what shows through
    float streak = 0.0f;   // vertical streaking of the wear
    float base = 0.94f;
};
Texture Wear(const Canvas& c, uint64_t seed, const WearParams& p);

struct SplatterParams {
    int blobs = 40;
    float size = 40.0f;    // typical blob radius in units
    int mist = 3000;       // fine droplets
    float drips = 0.0f;    // share of blobs that run down
    float softness = 0.6f; // edge softness in units
    float tone = 0.1f;     // level of the ink
    float texture = 0.2f;  // unevenness inside blobs
};
Texture Splatter(const Canvas& c, uint64_t seed, const SplatterParams& p);

struct StainParams {
    int stains = 10;
    float size = 220.0f;
    float rings = 0.0f; // 0 = free-form water marks, 1 = cup rings
    float strength = 0.35f;
};
Texture Stains(const Canvas& c, uint64_t seed, const StainParams& p);

struct SpeckParams {
    int lines = 0; // long vertical film scratches
    int dust = 2500;
    int hairs = 40;
    float blotch = 0.1f;
    float base = 0.95f;
};
Texture Specks(const Canvas& c, uint64_t seed, const SpeckParams& p);

Texture Frost(const Canvas& c, uint64_t seed);
Texture Condensation(const Canvas& c, uint64_t seed);
Texture Smoke(const Canvas& c, uint64_t seed);

// ---- Materials ----

struct WeaveParams {
    float pitch = 6.0f; // thread spacing in units
    bool twill = false;
    float gap = 0.1f;     // open space between threads
    float wobble = 0.15f; // irregular thread paths
    float slub = 0.2f;    // thickness variation along a thread
    float fuzz = 0.15f;
    float streaks = 0.0f; // colour changing along each thread (ring-spun yarn)
    float relief = 1.0f;
    bool colour = true;
    Rgb warp{200, 185, 150}, weft{205, 190, 155};
    float fade = 0.0f; // worn light patches (denim)
};
Texture Weave(const Canvas& c, uint64_t seed, const WeaveParams& p);

struct LeatherParams {
    float grain = 9.0f; // pebble size in units
    float creases = 0.5f;
    float wear = 0.0f;
    Rgb dark{60, 32, 18}, light{150, 92, 52};
};
Texture Leather(const Canvas& c, uint64_t seed, const LeatherParams& p);
Texture CrocodileHide(const Canvas& c, uint64_t seed);
Texture SnakeScales(const Canvas& c, uint64_t seed);

Texture Rust(const Canvas& c, uint64_t seed, float remnant);
Texture SteelPlates(const Canvas& c, uint64_t seed);
Texture FibreMat(const Canvas& c, uint64_t seed);
Texture BrushedMetal(const Canvas& c, uint64_t seed);
Texture TreadPlate(const Canvas& c, uint64_t seed);
Texture Galvanized(const Canvas& c, uint64_t seed);
Texture HammeredCopper(const Canvas& c, uint64_t seed);
Texture RustStreaks(const Canvas& c, uint64_t seed);

Texture Concrete(const Canvas& c, uint64_t seed);
struct AggregateParams {
    float grain = 6.0f;           // stone size in units
    float binder = 0.12f;         // level between stones
    float lo = 0.25f, hi = 0.75f; // stone levels
    float relief = 0.8f;
    bool colour = false;
    Rgb dark{0, 0, 0}, light{255, 255, 255};
};
Texture Aggregate(const Canvas& c, uint64_t seed, const AggregateParams& p);
struct PlasterParams {
    float scale = 60.0f;
    float knock = 0.5f; // flattened tops of the spatter
    float relief = 2.0f;
    float cracks = 0.0f;
    float base = 0.75f;
};
Texture Plaster(const Canvas& c, uint64_t seed, const PlasterParams& p);
Texture BrickWall(const Canvas& c, uint64_t seed);
Texture Marble(const Canvas& c, uint64_t seed);
Texture Granite(const Canvas& c, uint64_t seed);
Texture Slate(const Canvas& c, uint64_t seed);
Texture Sandstone(const Canvas& c, uint64_t seed);

struct WoodParams {
    float plank = 180.0f; // plank width in units; 0 = one board
    float ring = 9.0f;    // ring spacing in units
    float knots = 0.3f;
    bool weathered = false; // grey, grooved, checked
    Rgb early{205, 160, 105}, late{130, 82, 42};
};
Texture Wood(const Canvas& c, uint64_t seed, const WoodParams& p);
Texture TreeBark(const Canvas& c, uint64_t seed);

struct PaperParams {
    Rgb tint{240, 232, 210};
    float blotch = 0.05f;
    float fibres = 0.5f;
    float tooth = 0.0f; // surface grain of art paper
    float foxing = 0.0f;
    float edges = 0.0f; // darkened edges
    bool colour = true;
};
Texture Paper(const Canvas& c, uint64_t seed, const PaperParams& p);
Texture CrumpledPaper(const Canvas& c, uint64_t seed);

Texture Leopard(const Canvas& c, uint64_t seed);
Texture Zebra(const Canvas& c, uint64_t seed);
Texture Giraffe(const Canvas& c, uint64_t seed);

Texture Flat(const Canvas& c, uint8_t level);

} // namespace family
