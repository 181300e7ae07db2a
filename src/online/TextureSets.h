// TextureSets: the texture sets the update server names. The drawers' set combo lists
// them after its two fixed rows, and their filter compares a texture's SetId with a
// row's. Filled before the dialog opens; only read after that.
#pragma once

#include <cstdint>

struct TextureSet {
    uint32_t SetId;
    char Name[64]; // zero-terminated, cut to fit
};

inline constexpr int kMaxTextureSets = 256;

extern TextureSet TextureSets[kMaxTextureSets];
extern int TextureSetCount;

// Rebuilds the table from update text: one row per "set_uid:" entry with the next
// "set_name:" as its name, in the text's order; an id met before, or one that is no
// number, is dropped, and rows beyond the table's size are too.
void BuildTextureSets(const char* text);
