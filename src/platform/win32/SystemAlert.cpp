// Alerts as a real MessageBoxA.
#include "platform/AlertBackend.h"
#include "platform/win32/Win32.h"

namespace {

UINT IconFlags(AlertIcon icon) {
    switch (icon) {
    case AlertIcon::Information: return MB_ICONINFORMATION;
    case AlertIcon::Warning: return MB_ICONWARNING;
    case AlertIcon::Error: return MB_ICONERROR;
    case AlertIcon::Question: return MB_ICONQUESTION;
    case AlertIcon::None: break;
    }
    return 0;
}

UINT ButtonFlags(AlertButtons buttons) {
    switch (buttons) {
    case AlertButtons::OkCancel: return MB_OKCANCEL;
    case AlertButtons::YesNo: return MB_YESNO;
    case AlertButtons::YesNoCancel: return MB_YESNOCANCEL;
    case AlertButtons::Ok: break;
    }
    return MB_OK;
}

} // namespace

AlertAnswer ShowSystemAlert(const AlertRecord& alert, void* ownerWindow) noexcept {
    // Without an owner the box would leave an open dialog enabled and could fall behind it:
    // the thread's active window (the dialog, or the host's own) owns it then.
    HWND owner = ownerWindow ? static_cast<HWND>(ownerWindow) : GetActiveWindow();
    int result =
        MessageBoxA(owner, alert.text.c_str(), alert.title.c_str(), IconFlags(alert.icon) | ButtonFlags(alert.buttons));
    switch (result) {
    case IDOK: return AlertAnswer::Ok;
    case IDYES: return AlertAnswer::Yes;
    case IDNO: return AlertAnswer::No;
    case IDCANCEL: return AlertAnswer::Cancel;
    default:
        // 0: no box could be shown (no desktop); decline rather than guess.
        return DecliningAnswer(alert.buttons);
    }
}
