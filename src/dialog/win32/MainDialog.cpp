#include "dialog/win32/MainDialog.h"

#include "dialog/DialogIds.h"
#include "dialog/FramePainters.h"
#include "dialog/HelpPages.h"
#include "dialog/PresetRows.h"
#include "dialog/win32/AboutBox.h"
#include "dialog/win32/FrameButtons.h"
#include "dialog/win32/HelpOpener.h"
#include "dialog/win32/LayerNavigator.h"
#include "dialog/win32/ModuleActivation.h"
#include "dialog/win32/Pages.h"
#include "dialog/win32/PreviewControl.h"
#include "dialog/win32/ResultOptions.h"
#include "dialog/win32/ThisModule.h"
#include "controls/win32/Contaner.h"
#include "controls/win32/DibSection.h"
#include "effects/Background.h"
#include "effects/EffectLayer.h"
#include "effects/RenderDriver.h"
#include "effects/LayerTexture.h"
#include "effects/Surface.h"
#include "host/ChannelAccess.h"
#include "host/Dialog.h"
#include "host/PreviewGeometry.h"
#include "host/Rectangles.h"
#include "host/RunFilter.h"
#include "host/Session.h"
#include "online/UpdateCheck.h"
#include "pickers/win32/Drawers.h"
#include "online/UpdateState.h"
#include "pickers/win32/Filmstrip.h"
#include "platform/Clock.h"
#include "platform/Sound.h"
#include "presets/PresetFormat.h"
#include "presets/RandomEffects.h"
#include "presets/UiSettings.h"
#include "resources/ArtIds.h"
#include "state/Progress.h"
#include "state/ViewState.h"
#include "state/WorkImages.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

FilterParameters SavedParams{};
FilterParameters LastUsedParams{};
float DpiScale = 1.0f;
int32_t HeaderMiddleWidth = 0;
LayoutRect PreviewFrame, TabBandTop, TabBandBottom;
uint8_t DrawerOpen = 0;

