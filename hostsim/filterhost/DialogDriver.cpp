#include "DialogDriver.h"

#include <windows.h>
#include <commctrl.h>

#include "dialog/AboutIds.h"
#include "dialog/DialogIds.h"
#include "hostsim/ScreenShot.h"

#include <zlib.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <thread>
#include <vector>

namespace {

std::thread Driver;
std::string Failure;
DWORD HostThread = 0;
DriverHost Served;
uint64_t LastPreview = 0;
uint64_t LastPicture = 0; // of a control, as the screen shows it
bool HavePicture = false;
bool HavePreview = false;
// Messages still being served when a box came up; they end once it is answered.
struct PendingSend {
    std::thread thread;
    std::shared_ptr<std::atomic<bool>> done;
};
std::vector<PendingSend> Pending;

// The main dialog, or the About box when the host's About command brought it up alone.
BOOL CALLBACK FindDialog(HWND w, LPARAM data) {
    if (IsWindowVisible(w) && (GetDlgItem(w, IDC_PREVIEW) || GetDlgItem(w, IDC_ABOUT_VERSION)))
        *reinterpret_cast<HWND*>(data) = w;
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
    if (GetDlgCtrlID(w) != s->id || !IsWindowVisible(w)) return TRUE;
    s->found = w;
    return FALSE;
}

// Hidden ones too: a drawer hides its page buttons and spare tiles.
BOOL CALLBACK FindAnyChild(HWND w, LPARAM data) {
    auto* s = reinterpret_cast<Search*>(data);
    if (GetDlgCtrlID(w) != s->id) return TRUE;
    s->found = w;
    return FALSE;
}

// The open drawer (textures 1177, tones 1178), whose controls come first.
HWND OpenDrawer(HWND dialog) {
    for (int id : {1177, 1178})
        if (HWND w = GetDlgItem(dialog, id); w && IsWindowVisible(w)) return w;
    return nullptr;
}

bool IsDialogClass(HWND w) {
    char name[16] = {};
    return GetClassNameA(w, name, sizeof name) && std::strcmp(name, "#32770") == 0;
}

// The tab's page: the dialog's visible child dialog.
HWND Page(HWND dialog) {
    for (HWND w = GetWindow(dialog, GW_CHILD); w; w = GetWindow(w, GW_HWNDNEXT))
        if (IsWindowVisible(w) && IsDialogClass(w)) return w;
    return nullptr;
}

// A control by id: in an open drawer, the page, the dialog, then anywhere visible below it.
HWND Control(HWND dialog, int id) {
    // A drawer's tiles stand in its panel: look through all of it.
    if (HWND drawer = OpenDrawer(dialog)) {
        Search inDrawer{id, nullptr};
        EnumChildWindows(drawer, FindAnyChild, LPARAM(&inDrawer));
        if (inDrawer.found) return inDrawer.found;
    }
    for (HWND owner : {Page(dialog), dialog})
        if (HWND w = owner ? GetDlgItem(owner, id) : nullptr) return w;
    Search s{id, nullptr};
    EnumChildWindows(dialog, FindChild, LPARAM(&s));
    return s.found;
}

// Waits until the dialog's thread has served what came before. A sent message is served
// at the thread's next look at its queue, ahead of posted ones, so each round, with a
// pause for the thread to take up what is posted, gets one posted message further: three
// cover a post that posts again (hot key, then command).
void Settle(HWND dialog) {
    DWORD_PTR ignored = 0;
    for (int round = 0; round < 3; ++round) {
        SendMessageTimeoutA(dialog, WM_NULL, 0, 0, SMTO_NORMAL, 60000, &ignored);
        Sleep(20);
    }
}

struct BoxSearch {
    HWND dialog;
    HWND box;
};
BOOL CALLBACK FindBox(HWND w, LPARAM data) {
    auto* s = reinterpret_cast<BoxSearch*>(data);
    if (w == s->dialog || !IsWindowVisible(w) || !IsDialogClass(w)) return TRUE;
    s->box = w;
    return FALSE;
}

struct TipSearch {
    HWND control;
    std::string text;
    bool found;
};
// The tooltip of `control` among the thread's tooltip windows: the one whose first tool is
// the control.
BOOL CALLBACK FindTip(HWND w, LPARAM data) {
    auto* s = reinterpret_cast<TipSearch*>(data);
    char name[32] = {};
    if (!GetClassNameA(w, name, sizeof name) || std::strcmp(name, TOOLTIPS_CLASSA) != 0) return TRUE;
    char text[512] = {};
    TOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    tool.lpszText = text;
    if (!SendMessageA(w, TTM_ENUMTOOLSA, 0, LPARAM(&tool)) || tool.hwnd != s->control) return TRUE;
    // Enumerating copies at most 80 characters; asking for the text with a size gives all.
    text[0] = 0;
    tool.lpszText = text;
    SendMessageA(w, TTM_GETTEXTA, sizeof text, LPARAM(&tool));
    s->text = text;
    s->found = true;
    return FALSE;
}

BOOL CALLBACK PopTip(HWND w, LPARAM) {
    char name[32] = {};
    if (GetClassNameA(w, name, sizeof name) && std::strcmp(name, TOOLTIPS_CLASSA) == 0 && IsWindowVisible(w))
        SendMessageA(w, TTM_POP, 0, 0);
    return TRUE;
}
// A tooltip shown by the last hover may lie over the next control a click aims at.
void PopTips() { EnumThreadWindows(HostThread, PopTip, 0); }

// A message box (or any other dialog) of the host's thread that is up over the dialog.
HWND BoxUp(HWND dialog) {
    BoxSearch s{dialog, nullptr};
    EnumThreadWindows(HostThread, FindBox, LPARAM(&s));
    return s.box;
}

// Joins the sends that have been served; one that put up another box stays pending.
void JoinPending(HWND dialog) {
    std::vector<PendingSend> still;
    for (PendingSend& p : Pending) {
        while (!*p.done && !(dialog && BoxUp(dialog))) Sleep(5);
        if (*p.done) p.thread.join();
        else still.push_back(std::move(p));
    }
    Pending = std::move(still);
}

// \t, \n and \\ in a script's text.
std::string Unescape(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const char c = text[++i];
        out += c == 't' ? '\t' : c == 'n' ? '\n' : c;
    }
    return out;
}

