#include "Gallery.h"

#include "controls/FontTable.h"
#include "controls/win32/Contaner.h"
#include "controls/win32/Fonts.h"
#include "hostsim/Pam.h"
#include "hostsim/ScreenShot.h"
#include "win64/ModuleBeside.h"
#include "host/Session.h"

#include <winternl.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace gallery {
namespace {

Window* gWindow = nullptr;
MSG gDispatching{};

LRESULT CALLBACK GalleryProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    // Stock controls' notifications carry their window; the toolkit's never do.
    if (message == WM_COMMAND && gWindow && gWindow->Handle() == window && !IsWindow(HWND(lParam))) {
        const bool posted = gDispatching.hwnd == window && gDispatching.message == WM_COMMAND &&
                            gDispatching.wParam == wParam && gDispatching.lParam == lParam;
        gWindow->commands.push_back({LOWORD(wParam), HIWORD(wParam), lParam, posted});
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

HMODULE ArtModule() {
    static HMODULE module =
        LoadLibraryExA(ModulePath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    return module;
}

HBITMAP NewDib(int width, int height, uint32_t** bits) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* p = nullptr;
    HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &p, nullptr, 0);
    *bits = static_cast<uint32_t*>(p);
    return bitmap;
}

// ---- The system picker's answer ----

COLORREF gAnswer = 0;
std::function<void(HWND, bool)> gSeen;
int gAnswered = 0, gTicks = 0, gLooks = 0;
bool gShownAtOnce = false;

BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
    char name[16];
    if (GetClassNameA(window, name, sizeof name) && std::string(name) == "#32770") {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

void CALLBACK AnswerTick(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&dialog));
    if (!dialog) {
        if (++gTicks > 200) KillTimer(nullptr, timer);
        return;
    }
    if (gLooks++ == 0) gShownAtOnce = IsWindowVisible(dialog);
    if (!IsWindowVisible(dialog) && gLooks < 20) return;
    KillTimer(nullptr, timer);
    if (gSeen) gSeen(dialog, gShownAtOnce);
    // The colour dialog's red, green and blue fields.
    SetDlgItemInt(dialog, 706, GetRValue(gAnswer), FALSE);
    SetDlgItemInt(dialog, 707, GetGValue(gAnswer), FALSE);
    SetDlgItemInt(dialog, 708, GetBValue(gAnswer), FALSE);
    ++gAnswered;
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
}

// ---- The host ----

Host* gHost = nullptr;
FilterRecord gRecord{};

OSErr QZ_HOSTCALL ColorServices(ColorServicesInfo* info) {
    if (!gHost) return paramErr;
    gHost->requests.push_back(*info);
    return hostsim::ServeColorServices(info, gHost->setup, gHost->prompts);
}

} // namespace

void RegisterFamily() {
    static const bool registered = [] {
        WNDCLASSA wc{};
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
        wc.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        wc.lpfnWndProc = DefWindowProcA;
        wc.lpszClassName = "Quenzit Gallery";
        RegisterClassA(&wc);
        wc.lpfnWndProc = GalleryProc;
        wc.lpszClassName = "Quenzit Stage";
        RegisterClassA(&wc);
        return RegisterControlClasses(GetModuleHandleA(nullptr));
    }();
    (void)registered;
}

namespace {

// One top-level window for the whole program: wine, with no window manager on the virtual
// display, takes two seconds to let a top-level window go.
HWND Gallery() {
    static HWND gallery = CreateWindowExA(0, "Quenzit Gallery", "Quenzit controls",
                                          WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | WS_VISIBLE, 40,
                                          40, 200, 200, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    return gallery;
}

} // namespace

Window::Window(int dpi, int width, int height) : dpi_(dpi) {
    RegisterFamily();
    MakeToolkitFonts(dpi);
    HWND top = Gallery();
    RECT box{0, 0, S(width), S(height)};
    AdjustWindowRect(&box, DWORD(GetWindowLongA(top, GWL_STYLE)), FALSE);
    SetWindowPos(top, nullptr, 40, 40, box.right - box.left, box.bottom - box.top, SWP_NOZORDER);
    gWindow = this;
    window_ = CreateWindowExA(0, "Quenzit Stage", "", WS_CHILD | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, S(width),
                              S(height), top, nullptr, GetModuleHandleA(nullptr), nullptr);
    SetForegroundWindow(top);
    Pump(30);
}

Window::~Window() {
    DestroyWindow(window_);
    gWindow = nullptr;
    DeleteToolkitFonts();
    Pump();
}

int Window::S(int size) const { return dpi_ > 96 ? int(float(size) * DpiScaleOf(dpi_)) : size; }

void Pump(int ms) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    do {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            gDispatching = message;
            DispatchMessageA(&message);
            gDispatching = MSG{};
        }
        if (ms) Sleep(5);
    } while (std::chrono::steady_clock::now() < until);
}

bool PumpUntil(const std::function<bool()>& done, int ms) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    while (!done()) {
        if (std::chrono::steady_clock::now() > until) return false;
        Pump(10);
    }
    return true;
}

