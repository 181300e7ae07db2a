// The preset lists without a window: which page control serves which kind, where a row's
// picture and text go, what a click on a row does to gParams and the layers' keep flags,
// and the rule by which a render renews the "Last Used Settings".
#pragma once

#include "state/Parameters.h"

#include <cstdint>
#include <string>

// The controls of one kind's list on its page; 0 where the kind has none.
struct PresetListIds {
    int32_t kind, list, label, save, remove;
};
// By any of the list's controls (list, Save or Delete); null for another id.
const PresetListIds* PresetListByControl(int32_t id);
// The lists that stand on tab `tab`'s page, in the order they are filled; `count` gets how many.
const PresetListIds* PresetListsOfTab(int32_t tab, int32_t& count);

// Bitmaps of folder rows, 16 by 14.
inline constexpr int32_t kFolderRowWidth = 16, kFolderRowHeight = 14;

// Where a row of a list draws, from its item rectangle's top left corner.
struct PresetRowLook {
    std::string text;   // without the folder mark
    int32_t textX = 0;  // left edge of the text
    int32_t bitmap = 0; // art id of the folder picture, 0 for a preset row
    int32_t bitmapX = 0, bitmapY = 0;
};
PresetRowLook LayOutPresetRow(const std::string& row, int32_t x, int32_t y);
// Tall enough for the list font and for the folder picture below its one-pixel gap.
int32_t PresetRowHeight(int32_t fontHeight);

// What a click on row `row` (-1: none) of kind `kind`'s list did.
struct PresetClick {
    bool deleteEnabled = false; // the kind's Delete button
    bool applied = false;       // gParams changed: boxes, rebuild, render and refresh follow
    bool reconcile = false;     // the navigator is the caller's to reconcile (the fixed rows)
};
// Applies the row to gParams: the fixed rows of kind 0 ("Reset All" without a question,
// "Last Used Settings" from `lastUsed`), or a preset loaded by name. On an applied row it
// also forces the background into a new layer when the effect goes on the mask, and sets
// the keep flags. `busy(true)` and `busy(false)` bracket the load; it may be null.
PresetClick ApplyPresetRow(int32_t kind, int32_t row, const std::string& text, const FilterParameters& lastUsed,
                           void (*busy)(bool on));

// Which layer groups a rebuild after a preset of `kind` leaves alone.
struct KeepFlags {
    bool wash = false, surface = false, background = false;
    bool operator==(const KeepFlags&) const = default;
};
KeepFlags KeepFlagsFor(int32_t kind, bool useWash, bool useSurface, bool useBackground);

// All of gParams to its defaults with every texture off; the keep flags off.
void ResetToFactory();

// At every render request: a change that came from a preset row only clears the mark;
// any other renews `lastUsed`.
void NoteParamsChanged(FilterParameters& params, FilterParameters& lastUsed);
