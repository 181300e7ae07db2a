// "Mac Slider CPP": a stock trackbar kept in step with a numeric edit and an up-down
// spinner, its siblings in the page. While the thumb moves the edit and spinner follow;
// only the end of a move stores Value and tells the page, so a drag costs one render.
#pragma once

#include "controls/win32/Contaner.h"

#include <commctrl.h>

class TMacSlider : public TContaner {
public:
    static constexpr const char* kClassName = "Mac Slider CPP";
    static constexpr int32_t kTrackbarId = 333;

    virtual ~TMacSlider() = default;
    virtual LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    float Value = 0; // read directly by the pages; whole in practice
    float RangeLow = 0, RangeHigh = 100;
    uint8_t SnapOn = 0;
    float SnapValue = 0;
    float SnapWindow = 10;
    int32_t EditId = 0, SpinId = 0; // the neighbours' ids in the page, or 0
    int32_t TrackbarId = kTrackbarId;
    HWND Trackbar = nullptr;
    uint8_t Moved = 0; // the trackbar moved since its last end of a move
};

// Styles of the neighbours, as the page templates give them: digits only, the signed
// sliders' edits too (a minus is reached with the slider or the spinner), and a spinner
// that neither writes nor aligns to its edit.
constexpr DWORD kSliderEditStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL | ES_NUMBER;
constexpr DWORD kSliderSpinStyle = WS_CHILD | WS_VISIBLE | UDS_ARROWKEYS;

// Makes the trackbar, id 333, over the whole slider, without ticks.
void AttachTrackbar(TMacSlider* slider);
// Stores the range and hands it to the spinner (bound to the edit) and the trackbar, whose
// page becomes 10.
void SetRange(TMacSlider* slider, float low, float high);
// Value as given, not clamped: the trackbar holds its own range, the edit shows the whole
// number, and the spinner follows unless it is where the value came from.
void SetValue(TMacSlider* slider, float value, bool noSpinEcho);
