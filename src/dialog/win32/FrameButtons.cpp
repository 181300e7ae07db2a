#include "dialog/win32/FrameButtons.h"

#include "controls/win32/Buttons.h"
#include "dialog/DialogIds.h"
#include "resources/ArtIds.h"

#include <commctrl.h>

namespace {

// A header button whose face may be larger than its window: it paints the face's size.
void PlaceButton(HWND dialog, int id, int x, int y, int width, int height, int faceWidth, int faceHeight, int normal,
                 int hover) {
    HWND window = GetDlgItem(dialog, id);
    TButton* button = FindControl<TButton>(window);
    if (!button) return;
    // Above the header pictures, which leave it alone.
    SetWindowPos(window, HWND_TOP, x, y, width, height, 0);
    button->Width = faceWidth;
    button->Height = faceHeight;
    // Pressed shows the normal face.
    SetFaces(button, normal, hover, normal, 0);
}

ButtonSkin ZoomSkins[2];
HBITMAP ZoomPictures[6] = {}; // 1000 normal, disabled, hover; 1001 the same

// The stock button greys a disabled bitmap into a block; ours has a picture of its own
// for that, so the button is drawn here whatever its state.
void PaintZoomButton(HWND button, HDC dc) {
    RECT r{};
    GetClientRect(button, &r);
    const bool pushed = (SendMessageA(button, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
    DrawFrameControl(dc, &r, DFC_BUTTON, DFCS_BUTTONPUSH | (pushed ? DFCS_PUSHED : 0));
    auto image = reinterpret_cast<HBITMAP>(SendMessageA(button, BM_GETIMAGE, IMAGE_BITMAP, 0));
    BITMAP info{};
    if (!image || !GetObjectA(image, sizeof info, &info)) return;
    HDC memory = CreateCompatibleDC(dc);
    HGDIOBJ previous = SelectObject(memory, image);
    const int shift = pushed ? 1 : 0;
    BitBlt(dc, (r.right - info.bmWidth) / 2 + shift, (r.bottom - info.bmHeight) / 2 + shift, info.bmWidth,
           info.bmHeight, memory, 0, 0, SRCCOPY);
    SelectObject(memory, previous);
    DeleteDC(memory);
}

LRESULT CALLBACK ZoomPaintProc(HWND button, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) noexcept {
    switch (message) {
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(button, &ps);
        PaintZoomButton(button, dc);
        EndPaint(button, &ps);
        return 0;
    }
    case WM_ERASEBKGND: return 1;
    case WM_NCDESTROY: RemoveWindowSubclass(button, ZoomPaintProc, 0); break;
    // The stock button paints these states straight away, past WM_PAINT.
    case WM_ENABLE:
    case BM_SETSTATE:
    case BM_SETCHECK:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_UPDATEUISTATE: {
        const LRESULT result = DefSubclassProc(button, message, wParam, lParam);
        RedrawWindow(button, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return result;
    }
    default: break;
    }
    return DefSubclassProc(button, message, wParam, lParam);
}

} // namespace

void PlaceHeaderButtons(HWND dialog) {
    PlaceButton(dialog, IDC_HELP_BUTTON, 560, 20, 84, 30, 127, 40, art::kHelpNormal, art::kHelpHover);
    PlaceButton(dialog, IDC_ALL_PRESETS, 646, 20, 84, 30, 140, 40, art::kPresetsNormal, art::kPresetsHover);
    PlaceButton(dialog, IDC_AUTO, 453, 9, 118, 50, 118, 50, art::kAutoNormal, art::kAutoHover);
}

void PlaceAboutButton(HWND dialog, bool newVersionKnown) {
    if (newVersionKnown)
        PlaceButton(dialog, IDC_ABOUT, 23, 18, 400, 35, 400, 35, art::kAboutNewNormal, art::kAboutNewHover);
    else PlaceButton(dialog, IDC_ABOUT, 23, 18, 400, 35, 400, 35, art::kAboutNormal, art::kAboutHover);
}

void SkinZoomButtons(HWND dialog, HINSTANCE module) {
    const int ids[6] = {art::kZoomInNormal,  art::kZoomInDisabled,  art::kZoomInHover,
                        art::kZoomOutNormal, art::kZoomOutDisabled, art::kZoomOutHover};
    for (int i = 0; i < 6; ++i)
        ZoomPictures[i] = static_cast<HBITMAP>(LoadImageA(module, MAKEINTRESOURCEA(ids[i]), IMAGE_BITMAP, 0, 0, 0));
    const int buttons[2] = {IDC_ZOOM_UP, IDC_ZOOM_DOWN};
    for (int b = 0; b < 2; ++b) {
        HWND button = GetDlgItem(dialog, buttons[b]);
        HBITMAP* p = ZoomPictures + 3 * b;
        AttachSkin(&ZoomSkins[b], button, p[0], p[2], p[1], nullptr, nullptr, nullptr);
        SetWindowSubclass(button, ZoomPaintProc, 0, 0);
    }
}

void ShowZoomButtons(HWND dialog, bool up, bool down) {
    EnableWindow(GetDlgItem(dialog, IDC_ZOOM_UP), up);
    EnableWindow(GetDlgItem(dialog, IDC_ZOOM_DOWN), down);
}

void ReleaseZoomButtons() {
    for (HBITMAP& picture : ZoomPictures) {
        if (picture) DeleteObject(picture);
        picture = nullptr;
    }
}

void SetFrameTooltips(HWND dialog) {
    static const struct {
        int id;
        const char* text;
    } tips[] = {
        {IDD_OK, "Apply effect"},
        {IDD_CANCEL, "Don't apply effect"},
        // The pairing of these two runs against what the buttons do, and is kept so.
        {IDC_ZOOM_UP, "Decrease preview size (press CTRL + zero to fit in preview window)"},
        {IDC_ZOOM_DOWN, "Enlarge preview size (press CTRL + zero to fit in preview window)"},
        {IDC_ZOOM_LABEL, "Preview scale"},
        {IDC_OPTION_BASIC, "Generate the plug-in result in a new layer above current without affecting original image"},
        {IDC_LABEL_BASIC, "Generate the plug-in result in a new layer above current without affecting original image"},
        {IDC_OPTION_WASH, "Apply wash effect to a new mask layer without affecting original image"},
        {IDC_LABEL_WASH, "Apply wash effect to a new mask layer without affecting original image"},
        {IDC_OPTION_SURFACE, "Apply surface effect to a new layer above without affecting original image"},
        {IDC_LABEL_SURFACE, "Apply surface effect to a new layer above without affecting original image"},
        {IDC_OPTION_BACKGROUND, "Apply background effect in a new layer below without affecting original image"},
        {IDC_LABEL_BACKGROUND, "Apply background effect in a new layer below without affecting original image"},
        {IDC_HELP_BUTTON, "View the Quenzit user manual to learn more (press F1 for tab specific info)"},
        {IDC_ALL_PRESETS, "View all Quenzit presets"},
        {IDC_AUTO, "Apply random Quenzit effects"},
        {IDC_ABOUT, "Review user information for plug-in"},
    };
    for (const auto& tip : tips) AddTooltip(GetDlgItem(dialog, tip.id), tip.text, nullptr);
}
