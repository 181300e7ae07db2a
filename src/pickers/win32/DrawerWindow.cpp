#include "pickers/win32/DrawerWindow.h"

namespace {

HINSTANCE ClassInstance = nullptr;

LRESULT CALLBACK DrawerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* object = reinterpret_cast<TDrawerWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (!object) return DefWindowProcA(window, message, wParam, lParam);
    try {
        if (message == WM_NCDESTROY) {
            // The object outlives its window only until its owner deletes it.
            SetWindowLongPtrA(window, GWLP_USERDATA, 0);
            object->Window = nullptr;
            return DefWindowProcA(window, message, wParam, lParam);
        }
        return object->WindowProc(window, message, wParam, lParam);
    } catch (...) {
        return 0;
    }
}

} // namespace

bool RegisterDrawerClass(HINSTANCE instance) {
    if (ClassInstance) return true;
    WNDCLASSA wc{};
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = DrawerProc;
    wc.cbWndExtra = 4;
    wc.hInstance = instance;
    wc.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    wc.lpszClassName = kDrawerClassName;
    if (!RegisterClassA(&wc)) return false;
    ClassInstance = instance;
    return true;
}

void UnregisterDrawerClass() {
    if (ClassInstance) UnregisterClassA(kDrawerClassName, ClassInstance);
    ClassInstance = nullptr;
}

TDrawerWindow::~TDrawerWindow() {
    if (!Window) return;
    SetWindowLongPtrA(Window, GWLP_USERDATA, 0);
    DestroyWindow(Window);
    Window = nullptr;
}

bool TDrawerWindow::Create(HWND parent, int32_t left, int32_t top, int32_t width, int32_t height, int32_t id) {
    Parent = parent;
    Left = left, Top = top, Width = width, Height = height;
    ControlId = id;
    Window = CreateWindowExA(WS_EX_TOPMOST, kDrawerClassName, "", WS_CHILD | WS_CLIPSIBLINGS, left, top, width, height,
                             parent, reinterpret_cast<HMENU>(INT_PTR(id)), ClassInstance, nullptr);
    if (!Window) return false;
    SetWindowLongPtrA(Window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    CreateChildren();
    return true;
}

LRESULT TDrawerWindow::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND && BackBitmap && BackBitmap->Bitmap()) {
        BackBitmap->Blit(HDC(wParam), 0, 0);
        return 0;
    }
    // Without a picture the class's black brush erases.
    return DefWindowProcA(window, message, wParam, lParam);
}
