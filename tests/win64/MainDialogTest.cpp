// The real module's dialog under wine, opened by hostsim from the menu: a second thread
// finds it, checks its layout and zoom state, plays a few commands and cancels.
#include "win64/ModuleBeside.h"
#include "common/TempPaths.h"
#include "dialog/DialogIds.h"
#include "dialog/DialogLayout.h"
#include "state/Parameters.h"
#include "controls/win32/Buttons.h"
#include "hostsim/Handles.h"
#include "hostsim/Host.h"
#include "hostsim/ScreenShot.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
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

bool Checked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }

// The state a skinned label shows: 2 chosen, 0 idle; -1 when 'id' is no skinned label.
int LabelState(HWND dialog, int id) {
    HWND w = GetDlgItem(dialog, id);
    char name[32] = {};
    GetClassNameA(w, name, sizeof name);
    if (std::string(name) != TLabel::kClassName) return -1;
    auto* label = reinterpret_cast<TLabel*>(GetWindowLongPtrA(w, GWLP_USERDATA));
    return label ? label->Toggled : -1;
}

// The text of the tooltip that explains `control`, from the tooltips of its thread.
struct TipSearch {
    HWND control = nullptr;
    std::string text;
};
BOOL CALLBACK VisitTip(HWND w, LPARAM data) {
    auto* search = reinterpret_cast<TipSearch*>(data);
    char name[64] = {};
    GetClassNameA(w, name, sizeof name);
    if (lstrcmpiA(name, TOOLTIPS_CLASSA) != 0) return TRUE;
    char text[256] = {};
    TOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    tool.hwnd = search->control;
    tool.lpszText = text;
    SendMessageA(w, TTM_GETTEXTA, sizeof text, LPARAM(&tool));
    if (text[0]) search->text = text;
    return search->text.empty();
}
std::string TipOf(HWND dialog, int id) {
    TipSearch search;
    search.control = GetDlgItem(dialog, id);
    EnumThreadWindows(GetWindowThreadProcessId(dialog, nullptr), VisitTip, LPARAM(&search));
    return search.text;
}

// Runs the host's menu command with `play` on the dialog's window from a second thread;
// the dialog is then cancelled. Empty when all went well, else what failed.
template <class Play> std::string WithDialog(hostsim::Host& host, Play play) {
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
        play(dialog, failure);
        PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDD_CANCEL, 0), 0);
    });
    if (host.RunFilter() != userCanceledErr && failure.empty()) failure = "not cancelled";
    driver.join();
    return failure;
}

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
        // One step up from fit: the picture grows and can shrink again.
        const std::string fit = TextOf(dialog, IDC_ZOOM_LABEL);
        Command(dialog, IDC_ZOOM_UP);
        check(TextOf(dialog, IDC_ZOOM_LABEL) != fit, "1000 left the scale at " + fit);
        check(IsWindowEnabled(GetDlgItem(dialog, IDC_ZOOM_DOWN)), "1001 disabled after 1000");
        if (shots) Shot(dialog, std::string(shots) + "/dialog-zoomed.pam");
        Command(dialog, IDC_ZOOM_ACTUAL);
        check(TextOf(dialog, IDC_ZOOM_LABEL) == "100%", "Ctrl + 1 shows " + TextOf(dialog, IDC_ZOOM_LABEL));
        // A new place, kept through the Cancel; SC_CLOSE is a Cancel.
        SetWindowPos(dialog, nullptr, 40, 30, 950, 720, SWP_NOZORDER);
        // A larger preview renders into buffers of its own size.
        SendMessageA(dialog, WM_EXITSIZEMOVE, 0, 0);
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