void MouseTo(HWND window, int x, int y) {
    const int w = GetSystemMetrics(SM_CXSCREEN), h = GetSystemMetrics(SM_CYSCREEN);
    for (int dx : {1, 0}) {
        POINT p{x + dx, y};
        ClientToScreen(window, &p);
        INPUT in{};
        in.type = INPUT_MOUSE;
        in.mi.dx = p.x * 65535 / (w - 1);
        in.mi.dy = p.y * 65535 / (h - 1);
        in.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
        SendInput(1, &in, sizeof in);
        Pump(30);
    }
}

void MouseButton(bool left, bool down) {
    INPUT in{};
    in.type = INPUT_MOUSE;
    in.mi.dwFlags = left ? (down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP)
                         : (down ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_RIGHTUP);
    SendInput(1, &in, sizeof in);
    Pump(30);
}

void Key(WORD vk) {
    INPUT in[2] = {};
    in[0].type = in[1].type = INPUT_KEYBOARD;
    in[0].ki.wVk = in[1].ki.wVk = vk;
    in[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, in, sizeof in[0]);
    Pump(40);
}

HBITMAP StandIn(int width, int height, COLORREF back, const char* mark) {
    uint32_t* bits = nullptr;
    HBITMAP bitmap = NewDib(width, height, &bits);
    if (!bitmap) return nullptr;
    const uint32_t fill = PixelOfColorRef(back);
    const uint32_t edge = PixelOfColorRef(RGB(GetRValue(back) / 2, GetGValue(back) / 2, GetBValue(back) / 2));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            bits[y * width + x] = x == 0 || y == 0 || x == width - 1 || y == height - 1 ? edge : fill;
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ previous = SelectObject(dc, bitmap);
    HGDIOBJ font = SelectObject(dc, SmallFont ? SmallFont : GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(dc, TRANSPARENT);
    const int lum = GetRValue(back) * 3 + GetGValue(back) * 6 + GetBValue(back);
    SetTextColor(dc, lum > 1300 ? RGB(0, 0, 0) : RGB(255, 255, 255));
    RECT box{0, 0, width, height};
    DrawTextA(dc, mark, -1, &box, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
    SelectObject(dc, font);
    SelectObject(dc, previous);
    DeleteDC(dc);
    return bitmap;
}

HBITMAP Art(int id, int width, int height, COLORREF back, const char* mark) {
    if (HMODULE module = ArtModule())
        if (HANDLE art = LoadImageA(module, MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION))
            return static_cast<HBITMAP>(art);
    return StandIn(width, height, back, mark);
}

HBITMAP Band(int width, int height, uint8_t base) {
    uint32_t* bits = nullptr;
    HBITMAP bitmap = NewDib(width, height, &bits);
    if (!bitmap) return nullptr;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int v = base + 24 * x / width + (y % 20 == 0 ? 30 : 0);
            bits[y * width + x] = PixelOf(uint8_t(v), uint8_t(v), uint8_t(v + 8));
        }
    return bitmap;
}

bool Shot(HWND window, const std::string& name, int margin) {
    const char* folder = std::getenv("QZ_UI_SHOTS");
    if (!folder || !*folder) return false;
    std::string path = folder;
    if (path[0] == '/') path = "Z:" + path; // a Unix path, seen from wine
    path += "/" + name + ".pam";
    Pump(50);
    // The client area: with no window manager nobody draws the frames.
    RECT box{};
    GetClientRect(window, &box);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&box), 2);
    InflateRect(&box, margin, margin);
    box.left = std::max<LONG>(box.left, 0);
    box.top = std::max<LONG>(box.top, 0);
    hostsim::PamImage image;
    if (!hostsim::CaptureScreen(box, image)) return false;
    std::string error;
    return hostsim::WritePam(path, image, error);
}

size_t LiveGdiObjects() {
    if (DWORD n = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return n;
    // wine answers 0 above; it keeps the handle table where Windows does, in the PEB.
    struct Entry {
        uint64_t object;
        uint32_t owner;
        uint16_t unique;
        uint8_t type, flags;
        uint64_t user;
    };
    static_assert(sizeof(Entry) == 24);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Warray-bounds" // the segment read inside NtCurrentTeb
    const auto* peb = reinterpret_cast<const char*>(NtCurrentTeb()->ProcessEnvironmentBlock);
#pragma GCC diagnostic pop
    const auto* table = *reinterpret_cast<const Entry* const*>(peb + 0xF8);
    if (!table) return 0;
    size_t n = 0;
    for (size_t i = 0; i < 0x10000; ++i) n += table[i].type != 0;
    return n;
}

Host::Host() {
    gHost = this;
    gRecord = FilterRecord{};
    gRecord.colorServices = ColorServices;
    gFilterRecord = &gRecord;
}

Host::~Host() {
    gFilterRecord = nullptr;
    gHost = nullptr;
}

void AnswerSystemPicker(COLORREF rgb, std::function<void(HWND dialog, bool shownAtOnce)> seen) {
    gAnswer = rgb;
    gSeen = std::move(seen);
    gTicks = gLooks = 0;
    SetTimer(nullptr, 0, 50, AnswerTick);
}

int SystemPickersAnswered() { return gAnswered; }

} // namespace gallery
