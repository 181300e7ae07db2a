#include "dialog/win32/AboutBox.h"

#include "controls/win32/Contaner.h"
#include "controls/win32/Fonts.h"
#include "controls/win32/Link.h"
#include "dialog/AboutIds.h"
#include "dialog/AboutLayout.h"
#include "dialog/HelpPages.h"
#include "dialog/win32/HelpOpener.h"
#include "dialog/win32/ModuleActivation.h"
#include "dialog/win32/ThisModule.h"
#include "host/Dialog.h"
#include "presets/UiSettings.h"
#include "resources/ArtIds.h"

namespace {

constexpr COLORREF kAboutBrushColor = 0x45433F, kAboutTextColor = 0x3C3732;
constexpr const char* kVersionLine = "2.0 (64 Bit)";

HWND AboutOwner = nullptr;
HBITMAP AboutPicture = nullptr;
HBRUSH AboutBrush = nullptr;
HFONT AboutFonts[2] = {}; // the version line's, and a large one

HFONT ArialFont(int height, int weight) {
    return CreateFontA(height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, PROOF_QUALITY, DEFAULT_PITCH, "Arial");
}

void SetSoundText(HWND box) { SetDlgItemTextA(box, IDC_ABOUT_SOUND, UseSoundForAuto ? "Disable SFX" : "Enable SFX"); }

LayoutBox PlacedBox(HWND box, int id) {
    RECT r{};
    GetWindowRect(GetDlgItem(box, id), &r);
    MapWindowPoints(nullptr, box, reinterpret_cast<POINT*>(&r), 2);
    return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

// The box is the picture's size whatever the dialog font made of the template (at 96 dpi
// some systems' fonts leave it a few rows short).
void SizeToPicture(HWND box) {
    RECT frame{0, 0, kAboutClientWidth, kAboutClientHeight};
    AdjustWindowRectEx(&frame, DWORD(GetWindowLongPtrA(box, GWL_STYLE)), FALSE,
                       DWORD(GetWindowLongPtrA(box, GWL_EXSTYLE)));
    SetWindowPos(box, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Above 96 dpi the controls grew with the dialog font: back over their parts of the picture.
void MoveControls(HWND box, int32_t dpi) {
    const struct {
        int id;
        AboutControlKind kind;
    } controls[] = {{IDC_ABOUT_CLOSE, AboutControlKind::Button},
                    {IDC_ABOUT_SOUND, AboutControlKind::Button},
                    {IDC_ABOUT_VERSION, AboutControlKind::Link}};
    for (const auto& c : controls) {
        const LayoutBox b = AboutControlBox(PlacedBox(box, c.id), c.kind, dpi);
        MoveWindow(GetDlgItem(box, c.id), b.x, b.y, b.width, b.height, FALSE);
        if (TLink* link = FindControl<TLink>(GetDlgItem(box, c.id))) {
            link->Width = b.width;
            link->Height = b.height;
        }
    }
}

void InitAbout(HWND box) {
    HDC dc = GetDC(box);
    const int32_t dpi = GetDeviceCaps(dc, LOGPIXELSY);
    ReleaseDC(box, dc);
    AboutFonts[0] = ArialFont(15, 600);
    AboutFonts[1] = ArialFont(24, 400);
    AboutPicture = HBITMAP(LoadImageA(ThisModule(), MAKEINTRESOURCEA(art::kAboutPicture), IMAGE_BITMAP, 0, 0, 0));
    AboutBrush = CreateSolidBrush(kAboutBrushColor);

    // The link copies its part of the picture from where the template put it; the
    // background's own dpi rule brings that to the picture's pixels.
    if (TLink* link = SetLink(box, IDC_ABOUT_VERSION, kVersionLine, false, true)) {
        const LayoutBox at = PlacedBox(box, IDC_ABOUT_VERSION);
        if (AboutPicture) SetLinkBackground(link, AboutPicture, at.x, at.y);
        SetLinkFont(link, AboutFonts[0], true, kAboutTextColor);
    }
    SetSoundText(box);
    SizeToPicture(box);
    if (AboutBoxMoves(dpi)) MoveControls(box, dpi);
    AddTooltip(GetDlgItem(box, IDC_ABOUT_CLOSE), "Close window", nullptr);
    AddTooltip(GetDlgItem(box, IDC_ABOUT_SOUND), "Use sound for Auto button", nullptr);
}

void EndAbout() {
    for (HFONT& font : AboutFonts) {
        if (font) DeleteObject(font);
        font = nullptr;
    }
    if (AboutPicture) DeleteObject(AboutPicture);
    if (AboutBrush) DeleteObject(AboutBrush);
    AboutPicture = nullptr;
    AboutBrush = nullptr;
}

void PaintPicture(HWND box, HDC dc) {
    RECT client{};
    GetClientRect(box, &client);
    FillRect(dc, &client, AboutBrush);
    CopyBitmap(dc, AboutPicture, 0, 0, kAboutClientWidth, kAboutClientHeight);
}

INT_PTR AboutDispatch(HWND box, UINT message, WPARAM wparam) {
    switch (message) {
    case WM_INITDIALOG: InitAbout(box); return TRUE;
    case WM_DESTROY: EndAbout(); return FALSE;
    case WM_ERASEBKGND:
        PaintPicture(box, HDC(wparam));
        SetWindowLongPtrA(box, DWLP_MSGRESULT, 1);
        return TRUE;
    case WM_CTLCOLORDLG: return INT_PTR(AboutBrush);
    case WM_CTLCOLORSTATIC:
        SetTextColor(HDC(wparam), kAboutTextColor);
        SetBkMode(HDC(wparam), TRANSPARENT);
        return INT_PTR(AboutBrush);
    case WM_HELP: OpenLink(SiteAddress(kWebManualPath).c_str(), AboutOwner); return TRUE;
    case WM_COMMAND: {
        const int id = LOWORD(wparam);
        if ((id == IDOK || id == IDCANCEL) && HIWORD(wparam) == 0) EndDialog(box, id);
        else if (id == IDC_ABOUT_SOUND) {
            UseSoundForAuto = !UseSoundForAuto;
            SetSoundText(box);
        }
        return TRUE;
    }
    default: return FALSE;
    }
}

INT_PTR CALLBACK AboutProc(HWND box, UINT message, WPARAM wparam, LPARAM) {
    try {
        return AboutDispatch(box, message, wparam);
    } catch (...) {
        return FALSE;
    }
}

} // namespace

INT_PTR ShowAbout(HWND parent) {
    AboutOwner = parent;
    MakeAboutLinkFonts();
    const INT_PTR result = DialogBoxParamA(ThisModule(), MAKEINTRESOURCEA(IDD_ABOUT), parent, AboutProc, 0);
    AboutOwner = nullptr;
    return result;
}

void ShowAboutBox(void* hostWindow) {
    if (AboutStandIn) return AboutStandIn(hostWindow);
    const HINSTANCE module = ThisModule();
    RegisterControlClasses(module);
    {
        const ModuleActivation activation(module);
        ShowAbout(static_cast<HWND>(hostWindow));
    }
    DeleteToolkitFonts();
    UnregisterControlClasses();
}
