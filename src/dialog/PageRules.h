// What the four tab pages decide without a window: which controls are enabled, how the
// wash offset pad and edits turn into moves, how a typed number is read, how a texture
// name is shown and how tall a page is. The page procedure applies the answers.
#pragma once

#include "dialog/DialogLayout.h"

#include <cstdint>

// ---- Numbers typed into the page's edits ----

// atof of `text` (0 when it is no number), clamped to low..high.
float ParseFieldNumber(const char* text, float low, float high);
// A seed keeps three digits; the sign stays (-1 is -1).
int32_t SeedOf(int32_t value);

// A texture name without its final ".qzt", in a buffer of 128 bytes that the next call
// overwrites; names under 5 characters stand as they are.
const char* DisplayTextureName(const char* name);

// ---- The wash offset ----

// The pad's knob at (px, py) percent, as a move of the layer: the overhang ranges, the
// layer's offsets and the preview's scale.
struct OffsetMove {
    int32_t dx = 0, dy = 0;
    bool operator==(const OffsetMove&) const = default;
};
OffsetMove PadOffsetMove(float px, float py, int32_t rangeX, int32_t rangeY, int32_t currentX, int32_t currentY,
                         double previewScale);
// An offset typed for one axis, as a move along it (negative values count as 0).
int32_t EditOffsetMove(int32_t value, int32_t range, int32_t current, double previewScale);
// The knob's percent on one axis for an offset; 100 when the half range is 0.
int32_t OffsetKnob(int32_t offset, int32_t range);

// ---- Enabling ----

struct PageState {
    int32_t view = 0; // the tab's view code
    bool secondExists = false;
    bool inUse = false;       // UseWash, UseSurface or UseBackground
    bool useWash = false;     // for Fill Wash
    bool linkable = false;    // the link button's pair of matches
    bool solid = false;       // the edited layer's texture is "Solid.qzt"
    bool hasRange = false;    // the edited layer can slide
    bool transparent = false; // the document has transparency
    bool surfaceEntire = false;
    int32_t washType = 0;
};

struct WashEnabling {
    bool controls = false; // sliders, radios, Random, seed, combo, groups and labels
    bool link = false, swatch = false, orientation = false, offset = false;
    bool operator==(const WashEnabling&) const = default;
};
struct SurfaceEnabling {
    bool layer = false;   // scale, depth, combo and their labels
    bool shading = false; // brightness, contrast, hue, intensity, swatches, tones, light
    bool link = false, orientation = false, fillCanvas = false, fillWash = false;
    bool operator==(const SurfaceEnabling&) const = default;
};
struct BackgroundEnabling {
    bool controls = false, orientation = false, link = false, fillCanvas = false;
    bool operator==(const BackgroundEnabling&) const = default;
};
WashEnabling EnableWash(const PageState& s);
SurfaceEnabling EnableSurface(const PageState& s);
BackgroundEnabling EnableBackground(const PageState& s);

// A document has transparency with 4 planes or more, more than 4 in CMYK.
bool HasTransparency(int32_t planes, bool cmyk);

// Which tabs share a texture and may link, from the use flags and the names.
struct LinkMatches {
    bool washPair = false, surfacePair = false;
    bool washSurface = false, washBackground = false, surfaceBackground = false;
};
LinkMatches MatchLinks(const char* wash1, const char* wash2, bool secondWash, bool useWash, const char* surface1,
                       const char* surface2, bool secondSurface, bool useSurface, const char* background,
                       bool useBackground);

// ---- Size ----

// A page's height in the dialog's client area.
int32_t PageHeight(int32_t clientHeight, int32_t tabWidth, int32_t pageWidth, int32_t smallCaption);
// The user-settings group of a page of `pageHeight`: the group reaches 9 above the
// bottom, Save and Delete stand 6 above the group's bottom, the list ends 5 above them;
// tops and widths stay.
struct UserGroupBoxes {
    LayoutBox group, list, save, remove;
};
UserGroupBoxes StretchUserGroup(int32_t pageHeight, const UserGroupBoxes& now);