namespace {

HINSTANCE Module = nullptr;
HBRUSH DialogBrush = nullptr, LightGreyBrush = nullptr, DarkGreyBrush = nullptr;
uint32_t DialogColor = 0; // 0x00RRGGBB
HCURSOR HandCursor = nullptr;
ShadowWeights CornerWeights{};
DibSection BandPixels, HeaderStrip, HeaderTile;
ZoomButtons Zoom;
HBITMAP HeaderBitmaps[2] = {}; // 213 left, 215 right

// The preview keeps a pointer in its window bytes, more than the family's four: it
// registers its own class. The strip's class registers with the family.
void RegisterClasses() {
    OtherControlClasses others;
    others.strip = FilmstripProc;
    RegisterControlClasses(Module, others);
    RegisterPreviewClass(Module);
}

void UnregisterClasses() {
    UnregisterControlClasses();
    UnregisterPreviewClass(Module);
}

// A bitmap resource read into a DIB section of its size, top row first.
bool LoadArt(int id, DibSection& into) {
    HBITMAP bitmap = HBITMAP(LoadImageA(Module, MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    if (!bitmap) return false;
    BITMAP info{};
    GetObjectA(bitmap, sizeof info, &info);
    bool ok = into.Resize(info.bmWidth, info.bmHeight);
    if (ok) {
        BITMAPINFO bi{};
        bi.bmiHeader.biSize = sizeof bi.bmiHeader;
        bi.bmiHeader.biWidth = info.bmWidth;
        bi.bmiHeader.biHeight = -info.bmHeight;
        bi.bmiHeader.biPlanes = 1;
        bi.bmiHeader.biBitCount = 32;
        HDC screen = GetDC(nullptr);
        ok = GetDIBits(screen, bitmap, 0, UINT(info.bmHeight), into.View().bits, &bi, DIB_RGB_COLORS) != 0;
        ReleaseDC(nullptr, screen);
    }
    DeleteObject(bitmap);
    return ok;
}

UnderImage PreviewUnderImage;

HWND Item(HWND dialog, int id) { return GetDlgItem(dialog, id); }
PreviewControl* Preview(HWND dialog) { return PreviewRecord(Item(dialog, IDC_PREVIEW)); }

HWND ProgressBar = nullptr;
WPARAM BarPosition = 0;
// The render reports every row; a bar redrawn that often costs more than the render
// under some window systems, so only a new position reaches it (its range is set once).
void DialogBar(int32_t done, int32_t total) {
    if (!ProgressBar) return;
    const WPARAM position = total > 0 ? WPARAM(int64_t(done) * 100 / total) : 0;
    if (position == BarPosition) return;
    BarPosition = position;
    SendMessageA(ProgressBar, PBM_SETPOS, position, 0);
}

void SetZoomButtons(HWND dialog) { ShowZoomButtons(dialog, Zoom.up, Zoom.down); }

void SetPercentLabel(HWND dialog) {
    char text[16];
    std::snprintf(text, sizeof text, "%d%%", PreviewPercent());
    SetWindowTextA(Item(dialog, IDC_ZOOM_LABEL), text);
}

// The picture from the host's output buffer as it stands: no render.
void BuildPicture(HWND dialog) {
    PreviewControl* c = Preview(dialog);
    if (!c) return;
    c->picture = {};
    if (!gFilterRecord || !gFilterRecord->outData) return;
    const VRect out = GetOutRect();
    const PreviewSource source{gFilterRecord->outData,
                               gFilterRecord->outRowBytes,
                               gFilterRecord->planes,
                               RectWidth(out),
                               RectHeight(out),
                               gFilterRecord->depth == 16,
                               gFilterRecord->imageMode == plugInModeCMYKColor};
    c->picture = BuildPreviewPicture(source, &PreviewUnderImage, c->pan.width, c->pan.height);
}

void RefreshPreview(HWND dialog, bool erase = true) {
    RunFilter();
    BuildPicture(dialog);
    RedrawWindow(Item(dialog, IDC_PREVIEW), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | (erase ? RDW_ERASE : 0));
}

// The source anew at the preview's rectangles, with what lies under it.
void RenewPreviewBuffers();

// A new preview area (zoom in, a resized window, 100%) outgrows every buffer made for the
// old one: those are made anew whenever the area changed, and always where asked. The
// first acquisition has nothing to renew: the engine is made after it.
void AcquirePreview(bool renew = false) {
    const int32_t width = ImageWidth, height = ImageHeight;
    AcquirePreviewSource();
    if (renew || (width && (ImageWidth != width || ImageHeight != height))) RenewPreviewBuffers();
    PreviewUnderImage = {};
    if (MergedBelow)
        PreviewUnderImage =
            BuildUnderImage(*MergedBelow, ImageWidth, ImageHeight, PreviewOriginX, PreviewOriginY, PreviewScale);
}

void Place(HWND dialog, int id, const LayoutBox& b) {
    if (HWND w = Item(dialog, id)) MoveWindow(w, b.x, b.y, b.width, b.height, TRUE);
}

TabRecord* Tabs(HWND dialog) { return reinterpret_cast<TabRecord*>(GetWindowLongPtrA(dialog, DWLP_USER)); }

void ApplyLayout(HWND dialog, int32_t w, int32_t h) {
    const DialogLayout d = LayoutDialog(w, h, ScreenDpi, PreviewFrame, TabBandTop);
    HeaderMiddleWidth = d.headerMiddleWidth;
    Place(dialog, IDC_HEADER_RIGHT, d.rightHeader);
    Place(dialog, IDC_ALL_PRESETS, d.allPresets);
    Place(dialog, IDC_HELP_BUTTON, d.help);
    if (TabRecord* t = Tabs(dialog)) {
        if (t->tabs) MoveWindow(t->tabs, d.tabs.x, d.tabs.y, d.tabs.width, d.tabs.height, TRUE);
        PlacePages(dialog, *t);
    }
    Place(dialog, IDD_OK, d.ok);
    Place(dialog, IDD_CANCEL, d.cancel);
    Place(dialog, IDC_ZOOM_UP, d.zoomUp);
    Place(dialog, IDC_ZOOM_DOWN, d.zoomDown);
    Place(dialog, IDC_ZOOM_LABEL, d.percent);
    Place(dialog, IDC_PROGRESS, d.progress);
    PreviewFrame = d.frame;
    TabBandTop = d.bandTop;
    TabBandBottom = d.bandBottom;
    BandPixels.Resize(d.bandWidth, kBandHeight);
    const RECT dirty{d.invalidate.left, d.invalidate.top, d.invalidate.right, d.invalidate.bottom};
    InvalidateRect(dialog, &dirty, TRUE);
    // The erase of the area a wider window uncovers would leave the moved header
    // pictures and buttons painted over.
    const RECT header{d.headerRepaint.left, d.headerRepaint.top, d.headerRepaint.right, d.headerRepaint.bottom};
    RedrawWindow(dialog, &header, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    PlaceResultOptions(dialog, d);
    PlaceNavigatorResets(d.resets);
    Place(dialog, IDC_PREVIEW, d.preview);
    SetPercentLabel(dialog);
    PlaceDrawers(dialog, PreviewFrame.left - 9, h - 89);
}

void MakeTabs(HWND dialog) {
    auto* t = new TabRecord;
    SetWindowLongPtrA(dialog, DWLP_USER, LONG_PTR(t));
    RECT pane{};
    GetWindowRect(Item(dialog, IDC_RIGHT_PANE), &pane);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&pane), 2);
    t->tabs = CreateWindowExA(
        0, WC_TABCONTROLA, "", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | TCS_HOTTRACK, 10, 80,
        PreviewFrame.left - 19, pane.bottom - 70, dialog, HMENU(INT_PTR(IDC_TABS)), Module, nullptr);
    if (TabFont) SendMessageA(t->tabs, WM_SETFONT, WPARAM(TabFont), FALSE);
    const char* names[4] = {"   Basic   ", "    Wash   ", "  Surface  ", "  Background  "};
    for (int i = 0; i < 4; ++i) {
        TCITEMA item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<char*>(names[i]);
        SendMessageA(t->tabs, TCM_INSERTITEMA, WPARAM(i), LPARAM(&item));
    }
    t->display = {10, 80, PreviewFrame.left - 9, pane.bottom + 10};
    SendMessageA(t->tabs, TCM_ADJUSTRECT, FALSE, LPARAM(&t->display));
    SendMessageA(t->tabs, TCM_SETCURSEL, WPARAM(ActiveTab), 0);
}

// The stored place, raised to the minimum size and brought back onto a monitor when it
// lies wholly off every one.
RECT WindowPlace() {
    const LayoutBox least = MinimumTrackSize(ScreenDpi);
    FilterParameters& p = *gParams;
    RECT r{p.WindowLeft, p.WindowTop, p.WindowLeft + std::max(p.WindowWidth, least.width),
           p.WindowTop + std::max(p.WindowHeight, least.height)};
    if (!MonitorFromRect(&r, MONITOR_DEFAULTTONULL)) {
        MONITORINFO info{};
        info.cbSize = sizeof info;
        GetMonitorInfoA(MonitorFromRect(&r, MONITOR_DEFAULTTONEAREST), &info);
        const RECT& work = info.rcWork;
        const LONG w = r.right - r.left, h = r.bottom - r.top;
        r.left = std::clamp<LONG>(r.left, work.left, std::max(work.left, work.right - w));
        r.top = std::clamp<LONG>(r.top, work.top, std::max(work.top, work.bottom - h));
        r.right = r.left + w, r.bottom = r.top + h;
    }
    return r;
}

// A Ctrl + drag moved the active tab's layer: the page's offset links follow here once
// the pages have them.
void SyncMovedLayerLinks(HWND) {}

void InitDialog(HWND dialog) {
    HDC dc = GetDC(dialog);
    ScreenDpi = GetDeviceCaps(dc, LOGPIXELSY);
    ReleaseDC(dialog, dc);
    DpiScale = DpiScaleOf(ScreenDpi);
    SetHelpOwner(dialog);

    RegisterHotKey(dialog, QZ_HOTKEY_ZOOM_UP, MOD_CONTROL, VK_ADD);
    RegisterHotKey(dialog, QZ_HOTKEY_ZOOM_DOWN, MOD_CONTROL, VK_SUBTRACT);
    RegisterHotKey(dialog, QZ_HOTKEY_FIT, MOD_CONTROL, '0');
    RegisterHotKey(dialog, QZ_HOTKEY_ACTUAL, MOD_CONTROL, '1');

    FilterParameters& p = *gParams;
    if (p.ApplySeries) SetDlgItemTextA(dialog, IDD_OK, p.ApplyToAll ? "Apply to All" : "Apply");
    LoadArt(art::kHeaderTile, HeaderTile);
    const int headers[2][2] = {{IDC_HEADER_LEFT, art::kHeaderLeft}, {IDC_HEADER_RIGHT, art::kHeaderRight}};
    for (int i = 0; i < 2; ++i) {
        HeaderBitmaps[i] = HBITMAP(LoadImageA(Module, MAKEINTRESOURCEA(headers[i][1]), IMAGE_BITMAP, 0, 0, 0));
        SendDlgItemMessageA(dialog, headers[i][0], STM_SETIMAGE, IMAGE_BITMAP, LPARAM(HeaderBitmaps[i]));
    }
    MakeOptionLabels(dialog, DpiScale);

    RECT preview{};
    GetWindowRect(Item(dialog, IDC_PREVIEW), &preview);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&preview), 2);
    const PreviewFrameSetup frame =
        InitialPreviewFrame(LayoutRect{preview.left, preview.top, preview.right, preview.bottom}, ScreenDpi);
    PreviewFrame = frame.frame;
    TabBandTop = frame.bandTop;
    TabBandBottom = frame.bandBottom;
    DibSection corner;
    if (LoadArt(art::kCornerWeights, corner)) CornerWeights = ReadShadowWeights(corner.View());