std::string ListText(HWND list, int row) {
    const LRESULT length = SendMessageA(list, LB_GETTEXTLEN, WPARAM(row), 0);
    if (length == LB_ERR) return "(no row " + std::to_string(row) + ")";
    std::string text(size_t(length) + 1, '\0');
    SendMessageA(list, LB_GETTEXT, WPARAM(row), LPARAM(text.data()));
    text.resize(size_t(length));
    return text;
}

// Sends a message and waits until it is served, or until a box comes up while it is: the
// box's own loop holds the message until the script answers it.
void SendOrBox(HWND dialog, HWND to, UINT message, WPARAM wparam, LPARAM lparam) {
    auto done = std::make_shared<std::atomic<bool>>(false);
    std::thread send([=] {
        SendMessageA(to, message, wparam, lparam);
        *done = true;
    });
    while (!*done && !BoxUp(dialog)) Sleep(5);
    if (*done) send.join();
    else Pending.push_back({std::move(send), done});
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

// An RGB picture as a PNG file.
bool WritePng(const hostsim::PamImage& image, const std::string& path) {
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

// The window as it stands on the screen, as an RGB PNG.
bool Shot(HWND window, const std::string& path) {
    RECT r{}, shown{};
    GetWindowRect(window, &r);
    // A maximised window's frame lies past the screen's edges.
    const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    IntersectRect(&shown, &r, &screen);
    hostsim::PamImage image;
    return hostsim::CaptureScreen(shown, image) && WritePng(image, path);
}

// FNV-1a over the picture's size and samples.
uint64_t Hash(const hostsim::PamImage& image) {
    uint64_t h = 14695981039346656037ull;
    const auto mix = [&h](uint8_t b) { h = (h ^ b) * 1099511628211ull; };
    for (int32_t v : {image.width, image.height})
        for (int i = 0; i < 4; ++i) mix(uint8_t(v >> (8 * i)));
    for (uint8_t b : image.data) mix(b);
    return h;
}

struct KeyName {
    const char* name;
    WORD vk;
};
const KeyName kKeys[] = {{"ESC", VK_ESCAPE}, {"ENTER", VK_RETURN},   {"TAB", VK_TAB},    {"SPACE", VK_SPACE},
                         {"LEFT", VK_LEFT},  {"RIGHT", VK_RIGHT},    {"UP", VK_UP},      {"DOWN", VK_DOWN},
                         {"HOME", VK_HOME},  {"END", VK_END},        {"DEL", VK_DELETE}, {"BACK", VK_BACK},
                         {"PLUS", VK_ADD},   {"MINUS", VK_SUBTRACT}, {"F1", VK_F1}};

// The hot keys the dialog registers, by the keys that fire them; 0 for any other.
int HotKey(const std::string& keys) {
    if (keys == "CTRL+0") return QZ_HOTKEY_FIT;
    if (keys == "CTRL+1") return QZ_HOTKEY_ACTUAL;
    if (keys == "CTRL+PLUS") return QZ_HOTKEY_ZOOM_UP;
    if (keys == "CTRL+MINUS") return QZ_HOTKEY_ZOOM_DOWN;
    return 0;
}

// CTRL+0, SHIFT+TAB, ESC... as key presses: modifiers down, the key down and up, modifiers up.
bool PressKeys(const std::string& keys) {
    std::vector<WORD> held;
    std::string rest = keys;
    for (size_t plus; (plus = rest.find('+')) != std::string::npos && plus + 1 < rest.size();) {
        const std::string mod = rest.substr(0, plus);
        if (mod == "CTRL") held.push_back(VK_CONTROL);
        else if (mod == "SHIFT") held.push_back(VK_SHIFT);
        else if (mod == "ALT") held.push_back(VK_MENU);
        else return false;
        rest = rest.substr(plus + 1);
    }
    WORD vk = 0;
    for (const KeyName& k : kKeys)
        if (rest == k.name) vk = k.vk;
    if (!vk && rest.size() == 1 && std::isalnum(static_cast<unsigned char>(rest[0])))
        vk = WORD(std::toupper(static_cast<unsigned char>(rest[0])));
    if (!vk) return false;
    std::vector<INPUT> in;
    const auto add = [&in](WORD key, bool up) {
        INPUT i{};
        i.type = INPUT_KEYBOARD;
        i.ki.wVk = key;
        i.ki.wScan = WORD(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
        i.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
        in.push_back(i);
    };
    for (WORD m : held) add(m, false);
    add(vk, false);
    add(vk, true);
    for (auto m = held.rbegin(); m != held.rend(); ++m) add(*m, true);
    return SendInput(UINT(in.size()), in.data(), sizeof(INPUT)) == in.size();
}

// The preview's mouse messages, carrying the key state as the preview reads it.
WPARAM DragKeys = 0;
// The preview is the dialog's own: a page may use its id (the Wash page's rotate button).
std::string Mouse(HWND dialog, UINT message, int x, int y) {
    HWND preview = GetDlgItem(dialog, IDC_PREVIEW);
    if (!preview) return "no preview";
    const WPARAM buttons = message == WM_LBUTTONUP ? 0 : MK_LBUTTON;
    if (message == WM_LBUTTONDOWN) SendMessageA(preview, WM_MOUSEMOVE, DragKeys, MAKELPARAM(x, y));
    SendMessageA(preview, message, DragKeys | buttons, MAKELPARAM(x, y));
    return "";
}

// 12 and 12.0, true and 1: numbers compared as numbers.
bool SameNumber(const std::string& a, const std::string& b) {
    const auto number = [](const std::string& s, double& v) {
        if (s == "true" || s == "false") {
            v = s == "true";
            return true;
        }
        char* end = nullptr;
        v = std::strtod(s.c_str(), &end);
        return !s.empty() && !*end;
    };
    double x = 0, y = 0;
    return number(a, x) && number(b, y) && x == y;
}

std::string Proxy(hostsim::PamImage& picture) {
    if (!Served.proxy || !Served.proxy(picture)) return "no preview picture in the host's output";
    return "";
}

// As the mouse does: the button takes the focus first, so a field being typed in loses it
// and commits before the command arrives (a command alone counts as Enter or Esc in it).
void ClickEndButton(HWND dialog, int id) {
    if (HWND button = GetDlgItem(dialog, id)) PostMessageA(dialog, WM_NEXTDLGCTL, WPARAM(button), TRUE);
    PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, 0), 0);
}

std::string Run(HWND dialog, const std::string& line);

// "box VERB...": a line played on the box that is up over the dialog (the About box).
std::string RunInBox(HWND dialog, const std::string& rest) {
    HWND box = nullptr;
    for (int i = 0; i < 200 && !(box = BoxUp(dialog)); ++i) Sleep(50);
    if (!box) return "no box is up";
    std::istringstream in(rest);
    std::string verb;
    in >> verb;
    if (verb == "command") {
        // The box's own commands end at once; a plain send, not one that waits for a box.
        int id = 0, code = 0;
        if (!(in >> id)) return "command needs an id";
        in >> code;
        DWORD_PTR ignored = 0;
        SendMessageTimeoutA(box, WM_COMMAND, MAKEWPARAM(id, code), LPARAM(GetDlgItem(box, id)), SMTO_NORMAL, 60000,
                            &ignored);
        return "";
    }
    if (verb == "expect-client") {
        int w = 0, h = 0;
        if (!(in >> w >> h)) return "expect-client needs a width and a height";
        Settle(box);
        RECT r{};
        GetClientRect(box, &r);
        if (r.right != w || r.bottom != h)
            return "the box's client area is " + std::to_string(r.right) + " by " + std::to_string(r.bottom);
        return "";
    }
    if (verb == "type") {
        // The box's own modal loop serves these; typed as characters, each with its change.
        int id = 0;
        std::string text;
        if (!(in >> id)) return "type needs an id";
        std::getline(in >> std::ws, text);
        HWND w = GetDlgItem(box, id);
        if (!w) return "the box has no " + std::to_string(id);
        DWORD_PTR ignored = 0;
        SendMessageTimeoutA(w, WM_SETTEXT, 0, LPARAM(""), SMTO_NORMAL, 60000, &ignored);
        for (unsigned char c : text) SendMessageTimeoutA(w, WM_CHAR, WPARAM(c), 1, SMTO_NORMAL, 60000, &ignored);
        return "";
    }
    if (verb == "expect-title") {
        std::string want;
        std::getline(in >> std::ws, want);
        char title[256] = {};
        GetWindowTextA(box, title, sizeof title);
        if (want != title) return std::string("the box's title is \"") + title + "\"";
        return "";
    }
    if (verb == "expect-text" || verb == "shot" || verb == "key" || verb == "click" || verb == "expect-checked" ||
        verb == "expect-shown" || verb == "expect-enabled")
        return Run(box, rest);
    return "box takes command, type, click, expect-text, expect-title, expect-checked, expect-shown, expect-enabled, "
           "expect-client, shot or key";
}

// One line; an empty answer means it went well.
std::string Run(HWND dialog, const std::string& line) {
    std::istringstream in(line);
    std::string verb;
    in >> verb;
    int id = 0;
    if (verb == "box") {
        std::string rest;
        std::getline(in >> std::ws, rest);
        return RunInBox(dialog, rest);
    } else if (verb == "tab") {
        int n = -1;
        in >> n;
        HWND tabs = Control(dialog, IDC_TABS);
        if (!tabs || n < 0 || n > 3) return "no tab " + std::to_string(n);
        SendMessageA(tabs, TCM_SETCURSEL, WPARAM(n), 0);
        NMHDR note{tabs, UINT_PTR(IDC_TABS), UINT(TCN_SELCHANGE)};
        SendOrBox(dialog, dialog, WM_NOTIFY, IDC_TABS, LPARAM(&note));
    } else if (verb == "command" || verb == "page-command" || verb == "drawer-command") {
        // page-command goes straight to the shown page (a control under the preview at high
        // dpi); drawer-command to the open drawer, answered only when handled, as a timed
        // line needs.
        int code = 0;
        if (!(in >> id)) return verb + " needs an id";
        in >> code;
        const bool page = verb == "page-command";
        HWND target = verb == "command" ? dialog : page ? Page(dialog) : OpenDrawer(dialog);
        if (!target) return page ? "no page is shown" : "no drawer is open";
        HWND control = page ? GetDlgItem(target, id) : Control(dialog, id);
        SendOrBox(dialog, target, WM_COMMAND, MAKEWPARAM(id, code), LPARAM(control));
    } else if (verb == "click") {
        if (!(in >> id)) return "click needs an id";
        HWND w = Control(dialog, id);
        if (!w) return "no control " + std::to_string(id);
        RECT r{};
        GetWindowRect(w, &r);
        PopTips();
        MouseTo((r.left + r.right) / 2, (r.top + r.bottom) / 2);
        Button(MOUSEEVENTF_LEFTDOWN);
        Button(MOUSEEVENTF_LEFTUP);
    } else if (verb == "click-at") {
        // A point of the control's own client area: one arrow of a spinner, a spot on a pad.
        int x = 0, y = 0;
        if (!(in >> id >> x >> y)) return "click-at needs an id and a point";
        HWND w = Control(dialog, id);
        if (!w) return "no control " + std::to_string(id);
        POINT p{x, y};
        ClientToScreen(w, &p);
        PopTips();
        MouseTo(p.x, p.y);
        Button(MOUSEEVENTF_LEFTDOWN);
        Button(MOUSEEVENTF_LEFTUP);
    } else if (verb == "type") {
        std::string text;
        if (!(in >> id)) return "type needs an id";
        std::getline(in >> std::ws, text);
        HWND w = Control(dialog, id);
        if (!w) return "no control " + std::to_string(id);
        // Focus from the dialog's own thread, all selected, then one character at a time as
        // typing gives them, each with its own change notification.
        SendMessageA(GetParent(w), WM_NEXTDLGCTL, WPARAM(w), TRUE);
        SendMessageA(w, EM_SETSEL, 0, -1);
        SendMessageA(w, WM_CLEAR, 0, 0);
        for (unsigned char c : text) SendOrBox(dialog, w, WM_CHAR, WPARAM(c), 1);
    } else if (verb == "key") {
        std::string keys;
        if (!(in >> keys)) return "key needs keys";
        // The dialog's hot keys as the system hands them on; synthetic input with Ctrl
        // does not reach them under wine.
        const int hotKey = HotKey(keys);
        if (hotKey) {
            PostMessageA(dialog, WM_HOTKEY, WPARAM(hotKey), 0);
        } else {
            SetForegroundWindow(dialog);
            if (!PressKeys(keys)) return "cannot press " + keys;
        }
        Settle(dialog);
    } else if (verb == "answer") {
        std::string which;
        in >> which;
        const int button = which == "yes"      ? IDYES
                           : which == "no"     ? IDNO
                           : which == "ok"     ? IDOK
                           : which == "cancel" ? IDCANCEL
                                               : 0;
        if (!button) return "answer needs yes, no, cancel or ok";
        // The box that has the button: a box going away may still be up a moment.
        HWND box = nullptr, item = nullptr;
        for (int i = 0; i < 200 && !item; ++i) {
            box = BoxUp(dialog);
            item = box ? GetDlgItem(box, button) : nullptr;
            if (!item) Sleep(50);
        }
        if (!box) return "no box is up";
        if (!item) return "the box has no " + which;
        PostMessageA(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), LPARAM(item));
        for (int i = 0; i < 200 && IsWindow(box) && IsWindowVisible(box); ++i) Sleep(20);
        JoinPending(dialog);
    } else if (verb == "expect") {
        std::string pair;
        in >> pair;
        const size_t eq = pair.find('=');
        if (eq == std::string::npos) return "expect needs KEY=VALUE";
        Settle(dialog);
        const std::string key = pair.substr(0, eq), want = pair.substr(eq + 1);
        const std::string has = Served.value ? Served.value(key) : "";
        if (has.empty()) return "no key " + key + " in the parameter block";
        if (has != pair && !SameNumber(has.substr(eq + 1), want)) return "the parameter block has " + has;
    } else if (verb == "press" || verb == "move" || verb == "release") {
        int x, y;
        if (!(in >> x >> y)) return verb + " needs two numbers";
        if (verb == "press") {
            std::string ctrl;
            in >> ctrl;
            DragKeys = ctrl == "ctrl" ? MK_CONTROL : 0;
        }
        return Mouse(dialog, verb == "press" ? WM_LBUTTONDOWN : verb == "move" ? WM_MOUSEMOVE : WM_LBUTTONUP, x, y);
    } else if (verb == "drag") {
        int x0, y0, x1, y1;
        if (!(in >> x0 >> y0 >> x1 >> y1)) return "drag needs four numbers";
        std::string ctrl;
        in >> ctrl;
        DragKeys = ctrl == "ctrl" ? MK_CONTROL : 0;
        std::string error = Mouse(dialog, WM_LBUTTONDOWN, x0, y0);
        for (int step = 1; step <= 8 && error.empty(); ++step)
            error = Mouse(dialog, WM_MOUSEMOVE, x0 + (x1 - x0) * step / 8, y0 + (y1 - y0) * step / 8);
        if (error.empty()) error = Mouse(dialog, WM_LBUTTONUP, x1, y1);
        return error;
    } else if (verb == "select" || verb == "dblclick") {
        // As a click on a row tells the list's owner; a double click sends only its second half.
        int row = -1;
        if (!(in >> id >> row)) return verb + " needs an id and a row";
        HWND list = Control(dialog, id);
        if (!list) return "no control " + std::to_string(id);
        DWORD_PTR ignored = 0;
        char kind[16] = {};
        GetClassNameA(list, kind, sizeof kind);
        if (lstrcmpiA(kind, "ComboBox") == 0) {
            // A drop-down list tells its owner the pick is made.
            SendMessageTimeoutA(list, CB_SETCURSEL, WPARAM(row), 0, SMTO_NORMAL, 60000, &ignored);
            SendOrBox(dialog, GetParent(list), WM_COMMAND, MAKEWPARAM(id, CBN_SELENDOK), LPARAM(list));
            return "";
        }
        SendMessageTimeoutA(list, LB_SETCURSEL, WPARAM(row), 0, SMTO_NORMAL, 60000, &ignored);
        SendOrBox(dialog, GetParent(list), WM_COMMAND, MAKEWPARAM(id, verb == "select" ? LBN_SELCHANGE : LBN_DBLCLK),
                  LPARAM(list));
    } else if (verb == "expect-rows") {
        int want = 0;
        if (!(in >> id >> want)) return "expect-rows needs an id and a count";
        Settle(dialog);
        HWND list = Control(dialog, id);
        if (!list) return "no control " + std::to_string(id);
        const auto has = int(SendMessageA(list, LB_GETCOUNT, 0, 0));
        if (has != want) return std::to_string(id) + " has " + std::to_string(has) + " rows";
    } else if (verb == "expect-row") {
        int row = 0;
        std::string want;
        if (!(in >> id >> row)) return "expect-row needs an id and a row";
        std::getline(in >> std::ws, want);
        Settle(dialog);
        HWND list = Control(dialog, id);
        if (!list) return "no control " + std::to_string(id);
        const std::string has = ListText(list, row);
        if (has != Unescape(want))
            return "row " + std::to_string(row) + " of " + std::to_string(id) + " is \"" + has + "\"";
    } else if (verb == "timed") {
        std::string rest;
        std::getline(in >> std::ws, rest);
        LARGE_INTEGER start{}, end{}, rate{};
        QueryPerformanceFrequency(&rate);
        QueryPerformanceCounter(&start);
        const std::string error = Run(dialog, rest);
        QueryPerformanceCounter(&end);
        std::printf("timed %.1f ms %s\n", double(end.QuadPart - start.QuadPart) * 1000.0 / double(rate.QuadPart),
                    rest.c_str());
        std::fflush(stdout);
        return error;
    } else if (verb == "expect-enabled") {
        int want = 0;
        if (!(in >> id >> want)) return "expect-enabled needs an id and 0 or 1";
        Settle(dialog);
        HWND w = Control(dialog, id);
        if (!w) return "no control " + std::to_string(id);
        if ((IsWindowEnabled(w) ? 1 : 0) != want) return std::to_string(id) + " is " + (want ? "disabled" : "enabled");
    } else if (verb == "expect-checked" || verb == "expect-shown") {
        int want = 0;
        if (!(in >> id >> want)) return verb + " needs an id and 0 or 1";
        Settle(dialog);
        HWND w = Control(dialog, id);
        if (!w) return "no control " + std::to_string(id);
        const bool checked = verb == "expect-checked";
        const int has = checked ? SendMessageA(w, BM_GETCHECK, 0, 0) == BST_CHECKED : IsWindowVisible(w) != 0;
        if (has != want)
            return std::to_string(id) +
                   (checked ? (has ? " is checked" : " is not checked") : (has ? " shows" : " is hidden"));
    } else if (verb == "expect-text") {
        if (!(in >> id)) return "expect-text needs an id";
        std::string want;
        std::getline(in >> std::ws, want);
        Settle(dialog);
        char text[512] = {};
        HWND w = Control(dialog, id);
        if (!w) return "no control " + std::to_string(id);
        GetWindowTextA(w, text, sizeof text);
        if (Unescape(want) != text) return std::to_string(id) + " shows \"" + text + "\"";
    } else if (verb == "expect-tip") {
        if (!(in >> id)) return "expect-tip needs an id";
        std::string want;
        std::getline(in >> std::ws, want);
        Settle(dialog);
        TipSearch s{Control(dialog, id), "", false};
        if (!s.control) return "no control " + std::to_string(id);
        EnumThreadWindows(HostThread, FindTip, LPARAM(&s));
        if (!s.found) return std::to_string(id) + " has no tooltip";
        if (s.text != want) return std::to_string(id) + " tells \"" + s.text + "\"";
    } else if (verb == "wait-render") {
        Settle(dialog);
        Sleep(200);
        Settle(dialog);
    } else if (verb == "preview" || verb == "expect-preview") {
        std::string arg;
        if (!(in >> arg)) return verb + " needs " + (verb == "preview" ? "a file" : "same or changed");
        Settle(dialog);
        hostsim::PamImage picture;
        const std::string error = Proxy(picture);
        if (!error.empty()) return error;
        const uint64_t hash = Hash(picture);
        if (verb == "expect-preview") {
            if (!HavePreview) return "no preview taken before";
            if (arg == "same" && hash != LastPreview) return "the preview changed";
            if (arg == "changed" && hash == LastPreview) return "the preview is as it was";
            if (arg != "same" && arg != "changed") return "expect-preview needs same or changed";
        } else {
            if (!WritePng(picture, arg)) return "cannot write " + arg;
            std::printf("preview %s %016llx\n", arg.c_str(), static_cast<unsigned long long>(hash));
            std::fflush(stdout);
            LastPreview = hash;
            HavePreview = true;
        }
    } else if (verb == "picture" || verb == "expect-picture") {
        int which = 0;
        std::string arg;
        if (!(in >> which) || (verb == "expect-picture" && !(in >> arg))) return verb + " needs an id";
        HWND control = Control(dialog, which);
        if (!control) return "no control " + std::to_string(which);
        Settle(dialog);
        RECT r{};
        GetWindowRect(control, &r);
        hostsim::PamImage picture;
        if (!hostsim::CaptureScreen(r, picture)) return "cannot take " + std::to_string(which) + " from the screen";
        const uint64_t hash = Hash(picture);
        if (verb == "picture") {
            LastPicture = hash;
            HavePicture = true;
        } else if (!HavePicture) {
            return "no picture taken before";
        } else if (arg == "same" ? hash != LastPicture : arg == "changed" ? hash == LastPicture : true) {
            return arg == "same" || arg == "changed" ? std::to_string(which) + " is not " + arg
                                                     : "expect-picture needs same or changed";
        }
    } else if (verb == "shot" || verb == "shot-now") {
        // shot-now takes the screen as it is, mid-animation.
        std::string path;
        if (!(in >> path)) return verb + " needs a file";
        if (verb == "shot") {
            Settle(dialog);
            Sleep(300);
        }
        if (!Shot(dialog, path)) return "cannot write " + path;
    } else if (verb == "size") {
        int w = 0, h = 0;
        if (!(in >> w >> h)) return "size needs a width and a height";
        // As a user's sizing ends: the new size, then the end of the move.
        SendMessageA(dialog, WM_ENTERSIZEMOVE, 0, 0);
        SetWindowPos(dialog, nullptr, 0, 0, w, h, SWP_NOMOVE | SWP_NOZORDER);
        SendOrBox(dialog, dialog, WM_EXITSIZEMOVE, 0, 0);
    } else if (verb == "maximize") {
        // The work area's size and place, as a maximised window has them: under a display
        // without a window manager a real maximise is never drawn at its new size.
        RECT area{};
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
        SendMessageA(dialog, WM_ENTERSIZEMOVE, 0, 0);
        SetWindowPos(dialog, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                     SWP_NOZORDER);
        SendOrBox(dialog, dialog, WM_EXITSIZEMOVE, 0, 0);
    } else if (verb == "send") {
        unsigned message = 0;
        long long wparam = 0, lparam = 0;
        if (!(in >> message)) return "send needs a message number";
        in >> wparam >> lparam;
        SendOrBox(dialog, dialog, message, WPARAM(wparam), LPARAM(lparam));
    } else if (verb == "repaint") {
        InvalidateRect(GetDlgItem(dialog, IDC_PREVIEW), nullptr, FALSE);
        Settle(dialog);
    } else if (verb == "pause") {
        // Lets a control's own timer run: a slide, an animation.
        int ms = 0;
        if (!(in >> ms) || ms < 0 || ms > 10000) return "pause needs milliseconds up to 10000";
        Sleep(DWORD(ms));
    } else if (verb == "ok" || verb == "cancel") {
        ClickEndButton(dialog, verb == "ok" ? IDD_OK : IDD_CANCEL);
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
            if (HWND box = BoxUp(dialog)) PostMessageA(box, WM_COMMAND, MAKEWPARAM(IDCANCEL, 0), 0);
            ClickEndButton(dialog, IDD_CANCEL);
            return;
        }
    }
}

} // namespace

void StartDialogDriver(const std::string& script, DriverHost host) {
    HostThread = GetCurrentThreadId();
    Served = std::move(host);
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
    JoinPending(nullptr);
    if (Failure.empty()) return true;
    std::fprintf(stderr, "filterhost: drive: %s\n", Failure.c_str());
    return false;
}
