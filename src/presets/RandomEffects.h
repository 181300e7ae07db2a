// The Auto button's random look: a lucky mix of shipped presets and random wash
// parameters, from the C library generator as every build computes it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// What the drawers would show, for the picks: texture names (with extension, cut to the
// catalogue's 32 characters, "No_Texture.qzt" moved to the front) and colour preset
// names ("Reset Colors" first). An empty texture list gives no pick.
struct RandomSources {
    std::vector<std::string> textures;
    std::vector<std::string> tones;
    bool tonesDrawer = true; // the tones drawer exists
};

// Texture files of the data folder and colour presets of the Colors folder, in the
// drawers' order with every filter open.
RandomSources ListRandomSources();

// One entry of `entries`, as a drawer picks it: srand(now * 12345678), rand() modulo the
// count. Null for an empty list, and then the generator is left alone.
const std::string* RandomEntry(const std::vector<std::string>& entries, int64_t now);

// A file under `folder`, walking into sub-folders as rand() says. Empty when a folder
// on the way has no entries.
std::string PickRandomFile(const std::string& folder);

// Replaces gParams by a random look, seeded by `now` (seconds), then rebuilds through
// the engine's hooks.
void RandomizeEffects(const RandomSources& sources, int64_t now);
void RandomizeEffects(); // the drawers' lists and the clock