    ProgressPercent = 0;
    DialogOpen = true;

    SetFrameTooltips(dialog);
    MakeToolkitFonts(ScreenDpi);

    if (PreviewControl* c = Preview(dialog)) c->mode = 1;
    ProgressBar = Item(dialog, IDC_PROGRESS);
    SendMessageA(ProgressBar, PBM_SETRANGE, 0, MAKELPARAM(0, 100));
    BarPosition = WPARAM(SendMessageA(ProgressBar, PBM_GETPOS, 0, 0));
    DialogProgressBar = DialogBar;

    BuildNavigator(dialog);
    CheckResultOptions(dialog);
    EnableResultOptions(dialog);
    MakeTabs(dialog);
    ListFilmstripPresets(PresetPalette);
    ShowResultOptions(dialog, ActiveTab);
    PlaceHeaderButtons(dialog);

    const RECT place = WindowPlace();
    SetWindowPos(dialog, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOREDRAW);
    RECT client;
    GetClientRect(dialog, &client);
    ApplyLayout(dialog, client.right, client.bottom);

    ReadDocumentLayers();
    if (ResultIsSet()) {
        SetResult(noErr);
        FreeDocumentLayers();
    }
    if (PreviewControl* c = Preview(dialog)) {
        OpenPreviewGeometry(c->pan, Zoom);
        // A failed first request drops the selection.
        if (ResultIsSet()) HaveMask = false;
    }
    SkinZoomButtons(dialog, Module);
    SetZoomButtons(dialog);
    SetPercentLabel(dialog);

