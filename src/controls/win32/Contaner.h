// The toolkit's window family: registration, the record at the head of every control,
// finding a control's record through its window, tooltips, and the life every control
// window shares. Each control's own record and messages live in its own file.
#pragma once

#include "controls/ControlLooks.h"
#include "controls/win32/DibSection.h"

#include <windows.h>

#include <cstdint>

// The record at the head of every toolkit window but the link. Colours are Win32 colour
// values. Made at WM_CREATE (or taken from the creation parameter), freed at WM_NCDESTROY
// with the text it owns.
struct TContaner {
    TContaner() = default;
    TContaner(const TContaner&) = delete;
    TContaner& operator=(const TContaner&) = delete;
    ~TContaner() { delete[] Text; }

    char* Text = nullptr; // owned
    int32_t HoverFlag = 0;
    HWND Window = nullptr;
    HBRUSH FrameBrush = nullptr;
    int32_t ControlId = 0;
    uint32_t TextColor = 0x7F7F7F; // the idle state's colour
    int32_t BackX = 0, BackY = 0;  // this control's area in a shared background bitmap
    HFONT Font = nullptr;
    HBRUSH BackBrush = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    uint32_t StateColors[4] = {0x7F7F7F, 0xB4BCB4, 0x646464, 0xFFFFFF}; // by StateColor
    int32_t Width = 0, Height = 0;                                      // client size at creation
    uint8_t MouseState = 0;                                             // 0 idle, 1 hover, 2 pressed
    uint8_t SpecialState = 0;
    uint8_t Toggled = 0;
    uint8_t LabelKind = 0;
    uint8_t Enabled = 1;
    int32_t BackMode = 0;
    int32_t GlowSlot = -1;
    uint8_t LeftAligned = 0;
    HBITMAP BackBitmap = nullptr;
};

// Replaces the record's text with a copy of `text` (null clears it).
void SetText(char*& field, const char* text);

// ---- Registration ----

// The module the classes belong to, and the system face brush every class erases with.
extern HINSTANCE ControlInstance;
extern HBRUSH FaceBrush;
// The face colour as a pixel, for the painters.
uint32_t FacePixel();

// Classes that other folders own but that register with the family, in its order.
struct OtherControlClasses {
    WNDPROC strip = nullptr;   // OrnQZT2Class
    WNDPROC preview = nullptr; // "Preview Contaner CPP"
};

// Registers the family with `instance`: class style 0, four extra bytes, the arrow, the
// face brush. Classes of `others` without a procedure are left out. Also readies the
// common controls the toolkit uses. False when a class could not be registered.
bool RegisterControlClasses(HINSTANCE instance, const OtherControlClasses& others = {});
// Unregisters whatever RegisterControlClasses registered, in the same order.
void UnregisterControlClasses();

// ---- Finding a control ----

// The record of `window` when its class name is exactly `className`, else null. Every
// caller tests the result.
void* FindControl(HWND window, const char* className);
template <class Record> Record* FindControl(HWND window) {
    return static_cast<Record*>(FindControl(window, Record::kClassName));
}

// One balloon tooltip of its own for `window`, with `text` (which must outlive the tool)
// and an optional title shown with the information icon; tips wrap at 100 pixels. Null
// when `window` or `text` is null or the tooltip could not be made.
HWND AddTooltip(HWND window, const char* text, const char* title);

// ---- What the controls share ----

// Releases the mouse without the releasing window taking it as a loss.
void ReleaseOwnCapture();
// In WM_CAPTURECHANGED: whether `window` lost the mouse to another window (or had it taken
// away), as against giving it up itself.
bool LostCapture(HWND window, LPARAM newOwner);
// Invalidates without erasing and paints at once.
void Repaint(HWND window);
// WM_PAINT: `render` draws the record's Width by Height into `canvas`, which is blitted.
template <class Render>
void PaintCanvas(HWND window, DibSection& canvas, int32_t width, int32_t height, Render render) {
    PAINTSTRUCT ps;
    if (HDC dc = BeginPaint(window, &ps)) {
        if (canvas.Resize(width, height)) {
            render(canvas);
            canvas.Blit(dc, 0, 0);
        }
        EndPaint(window, &ps);
    }
}
// Copies `width` by `height` of `source` from (x, y) to the top left of `target`; what the
// bitmap does not cover is left as it was.
void CopyBitmap(HDC target, HBITMAP source, int32_t x, int32_t y, int32_t width, int32_t height);
// Transparent text in `color`, centred vertically, at x = 0 or centred across.
void DrawLine(HDC dc, const char* text, HFONT font, COLORREF color, int32_t width, int32_t height, bool leftAligned);
// Posts or sends WM_COMMAND with `id` (high word 0) to the window's parent.
void PostCommand(HWND window, int32_t id, LPARAM lParam = 0);
LRESULT SendCommand(HWND window, int32_t id, LPARAM lParam = 0);
// A point of a mouse message, signed (captured points may lie left of or above the window).
POINT MousePoint(LPARAM lParam);

// The life of a toolkit window: at WM_CREATE the record comes from the creation parameter
// or is made, and learns its window, id and client size; until then, and after
// WM_NCDESTROY has freed it, messages get default handling. `Handle` sees every message in
// between (WM_CREATE too); nothing it throws leaves the procedure.
template <class Record, LRESULT (*Handle)(Record&, UINT, WPARAM, LPARAM)>
LRESULT CALLBACK ControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        if (message == WM_CREATE) {
            const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
            Record* record = create->lpCreateParams ? static_cast<Record*>(create->lpCreateParams) : new Record();
            RECT client{};
            GetClientRect(window, &client);
            record->Window = window;
            record->ControlId = GetDlgCtrlID(window);
            record->Width = client.right;
            record->Height = client.bottom;
            SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(record));
            return Handle(*record, message, wParam, lParam);
        }
        auto* record = reinterpret_cast<Record*>(GetWindowLongPtrA(window, GWLP_USERDATA));
        if (!record) return DefWindowProcA(window, message, wParam, lParam);
        if (message == WM_NCDESTROY) {
            Handle(*record, message, wParam, lParam);
            SetWindowLongPtrA(window, GWLP_USERDATA, 0);
            delete record;
            return DefWindowProcA(window, message, wParam, lParam);
        }
        return Handle(*record, message, wParam, lParam);
    } catch (...) {
        return message == WM_CREATE ? -1 : 0;
    }
}
