#include "controls/win32/MacSlider.h"

#include "controls/SliderSteps.h"
#include "controls/win32/ControlProcs.h"

#include <cstdio>

namespace {

HWND Neighbour(const TMacSlider& slider, int32_t id) { return id ? GetDlgItem(GetParent(slider.Window), id) : nullptr; }

void ShowNumber(const TMacSlider& slider, int32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "%d", value);
    SetDlgItemTextA(GetParent(slider.Window), slider.EditId, text);
}

void SetSpin(const TMacSlider& slider, int32_t value) {
    SendMessageA(Neighbour(slider, slider.SpinId), UDM_SETPOS, 0, MAKELPARAM(value & 0xFFFF, 0));
}

LRESULT HandleSlider(TMacSlider& slider, UINT message, WPARAM wParam, LPARAM lParam) {
    return slider.WindowProc(slider.Window, message, wParam, lParam);
}

} // namespace

LRESULT CALLBACK MacSliderProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return ControlProc<TMacSlider, HandleSlider>(window, message, wParam, lParam);
}

LRESULT TMacSlider::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_HSCROLL: {
        if (!Trackbar) break;
        int32_t pos = int32_t(SendMessageA(Trackbar, TBM_GETPOS, 0, 0));
        const int32_t snapped = SnapPosition(pos, SnapOn, SnapValue, SnapWindow);
        if (snapped != pos) SendMessageA(Trackbar, TBM_SETPOS, TRUE, snapped);
        pos = snapped;
        if (EditId) ShowNumber(*this, pos);
        if (SpinId) SetSpin(*this, pos);
        // Only the end of a move counts: the page renders once a drag, not once a pixel.
        // A trackbar may end a drag twice (at the release and again as it lets the mouse
        // go); the second end follows no move and tells the page nothing new.
        if (LOWORD(wParam) != TB_ENDTRACK) {
            Moved = 1;
            return 0;
        }
        Value = float(pos);
        if (Moved) SendCommand(window, ControlId, 1);
        Moved = 0;
        return 0;
    }
    case WM_ENABLE:
        Enabled = wParam != 0;
        if (Trackbar) EnableWindow(Trackbar, BOOL(wParam));
        if (HWND edit = Neighbour(*this, EditId)) EnableWindow(edit, BOOL(wParam));
        if (HWND spin = Neighbour(*this, SpinId)) EnableWindow(spin, BOOL(wParam));
        return 0;
    default: break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void AttachTrackbar(TMacSlider* slider) {
    if (!slider) return;
    slider->TrackbarId = TMacSlider::kTrackbarId;
    const auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(slider->Window, GWLP_HINSTANCE));
    slider->Trackbar = CreateWindowExA(0, TRACKBAR_CLASSA, "", WS_CHILD | WS_VISIBLE | TBS_NOTICKS, 0, 0, slider->Width,
                                       slider->Height, slider->Window,
                                       reinterpret_cast<HMENU>(INT_PTR(slider->TrackbarId)), instance, nullptr);
}

void SetRange(TMacSlider* slider, float low, float high) {
    if (!slider) return;
    slider->RangeLow = low;
    slider->RangeHigh = high;
    if (HWND spin = Neighbour(*slider, slider->SpinId)) {
        SendMessageA(spin, UDM_SETBUDDY, reinterpret_cast<WPARAM>(Neighbour(*slider, slider->EditId)), 0);
        SendMessageA(spin, UDM_SETRANGE, 0, LPARAM(SpinRangeParam(int32_t(low), int32_t(high))));
    }
    if (slider->Trackbar) {
        SendMessageA(slider->Trackbar, TBM_SETRANGE, TRUE, MAKELPARAM(int32_t(low) & 0xFFFF, int32_t(high) & 0xFFFF));
        SendMessageA(slider->Trackbar, TBM_SETPAGESIZE, 0, 10);
    }
}

void SetValue(TMacSlider* slider, float value, bool noSpinEcho) {
    if (!slider) return;
    slider->Value = value;
    const int32_t whole = int32_t(value);
    if (slider->Trackbar) SendMessageA(slider->Trackbar, TBM_SETPOS, TRUE, whole);
    if (slider->EditId) ShowNumber(*slider, whole);
    if (slider->SpinId && !noSpinEcho) SetSpin(*slider, whole);
}