    if (!ResultIsSet()) {
        AcquirePreview();
        CreateEngine();
    }
    if (ResultIsSet()) {
        SetResult(noErr);
    } else {
        RunFilter();
        BuildPicture(dialog);
    }
    PlaceAboutButton(dialog, NewVersionKnown);
    SavedParams = *gParams;
    LastUsedParams = *gParams;
    CreateDrawers(dialog);
    if (TabRecord* t = Tabs(dialog)) SelectTab(dialog, *t);
    ShowNavigatorFor(ActiveTab);
}

void Destroy(HWND dialog) {
    DialogOpen = false;
    FreeSelectionMask(); // the last preview's pair
    DestroyDrawers();
    ForgetNavigator();
    ForgetPages();
    DestroyFilmstrip();
    for (int id = QZ_HOTKEY_ZOOM_UP; id <= QZ_HOTKEY_ACTUAL; ++id) UnregisterHotKey(dialog, id);
    for (HBITMAP& b : HeaderBitmaps) {
        if (b) DeleteObject(b);
        b = nullptr;
    }
    ReleaseZoomButtons();
    DeleteToolkitFonts();
    BandPixels.Release();
    HeaderStrip.Release();
    HeaderTile.Release();
    DestroyEngine();
    FreeWorkImages();
    FreeDocumentLayers();
    PreviewUnderImage = {};
    DialogProgressBar = nullptr;
    ProgressBar = nullptr;
    RECT r;
    GetWindowRect(dialog, &r);
    FilterParameters& p = *gParams;
    p.WindowLeft = r.left;
    p.WindowTop = r.top;
    p.WindowWidth = r.right - r.left;
    p.WindowHeight = r.bottom - r.top;
    delete Tabs(dialog);
    SetWindowLongPtrA(dialog, DWLP_USER, 0);
    EndHelpOpener();
    SetHelpOwner(nullptr);
}

