// The window family of the drawers: a plain window of class OrnDrawerClass wrapped by an
// object that receives its messages. The drawer, its tile panel and its tiles are all one.
#pragma once

#include "controls/win32/DibSection.h"

#include <windows.h>

#include <cstdint>

inline constexpr const char* kDrawerClassName = "OrnDrawerClass";

// Registers the class with `instance` (double clicks, black brush, arrow, four extra
// bytes) once; false when it could not be.
bool RegisterDrawerClass(HINSTANCE instance);
void UnregisterDrawerClass();

class TDrawerWindow {
public:
    TDrawerWindow() = default;
    TDrawerWindow(const TDrawerWindow&) = delete;
    TDrawerWindow& operator=(const TDrawerWindow&) = delete;
    virtual ~TDrawerWindow();
    virtual LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    // Called once, straight after the window exists.
    virtual void CreateChildren() {}

    // A hidden topmost child of `parent`, this object in its user data.
    bool Create(HWND parent, int32_t left, int32_t top, int32_t width, int32_t height, int32_t id);

    HWND Window = nullptr, Parent = nullptr;
    int32_t Width = 0, Height = 0, Left = 0, Top = 0; // size and resting place in the parent
    int32_t ControlId = 0;
    const DibSection* BackBitmap = nullptr; // not owned: what the window erases itself with
    uint8_t SlideState = 0;                 // 0 idle, 1 opening, 255 closing
    float SlidePercent = 0.0f;
};
