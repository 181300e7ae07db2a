// The shipped texture library: every file the product installs, how it is made, and
// what its header says about it. Generation is deterministic: the same table gives
// the same bytes on every machine.
#pragma once

#include "TextureSynth.h"

#include <cstdint>
#include <string>
#include <vector>

// Effect categories as bits of a texture's effect mask (the drawer's filter rows).
namespace effect {
constexpr uint32_t AnimalPatterns = 1u << 1;
constexpr uint32_t DistressHeavy = 1u << 2;
constexpr uint32_t DistressLight = 1u << 3;
constexpr uint32_t DistressMedium = 1u << 4;
constexpr uint32_t Ephemeral = 1u << 5;
constexpr uint32_t ErosionHeavy = 1u << 6;
constexpr uint32_t ErosionLight = 1u << 7;
constexpr uint32_t ErosionMedium = 1u << 8;
constexpr uint32_t Fabrics = 1u << 9;
constexpr uint32_t Industrial = 1u << 10;
constexpr uint32_t Leather = 1u << 11;
constexpr uint32_t Metals = 1u << 12;
constexpr uint32_t Papers = 1u << 13;
constexpr uint32_t Scratches = 1u << 14;
constexpr uint32_t Stone = 1u << 15;
constexpr uint32_t TextureHeavy = 1u << 16;
constexpr uint32_t TextureLight = 1u << 17;
constexpr uint32_t TextureMedium = 1u << 18;
constexpr uint32_t Weathered = 1u << 19;
constexpr uint32_t Woods = 1u << 20;
} // namespace effect

struct TextureSet {
    uint32_t id;
    const char* name;
};
const std::vector<TextureSet>& TextureSets();

using TextureMaker = synth::Texture (*)(const synth::Canvas& canvas, uint64_t seed);

struct TextureSpec {
    const char* name; // file name, under 32 characters with ".qzt"
    int width, height;
    int planes; // 1 grey, 3 colour
    uint32_t setId;
    uint32_t effectMask;
    TextureMaker make;
    uint64_t seed;
};

const std::vector<TextureSpec>& TextureCatalogue();
const TextureSpec* FindTextureSpec(const std::string& name);

// Renders a texture at its own size, or at another size (for tests and previews):
// the design scales with the canvas.
synth::Texture RenderTexture(const TextureSpec& entry, int width = 0, int height = 0);