void PaintFrame(HWND dialog) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(dialog, &ps);
    if (BandPixels.View().bits) {
        PaintBand(BandPixels.View(), CornerWeights, DialogColor, BandEdge::Bottom);
        BandPixels.Blit(dc, TabBandBottom.left, TabBandBottom.top);
        PaintBand(BandPixels.View(), CornerWeights, DialogColor, BandEdge::Top);
        BandPixels.Blit(dc, TabBandTop.left, TabBandTop.top);
    }
    if (HeaderMiddleWidth > 0 && HeaderTile.View().bits && HeaderStrip.Resize(HeaderMiddleWidth, kHeaderHeight)) {
        PaintHeaderStrip(HeaderStrip.View(), HeaderTile.View());
        HeaderStrip.Blit(dc, kHeaderStripLeft, 0);
    }
    EndPaint(dialog, &ps);
}

bool FocusInEdit() {
    char name[16] = {};
    HWND focus = GetFocus();
    return focus && GetClassNameA(focus, name, sizeof name) && lstrcmpiA(name, "Edit") == 0;
}

// The Auto button's click, from the module's WAVE resource; it plays on while the
// random look renders.
void PlayAutoSound() {
    HRSRC found = FindResourceA(Module, MAKEINTRESOURCEA(art::kAutoSound), "WAVE");
    HGLOBAL loaded = found ? LoadResource(Module, found) : nullptr;
    const void* wave = loaded ? LockResource(loaded) : nullptr;
    if (wave) PlayWaveAsync(wave, SizeofResource(Module, found));
}

void Auto(HWND dialog) {
    if (UseSoundForAuto) PlayAutoSound();
    RandomizeEffects(DrawerRandomSources(), CurrentTimeSeconds());
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_PARAMS_CHANGED, 0), 0);
}

void RenewPreviewBuffers() {
    FreeWashMaskWork();
    PrepareLayerTexture(SurfaceLayers[0]);
    if (gParams->SecondSurfaceExists) PrepareLayerTexture(SurfaceLayers[1]);
    AllocateReliefBuffers();
    AllocateBackgroundImage();
}

void Rerender(HWND dialog, bool erase = true) {
    AcquirePreview();
    SetPercentLabel(dialog);
    RefreshPreview(dialog, erase);
}

