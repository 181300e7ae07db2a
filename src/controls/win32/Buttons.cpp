#include "controls/win32/Buttons.h"

#include "controls/win32/ControlProcs.h"
#include "controls/win32/Fonts.h"

#include <algorithm>

namespace {

bool Inside(const TContaner& control, POINT p) {
    return p.x >= 0 && p.y >= 0 && p.x < control.Width && p.y < control.Height;
}

// ---- The button ----

LRESULT HandleButton(TButton& button, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND window = button.Window;
    switch (message) {
    case WM_PAINT:
        PaintCanvas(window, button.Canvas, button.Width, button.Height, [&](const DibSection& canvas) {
            const ButtonFace face = ChooseButtonFace(button.Enabled != 0, button.Faces[3] != nullptr,
                                                     button.ButtonMode == 1, button.Toggled != 0, button.MouseState);
            FillPixels(canvas.View(), PixelRect{0, 0, button.Width, button.Height}, FacePixel());
            CopyBitmap(canvas.Dc(), button.Faces[int(face)], 0, 0, button.Width, button.Height);
        });
        return 0;
    case WM_MOUSEMOVE: {
        // With the button held the press owns the mouse: a release anywhere still clicks.
        if (wParam & MK_LBUTTON) return 0;
        if (button.MouseState == 0) {
            SetCapture(window);
            button.MouseState = 1;
            Repaint(window);
        }
        if (Inside(button, MousePoint(lParam))) {
            SetCapture(window);
            return 0;
        }
        ReleaseOwnCapture();
        button.MouseState = 0;
        Repaint(window);
        return 0;
    }
    case WM_LBUTTONDOWN:
        SetFocus(window);
        SetCapture(window);
        button.MouseState = 2;
        Repaint(window);
        return 0;
    case WM_LBUTTONUP:
        ReleaseOwnCapture();
        if (button.MouseState != 2) return 0;
        if (button.ButtonMode == 1) button.Toggled = !button.Toggled;
        button.MouseState = 0;
        PostCommand(window, button.ControlId);
        Repaint(window);
        return 0;
    case WM_CAPTURECHANGED:
        if (button.MouseState && LostCapture(window, lParam)) {
            button.MouseState = 0;
            Repaint(window);
        }
        return 0;
    case WM_ENABLE:
        button.Enabled = wParam != 0;
        Repaint(window);
        return 0;
    default: break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

// ---- The skin ----

bool Checked(HWND button) { return SendMessageA(button, BM_GETCHECK, 0, 0) == BST_CHECKED; }

SkinPictures Present(const ButtonSkin& skin) {
    return {skin.HoverBitmap != nullptr, skin.DisabledBitmap != nullptr, skin.CheckedBitmap != nullptr,
            skin.CheckedHoverBitmap != nullptr, skin.CheckedDisabledBitmap != nullptr};
}

// A picture the skin lacks leaves the one shown: a stock button without an image is blank.
void Show(const ButtonSkin& skin, HWND button, SkinImage image) {
    HBITMAP bitmap = nullptr;
    switch (image) {
    case SkinImage::Normal: bitmap = skin.NormalBitmap; break;
    case SkinImage::Hover: bitmap = skin.HoverBitmap; break;
    case SkinImage::Disabled: bitmap = skin.DisabledBitmap; break;
    case SkinImage::Checked: bitmap = skin.CheckedBitmap; break;
    case SkinImage::CheckedHover: bitmap = skin.CheckedHoverBitmap; break;
    case SkinImage::CheckedDisabled: bitmap = skin.CheckedDisabledBitmap; break;
    case SkinImage::Keep: return;
    }
    if (bitmap) SendMessageA(button, BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap));
}

bool PaintDisabled(const ButtonSkin& skin, HWND button) {
    HBITMAP picture = Checked(button) && skin.CheckedDisabledBitmap ? skin.CheckedDisabledBitmap : skin.DisabledBitmap;
    if (!picture) return false;
    BITMAP size{};
    GetObject(picture, sizeof size, &size);
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(button, &ps);
    RECT client{};
    GetClientRect(button, &client);
    FillRect(dc, &client, FaceBrush ? FaceBrush : GetSysColorBrush(COLOR_BTNFACE));
    const int32_t x = std::max<int32_t>(0, (client.right - size.bmWidth) / 2);
    const int32_t y = std::max<int32_t>(0, (client.bottom - size.bmHeight) / 2);
    HDC source = CreateCompatibleDC(dc);
    HGDIOBJ previous = SelectObject(source, picture);
    BitBlt(dc, x, y, size.bmWidth, size.bmHeight, source, 0, 0, SRCCOPY);
    SelectObject(source, previous);
    DeleteDC(source);
    EndPaint(button, &ps);
    return true;
}

LRESULT CALLBACK SkinProc(HWND button, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* skin = reinterpret_cast<ButtonSkin*>(GetWindowLongPtrA(button, GWLP_USERDATA));
    if (!skin) return DefWindowProcA(button, message, wParam, lParam);
    try {
        const SkinPictures has = Present(*skin);
        switch (message) {
        case WM_ENABLE: Show(*skin, button, SkinOnEnable(has, wParam != 0, Checked(button))); break;
        case BM_SETCHECK:
            Show(*skin, button, SkinOnSetCheck(has, IsWindowEnabled(button), Checked(button), wParam));
            break;
        case WM_MOUSEMOVE: {
            RECT client{};
            GetClientRect(button, &client);
            if (!PtInRect(&client, MousePoint(lParam))) {
                ReleaseOwnCapture();
                skin->Hover = 0;
                Show(*skin, button, SkinAtRest(has, Checked(button)));
            } else if (!skin->Hover) {
                SetCapture(button);
                skin->Hover = 1;
                Show(*skin, button, SkinOnHover(has, Checked(button)));
            }
            break;
        }
        case WM_LBUTTONUP: skin->Hover = 0; break;
        case WM_PAINT:
            // A disabled system button greys its picture itself, under some systems to a flat
            // square; the skin's own disabled picture is shown as drawn.
            if (!IsWindowEnabled(button) && PaintDisabled(*skin, button)) return 0;
            break;
        case WM_CAPTURECHANGED:
            if (skin->Hover && LostCapture(button, lParam)) {
                skin->Hover = 0;
                Show(*skin, button, SkinAtRest(has, Checked(button)));
            }
            break;
        default: break;
        }
    } catch (...) {}
    return CallWindowProcA(skin->OldProc, button, message, wParam, lParam);
}

// ---- The picture ----

LRESULT HandlePicture(TPicture& picture, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND window = picture.Window;
    switch (message) {
    case WM_PAINT:
        PaintCanvas(window, picture.Canvas, picture.Width, picture.Height, [&](const DibSection& canvas) {
            FillPixels(canvas.View(), PixelRect{0, 0, picture.Width, picture.Height}, FacePixel());
            if (picture.PictureKind == 1) CopyBitmap(canvas.Dc(), picture.Picture, 0, 0, picture.Width, picture.Height);
        });
        return 0;
    case WM_LBUTTONDOWN: SetFocus(window); return 0;
    case WM_COMMAND: return SendMessageA(GetParent(window), message, wParam, lParam);
    default: break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

// ---- The label ----

void RenderLabel(TLabel& label, const DibSection& canvas) {
    const PixelView& view = canvas.View();
    const PixelRect all{0, 0, label.Width, label.Height};
    if (!label.Text) {
        FillPixels(view, all, FacePixel());
        return;
    }
    if (label.BackMode == 0) {
        FillPixels(view, all, FacePixel());
    } else if (label.BackBitmap) {
        FillPixels(view, all, 0);
        CopyBitmap(canvas.Dc(), label.BackBitmap, label.BackX, label.BackY, label.Width, label.Height);
    } else {
        RECT box{0, 0, label.Width, label.Height};
        FillRect(canvas.Dc(), &box, label.BackBrush);
    }
    const bool windowEnabled = IsWindowEnabled(label.Window);
    // A disabled window clears Enabled for good: the page sets it again when it wants it.
    if (label.BackMode != 0 && !windowEnabled) label.Enabled = 0;
    const TextLook look =
        ChooseLabelLook(label.BackMode, windowEnabled, label.Enabled, label.Toggled, label.StateColors);
    DrawLine(canvas.Dc(), label.Text, FontOf(look.font, label.Font), look.color, label.Width, label.Height,
             label.LeftAligned != 0);
}

LRESULT HandleLabel(TLabel& label, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND window = label.Window;
    switch (message) {
    case WM_PAINT:
        PaintCanvas(window, label.Canvas, label.Width, label.Height,
                    [&](const DibSection& canvas) { RenderLabel(label, canvas); });
        return 0;
    case WM_MOUSEMOVE: {
        if (label.LabelKind != kLabelKindText) break;
        if (label.Enabled) SetCursor(LoadCursor(nullptr, IDC_HAND));
        if (label.BackMode != kBackModeBand || !label.Enabled) return 0;
        if (Inside(label, MousePoint(lParam))) {
            if (label.Toggled == 1 || label.Toggled == 2) return 0;
            SetCapture(window);
            label.Toggled = 1;
        } else {
            ReleaseOwnCapture();
            if (label.Toggled != 2) label.Toggled = 0;
        }
        Repaint(window);
        return 0;
    }
    case WM_LBUTTONDOWN: SetFocus(window); return 0;
    case WM_LBUTTONUP:
        if (label.LabelKind != kLabelKindText || !label.Enabled) return 0;
        ReleaseOwnCapture();
        if (label.Toggled != 2) label.Toggled = 0;
        Repaint(window);
        PostCommand(window, label.ControlId);
        return 0;
    case WM_CAPTURECHANGED:
        if (label.Toggled == 1 && LostCapture(window, lParam)) {
            label.Toggled = 0;
            Repaint(window);
        }
        return 0;
    case WM_ENABLE: Repaint(window); return 0;
    case WM_COMMAND: PostMessageA(GetParent(window), message, wParam, lParam); return 0;
    default: break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return ControlProc<TButton, HandleButton>(window, message, wParam, lParam);
}

LRESULT CALLBACK PictureProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return ControlProc<TPicture, HandlePicture>(window, message, wParam, lParam);
}

LRESULT CALLBACK LabelProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return ControlProc<TLabel, HandleLabel>(window, message, wParam, lParam);
}

TButton::~TButton() {
    for (HBITMAP& face : Faces)
        if (face) DeleteObject(face);
}

HWND CreateButton(TButton*& record, HWND parent, HINSTANCE instance, int32_t x, int32_t y, int32_t width,
                  int32_t height, int32_t id) {
    HWND window = CreateWindowExA(0, TButton::kClassName, "", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN,
                                  x, y, width, height, parent, reinterpret_cast<HMENU>(INT_PTR(id)), instance, nullptr);
    record = FindControl<TButton>(window);
    return window;
}

void SetFaceBitmaps(TButton* button, HBITMAP normal, HBITMAP hover, HBITMAP pressed, HBITMAP disabled) {
    if (!button) return;
    const HBITMAP faces[4] = {normal, hover, pressed, disabled};
    for (int i = 0; i < 4; ++i) {
        if (button->Faces[i] && button->Faces[i] != faces[i]) DeleteObject(button->Faces[i]);
        button->Faces[i] = faces[i];
    }
    Repaint(button->Window);
}

void SetFaces(TButton* button, int32_t normal, int32_t hover, int32_t pressed, int32_t disabled) {
    if (!button) return;
    const auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(button->Window, GWLP_HINSTANCE));
    const auto load = [&](int32_t id) {
        return id > 0 ? static_cast<HBITMAP>(LoadImageA(instance, MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, 0))
                      : nullptr;
    };
    SetFaceBitmaps(button, load(normal), load(hover), load(pressed), load(disabled));
}

void SetToggle(TButton* button, bool on) {
    if (!button) return;
    button->Toggled = on;
    Repaint(button->Window);
}

void AttachSkin(ButtonSkin* skin, HWND button, HBITMAP normal, HBITMAP hover, HBITMAP disabled, HBITMAP checked,
                HBITMAP checkedHover, HBITMAP checkedDisabled) {
    if (!skin || !button) return;
    skin->Hover = 0;
    skin->NormalBitmap = normal;
    skin->HoverBitmap = hover;
    skin->DisabledBitmap = disabled;
    skin->CheckedBitmap = checked;
    skin->CheckedHoverBitmap = checkedHover;
    skin->CheckedDisabledBitmap = checkedDisabled;
    const SkinPictures has = Present(*skin);
    const bool isChecked = Checked(button);
    Show(*skin, button, IsWindowEnabled(button) ? SkinAtRest(has, isChecked) : SkinOnEnable(has, false, isChecked));
    skin->OldProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(button, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(static_cast<WNDPROC>(SkinProc))));
    SetWindowLongPtrA(button, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(skin));
}

HWND CreatePicture(TPicture*& record, HWND parent, HINSTANCE instance, int32_t x, int32_t y, int32_t width,
                   int32_t height, int32_t id, HBITMAP bitmap) {
    HWND window = CreateWindowExA(0, TPicture::kClassName, "", WS_CHILD | WS_VISIBLE, x, y, width, height, parent,
                                  reinterpret_cast<HMENU>(INT_PTR(id)), instance, nullptr);
    record = FindControl<TPicture>(window);
    if (record) {
        record->PictureKind = 1;
        record->Picture = bitmap;
    }
    return window;
}

TLabel* CreateLabel(int32_t x, int32_t y, int32_t width, int32_t height, HWND parent, int32_t id, const char* text,
                    bool enabled, bool leftAligned) {
    HWND window = CreateWindowExA(0, TLabel::kClassName, "", WS_CHILD | WS_VISIBLE, x, y, width, height, parent,
                                  reinterpret_cast<HMENU>(INT_PTR(id)), ControlInstance, nullptr);
    TLabel* label = FindControl<TLabel>(window);
    if (!label) return nullptr;
    label->LabelKind = kLabelKindText;
    label->Enabled = enabled;
    SetText(label->Text, text);
    label->LeftAligned = leftAligned;
    Repaint(window);
    return label;
}
