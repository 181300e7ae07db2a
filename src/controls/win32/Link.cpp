#include "controls/win32/Link.h"

#include "controls/FontTable.h"
#include "controls/win32/ControlProcs.h"
#include "controls/win32/Fonts.h"

namespace {

LRESULT HandleLink(TLink& link, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND window = link.Window;
    switch (message) {
    case WM_PAINT:
        PaintCanvas(window, link.Canvas, link.Width, link.Height, [&](const DibSection& canvas) {
            FillPixels(canvas.View(), PixelRect{0, 0, link.Width, link.Height}, FacePixel());
            if (link.LinkKind != kLinkKindText || !link.Text) return;
            if (link.HasBackground)
                CopyBitmap(canvas.Dc(), link.BackBitmap, link.BackX, link.BackY, link.Width, link.Height);
            const TextLook look =
                ChooseLinkLook(link.Font != nullptr, link.Clickable, link.UseTextColor, link.TextColor);
            DrawLine(canvas.Dc(), link.Text, FontOf(look.font, link.Font), look.color, link.Width, link.Height,
                     link.LeftAligned != 0);
        });
        return 0;
    case WM_MOUSEMOVE:
        if (link.Clickable) SetCursor(LoadCursor(nullptr, IDC_HAND));
        return 0;
    case WM_LBUTTONDOWN:
        if (link.Clickable) SendCommand(window, link.ControlId);
        return 0;
    case WM_COMMAND: return SendMessageA(GetParent(window), message, wParam, lParam);
    default: break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

LRESULT CALLBACK LinkProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return ControlProc<TLink, HandleLink>(window, message, wParam, lParam);
}

TLink* SetLink(HWND dialog, int32_t id, const char* text, bool clickable, bool leftAligned) {
    TLink* link = FindControl<TLink>(GetDlgItem(dialog, id));
    if (!link) return nullptr;
    link->LinkKind = kLinkKindText;
    SetText(link->Text, text);
    link->Clickable = clickable;
    link->LeftAligned = leftAligned;
    link->HasBackground = 0;
    link->BackBitmap = nullptr;
    link->BackX = link->BackY = 0;
    link->Font = nullptr;
    link->TextColor = 0;
    link->UseTextColor = 0;
    InvalidateRect(link->Window, nullptr, FALSE);
    return link;
}

void SetLinkBackground(TLink* link, HBITMAP bitmap, int32_t x, int32_t y) {
    if (!link) return;
    const PixelOffset at = LinkBackgroundOffset(x, y, ScreenDpi);
    link->HasBackground = 1;
    link->BackBitmap = bitmap;
    link->BackX = at.x;
    link->BackY = at.y;
    InvalidateRect(link->Window, nullptr, FALSE);
}

void SetLinkFont(TLink* link, HFONT font, bool useColor, uint32_t color) {
    if (!link) return;
    link->Font = font;
    link->UseTextColor = useColor;
    link->TextColor = color;
    InvalidateRect(link->Window, nullptr, FALSE);
}
