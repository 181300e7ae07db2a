#include "dialog/win32/PreviewControl.h"

#include "dialog/DialogIds.h"

HCURSOR PreviewHoverCursor = nullptr, PreviewDragCursor = nullptr;
HBRUSH PreviewBackBrush = nullptr;

namespace {

// The mouse message's own key state: Ctrl as it was when the message was made.
bool CtrlDown(WPARAM wparam) { return (wparam & MK_CONTROL) != 0; }

void BlitPicture(HDC dc, const PreviewPicture& p, int32_t x, int32_t y) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = p.width;
    info.bmiHeader.biHeight = p.height; // bottom-up
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(dc, x, y, DWORD(p.width), DWORD(p.height), 0, 0, 0, UINT(p.height), p.bgr.data(), &info,
                      DIB_RGB_COLORS);
}

void Paint(PreviewControl& c) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(c.window, &ps);
    RECT client;
    GetClientRect(c.window, &client);
    if (c.picture.bgr.empty()) {
        FillRect(dc, &client, PreviewBackBrush ? PreviewBackBrush : HBRUSH(GetStockObject(WHITE_BRUSH)));
        MoveToEx(dc, 0, 0, nullptr);
        LineTo(dc, client.right, client.bottom);
        MoveToEx(dc, client.right, 0, nullptr);
        LineTo(dc, 0, client.bottom);
    } else if (c.dragging && !c.pan.ctrlDrag) {
        // The picture follows the mouse, drawn off screen first so that it does not flicker.
        HDC memory = CreateCompatibleDC(dc);
        HBITMAP bitmap = CreateCompatibleBitmap(dc, client.right, client.bottom);
        HGDIOBJ old = SelectObject(memory, bitmap);
        FillRect(memory, &client, PreviewBackBrush ? PreviewBackBrush : HBRUSH(GetStockObject(GRAY_BRUSH)));
        BlitPicture(memory, c.picture, c.picture.drawX + c.pan.dragMovedX, c.picture.drawY + c.pan.dragMovedY);
        BitBlt(dc, 0, 0, client.right, client.bottom, memory, 0, 0, SRCCOPY);
        SelectObject(memory, old);
        DeleteObject(bitmap);
        DeleteDC(memory);
    } else {
        // Around a picture smaller than the control lies the dialog's face, not an older picture.
        const RECT inside{c.picture.drawX, c.picture.drawY, c.picture.drawX + c.picture.width,
                          c.picture.drawY + c.picture.height};
        ExcludeClipRect(dc, inside.left, inside.top, inside.right, inside.bottom);
        FillRect(dc, &client, PreviewBackBrush ? PreviewBackBrush : HBRUSH(GetStockObject(GRAY_BRUSH)));
        SelectClipRgn(dc, nullptr);
        BlitPicture(dc, c.picture, c.picture.drawX, c.picture.drawY);
    }
    EndPaint(c.window, &ps);
}

void Notify(PreviewControl& c) {
    SendMessageA(GetParent(c.window), WM_COMMAND, MAKEWPARAM(c.id, QZ_PREVIEW_PANNED), LPARAM(c.window));
}

LRESULT Handle(PreviewControl& c, UINT message, WPARAM wparam, LPARAM lparam) {
    const int32_t x = short(LOWORD(lparam)), y = short(HIWORD(lparam));
    switch (message) {
    case WM_SIZE:
        c.pan.width = LOWORD(lparam);
        c.pan.height = HIWORD(lparam);
        return 0;
    case WM_PAINT: Paint(c); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_LBUTTONDOWN:
        SetCapture(c.window);
        c.pan.ctrlDrag = CtrlDown(wparam);
        c.dragStartX = x, c.dragStartY = y;
        c.pan.dragMovedX = c.pan.dragMovedY = 0;
        c.dragging = true;
        return 0;
    case WM_MOUSEMOVE:
        if (!CtrlDown(wparam) && !c.pan.ctrlDrag && PreviewHoverCursor) SetCursor(PreviewHoverCursor);
        if (!(wparam & MK_LBUTTON) || !c.dragging) return 0;
        if (!c.pan.ctrlDrag && PreviewDragCursor) SetCursor(PreviewDragCursor);
        c.pan.dragMovedX += x - c.dragStartX;
        c.pan.dragMovedY += y - c.dragStartY;
        if (c.pan.ctrlDrag) {
            if (MoveActiveLayer(c.dragStartX - x, c.dragStartY - y)) Notify(c);
        } else {
            InvalidateRect(c.window, nullptr, FALSE);
        }
        c.dragStartX = x, c.dragStartY = y;
        return 0;
    case WM_LBUTTONUP:
        if (!c.dragging) return 0;
        c.dragging = false;
        ReleaseCapture();
        if (ReleasePan(c.pan)) Notify(c);
        return 0;
    case WM_RBUTTONDOWN:
        if (c.picture.width > 0 && c.picture.height > 0)
            SendMessageA(GetParent(c.window), WM_COMMAND, MAKEWPARAM(IDC_PARAMS_CHANGED, 0), LPARAM(c.window));
        SetCapture(c.window);
        return 0;
    case WM_RBUTTONUP: ReleaseCapture(); return 0;
    default: return DefWindowProcA(c.window, message, wparam, lparam);
    }
}

LRESULT CALLBACK PreviewProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    try {
        if (message == WM_NCCREATE) {
            auto* record = new PreviewControl;
            record->window = window;
            record->id = GetDlgCtrlID(window);
            SetWindowLongPtrA(window, 0, LONG_PTR(record));
        }
        PreviewControl* record = PreviewRecord(window);
        if (message == WM_NCDESTROY) {
            SetWindowLongPtrA(window, 0, 0);
            delete record;
            return DefWindowProcA(window, message, wparam, lparam);
        }
        if (!record) return DefWindowProcA(window, message, wparam, lparam);
        return Handle(*record, message, wparam, lparam);
    } catch (...) {
        return DefWindowProcA(window, message, wparam, lparam);
    }
}

} // namespace

PreviewControl* PreviewRecord(HWND window) {
    return window ? reinterpret_cast<PreviewControl*>(GetWindowLongPtrA(window, 0)) : nullptr;
}

bool RegisterPreviewClass(HINSTANCE module) {
    WNDCLASSEXA wc{};
    wc.cbSize = sizeof wc;
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = PreviewProc;
    wc.cbWndExtra = sizeof(void*);
    wc.hInstance = module;
    wc.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    wc.lpszClassName = kPreviewClass;
    return RegisterClassExA(&wc) != 0;
}

void UnregisterPreviewClass(HINSTANCE module) { UnregisterClassA(kPreviewClass, module); }
