#include "controls/win32/ColorSwatch.h"

#include "controls/Swatch.h"
#include "controls/win32/ControlProcs.h"
#include "host/Session.h"

#include <commdlg.h>

#include <algorithm>
#include <cstring>

namespace {

TColorSwatch* gSurfaceSwatch = nullptr;
uint32_t gSpareColors[16] = {}; // the fallback's row while there is no surface swatch

using ChooseColorProc = BOOL(WINAPI*)(CHOOSECOLORA*);

// Looked up at first use, so the module does not import the common dialogs.
ChooseColorProc ChooseColorEntry() {
    static ChooseColorProc entry = [] {
        HMODULE dialogs = LoadLibraryA("comdlg32.dll");
        return dialogs
                   ? reinterpret_cast<ChooseColorProc>(reinterpret_cast<void*>(GetProcAddress(dialogs, "ChooseColorA")))
                   : nullptr;
    }();
    return entry;
}

// Run from inside a host's modal dialog the system picker may come up hidden: show it,
// paint it, focus it, and nudge it so the window manager notices.
UINT_PTR CALLBACK ShowPickerHook(HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG) return 0;
    SetWindowLongPtrA(dialog, GWL_STYLE, GetWindowLongPtrA(dialog, GWL_STYLE) | WS_VISIBLE);
    InvalidateRect(dialog, nullptr, TRUE);
    UpdateWindow(dialog);
    PostMessageA(dialog, WM_PAINT, 0, 0);
    SetFocus(dialog);
    RECT box{};
    GetWindowRect(dialog, &box);
    MoveWindow(dialog, 0, 0, 1, 1, TRUE);
    MoveWindow(dialog, box.left, box.top, box.right - box.left, box.bottom - box.top, TRUE);
    return 1;
}

bool ChooseSystemColor(HWND owner, uint32_t& color, uint32_t* customColors, bool hook) {
    ChooseColorProc choose = ChooseColorEntry();
    if (!choose) return false;
    CHOOSECOLORA request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner;
    request.hInstance = reinterpret_cast<HWND>(ControlInstance);
    request.rgbResult = color;
    request.lpCustColors = reinterpret_cast<COLORREF*>(customColors);
    request.Flags = CC_RGBINIT | (hook ? CC_ENABLEHOOK : 0);
    request.lpfnHook = hook ? ShowPickerHook : nullptr;
    if (!choose(&request)) return false;
    color = request.rgbResult;
    return true;
}

LRESULT HandleSwatch(TColorSwatch& swatch, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND window = swatch.Window;
    switch (message) {
    case WM_CREATE:
        if (swatch.ControlId == TColorSwatch::kSurfaceSwatchId) gSurfaceSwatch = &swatch;
        return 0;
    case WM_NCDESTROY:
        if (gSurfaceSwatch == &swatch) gSurfaceSwatch = nullptr;
        return 0;
    case WM_PAINT:
        PaintCanvas(window, swatch.Canvas, swatch.Width, swatch.Height, [&](const DibSection& canvas) {
            PaintSwatch(canvas.View(),
                        SwatchLook{swatch.Color, swatch.HoverFlag != 0, swatch.Enabled != 0, FacePixel()});
        });
        return 0;
    case WM_MOUSEMOVE: {
        const POINT p = MousePoint(lParam);
        const bool inside = p.x >= 0 && p.y >= 0 && p.x < swatch.Width && p.y < swatch.Height;
        if (inside && !swatch.HoverFlag) {
            swatch.HoverFlag = 1;
            SetCapture(window);
            Repaint(window);
        } else if (!inside) {
            ReleaseOwnCapture();
            swatch.HoverFlag = 0;
            Repaint(window);
        }
        return 0;
    }
    case WM_CAPTURECHANGED:
        if (swatch.HoverFlag && LostCapture(window, lParam)) {
            swatch.HoverFlag = 0;
            Repaint(window);
        }
        return 0;
    case WM_ENABLE:
        swatch.Enabled = wParam != 0;
        InvalidateRect(window, nullptr, TRUE);
        UpdateWindow(window);
        return 0;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP: {
        // The picker's clicks must not come back here while the hover holds the mouse.
        if (GetCapture() == window) ReleaseOwnCapture();
        uint32_t color = swatch.Color;
        const bool picked = gFilterRecord && gFilterRecord->colorServices
                                ? PickColor(GetAncestor(window, GA_ROOT), color)
                                : ChooseSystemColor(window, color, swatch.CustomColors, true);
        swatch.HoverFlag = 0;
        if (!picked) return 0; // a refusal leaves even the picture alone
        swatch.Color = color;
        Repaint(window);
        SendCommand(window, swatch.ControlId);
        return 0;
    }
    default: break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

LRESULT CALLBACK SwatchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return ControlProc<TColorSwatch, HandleSwatch>(window, message, wParam, lParam);
}

void SetColor(TColorSwatch* swatch, uint32_t color) {
    if (!swatch) return;
    swatch->Color = color;
    Repaint(swatch->Window);
}

bool PickColor(HWND owner, uint32_t& color) {
    if (!gFilterRecord || !gFilterRecord->colorServices) return false;
    static const char kPrompt[] = "Select a Color";
    Str255 prompt{};
    prompt[0] = uint8(sizeof kPrompt - 1);
    std::memcpy(prompt + 1, kPrompt, sizeof kPrompt - 1);
    ColorServicesInfo info{};
    info.infoSize = sizeof info;
    info.selector = plugIncolorServicesChooseColor;
    info.sourceSpace = plugIncolorServicesRGBSpace;
    info.resultSpace = plugIncolorServicesRGBSpace;
    info.colorComponents[0] = int16(GetRValue(color));
    info.colorComponents[1] = int16(GetGValue(color));
    info.colorComponents[2] = int16(GetBValue(color));
    info.colorComponents[3] = 255;
    info.selectorParameter.pickerPrompt = &prompt;
    const OSErr answer = gFilterRecord->colorServices(&info);
    if (answer == noErr) {
        const auto channel = [&](int i) { return BYTE(std::clamp<int>(info.colorComponents[i], 0, 255)); };
        color = RGB(channel(0), channel(1), channel(2));
        return true;
    }
    if (answer == userCanceledErr) return false;
    // The host could not show its picker: the system's stands in.
    return ChooseSystemColor(owner, color, gSurfaceSwatch ? gSurfaceSwatch->CustomColors : gSpareColors, false);
}
