#include "controls/win32/Contaner.h"

#include "controls/win32/ControlProcs.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <vector>

HINSTANCE ControlInstance = nullptr;
HBRUSH FaceBrush = nullptr;

namespace {

// Classes that are registered with the family but of which no window is ever made.
LRESULT CALLBACK BareProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return DefWindowProcA(window, message, wParam, lParam);
}

std::vector<const char*> gRegistered;

// A tooltip goes with the window it explains: it is owned by the top-level window, which
// would otherwise keep it, and its fonts, to the dialog's end.
LRESULT CALLBACK TooltipToolProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                 DWORD_PTR tip) noexcept {
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, TooltipToolProc, id);
        DestroyWindow(reinterpret_cast<HWND>(tip));
    }
    return DefSubclassProc(window, message, wParam, lParam);
}
bool gReleasing = false;

} // namespace

void SetText(char*& field, const char* text) {
    char* copy = nullptr;
    if (text) {
        const size_t n = std::strlen(text) + 1;
        copy = new char[n];
        std::memcpy(copy, text, n);
    }
    delete[] field;
    field = copy;
}

uint32_t FacePixel() { return PixelOfColorRef(GetSysColor(COLOR_BTNFACE)); }

bool RegisterControlClasses(HINSTANCE instance, const OtherControlClasses& others) {
    INITCOMMONCONTROLSEX common{sizeof common, ICC_BAR_CLASSES | ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&common);
    ControlInstance = instance;
    FaceBrush = GetSysColorBrush(COLOR_BTNFACE);
    const struct {
        const char* name;
        WNDPROC proc;
    } family[] = {
        {"OrnQZT2Class", others.strip},
        {"Control CPP", PictureProc},
        {"Control Button Fire CPP", BareProc},
        {"Control Glass CPP", BareProc},
        {"Control Button CPP", ButtonProc},
        {"Contaner Anim CPP", BareProc},
        {"Contaner CPP", LabelProc},
        {"Rotor CPP", RotorProc},
        {"Mac Slider CPP", MacSliderProc},
        {"Glass Slider CPP", BareProc},
        {"Preview Contaner CPP", others.preview},
        {"Contaner Color CPP", SwatchProc},
        {"Spin Edit CPP", BareProc},
        {"Color Equalizer CPP", BareProc},
        {"ContainerLinkC", LinkProc},
    };
    bool all = true;
    for (const auto& entry : family) {
        if (!entry.proc) continue;
        WNDCLASSA wc{};
        wc.lpfnWndProc = entry.proc;
        wc.cbWndExtra = 4;
        wc.hInstance = instance;
        wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
        wc.hbrBackground = FaceBrush;
        wc.lpszClassName = entry.name;
        if (RegisterClassA(&wc)) gRegistered.push_back(entry.name);
        else all = false;
    }
    return all;
}

void UnregisterControlClasses() {
    for (const char* name : gRegistered) UnregisterClassA(name, ControlInstance);
    gRegistered.clear();
}

void* FindControl(HWND window, const char* className) {
    char name[64];
    if (!window || !className || !GetClassNameA(window, name, sizeof name) || std::strcmp(name, className) != 0)
        return nullptr;
    return reinterpret_cast<void*>(GetWindowLongPtrA(window, GWLP_USERDATA));
}

HWND AddTooltip(HWND window, const char* text, const char* title) {
    if (!window || !text) return nullptr;
    HWND tip = CreateWindowExA(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, TOOLTIPS_CLASSA, nullptr,
                               WS_POPUP | TTS_BALLOON | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                               CW_USEDEFAULT, window, nullptr, ControlInstance, nullptr);
    if (!tip) return nullptr;
    SetWindowPos(tip, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    // The size of the version 5 record: every comctl32 a host may load takes it.
    TOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    tool.uFlags = TTF_SUBCLASS | TTF_TRANSPARENT | TTF_CENTERTIP;
    tool.hwnd = window;
    tool.hinst = ControlInstance;
    tool.lpszText = const_cast<char*>(text);
    GetClientRect(window, &tool.rect);
    SendMessageA(tip, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
    if (title) SendMessageA(tip, TTM_SETTITLEA, 1, reinterpret_cast<LPARAM>(title));
    SendMessageA(tip, TTM_SETMAXTIPWIDTH, 0, 100);
    SetWindowSubclass(window, TooltipToolProc, reinterpret_cast<UINT_PTR>(tip), reinterpret_cast<DWORD_PTR>(tip));
    return tip;
}

void ReleaseOwnCapture() {
    gReleasing = true;
    ReleaseCapture();
    gReleasing = false;
}

bool LostCapture(HWND window, LPARAM newOwner) { return !gReleasing && reinterpret_cast<HWND>(newOwner) != window; }

void Repaint(HWND window) {
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
}

void CopyBitmap(HDC target, HBITMAP source, int32_t x, int32_t y, int32_t width, int32_t height) {
    if (!source) return;
    HDC dc = CreateCompatibleDC(target);
    if (!dc) return;
    HGDIOBJ previous = SelectObject(dc, source);
    BITMAP info{};
    GetObject(source, sizeof info, &info);
    // Only what the bitmap holds: a face smaller than its window leaves the rest alone.
    const int32_t w = std::min<int32_t>(width, info.bmWidth - x), h = std::min<int32_t>(height, info.bmHeight - y);
    if (w > 0 && h > 0) BitBlt(target, 0, 0, w, h, dc, x, y, SRCCOPY);
    SelectObject(dc, previous);
    DeleteDC(dc);
}

void DrawLine(HDC dc, const char* text, HFONT font, COLORREF color, int32_t width, int32_t height, bool leftAligned) {
    if (!text) return;
    HGDIOBJ previous = font ? SelectObject(dc, font) : nullptr;
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, color);
    RECT box{0, 0, width, height};
    DrawTextA(dc, text, -1, &box, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | (leftAligned ? DT_LEFT : DT_CENTER));
    if (previous) SelectObject(dc, previous);
}

void PostCommand(HWND window, int32_t id, LPARAM lParam) {
    PostMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(id, 0), lParam);
}

LRESULT SendCommand(HWND window, int32_t id, LPARAM lParam) {
    return SendMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(id, 0), lParam);
}

POINT MousePoint(LPARAM lParam) { return POINT{short(LOWORD(lParam)), short(HIWORD(lParam))}; }
