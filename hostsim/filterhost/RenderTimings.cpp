#include "RenderTimings.h"

#include <windows.h>

#include "dialog/DialogIds.h"

#include <chrono>
#include <cstdio>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

HHOOK Before = nullptr, After = nullptr;
Clock::time_point Opened;
bool FirstPaint = true;
HWND PreviewWindow = nullptr;
WNDPROC PreviewProc = nullptr;
std::vector<Clock::time_point> Started; // one a watched message in flight

double Ms(Clock::time_point since) { return std::chrono::duration<double, std::milli>(Clock::now() - since).count(); }

// The main dialog only: the pages are child dialogs, and the Wash page has a button of the
// preview's id, which must not be taken for the preview.
bool IsDialog(HWND w) {
    return (GetWindowLongPtrA(w, GWL_STYLE) & WS_CHILD) == 0 && GetDlgItem(w, IDC_PREVIEW) != nullptr;
}

// The messages that render: the opening, commands, the end of a sizing.
bool Watched(const CWPSTRUCT& m) {
    if (!IsDialog(m.hwnd)) return false;
    return m.message == WM_INITDIALOG || m.message == WM_COMMAND || m.message == WM_EXITSIZEMOVE ||
           m.message == WM_NOTIFY || m.message == WM_SHOWWINDOW;
}

const char* CommandName(int id, int code) {
    switch (id) {
    case IDC_ZOOM_UP: return "zoom in";
    case IDC_ZOOM_DOWN: return "zoom out";
    case IDC_ZOOM_FIT: return "fit";
    case IDC_ZOOM_ACTUAL: return "100%";
    case IDC_PREVIEW: return code == QZ_PREVIEW_PANNED ? "pan release or Ctrl + drag step" : "preview";
    case IDC_PARAMS_CHANGED:
    case IDC_PARAMS_CHANGED_TOO: return "parameters changed";
    default: return "command";
    }
}

LRESULT CALLBACK TimedPreview(HWND w, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != WM_PAINT) return CallWindowProcA(PreviewProc, w, message, wparam, lparam);
    const Clock::time_point began = Clock::now();
    const LRESULT r = CallWindowProcA(PreviewProc, w, message, wparam, lparam);
    std::fprintf(stderr, "filterhost: timing: preview paint (blit) %.2f ms\n", Ms(began));
    if (FirstPaint) {
        FirstPaint = false;
        std::fprintf(stderr, "filterhost: timing: open to first painted preview %.1f ms\n", Ms(Opened));
    }
    return r;
}

LRESULT CALLBACK BeforeSent(int code, WPARAM wparam, LPARAM lparam) {
    const auto* m = reinterpret_cast<const CWPSTRUCT*>(lparam);
    if (code == HC_ACTION && Watched(*m)) Started.push_back(Clock::now());
    return CallNextHookEx(Before, code, wparam, lparam);
}

LRESULT CALLBACK AfterSent(int code, WPARAM wparam, LPARAM lparam) {
    const auto* r = reinterpret_cast<const CWPRETSTRUCT*>(lparam);
    const CWPSTRUCT m{r->lParam, r->wParam, r->message, r->hwnd};
    if (code == HC_ACTION && Watched(m) && !Started.empty()) {
        const double ms = Ms(Started.back());
        Started.pop_back();
        if (m.message == WM_INITDIALOG) {
            std::fprintf(stderr, "filterhost: timing: dialog set up, first render included, %.1f ms\n", ms);
            // Paints come through the message loop, where no hook sees them end.
            PreviewWindow = GetDlgItem(m.hwnd, IDC_PREVIEW);
            PreviewProc = WNDPROC(SetWindowLongPtrA(PreviewWindow, GWLP_WNDPROC, LONG_PTR(TimedPreview)));
        } else if (m.message == WM_EXITSIZEMOVE) {
            std::fprintf(stderr, "filterhost: timing: end of sizing %.1f ms\n", ms);
        } else if (m.message == WM_SHOWWINDOW) {
            std::fprintf(stderr, "filterhost: timing: picture rebuilt without a render %.2f ms\n", ms);
        } else if (m.message == WM_NOTIFY) {
            if (ms >= 1.0) std::fprintf(stderr, "filterhost: timing: tab change %.1f ms\n", ms);
        } else {
            const int id = LOWORD(m.wParam), note = HIWORD(m.wParam);
            if (ms >= 1.0) std::fprintf(stderr, "filterhost: timing: %s (%d) %.1f ms\n", CommandName(id, note), id, ms);
        }
    }
    return CallNextHookEx(After, code, wparam, lparam);
}

} // namespace

void StartRenderTimings() {
    Opened = Clock::now();
    FirstPaint = true;
    Before = SetWindowsHookExA(WH_CALLWNDPROC, BeforeSent, nullptr, GetCurrentThreadId());
    After = SetWindowsHookExA(WH_CALLWNDPROCRET, AfterSent, nullptr, GetCurrentThreadId());
}

void StopRenderTimings() {
    if (Before) UnhookWindowsHookEx(Before);
    if (After) UnhookWindowsHookEx(After);
    Before = After = nullptr;
    PreviewWindow = nullptr;
}
