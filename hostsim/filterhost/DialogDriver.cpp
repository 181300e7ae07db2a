#include "DialogDriver.h"

#include <windows.h>
#include <commctrl.h>

#include "dialog/DialogIds.h"
#include "hostsim/ScreenShot.h"

#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <thread>
#include <vector>

namespace {

std::thread Driver;
std::string Failure;
DWORD HostThread = 0;

BOOL CALLBACK FindDialog(HWND w, LPARAM data) {
    if (IsWindowVisible(w) && GetDlgItem(w, IDC_PREVIEW)) *reinterpret_cast<HWND*>(data) = w;
    return TRUE;
}

HWND WaitForDialog() {
    for (int i = 0; i < 1200; ++i, Sleep(50)) {
        HWND found = nullptr;
        EnumThreadWindows(HostThread, FindDialog, LPARAM(&found));
        if (found) return found;
    }
    return nullptr;
}

struct Search {
    int id;
    HWND found;
};
BOOL CALLBACK FindChild(HWND w, LPARAM data) {
    auto* s = reinterpret_cast<Search*>(data);
    if (GetDlgCtrlID(w) != s->id) return TRUE;
    s->found = w;
    return FALSE;
}

// A control by id anywhere below the dialog: a drawer, the page, the dialog itself.
HWND Control(HWND dialog, int id) {
    Search s{id, nullptr};
    EnumChildWindows(dialog, FindChild, LPARAM(&s));
    return s.found;
}

// Waits until the dialog's thread has served everything sent before.
void Settle(HWND dialog) {
    DWORD_PTR ignored = 0;
    SendMessageTimeoutA(dialog, WM_NULL, 0, 0, SMTO_NORMAL, 60000, &ignored);
}

void MouseTo(int x, int y) {
    SetCursorPos(x, y);
    INPUT in{};
    in.type = INPUT_MOUSE;
    in.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    in.mi.dx = LONG(x * 65535 / std::max(1, GetSystemMetrics(SM_CXSCREEN) - 1));
    in.mi.dy = LONG(y * 65535 / std::max(1, GetSystemMetrics(SM_CYSCREEN) - 1));
    SendInput(1, &in, sizeof in);
}

void Button(DWORD flags) {
    INPUT in{};
    in.type = INPUT_MOUSE;
    in.mi.dwFlags = flags;
    SendInput(1, &in, sizeof in);
}

void PutChunk(std::string& png, const char* type, const std::string& data) {
    const uint32_t n = uint32_t(data.size());
    const char length[4] = {char(n >> 24), char(n >> 16), char(n >> 8), char(n)};
    png.append(length, 4);
    std::string body = std::string(type, 4) + data;
    png += body;
    const uint32_t crc = uint32_t(crc32(0, reinterpret_cast<const Bytef*>(body.data()), uInt(body.size())));
    const char c[4] = {char(crc >> 24), char(crc >> 16), char(crc >> 8), char(crc)};
    png.append(c, 4);
}

// The window as it stands on the screen, as an RGB PNG.
bool Shot(HWND window, const std::string& path) {
    RECT r{};
    GetWindowRect(window, &r);
    hostsim::PamImage image;
    if (!hostsim::CaptureScreen(r, image)) return false;
    const int w = image.width, h = image.height;

    std::string raw;
    raw.reserve(size_t(w * 3 + 1) * h);
    for (int y = 0; y < h; ++y) {
        raw += '\0'; // no filter
        raw.append(reinterpret_cast<const char*>(&image.data[size_t(y) * w * 3]), size_t(w) * 3);
    }
    uLongf size = compressBound(uLong(raw.size()));
    std::string packed(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(raw.data()),
                  uLong(raw.size()), 6) != Z_OK)
        return false;
    packed.resize(size);
    std::string png = "\x89PNG\r\n\x1a\n";
    const char header[13] = {char(w >> 24),
                             char(w >> 16),
                             char(w >> 8),
                             char(w),
                             char(h >> 24),
                             char(h >> 16),
                             char(h >> 8),
                             char(h),
                             8,
                             2,
                             0,
                             0,
                             0};
    PutChunk(png, "IHDR", std::string(header, 13));
    PutChunk(png, "IDAT", packed);
    PutChunk(png, "IEND", "");
    std::ofstream out(path, std::ios::binary);
    out << png;
    return bool(out);
}