void Command(HWND dialog, int id, int code) {
    if (id >= IDC_NAVIGATOR_FIRST && id <= IDC_NAVIGATOR_LAST) {
        NavigatorCommand(dialog, id);
        return;
    }
    PreviewControl* c = Preview(dialog);
    switch (id) {
    case IDD_OK:
        if (code != 0) return;
        if (FocusInEdit()) {
            PostMessageA(GetParent(GetFocus()), WM_NEXTDLGCTL, 0, 0);
            return;
        }
        EndDialog(dialog, 1);
        return;
    case IDD_CANCEL:
        if (code != 0) return;
        if (FocusInEdit()) {
            HWND edit = GetFocus();
            SendMessageA(GetParent(edit), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(edit), QZ_EDIT_RESTORE), LPARAM(edit));
            SetFocus(Item(dialog, IDD_OK));
            return;
        }
        *gParams = SavedParams;
        EndDialog(dialog, 2);
        return;
    case IDC_ZOOM_UP:
        if (!c) return;
        ZoomUp(c->pan, Zoom);
        SetZoomButtons(dialog);
        AcquirePreview(true);
        SetPercentLabel(dialog);
        RefreshPreview(dialog, false);
        return;
    case IDC_ZOOM_DOWN:
        if (!c) return;
        ZoomDown(c->pan, Zoom);
        SetZoomButtons(dialog);
        Rerender(dialog);
        return;
    case IDC_ZOOM_FIT:
        if (!c) return;
        ZoomToFit(c->pan, Zoom);
        SetZoomButtons(dialog);
        Rerender(dialog);
        return;
    case IDC_ZOOM_ACTUAL:
        if (!c) return;
        ZoomToActual(c->pan, Zoom);
        SetZoomButtons(dialog);
        Rerender(dialog);
        return;
    case IDC_PREVIEW:
        if (code != QZ_PREVIEW_PANNED || !c) return;
        if (!c->pan.ctrlDrag) {
            ApplyPan(c->pan);
            AcquirePreview();
        } else {
            SyncMovedLayerLinks(dialog);
            RefreshPage();
        }
        RefreshPreview(dialog);
        return;
    case IDC_PARAMS_CHANGED:
    case IDC_PARAMS_CHANGED_TOO:
        NoteParamsChanged(*gParams, LastUsedParams);
        RefreshPreview(dialog);
        return;
    case IDC_OPTION_BASIC:
    case IDC_OPTION_WASH:
    case IDC_OPTION_BACKGROUND:
    case IDC_OPTION_SURFACE: ReadResultOptions(dialog); return;
    case IDC_LABEL_BASIC:
    case IDC_LABEL_WASH:
    case IDC_LABEL_BACKGROUND:
    case IDC_LABEL_SURFACE: ToggleResultOption(dialog, id); return;
    case IDC_HELP_BUTTON: OpenHelpPage(kHelpPageIndex); return;
    case IDC_ALL_PRESETS:
        OpenLink(SiteAddress(kAllPresetsPath).c_str(), dialog);
        InvalidateRect(Item(dialog, IDC_ALL_PRESETS), nullptr, FALSE);
        return;
    case IDC_ABOUT: ShowAbout(dialog); return;
    case IDC_TEXTURE_DRAWER:
    case IDC_TONE_DRAWER: DrawerCommand(dialog, id, code); return;
    case IDC_AUTO: Auto(dialog); return;
    default: return;
    }
}

void ExitSizeMove(HWND dialog) {
    PreviewControl* c = Preview(dialog);
    if (!c || !ResizePreview(c->pan, Zoom)) return;
    SetZoomButtons(dialog);
    AcquirePreview(true);
    RunFilter();
    BuildPicture(dialog);
    RedrawWindow(c->window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    if (PreviewScale > 0) SetPercentLabel(dialog);
}

INT_PTR Dispatch(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_INITDIALOG: InitDialog(dialog); return TRUE;
    case WM_DESTROY: Destroy(dialog); return FALSE;
    case WM_SIZE: ApplyLayout(dialog, LOWORD(lparam), HIWORD(lparam)); return TRUE;
    case WM_GETMINMAXINFO: {
        const LayoutBox least = MinimumTrackSize(ScreenDpi);
        auto* info = reinterpret_cast<MINMAXINFO*>(lparam);
        info->ptMinTrackSize = {least.width, least.height};
        return TRUE;
    }
    case WM_EXITSIZEMOVE: ExitSizeMove(dialog); return TRUE;
    case WM_SYSCOMMAND: {
        const WPARAM command = wparam & 0xFFF0;
        if (wparam == 0xF030 || wparam == 0xF032 || wparam == 0xF120 || wparam == 0xF122 || command == SC_MAXIMIZE ||
            command == SC_RESTORE)
            PostMessageA(dialog, WM_EXITSIZEMOVE, 0, 0);
        else if (command == SC_CLOSE) PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDD_CANCEL, 0), 0);
        return FALSE;
    }
    case WM_CLOSE: return TRUE;
    case WM_PAINT: PaintFrame(dialog); return TRUE;
    case WM_SHOWWINDOW: BuildPicture(dialog); return FALSE;
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR: return INT_PTR(DialogBrush);
    case WM_CTLCOLORSTATIC: {
        const int id = GetDlgCtrlID(HWND(lparam));
        if (IsResultOptionBox(id)) return INT_PTR(GetStockObject(BLACK_BRUSH));
        if (IsNavigatorSeparator(id)) {
            SetTextColor(HDC(wparam), RGB(0x7F, 0x7F, 0x7F));
            SetBkMode(HDC(wparam), TRANSPARENT);
            return INT_PTR(GetStockObject(BLACK_BRUSH));
        }
        return FALSE;
    }
    case WM_HOTKEY:
        switch (wparam) {
        case QZ_HOTKEY_ZOOM_UP:
            if (IsWindowEnabled(Item(dialog, IDC_ZOOM_UP))) PostMessageA(dialog, WM_COMMAND, IDC_ZOOM_UP, 0);
            break;
        case QZ_HOTKEY_ZOOM_DOWN:
            if (IsWindowEnabled(Item(dialog, IDC_ZOOM_DOWN))) PostMessageA(dialog, WM_COMMAND, IDC_ZOOM_DOWN, 0);
            break;
        case QZ_HOTKEY_FIT: PostMessageA(dialog, WM_COMMAND, IDC_ZOOM_FIT, 0); break;
        case QZ_HOTKEY_ACTUAL: PostMessageA(dialog, WM_COMMAND, IDC_ZOOM_ACTUAL, 0); break;
        }
        return TRUE;
    case WM_NOTIFY: {
        const auto* header = reinterpret_cast<const NMHDR*>(lparam);
        if (header->idFrom == IDC_TABS && header->code == UINT(TCN_SELCHANGE)) {
            ActiveTab = int32_t(SendMessageA(header->hwndFrom, TCM_GETCURSEL, 0, 0));
            if (TabRecord* t = Tabs(dialog)) SelectTab(dialog, *t);
            ShowNavigatorFor(ActiveTab);
            SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_PARAMS_CHANGED, 0), 0);
        }
        return TRUE;
    }
    case WM_COMMAND: Command(dialog, LOWORD(wparam), HIWORD(wparam)); return TRUE;
    // F1: the open drawer's page, else the page of the tab in view.
    case WM_HELP: OpenHelpPage(DrawerOpen ? kHelpPageDrawer : HelpPageOfTab(ActiveTab)); return TRUE;
    default: return FALSE;
    }
}

} // namespace

