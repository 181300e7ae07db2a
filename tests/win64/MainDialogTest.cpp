// The real module's dialog under wine, opened by hostsim from the menu: a second thread
// finds it, checks its layout and zoom state, plays a few commands and cancels.
#include "dialog/DialogIds.h"
#include "dialog/DialogLayout.h"
#include "hostsim/Host.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <thread>

namespace {

std::string ModulePath() {
    char exe[MAX_PATH];
    const DWORD n = GetModuleFileNameA(nullptr, exe, MAX_PATH);
    std::string path(exe, n);
    return path.substr(0, path.find_last_of("\\/") + 1) + "Quenzit64.8bf";
}

struct Search {
    HWND found = nullptr;
    std::string alerts; // the text of any other box, which is closed
};

BOOL CALLBACK Visit(HWND w, LPARAM data) {
    auto* search = reinterpret_cast<Search*>(data);
    if (!IsWindowVisible(w)) return TRUE;
    if (GetDlgItem(w, IDC_PREVIEW)) {
        search->found = w;
        return TRUE;
    }
    char text[256] = {};
    GetDlgItemTextA(w, 0xFFFF, text, sizeof text);
    search->alerts += std::string(text) + "; ";
    PostMessageA(w, WM_COMMAND, MAKEWPARAM(IDCANCEL, 0), 0);
    return TRUE;
}

// The dialog on `thread`, for up to 30 seconds; any other box that comes up is closed.
HWND WaitForDialog(DWORD thread, std::string& alerts) {
    for (int i = 0; i < 600; ++i) {
        Search search;
        EnumThreadWindows(thread, Visit, LPARAM(&search));
        alerts += search.alerts;
        if (search.found) return search.found;
        Sleep(50);
    }
    return nullptr;
}

// Ends whatever box is up on `thread`, so that a failed test does not hang.
BOOL CALLBACK CloseBox(HWND w, LPARAM) {
    PostMessageA(w, WM_COMMAND, MAKEWPARAM(IDCANCEL, 0), 0);
    return TRUE;
}

// A control's rectangle in the dialog's client pixels.
LayoutBox BoxOf(HWND dialog, int id) {
    RECT r{};
    GetWindowRect(GetDlgItem(dialog, id), &r);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
    return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

std::string TextOf(HWND dialog, int id) {
    char text[64] = {};
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return text;
}

// Sends a command as the dialog's own thread would serve it, and waits until it is done.
void Command(HWND dialog, int id) { SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, 0), 0); }

} // namespace

TEST(MainDialog, OpensAtFullSizeLaysOutAsComputedZoomsAndCancels) {
    HMODULE module = LoadLibraryA(ModulePath().c_str());
    ASSERT_NE(module, nullptr);
    auto entry = reinterpret_cast<hostsim::PluginEntry>(reinterpret_cast<void*>(GetProcAddress(module, "PluginMain")));
    ASSERT_NE(entry, nullptr);
    EXPECT_NE(GetProcAddress(module, "DissolveProc"), nullptr);

    std::vector<uint8> pixels(size_t(1000) * 600 * 3);
    for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = uint8(i * 7);
    hostsim::Host host(hostsim::MakeDocument(1000, 600, plugInModeRGBColor, 8, pixels, 3), {}, entry);

    std::string failure;
    const DWORD thread = GetCurrentThreadId();
    std::thread driver([&] {
        std::string alerts;
        HWND dialog = WaitForDialog(thread, alerts);
        if (!alerts.empty()) failure = "alerts: " + alerts;
        if (!dialog) {
            failure = "no dialog";
            for (int i = 0; i < 20; ++i, Sleep(200)) EnumThreadWindows(thread, CloseBox, 0);
            return;
        }
        const auto check = [&](bool ok, const std::string& what) {
            if (!ok && failure.empty()) failure = what;
        };
        check(TextOf(dialog, IDC_ZOOM_LABEL) == "100%", "opens at " + TextOf(dialog, IDC_ZOOM_LABEL));
        check(!IsWindowEnabled(GetDlgItem(dialog, IDC_ZOOM_UP)), "1000 enabled at opening");
        check(IsWindowEnabled(GetDlgItem(dialog, IDC_ZOOM_DOWN)), "1001 disabled at opening");

        // The layout from the preview's place: every other rectangle must agree with it.
        HDC dc = GetDC(dialog);
        const int32_t dpi = GetDeviceCaps(dc, LOGPIXELSY);
        ReleaseDC(dialog, dc);
        RECT client{};
        GetClientRect(dialog, &client);
        const LayoutBox preview = BoxOf(dialog, IDC_PREVIEW);
        const LayoutRect bandTop{preview.x, preview.y - kBandHeight, preview.x, preview.y};
        const DialogLayout d =
            LayoutDialog(client.right, client.bottom, dpi, LayoutRect{preview.x, bandTop.top, 0, 0}, bandTop);
        const LayoutBox least = MinimumTrackSize(dpi);
        RECT window{};
        GetWindowRect(dialog, &window);
        check(window.right - window.left >= least.width && window.bottom - window.top >= least.height,
              "smaller than the minimum");
        check(BoxOf(dialog, IDD_OK) == d.ok, "OK");
        check(BoxOf(dialog, IDD_CANCEL) == d.cancel, "Cancel");
        check(BoxOf(dialog, IDC_ZOOM_UP) == d.zoomUp, "1000");
        check(BoxOf(dialog, IDC_ZOOM_DOWN) == d.zoomDown, "1001");
        check(BoxOf(dialog, IDC_ZOOM_LABEL) == d.percent, "1003");
        check(BoxOf(dialog, IDC_PROGRESS) == d.progress, "1004");
        check(BoxOf(dialog, IDC_TABS) == d.tabs, "999");
        check(preview == d.preview, "1002");
        check(BoxOf(dialog, IDC_OPTION_BASIC) == d.optionBox, "1022");

        // Ctrl + 0 fits, Ctrl + 1 returns.
        Command(dialog, IDC_ZOOM_FIT);
        check(TextOf(dialog, IDC_ZOOM_LABEL) != "100%", "fit stays at 100%");
        check(!IsWindowEnabled(GetDlgItem(dialog, IDC_ZOOM_DOWN)), "1001 enabled at fit");
        check(IsWindowEnabled(GetDlgItem(dialog, IDC_ZOOM_UP)), "1000 disabled at fit");
        Command(dialog, IDC_ZOOM_ACTUAL);
        check(TextOf(dialog, IDC_ZOOM_LABEL) == "100%", "Ctrl + 1 shows " + TextOf(dialog, IDC_ZOOM_LABEL));
        // SC_CLOSE is a Cancel.
        PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    });
    EXPECT_EQ(host.RunFilter(), userCanceledErr);
    driver.join();
    EXPECT_EQ(failure, "");
}
