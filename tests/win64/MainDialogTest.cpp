// The real module's dialog under wine, opened by hostsim from the menu: a second thread
// finds it, checks its layout and zoom state, plays a few commands and cancels.
#include "win64/ModuleBeside.h"
#include "dialog/DialogIds.h"
#include "dialog/DialogLayout.h"
#include "hostsim/Host.h"
#include "hostsim/ScreenShot.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>
#include <thread>

namespace {

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

// The dialog as it stands on the screen, as a PAM picture at `path`.
void Shot(HWND dialog, const std::string& path) {
    SendMessageA(dialog, WM_NULL, 0, 0); // the dialog's thread is idle and has painted
    Sleep(300);
    RECT r{};
    GetWindowRect(dialog, &r);
    hostsim::PamImage image;
    std::string error;
    EXPECT_TRUE(hostsim::CaptureScreen(r, image) && hostsim::WritePam(path, image, error)) << path << error;
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

        // QZ_SHOT_DIR asks for pictures of the dialog, to look at.
        const char* shots = std::getenv("QZ_SHOT_DIR");
        if (shots) Shot(dialog, std::string(shots) + "/dialog-100.pam");

        // Ctrl + 0 fits, Ctrl + 1 returns.
        Command(dialog, IDC_ZOOM_FIT);
        check(TextOf(dialog, IDC_ZOOM_LABEL) != "100%", "fit stays at 100%");
        check(!IsWindowEnabled(GetDlgItem(dialog, IDC_ZOOM_DOWN)), "1001 enabled at fit");
        if (shots) Shot(dialog, std::string(shots) + "/dialog-fit.pam");
        check(IsWindowEnabled(GetDlgItem(dialog, IDC_ZOOM_UP)), "1000 disabled at fit");
        Command(dialog, IDC_ZOOM_ACTUAL);
        check(TextOf(dialog, IDC_ZOOM_LABEL) == "100%", "Ctrl + 1 shows " + TextOf(dialog, IDC_ZOOM_LABEL));
        // A new place, kept through the Cancel; SC_CLOSE is a Cancel.
        SetWindowPos(dialog, nullptr, 40, 30, 950, 720, SWP_NOZORDER);
        PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    });
    const std::string ini = ModuleFolder() + "Quenzit.ini";
    DeleteFileA(ini.c_str());
    const hostsim::Layer before = host.Doc().Target();
    EXPECT_EQ(host.RunFilter(), userCanceledErr);
    driver.join();
    EXPECT_EQ(failure, "");
    EXPECT_EQ(host.Doc().Target().pixels, before.pixels);

    // The ini holds the place; a new session takes the left edge from it, the top from the
    // defaults (its key never reads back).
    std::string text(4096, '\0');
    if (FILE* f = std::fopen(ini.c_str(), "rb")) {
        text.resize(std::fread(text.data(), 1, text.size(), f));
        std::fclose(f);
    }
    EXPECT_NE(text.find("tfeL 40 "), std::string::npos) << text;
    EXPECT_NE(text.find(" poT 30 "), std::string::npos) << text;
    EXPECT_NE(text.find("htdW 950 "), std::string::npos) << text;
    hostsim::Host again(hostsim::MakeDocument(1000, 600, plugInModeRGBColor, 8, pixels, 3), {}, entry);
    RECT place{};
    std::thread second([&] {
        std::string alerts;
        HWND dialog = WaitForDialog(thread, alerts);
        if (dialog) GetWindowRect(dialog, &place);
        if (dialog) PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDD_CANCEL, 0), 0);
        else
            for (int i = 0; i < 20; ++i, Sleep(200)) EnumThreadWindows(thread, CloseBox, 0);
    });
    EXPECT_EQ(again.RunFilter(), userCanceledErr);
    second.join();
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.top, 100);
    EXPECT_EQ(place.right - place.left, 950);
    DeleteFileA(ini.c_str());
}

TEST(MainDialog, OkRendersAsThePlayedRecordedDescriptor) {
    HMODULE module = LoadLibraryA(ModulePath().c_str());
    ASSERT_NE(module, nullptr);
    auto entry = reinterpret_cast<hostsim::PluginEntry>(reinterpret_cast<void*>(GetProcAddress(module, "PluginMain")));
    std::vector<uint8> pixels(size_t(320) * 200 * 4);
    for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = i % 4 == 3 ? 255 : uint8(i * 13 + i / 977);
    const hostsim::Document doc = hostsim::MakeDocument(320, 200, plugInModeRGBColor, 8, pixels, 4);

    hostsim::Host host(doc, {}, entry);
    const DWORD thread = GetCurrentThreadId();
    bool found = false;
    std::thread driver([&] {
        std::string alerts;
        HWND dialog = WaitForDialog(thread, alerts);
        found = dialog != nullptr;
        if (dialog) PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDD_OK, 0), 0);
        else
            for (int i = 0; i < 20; ++i, Sleep(200)) EnumThreadWindows(thread, CloseBox, 0);
    });
    EXPECT_EQ(host.RunFilter(), noErr);
    driver.join();
    ASSERT_TRUE(found);
    ASSERT_TRUE(host.HasRecorded());
    EXPECT_NE(host.Doc().Target().pixels, doc.Target().pixels); // the default look changes the picture

    // The same keys played with the dialog off, in a new session: the same bytes.
    hostsim::Host played(doc, {}, entry);
    EXPECT_EQ(played.PlayAction(host.Recorded(), plugInDialogDontDisplay), noErr);
    EXPECT_EQ(played.Doc().Target().pixels, host.Doc().Target().pixels);
    EXPECT_EQ(played.Doc().Target().transparency, host.Doc().Target().transparency);
}