// One line; an empty answer means it went well.
std::string Run(HWND dialog, const std::string& line) {
    std::istringstream in(line);
    std::string verb;
    in >> verb;
    int id = 0;
    if (verb == "tab") {
        int n = -1;
        in >> n;
        HWND tabs = Control(dialog, IDC_TABS);
        if (!tabs || n < 0 || n > 3) return "no tab " + std::to_string(n);
        SendMessageA(tabs, TCM_SETCURSEL, WPARAM(n), 0);
        NMHDR note{tabs, UINT_PTR(IDC_TABS), UINT(TCN_SELCHANGE)};
        SendMessageA(dialog, WM_NOTIFY, IDC_TABS, LPARAM(&note));
    } else if (verb == "command") {
        int code = 0;
        if (!(in >> id)) return "command needs an id";
        in >> code;
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, code), LPARAM(Control(dialog, id)));
    } else if (verb == "click") {
        if (!(in >> id)) return "click needs an id";
        HWND w = Control(dialog, id);
        if (!w) return "no control " + std::to_string(id);
        RECT r{};
        GetWindowRect(w, &r);
        MouseTo((r.left + r.right) / 2, (r.top + r.bottom) / 2);
        Button(MOUSEEVENTF_LEFTDOWN);
        Button(MOUSEEVENTF_LEFTUP);
    } else if (verb == "drag") {
        int x0, y0, x1, y1;
        if (!(in >> x0 >> y0 >> x1 >> y1)) return "drag needs four numbers";
        std::string ctrl;
        in >> ctrl;
        // Mouse messages with the key state they carry, as the preview reads them.
        HWND preview = Control(dialog, IDC_PREVIEW);
        if (!preview) return "no preview";
        const WPARAM keys = ctrl == "ctrl" ? MK_CONTROL : 0;
        SendMessageA(preview, WM_MOUSEMOVE, keys, MAKELPARAM(x0, y0));
        SendMessageA(preview, WM_LBUTTONDOWN, keys | MK_LBUTTON, MAKELPARAM(x0, y0));
        for (int step = 1; step <= 8; ++step) {
            const int x = x0 + (x1 - x0) * step / 8, y = y0 + (y1 - y0) * step / 8;
            SendMessageA(preview, WM_MOUSEMOVE, keys | MK_LBUTTON, MAKELPARAM(x, y));
        }
        SendMessageA(preview, WM_LBUTTONUP, keys, MAKELPARAM(x1, y1));
    } else if (verb == "expect-enabled") {
        int want = 0;
        if (!(in >> id >> want)) return "expect-enabled needs an id and 0 or 1";
        Settle(dialog);
        HWND w = Control(dialog, id);
        if (!w) return "no control " + std::to_string(id);
        if ((IsWindowEnabled(w) ? 1 : 0) != want) return std::to_string(id) + " is " + (want ? "disabled" : "enabled");
    } else if (verb == "expect-text") {
        if (!(in >> id)) return "expect-text needs an id";
        std::string want;
        std::getline(in >> std::ws, want);
        Settle(dialog);
        char text[512] = {};
        HWND w = Control(dialog, id);
        if (!w) return "no control " + std::to_string(id);
        GetWindowTextA(w, text, sizeof text);
        if (want != text) return std::to_string(id) + " shows \"" + text + "\"";
    } else if (verb == "wait-render") {
        Settle(dialog);
        Sleep(200);
        Settle(dialog);
    } else if (verb == "shot") {
        std::string path;
        if (!(in >> path)) return "shot needs a file";
        Settle(dialog);
        Sleep(300);
        if (!Shot(dialog, path)) return "cannot write " + path;
    } else if (verb == "ok" || verb == "cancel") {
        PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(verb == "ok" ? IDD_OK : IDD_CANCEL, 0), 0);
    } else {
        return "unknown command " + verb;
    }
    return "";
}

void Drive(std::vector<std::string> lines) {
    HWND dialog = WaitForDialog();
    if (!dialog) {
        Failure = "no dialog came up";
        return;
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        if (line.find_first_not_of(" \t\r") == std::string::npos || line[0] == '#') continue;
        const std::string error = Run(dialog, line);
        if (!error.empty()) {
            Failure = "line " + std::to_string(i + 1) + ": " + line + ": " + error;
            PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDD_CANCEL, 0), 0);
            return;
        }
    }
}

} // namespace

void StartDialogDriver(const std::string& script) {
    HostThread = GetCurrentThreadId();
    std::vector<std::string> lines;
    std::ifstream in(script);
    if (!in) {
        Failure = "cannot read " + script;
        return;
    }
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    Driver = std::thread(Drive, std::move(lines));
}

bool FinishDialogDriver() {
    if (Driver.joinable()) Driver.join();
    if (Failure.empty()) return true;
    std::fprintf(stderr, "filterhost: drive: %s\n", Failure.c_str());
    return false;
}