TEST(MainDialog, ResultOptionsTipsAndHeaderButtonsAreWired) {
    HMODULE module = LoadLibraryA(ModulePath().c_str());
    ASSERT_NE(module, nullptr);
    auto entry = reinterpret_cast<hostsim::PluginEntry>(reinterpret_cast<void*>(GetProcAddress(module, "PluginMain")));
    std::vector<uint8> pixels(size_t(400) * 300 * 3, 90);
    hostsim::Host host(hostsim::MakeDocument(400, 300, plugInModeRGBColor, 8, pixels, 3), {}, entry);

    EXPECT_EQ(WithDialog(host,
                         [](HWND dialog, std::string& failure) {
                             const auto check = [&](bool ok, const std::string& what) {
                                 if (!ok && failure.empty()) failure = what;
                             };
                             // Three planes: no mask layer to put the wash in.
                             check(!IsWindowEnabled(GetDlgItem(dialog, IDC_OPTION_WASH)), "1023 enabled");
                             check(!IsWindowEnabled(GetDlgItem(dialog, IDC_LABEL_WASH)), "1112 enabled");
                             check(IsWindowEnabled(GetDlgItem(dialog, IDC_LABEL_BASIC)), "9111 disabled");
                             check(IsWindowVisible(GetDlgItem(dialog, IDC_LABEL_BASIC)), "9111 hidden on Basic");
                             check(!IsWindowVisible(GetDlgItem(dialog, IDC_LABEL_BACKGROUND)), "1113 shown");

                             // A click on the label flips its option, box and label alike.
                             const bool before = Checked(dialog, IDC_OPTION_BASIC);
                             check(LabelState(dialog, IDC_LABEL_BASIC) == (before ? 2 : 0), "9111 state at opening");
                             HWND label = GetDlgItem(dialog, IDC_LABEL_BASIC);
                             SendMessageA(label, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
                             Sleep(200);
                             SendMessageA(dialog, WM_NULL, 0, 0);
                             check(Checked(dialog, IDC_OPTION_BASIC) != before, "9111 click left 1022");
                             check(LabelState(dialog, IDC_LABEL_BASIC) == (before ? 0 : 2), "9111 not repainted");

                             // The mask option drags the background option on, never off.
                             CheckDlgButton(dialog, IDC_OPTION_BACKGROUND, BST_UNCHECKED);
                             Command(dialog, IDC_OPTION_BACKGROUND);
                             if (Checked(dialog, IDC_OPTION_WASH)) Command(dialog, IDC_LABEL_WASH);
                             check(!Checked(dialog, IDC_OPTION_BACKGROUND), "background stuck on");
                             Command(dialog, IDC_LABEL_WASH);
                             check(Checked(dialog, IDC_OPTION_WASH) && Checked(dialog, IDC_OPTION_BACKGROUND),
                                   "mask on left the background off");
                             check(LabelState(dialog, IDC_LABEL_BACKGROUND) == 2, "1113 not drawn chosen");
                             Command(dialog, IDC_LABEL_WASH);
                             check(!Checked(dialog, IDC_OPTION_WASH) && Checked(dialog, IDC_OPTION_BACKGROUND),
                                   "mask off turned the background off");

                             check(TipOf(dialog, IDC_ZOOM_UP).rfind("Decrease preview size", 0) == 0,
                                   "tip of 1000: " + TipOf(dialog, IDC_ZOOM_UP));
                             check(TipOf(dialog, IDC_ZOOM_DOWN).rfind("Enlarge preview size", 0) == 0,
                                   "tip of 1001: " + TipOf(dialog, IDC_ZOOM_DOWN));
                             check(TipOf(dialog, IDC_LABEL_WASH) == TipOf(dialog, IDC_OPTION_WASH) &&
                                       !TipOf(dialog, IDC_LABEL_WASH).empty(),
                                   "tips of 1023 and 1112 differ");

                             // The header buttons are the toolkit's, where the layout puts them.
                             RECT client{};
                             GetClientRect(dialog, &client);
                             HDC dc = GetDC(dialog);
                             const int32_t dpi = GetDeviceCaps(dc, LOGPIXELSY);
                             ReleaseDC(dialog, dc);
                             const DialogLayout d = LayoutDialog(client.right, client.bottom, dpi, {}, {});
                             check(BoxOf(dialog, IDC_HELP_BUTTON) == d.help, "help button");
                             check(BoxOf(dialog, IDC_ALL_PRESETS) == d.allPresets, "all presets button");
                             check(BoxOf(dialog, IDC_AUTO) == LayoutBox{453, 9, 118, 50}, "Auto button");
                             check(BoxOf(dialog, IDC_ABOUT) == LayoutBox{23, 18, 400, 35}, "About button");
                             // The help button's hover picture, to look at.
                             if (const char* shots = std::getenv("QZ_SHOT_DIR")) {
                                 SendMessageA(GetDlgItem(dialog, IDC_HELP_BUTTON), WM_MOUSEMOVE, 0, MAKELPARAM(10, 10));
                                 Shot(dialog, std::string(shots) + "/dialog-hover.pam");
                             }
                             // Help and all presets open their pages (logged here, not opened),
                             // one opener at a time; Auto comes later. About is played by
                             // help-checks.sh, since its box holds the dialog's thread.
                             const std::string log = ProcessTempDir().string() + "\\opened.txt";
                             _putenv_s("QZ_OPEN_LOG", log.c_str());
                             for (int id : {IDC_HELP_BUTTON, IDC_ALL_PRESETS, IDC_AUTO}) {
                                 Command(dialog, id);
                                 Sleep(200);
                             }
                             _putenv_s("QZ_OPEN_LOG", "");
                             check(IsWindowVisible(dialog), "a header button closed the dialog");
                             std::ifstream in(log);
                             std::string opened((std::istreambuf_iterator<char>(in)), {});
                             check(opened.find("\\Quenzit\\Help\\index.html\nopen https://") != std::string::npos &&
                                       opened.find("/filters/quenzit/examples/all-sets\n") != std::string::npos,
                                   "the header buttons opened: " + opened);
                         }),
              "");

    // In a series the options stay hidden and OK tells what it applies to.
    for (const bool all : {true, false}) {
        auto* p = reinterpret_cast<FilterParameters*>(hostsim::LockHandle(host.Parameters()));
        ASSERT_NE(p, nullptr);
        p->ApplySeries = 1;
        p->ApplySeriesFirst = 1;
        p->ApplyToAll = all;
        hostsim::UnlockHandle(host.Parameters());
        // As from the menu again: the kept block, the dialog wanted.
        ASSERT_EQ(host.Call(filterSelectorParameters), noErr);
        EXPECT_EQ(WithDialog(host,
                             [&](HWND dialog, std::string& failure) {
                                 if (TextOf(dialog, IDD_OK) != (all ? "Apply to All" : "Apply"))
                                     failure = "OK reads " + TextOf(dialog, IDD_OK);
                                 for (int id : {IDC_OPTION_BASIC, IDC_LABEL_BASIC, IDC_OPTION_WASH, IDC_LABEL_WASH,
                                                IDC_OPTION_SURFACE, IDC_LABEL_SURFACE, IDC_OPTION_BACKGROUND,
                                                IDC_LABEL_BACKGROUND})
                                     if (IsWindowVisible(GetDlgItem(dialog, id)))
                                         failure += " " + std::to_string(id) + " shown";
                             }),
                  "")
            << (all ? "apply to all" : "apply");
    }
}