const ShadowWeights& DialogCornerWeights() { return CornerWeights; }

extern "C" __declspec(dllexport) INT_PTR CALLBACK
    DissolveProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    try {
        return Dispatch(window, message, wparam, lparam);
    } catch (...) {
        return FALSE;
    }
}

bool OpenDialog() {
    if (DialogStandIn) return DialogStandIn();
    Module = ThisModule();
    const DWORD face = GetSysColor(COLOR_3DFACE);
    DialogColor = PixelOf(GetRValue(face), GetGValue(face), GetBValue(face));
    DialogBrush = CreateSolidBrush(face);
    LightGreyBrush = CreateSolidBrush(RGB(0x92, 0x92, 0x92));
    DarkGreyBrush = CreateSolidBrush(RGB(0x54, 0x54, 0x54));
    PreviewBackBrush = DialogBrush;

    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_TAB_CLASSES | ICC_PROGRESS_CLASS | ICC_BAR_CLASSES;
    InitCommonControlsEx(&controls);
    RegisterClasses();
    HandCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32649));
    PreviewHoverCursor = LoadCursorA(Module, MAKEINTRESOURCEA(art::kCursorPreviewHover));
    PreviewDragCursor = LoadCursorA(Module, MAKEINTRESOURCEA(art::kCursorPreviewDrag));
    RefreshUpdateInfo();

    auto* platform = static_cast<PlatformData*>(gFilterRecord->platformData);
    HWND parent = platform ? reinterpret_cast<HWND>(platform->hwnd) : nullptr;
    INT_PTR result;
    {
        const ModuleActivation activation(Module);
        result = DialogBoxParamA(Module, QZ_MAIN_DIALOG, parent, DissolveProc, 0);
    }

    WriteUiSettings();
    for (HCURSOR* cursor : {&PreviewHoverCursor, &PreviewDragCursor}) {
        if (*cursor) DestroyCursor(*cursor);
        *cursor = nullptr;
    }
    HandCursor = nullptr; // a shared system cursor
    UnregisterClasses();
    for (HBRUSH* brush : {&DialogBrush, &LightGreyBrush, &DarkGreyBrush}) {
        if (*brush) DeleteObject(*brush);
        *brush = nullptr;
    }
    PreviewBackBrush = nullptr;
    SetResult(noErr);
    return result == 1;
}
