#include "dialog/win32/LinkDialog.h"

#include "dialog/DialogIds.h"
#include "dialog/LinkIds.h"
#include "dialog/LinkRules.h"
#include "dialog/win32/Pages.h"
#include "dialog/win32/ThisModule.h"
#include "effects/LinkSync.h"
#include "state/Parameters.h"

namespace {

const int32_t kRadios[4] = {0, IDC_LINK_WASH, IDC_LINK_SURFACE, IDC_LINK_BACKGROUND};
const int32_t kButtons[4] = {0, IDC_WASH_LINK, IDC_SURF_LINK, IDC_BACK_LINK};

void SetUpRadios(HWND box) {
    const LinkRadios radios = RadiosFor(LinkDialogKind, CurrentLinkMatches());
    for (int32_t kind = 1; kind <= 3; ++kind) {
        HWND radio = GetDlgItem(box, kRadios[kind]);
        ShowWindow(radio, radios.shown[kind] ? SW_SHOW : SW_HIDE);
        SendMessageA(radio, BM_SETCHECK, kind == radios.checked ? BST_CHECKED : BST_UNCHECKED, 0);
    }
}

int32_t CheckedKind(HWND box) {
    for (int32_t kind = 1; kind <= 3; ++kind)
        if (IsDlgButtonChecked(box, kRadios[kind]) == BST_CHECKED) return kind;
    return LinkDialogKind;
}

INT_PTR CALLBACK LinkProc(HWND box, UINT message, WPARAM wparam, LPARAM) {
    try {
        if (message == WM_INITDIALOG) {
            SetUpRadios(box);
            return TRUE;
        }
        if (message != WM_COMMAND || HIWORD(wparam) != BN_CLICKED) return FALSE;
        switch (LOWORD(wparam)) {
        case IDYES:
            LinkDialogKind = int16_t(CheckedKind(box));
            EndDialog(box, LinkDialogKind);
            return TRUE;
        case IDNO:
        case IDCANCEL: EndDialog(box, -1); return TRUE;
        default: return FALSE;
        }
    } catch (...) {
        return FALSE;
    }
}

uint8_t& LinkOf(int32_t kind) {
    return kind == LinkKindWash ? LinkWash : kind == LinkKindSurface ? LinkSurface : LinkBackground;
}

void SyncFrom(int32_t master) {
    if (master == LinkKindWash) SyncWashLinks();
    if (master == LinkKindSurface) SyncSurfaceLinks();
    if (master == LinkKindBackground) SyncBackgroundLinks();
}

void ShowLink(HWND button, bool on) {
    if (button) SendMessageA(button, BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
}

} // namespace

int32_t RunLinkDialog(HWND owner) {
    const INT_PTR result = DialogBoxParamA(ThisModule(), MAKEINTRESOURCEA(IDD_LINK), owner, LinkProc, 0);
    return result >= LinkKindWash && result <= LinkKindBackground ? int32_t(result) : -1;
}

void PressLink(HWND page, int32_t kind, bool textureChosen) {
    if (!page || kind < LinkKindWash || kind > LinkKindBackground) return;
    HWND button = GetDlgItem(page, kButtons[kind]);
    uint8_t& link = LinkOf(kind);
    UpdateLinkMatches();
    const LinkMatches matches = CurrentLinkMatches();
    switch (StartLinkPress(kind, link, textureChosen, matches)) {
    case LinkStart::Disable:
        link = 0;
        ShowLink(button, false);
        if (button) EnableWindow(button, textureChosen);
        return;
    case LinkStart::TurnOff:
        link = 0;
        ShowLink(button, false);
        return;
    case LinkStart::Ask: break;
    }
    LinkDialogKind = int16_t(kind);
    const LinkPlan plan = AnswerLinkPress(kind, RunLinkDialog(GetParent(page)), textureChosen, matches);
    link = plan.linkOn;
    if (!plan.linkOn) {
        ShowLink(button, false);
        return;
    }
    if (plan.partners.wash) LinkWash = 1;
    if (plan.partners.surface) LinkSurface = 1;
    if (plan.partners.background) LinkBackground = 1;
    SyncFrom(plan.master);
    if (plan.refreshPage) RefreshPage();
    ShowLink(button, true);
    if (plan.render) SendMessageA(GetParent(page), WM_COMMAND, MAKEWPARAM(IDC_PARAMS_CHANGED, 0), 0);
}
