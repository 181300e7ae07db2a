#include "pickers/win32/Filmstrip.h"

#include "controls/win32/Contaner.h"
#include "dialog/DialogIds.h"
#include "dialog/win32/LayerNavigator.h"
#include "dialog/win32/Pages.h"
#include "effects/EffectLayer.h"
#include "pickers/StripThumb.h"
#include "resources/ArtIds.h"
#include "state/Parameters.h"

#include <windowsx.h>

namespace {

// There is one strip in the program.
TFilmstripControl Strip;

void Repaint(const TFilmstripControl& s) {
    if (s.Window) InvalidateRect(s.Window, nullptr, FALSE);
}

void UpdateArrows(TFilmstripControl& s) {
    if (s.PrevButton) EnableWindow(s.PrevButton, PrevEnabled(s.Motion));
    if (s.NextButton) EnableWindow(s.NextButton, NextEnabled(s.Motion));
    s.PrevSkin.Hover = 0;
    s.NextSkin.Hover = 0;
}

void Attach(TFilmstripControl& s, HWND control, int32_t id) {
    s.Window = control;
    s.Parent = GetParent(control);
    s.ControlId = id;
    GetClientRect(control, &s.ClientRect);
    s.Width = s.ClientRect.right - s.ClientRect.left;
    s.Height = s.ClientRect.bottom - s.ClientRect.top;
    const int32_t rounded = s.Width - 2 + ((4 - (s.Width - 2) % 4) % 4) + 2;
    if (rounded != s.Width) {
        s.Width = rounded;
        SetWindowPos(control, nullptr, 0, 0, s.Width, s.Height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    SetWindowLongPtrA(control, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&s));
}

HBITMAP Art(int32_t id) {
    return HBITMAP(LoadImageA(ControlInstance, MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
}

HWND MakeArrow(TFilmstripControl& s, int32_t x, int32_t id, const char* tip) {
    HWND button = CreateWindowExA(0, "BUTTON", "", WS_CHILD | WS_VISIBLE | BS_BITMAP, x, 0, kStripArrowWidth, s.Height,
                                  s.Window, HMENU(INT_PTR(id)), ControlInstance, nullptr);
    if (button) AddTooltip(button, tip, nullptr);
    return button;
}

void Layout(TFilmstripControl& s) {
    s.Geometry = LayOutStrip();
    s.Width = s.Geometry.Width;
    s.Height = s.Geometry.Height;
    SetWindowPos(s.Window, nullptr, 0, 0, s.Width, s.Height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    GetClientRect(s.Window, &s.ClientRect);

    const int32_t ids[6] = {art::kStripBackNormal,    art::kStripBackHover,    art::kStripBackDisabled,
                            art::kStripForwardNormal, art::kStripForwardHover, art::kStripForwardDisabled};
    for (int i = 0; i < 6; ++i)
        if (!s.ArrowBitmaps[i]) s.ArrowBitmaps[i] = Art(ids[i]);
    HBITMAP* b = s.ArrowBitmaps;
    s.PrevButton = MakeArrow(s, s.Geometry.PrevButton.left, kStripPrevId, "View previous preset effects");
    s.NextButton = MakeArrow(s, s.Geometry.NextButton.left, kStripNextId, "View more preset effects");
    AttachSkin(&s.PrevSkin, s.PrevButton, b[0], b[1], b[2], nullptr, nullptr, nullptr);
    AttachSkin(&s.NextSkin, s.NextButton, b[3], b[4], b[5], nullptr, nullptr, nullptr);

    s.Canvas.Resize(s.Geometry.StripWidth, s.Geometry.StripHeight);
    if (StripPixels.empty()) AllocateStripPixels();
}

void LoadThumbs(TFilmstripControl& s) {
    ResetMotion(s.Motion, s.Count);
    s.HoverSlot = -1;
    s.ClickLatch = 0;
    s.Thumbs.assign(size_t(s.Count), ThumbImage{});
    for (int32_t i = 0; i < s.Count; ++i) MakeStripThumb(s.Names, i, s.Thumbs[size_t(i)]);
    UpdateArrows(s);
}

void ApplyPreset(TFilmstripControl& s, int32_t index) {
    FilterParameters& p = *gParams;
    p.PresetApplied = 0;
    if (!ReadStripPreset(s.Names[size_t(index)], true)) return;
    p.PresetApplied = 1;
    // The background alone is made anew; washes and surfaces keep their work.
    KeepWashLayers = true;
    KeepSurfaceLayers = true;
    KeepBackgroundLayer = false;
    DestroyLayer(BackgroundLayer);
    RebuildLayers();
    KeepWashLayers = KeepSurfaceLayers = KeepBackgroundLayer = false;
    SendMessageA(GetAncestor(s.Window, GA_ROOT), WM_COMMAND, MAKEWPARAM(IDC_PARAMS_CHANGED, 0), 0);
    RefreshPage();
}

void Paint(TFilmstripControl& s) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(s.Window, &ps);
    if (s.Canvas.View().bits) {
        PaintStrip(s.Canvas.View(), s.Geometry, s.Motion, s.HoverSlot, s.Thumbs, FacePixel());
        s.Canvas.Blit(dc, s.Geometry.StripLeft, s.Geometry.StripTop);
    }
    EndPaint(s.Window, &ps);
}

} // namespace

TFilmstripControl::~TFilmstripControl() {
    for (HBITMAP& b : ArrowBitmaps)
        if (b) DeleteObject(b);
}

LRESULT TFilmstripControl::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const int32_t x = GET_X_LPARAM(lParam), y = GET_Y_LPARAM(lParam);
    switch (message) {
    case WM_PAINT: Paint(*this); return 0;
    case WM_MOUSEMOVE:
        if (ClickLatch) return 0;
        if (InsideStrip(Geometry, x, y)) {
            if (GetCapture() != window) SetCapture(window);
            HoverSlot = SlotAt(Geometry, x - ScrollOffset);
        } else {
            if (GetCapture() == window) ReleaseCapture();
            HoverSlot = -1;
        }
        Repaint(*this);
        return 0;
    case WM_LBUTTONDOWN:
        if (!InsideStrip(Geometry, x, y)) return 0;
        if (Motion.SlideDirection == 0) {
            const int32_t index = Motion.Page * kStripTilesShown + SlotAt(Geometry, x - ScrollOffset);
            if (!Names.empty() && index >= 0 && index < Count && size_t(index) < Names.size())
                ApplyPreset(*this, index);
        }
        ClickLatch = 1;
        HoverSlot = -1;
        Repaint(*this);
        return 0;
    case WM_LBUTTONUP:
        if (InsideStrip(Geometry, x, y)) {
            HoverSlot = SlotAt(Geometry, x - ScrollOffset);
            Repaint(*this);
        }
        ClickLatch = 0;
        return 0;
    case WM_CAPTURECHANGED:
        // Taken by another window: the mouse is no longer ours to show.
        if (HWND(lParam) != window && HoverSlot != -1) {
            HoverSlot = -1;
            Repaint(*this);
        }
        return 0;
    case WM_COMMAND: {
        const int32_t id = LOWORD(wParam);
        if ((id != kStripNextId && id != kStripPrevId) || HIWORD(wParam) != BN_CLICKED) return 0;
        if (StartSlide(Motion, id == kStripNextId)) SetTimer(window, kStripTimerId, kStripTimerMs, nullptr);
        return 0;
    }
    case WM_TIMER:
        if (wParam != kStripTimerId) return 0;
        if (Motion.SlideDirection != 0 && TickSlide(Motion)) {
            KillTimer(window, kStripTimerId);
            UpdateArrows(*this);
        }
        Repaint(*this);
        return 0;
    case WM_DESTROY:
        KillTimer(window, kStripTimerId);
        if (GetCapture() == window) ReleaseCapture();
        Window = PrevButton = NextButton = nullptr;
        SetWindowLongPtrA(window, GWLP_USERDATA, 0);
        return 0;
    default: return DefWindowProcA(window, message, wParam, lParam);
    }
}

LRESULT CALLBACK FilmstripProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* control = reinterpret_cast<TQZT2Control*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (!control) return DefWindowProcA(window, message, wParam, lParam);
    try {
        return control->WindowProc(window, message, wParam, lParam);
    } catch (...) {
        return 0;
    }
}

void ListFilmstripPresets(int32_t kind) {
    Strip.PresetKind = uint8_t(kind);
    StripPresets list = ListPresets(StripFolder());
    Strip.Names = std::move(list.Names);
    Strip.Count = list.Count;
}

void AttachFilmstrip(HWND control) {
    if (!control) return;
    Attach(Strip, control, GetDlgCtrlID(control));
    Layout(Strip);
    LoadThumbs(Strip);
}

void DestroyFilmstrip() {
    if (Strip.Window) SetWindowLongPtrA(Strip.Window, GWLP_USERDATA, 0);
    Strip.Window = Strip.PrevButton = Strip.NextButton = nullptr;
    std::vector<std::string>().swap(Strip.Names);
    std::vector<ThumbImage>().swap(Strip.Thumbs);
    Strip.Count = 0;
    ResetMotion(Strip.Motion, 0);
    Strip.Canvas.Release();
    for (HBITMAP& b : Strip.ArrowBitmaps) {
        if (b) DeleteObject(b);
        b = nullptr;
    }
    FreeStripPixels();
}
