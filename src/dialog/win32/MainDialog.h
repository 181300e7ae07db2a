// The main dialog: its globals and its procedure. OpenDialog (host/Dialog.h) runs it.
#pragma once

#include "controls/win32/Fonts.h" // ScreenDpi
#include "dialog/DialogLayout.h"
#include "dialog/FramePainters.h"
#include "state/Parameters.h"

#include <windows.h>

extern FilterParameters SavedParams;    // put back by Cancel
extern FilterParameters LastUsedParams; // renewed by every change not made by a preset row
extern float DpiScale;
extern int32_t HeaderMiddleWidth;
extern LayoutRect PreviewFrame, TabBandTop, TabBandBottom;
extern uint8_t DrawerOpen;
// The corner weights the dialog read at its start; the drawers round their corners by them.
const ShadowWeights& DialogCornerWeights();

// What the tab control needs; kept in the dialog's user data slot.
struct TabRecord {
    HWND tabs = nullptr;
    HWND page = nullptr;
    RECT display{};
    LPCDLGTEMPLATEA templates[4] = {};
    HWND pages[4] = {};
};

extern "C" __declspec(dllexport) INT_PTR CALLBACK DissolveProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
