#include "pickers/win32/PickerTile.h"

#include "controls/win32/Fonts.h"
#include "pickers/Thumbnails.h"
#include "pickers/win32/DrawerPicker.h"

#include <cstring>
#include <string>

void TPickerThump2::Place() {
    FrameRect = {2, 2, Width - 2, Height - 2};
    InnerRect = {0, 0, Width - 4, Height - 4};
    InnerWidth = Width - 4;
    InnerHeight = Height - 4;
}

void TPickerThump2::Paint() {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(Window, &ps);
    if (!dc) return;
    if (Canvas.Resize(InnerWidth, InnerHeight)) {
        PaintTile(Canvas.View(), Hover != 0, Bitmap.width > 0 ? &Bitmap : nullptr);
        Canvas.Blit(dc, 2, 2);
    }
    if (!Owner) {
        EndPaint(Window, &ps);
        return;
    }
    if (Owner->List.SelectedIndex == EntryIndex) {
        // Round the picture, one pixel outside it.
        HBRUSH gold = CreateSolidBrush(RGB(255, 215, 108));
        const RECT frame{ThumbLeft - 1, ThumbTop - 1, ThumbLeft + ThumbWidth + 1, ThumbTop + ThumbHeight + 1};
        ::FrameRect(dc, &frame, gold);
        DeleteObject(gold);
    }
    if (EntryIndex >= 0 && EntryIndex < int32_t(Owner->List.ShownEntries.size())) {
        std::string name = Owner->List.ShownEntries[size_t(EntryIndex)].Name;
        const bool colours = Owner->List.DrawerMode == kColourDrawer;
        // Only a real extension goes: "Reset Colors" keeps its whole name.
        const std::string extension = colours ? ".qztpst" : ".qzt";
        if (name.size() > extension.size() &&
            lstrcmpiA(name.c_str() + name.size() - extension.size(), extension.c_str()) == 0)
            name.resize(name.size() - extension.size());
        HGDIOBJ oldFont = SelectObject(dc, ThumbFont ? ThumbFont : GetStockObject(DEFAULT_GUI_FONT));
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, Hover ? RGB(255, 255, 255) : RGB(200, 200, 200));
        TextOutA(dc, 5, Height - 17, name.c_str(), int(name.size()));
        SelectObject(dc, oldFont);
    }
    EndPaint(Window, &ps);
}

LRESULT TPickerThump2::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT: Paint(); return 0;
    case WM_ERASEBKGND: {
        RECT all{0, 0, Width, Height};
        FillRect(HDC(wParam), &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        return 1;
    }
    case WM_MOUSEMOVE: {
        const POINT p{short(LOWORD(lParam)), short(HIWORD(lParam))};
        const bool inside = p.x >= 0 && p.y >= 0 && p.x < Width && p.y < Height;
        if (inside && !Hover) {
            Hover = 1;
            SetCapture(window);
            InvalidateRect(window, nullptr, FALSE);
        } else if (!inside) {
            ReleaseCapture();
            Hover = 0;
            InvalidateRect(window, nullptr, FALSE);
        }
        return 0;
    }
    case WM_CAPTURECHANGED:
        if (Hover && HWND(lParam) != window) {
            Hover = 0;
            InvalidateRect(window, nullptr, FALSE);
        }
        return 0;
    case WM_LBUTTONDOWN:
        if (Owner) Owner->TileClicked(EntryIndex);
        return 0;
    case WM_LBUTTONDBLCLK:
        if (Owner) PostMessageA(Owner->Parent, WM_COMMAND, MAKEWPARAM(Owner->ControlId, 1), LPARAM(Owner->Window));
        return 0;
    default: return TDrawerWindow::WindowProc(window, message, wParam, lParam);
    }
}
