// The shell's "open": the user's browser for a page or an address.
#include "platform/ShellOpenBackend.h"
#include "platform/win32/Win32.h"

#include <shellapi.h>

bool SystemShellOpen(const std::string& target, void* ownerWindow) noexcept {
    const HINSTANCE done =
        ShellExecuteA(static_cast<HWND>(ownerWindow), "open", target.c_str(), nullptr, nullptr, SW_SHOW);
    // Values above 32 mean success.
    return reinterpret_cast<INT_PTR>(done) > 32;
}
