// One tile of a drawer: its picture, the gold frame of the selected entry and the
// entry's name; hover by capture, a click selects, a double click selects and closes.
#pragma once

#include "controls/win32/DibSection.h"
#include "pickers/BmpFile.h"
#include "pickers/win32/DrawerWindow.h"

class TDrawerPicker;

class TPickerThump2 : public TDrawerWindow {
public:
    LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

    int32_t Hover = 0;
    int32_t EntryIndex = 0;        // the row of ShownEntries shown
    float ThumbTileScale = 1.0f;   // the scale the live rendering last used
    ThumbImage Bitmap;             // empty for none
    RECT FrameRect{}, InnerRect{}; // set by Place
    int32_t InnerWidth = 0, InnerHeight = 0;
    TDrawerPicker* Owner = nullptr;

    // After Create: the rectangles from the tile's size.
    void Place();

private:
    void Paint();
    DibSection Canvas;
};
