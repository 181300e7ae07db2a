// Where the main dialog puts its controls, as pure functions of the client size and the
// screen's dpi. The dialog procedure applies the result at WM_SIZE; the tests check it
// against tables worked out by hand. All numbers are client pixels.
#pragma once

#include "controls/FontTable.h" // DpiScaleOf and Scaled, the dpi factors of every size

#include <array>
#include <cstddef>
#include <cstdint>

// A control's place as MoveWindow takes it.
struct LayoutBox {
    int32_t x = 0, y = 0, width = 0, height = 0;
    bool operator==(const LayoutBox&) const = default;
};

// Left, top, right, bottom.
struct LayoutRect {
    int32_t left = 0, top = 0, right = 0, bottom = 0;
    bool operator==(const LayoutRect&) const = default;
    int32_t Width() const { return right - left; }
    int32_t Height() const { return bottom - top; }
};

inline constexpr int32_t kBandHeight = 33;
inline constexpr int32_t kHeaderStripLeft = 453, kHeaderHeight = 71;
inline constexpr int32_t kMinimumWidth = 923, kMinimumHeight = 704;

// The smallest track size: (dpi / 96, an integer) times 923 by 704.
LayoutBox MinimumTrackSize(int32_t dpi);

// The preview frame at WM_INITDIALOG, from the preview control's client rectangle in the
// dialog: its left edge moves left above 96 dpi (70 at 120 dpi, else 15), the bands sit
// above and below, and the frame takes them in.
struct PreviewFrameSetup {
    LayoutRect frame;      // the preview with both bands
    LayoutRect bandTop;    // the band above the preview
    LayoutRect bandBottom; // the band below
};
PreviewFrameSetup InitialPreviewFrame(const LayoutRect& previewControl, int32_t dpi);

// Everything LayoutDialog moves or recomputes.
struct DialogLayout {
    int32_t headerMiddleWidth = 0; // the tiled header strip, from x = 453
    LayoutBox rightHeader, allPresets, help;
    LayoutBox tabs;
    int32_t pageClientHeight = 0;
    LayoutBox ok, cancel, zoomUp, zoomDown, percent, progress;
    LayoutRect frame, bandTop, bandBottom;
    int32_t bandWidth = 0;      // a multiple of 4, at least 4
    size_t bandBufferBytes = 0; // (bandWidth + 4) * 33 rows * 3 bytes
    LayoutRect invalidate;      // repainted with erase
    // The header's strip and its right picture with the buttons on it, which follow the
    // right edge: repainted with erase, children too.
    LayoutRect headerRepaint;
    // Reset All, Reset Wash, Reset Surface, Reset Background: x and width; their row is
    // the navigator's.
    std::array<LayoutBox, 4> resets;
    LayoutBox optionBox;                  // all four result option check boxes
    std::array<LayoutBox, 4> optionLabel; // by tab: Basic, Wash, Surface, Background
    LayoutBox preview;
    LayoutBox drawers;
};

// `frame`, `bandTop` and `bandBottom` as they stand (the frame's left edge and the top
// band's top are kept); w and h the new client size.
DialogLayout LayoutDialog(int32_t w, int32_t h, int32_t dpi, const LayoutRect& frame, const LayoutRect& bandTop);
