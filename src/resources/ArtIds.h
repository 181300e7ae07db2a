// The dialog's pictures, cursors, icon and sound: resource numbers of Quenzit64.8bf, the size
// and depth the code relies on, and the colours of the skin they are drawn in. tools/artgen
// draws them, the .rc build takes them by number, the tests check the built module against
// this table.
#pragma once

#include <cstdint>

namespace art {

// Header of the dialog: left and right pictures, the strip between them repeats the first
// four columns of the tile.
inline constexpr int kHeaderLeft = 213;
inline constexpr int kHeaderRight = 215;
inline constexpr int kHeaderTile = 214;
inline constexpr int kHeaderHeight = 71;
inline constexpr int kHeaderTileStart = 453; // x where the repeated strip begins

// Header buttons; pressed shows the normal picture.
inline constexpr int kHelpNormal = 189, kHelpHover = 188;
inline constexpr int kPresetsNormal = 186, kPresetsHover = 192;
inline constexpr int kAutoNormal = 225, kAutoHover = 224;
inline constexpr int kAboutNormal = 228, kAboutHover = 227;
inline constexpr int kAboutNewNormal = 232, kAboutNewHover = 231; // a new version is known

// Tab page buttons.
inline constexpr int kRotateCcwNormal = 184, kRotateCcwHover = 185, kRotateCcwDisabled = 174;
inline constexpr int kRotateCwNormal = 181, kRotateCwHover = 182, kRotateCwDisabled = 183;
inline constexpr int kUnlinkedNormal = 178, kUnlinkedHover = 179, kUnlinkedDisabled = 180;
inline constexpr int kLinkedNormal = 177, kLinkedHover = 175, kLinkedDisabled = 176;
inline constexpr int kStripBackNormal = 223, kStripBackHover = 222, kStripBackDisabled = 221;
inline constexpr int kStripForwardNormal = 220, kStripForwardHover = 219, kStripForwardDisabled = 218;

// Zoom buttons of the preview: 1000 enlarges the picture, 1001 shrinks it.
inline constexpr int kZoomInNormal = 104, kZoomInDisabled = 143, kZoomInHover = 145;
inline constexpr int kZoomOutNormal = 107, kZoomOutDisabled = 144, kZoomOutHover = 146;

// Weights (grey / 255) that round the ends of the preview's bands and the drawers: row 0
// and column 0 are the outer corner, 1 shows the dialog's face, 0 the black band.
inline constexpr int kCornerWeights = 155;
inline constexpr int kCornerColumns = 20; // the picture's last column is not read
inline constexpr int kCornerRows = 33;

// Preset list rows and the navigator's delete button.
inline constexpr int kFolderRow = 148, kParentFolderRow = 150;
inline constexpr int kDeleteNormal = 154, kDeleteHover = 153;

// Drawers.
inline constexpr int kSelectNormal = 207, kSelectHover = 206;
inline constexpr int kCancelNormal = 202, kCancelHover = 201;
inline constexpr int kLiveNormal = 205, kLiveHover = 204, kLiveOn = 203;
inline constexpr int kPagePrevNormal = 212, kPagePrevHover = 211;
inline constexpr int kPageNextNormal = 210, kPageNextHover = 209;
inline constexpr int kTitleTextures = 208, kTitleColours = 235;

// The About box's picture, 520 by 487, with quiet room for the version line and two buttons.
inline constexpr int kAboutPicture = 194;

inline constexpr int kCursorPreviewDrag = 144;  // dragging the preview
inline constexpr int kCursorPreviewHover = 145; // over the preview
inline constexpr int kIcon = 230;
inline constexpr int kAutoSound = 236; // resource type "WAVE"

// One BITMAP resource. `control` and `state` name it for people (the contact sheet).
struct BitmapSpec {
    int id;
    int width, height;
    int bits; // 24, or 8 with a palette
    const char* control;
    const char* state;
};

inline constexpr BitmapSpec kBitmaps[] = {
    {kHeaderLeft, 453, 71, 24, "header", "left"},
    {kHeaderTile, 16, 71, 24, "header", "tile"},
    {kHeaderRight, 334, 71, 24, "header", "right"},
    {kHelpNormal, 127, 40, 24, "help", "normal"},
    {kHelpHover, 127, 40, 24, "help", "hover"},
    {kPresetsNormal, 140, 40, 24, "all presets", "normal"},
    {kPresetsHover, 140, 40, 24, "all presets", "hover"},
    {kAutoNormal, 118, 50, 24, "auto", "normal"},
    {kAutoHover, 118, 50, 24, "auto", "hover"},
    {kAboutNormal, 400, 35, 24, "about", "normal"},
    {kAboutHover, 400, 35, 24, "about", "hover"},
    {kAboutNewNormal, 400, 35, 24, "about, new version", "normal"},
    {kAboutNewHover, 400, 35, 24, "about, new version", "hover"},
    {kRotateCcwNormal, 18, 20, 24, "rotate ccw", "normal"},
    {kRotateCcwHover, 18, 20, 24, "rotate ccw", "hover"},
    {kRotateCcwDisabled, 18, 20, 24, "rotate ccw", "disabled"},
    {kRotateCwNormal, 18, 20, 24, "rotate cw", "normal"},
    {kRotateCwHover, 18, 20, 24, "rotate cw", "hover"},
    {kRotateCwDisabled, 18, 20, 24, "rotate cw", "disabled"},
    {kUnlinkedNormal, 17, 19, 24, "unlinked", "normal"},
    {kUnlinkedHover, 17, 19, 24, "unlinked", "hover"},
    {kUnlinkedDisabled, 17, 19, 24, "unlinked", "disabled"},
    {kLinkedNormal, 17, 19, 24, "linked", "normal"},
    {kLinkedHover, 17, 19, 24, "linked", "hover"},
    {kLinkedDisabled, 17, 19, 24, "linked", "disabled"},
    {kStripBackNormal, 14, 25, 24, "strip back", "normal"},
    {kStripBackHover, 14, 25, 24, "strip back", "hover"},
    {kStripBackDisabled, 14, 25, 24, "strip back", "disabled"},
    {kStripForwardNormal, 12, 25, 24, "strip forward", "normal"},
    {kStripForwardHover, 12, 25, 24, "strip forward", "hover"},
    {kStripForwardDisabled, 12, 25, 24, "strip forward", "disabled"},
    {kZoomInNormal, 18, 20, 8, "zoom in", "normal"},
    {kZoomInHover, 18, 20, 8, "zoom in", "hover"},
    {kZoomInDisabled, 18, 20, 8, "zoom in", "disabled"},
    {kZoomOutNormal, 18, 20, 8, "zoom out", "normal"},
    {kZoomOutHover, 18, 20, 8, "zoom out", "hover"},
    {kZoomOutDisabled, 18, 20, 8, "zoom out", "disabled"},
    {kCornerWeights, 21, 33, 24, "corner weights", "weights"},
    {kFolderRow, 16, 14, 24, "preset rows", "folder"},
    {kParentFolderRow, 16, 14, 24, "preset rows", "parent"},
    {kDeleteNormal, 13, 13, 24, "delete", "normal"},
    {kDeleteHover, 13, 13, 24, "delete", "hover"},
    {kSelectNormal, 116, 38, 24, "select", "normal"},
    {kSelectHover, 116, 38, 24, "select", "hover"},
    {kCancelNormal, 116, 38, 24, "cancel", "normal"},
    {kCancelHover, 116, 38, 24, "cancel", "hover"},
    {kLiveNormal, 40, 38, 24, "live preview", "normal"},
    {kLiveHover, 40, 38, 24, "live preview", "hover"},
    {kLiveOn, 40, 38, 24, "live preview", "on"},
    {kPagePrevNormal, 12, 25, 24, "page back", "normal"},
    {kPagePrevHover, 12, 25, 24, "page back", "hover"},
    {kPageNextNormal, 12, 25, 24, "page forward", "normal"},
    {kPageNextHover, 12, 25, 24, "page forward", "hover"},
    {kTitleTextures, 199, 20, 24, "drawer titles", "textures"},
    {kTitleColours, 199, 20, 24, "drawer titles", "colours"},
    {kAboutPicture, 520, 487, 24, "about box", "picture"},
};
inline constexpr int kBitmapCount = int(sizeof(kBitmaps) / sizeof(kBitmaps[0]));

// Cursors are 32 by 32 with the hot spot in the palm; the icon holds 32 and 16 pixel images.
inline constexpr int kCursorSize = 32;
inline constexpr int kIconSizes[] = {32, 16};

// The sound: PCM, one channel, shorter than a second and no larger than 64 KiB.
inline constexpr uint32_t kSoundRate = 22050;
inline constexpr uint32_t kSoundMaxBytes = 64 * 1024;

// Colours of the skin, red, green, blue.
struct Rgb {
    uint8_t r, g, b;
};
inline constexpr Rgb kBand{0, 0, 0};              // the bands, the header, the drawers
inline constexpr Rgb kTile{0x54, 0x54, 0x54};     // a control at rest
inline constexpr Rgb kHover{0x92, 0x92, 0x92};    // a control under the mouse
inline constexpr Rgb kQuiet{0x7F, 0x7F, 0x7F};    // text and marks not in use
inline constexpr Rgb kActive{0xFF, 0xFF, 0xFF};   // active text
inline constexpr Rgb kGold{255, 215, 108};        // the selected tile
inline constexpr Rgb kFace{0xF0, 0xF0, 0xF0};     // the usual dialog face, where a picture meets it
inline constexpr Rgb kListBack{0xFF, 0xFF, 0xFF}; // behind the preset rows' pictures

} // namespace art
