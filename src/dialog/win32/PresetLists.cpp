#include "dialog/win32/PresetLists.h"

#include "controls/win32/Fonts.h"
#include "dialog/DialogIds.h"
#include "dialog/PresetRows.h"
#include "dialog/PresetSaveIds.h"
#include "dialog/win32/LayerNavigator.h"
#include "dialog/win32/MainDialog.h"
#include "dialog/win32/Pages.h"
#include "dialog/win32/ResultOptions.h"
#include "dialog/win32/ThisModule.h"
#include "effects/EffectLayer.h"
#include "presets/PresetLibrary.h"
#include "resources/ArtIds.h"

#include <string>
#include <vector>

namespace {

HBITMAP FolderBitmaps[2] = {}; // folder, parent folder
HWND BusyDialog = nullptr;
HWND BusyFocus = nullptr;

std::string RowText(HWND list, int32_t row) {
    if (row < 0) return {};
    const LRESULT length = SendMessageA(list, LB_GETTEXTLEN, WPARAM(row), 0);
    if (length == LB_ERR) return {};
    std::string text(size_t(length) + 1, '\0');
    SendMessageA(list, LB_GETTEXT, WPARAM(row), LPARAM(text.data()));
    text.resize(size_t(length));
    return text;
}

int32_t Selected(HWND list) { return int32_t(SendMessageA(list, LB_GETCURSEL, 0, 0)); }

void FillList(HWND list, int32_t kind) {
    const std::vector<std::string> rows = FillPresetList(kind);
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    SendMessageA(list, LB_RESETCONTENT, 0, 0);
    size_t bytes = 0;
    for (const std::string& row : rows) bytes += row.size() + 1;
    // One allocation for a big folder instead of one per row.
    SendMessageA(list, LB_INITSTORAGE, WPARAM(rows.size()), LPARAM(bytes));
    for (const std::string& row : rows) SendMessageA(list, LB_ADDSTRING, 0, LPARAM(row.c_str()));
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
}

// Delete is there for a selected file row only.
void FollowSelection(HWND page, const PresetListIds& ids) {
    if (!ids.remove) return;
    HWND list = GetDlgItem(page, ids.list);
    const int32_t row = Selected(list);
    EnableWindow(GetDlgItem(page, ids.remove), row >= 0 && !IsFolderRow(RowText(list, row)));
}

// The whole dialog stays out of reach while a preset loads; the focus comes back after.
void Busy(bool on) {
    if (!BusyDialog) return;
    if (on) BusyFocus = GetFocus();
    EnableWindow(BusyDialog, !on);
    if (!on && BusyFocus && IsWindow(BusyFocus)) SetFocus(BusyFocus);
}

void RowClicked(HWND page, const PresetListIds& ids, HWND list) {
    const int32_t row = Selected(list);
    HWND dialog = GetParent(page);
    BusyDialog = dialog;
    const PresetClick click = ApplyPresetRow(ids.kind, row, RowText(list, row), LastUsedParams, Busy);
    BusyDialog = nullptr;
    if (ids.remove) EnableWindow(GetDlgItem(page, ids.remove), click.deleteEnabled);
    if (!click.applied) return;
    CheckResultOptions(dialog);
    RebuildLayers();
    KeepWashLayers = KeepSurfaceLayers = KeepBackgroundLayer = false;
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_PARAMS_CHANGED, 0), 0);
    RefreshPage();
    // A loaded file has had the navigator reconciled by the load itself.
    if (click.reconcile) ReconcileNavigator();
}

void RowOpened(HWND page, const PresetListIds& ids, HWND list) {
    const std::string row = RowText(list, Selected(list));
    if (!IsFolderRow(row)) return;
    EnterPresetFolder(ids.kind, row);
    SetDlgItemTextA(page, ids.label, PresetSubFolder[ids.kind].c_str());
    FillList(list, ids.kind);
    FollowSelection(page, ids);
}

INT_PTR CALLBACK NameProc(HWND box, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_INITDIALOG: {
        SetWindowLongPtrA(box, DWLP_USER, LONG_PTR(lparam));
        const auto* typed = reinterpret_cast<const std::string*>(lparam);
        HWND edit = GetDlgItem(box, IDC_PRESET_NAME);
        SendMessageA(edit, EM_LIMITTEXT, 255, 0);
        SetWindowTextA(edit, typed->c_str());
        EnableWindow(GetDlgItem(box, IDOK), !typed->empty());
        SendMessageA(edit, EM_SETSEL, 0, -1);
        SetFocus(edit);
        return FALSE;
    }
    case WM_COMMAND: {
        const int id = LOWORD(wparam);
        const bool empty = GetWindowTextLengthA(GetDlgItem(box, IDC_PRESET_NAME)) == 0;
        if (id == IDC_PRESET_NAME && HIWORD(wparam) == EN_CHANGE) EnableWindow(GetDlgItem(box, IDOK), !empty);
        if (id == IDOK && !empty) {
            char name[256] = {};
            GetDlgItemTextA(box, IDC_PRESET_NAME, name, sizeof name);
            *reinterpret_cast<std::string*>(GetWindowLongPtrA(box, DWLP_USER)) = name;
            EndDialog(box, IDOK);
        }
        if (id == IDCANCEL) EndDialog(box, IDCANCEL);
        return TRUE;
    }
    default: return FALSE;
    }
}

INT_PTR CALLBACK GuardedNameProc(HWND box, UINT message, WPARAM wparam, LPARAM lparam) {
    try {
        return NameProc(box, message, wparam, lparam);
    } catch (...) {
        return FALSE;
    }
}

// The name box again after No, with the name as it was typed.
void SaveClicked(HWND page, const PresetListIds& ids) {
    HWND dialog = GetParent(page);
    std::string typed;
    for (;;) {
        if (DialogBoxParamA(ThisModule(), MAKEINTRESOURCEA(IDD_PRESET_SAVE), dialog, GuardedNameProc, LPARAM(&typed)) !=
            IDOK)
            return;
        SaveResult result = SavePreset(ids.kind, typed, false);
        if (result == SaveResult::Exists) {
            const int answer = MessageBoxA(dialog, "The file already exist!\n Do you want rewrite it?",
                                           "File Save Warning", MB_YESNOCANCEL | MB_ICONWARNING);
            if (answer == IDNO) continue;
            if (answer != IDYES) return;
            result = SavePreset(ids.kind, typed, true);
        }
        if (result == SaveResult::Created)
            SendDlgItemMessageA(page, ids.list, LB_ADDSTRING, 0, LPARAM(PresetSaveName(typed).c_str()));
        return;
    }
}

void DeleteClicked(HWND page, const PresetListIds& ids) {
    HWND list = GetDlgItem(page, ids.list);
    const int32_t row = Selected(list);
    if (row >= 0) {
        // A folder row, or a file already gone, only leaves the list.
        DeletePresetFile(RowText(list, row), ids.kind);
        SendMessageA(list, LB_DELETESTRING, WPARAM(row), 0);
    }
    FollowSelection(page, ids);
}

HBITMAP FolderBitmap(int32_t id) {
    HBITMAP& b = FolderBitmaps[id == art::kParentFolderRow ? 1 : 0];
    if (!b) b = HBITMAP(LoadImageA(ThisModule(), MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
    return b;
}

int32_t ListFontHeight() {
    HDC dc = GetDC(nullptr);
    HGDIOBJ old = SelectObject(dc, ListFont ? HGDIOBJ(ListFont) : GetStockObject(DEFAULT_GUI_FONT));
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    SelectObject(dc, old);
    ReleaseDC(nullptr, dc);
    return int32_t(tm.tmHeight);
}

bool IsPresetList(UINT type, UINT id) {
    const PresetListIds* ids = PresetListByControl(int32_t(id));
    return type == ODT_LISTBOX && ids && ids->list == int32_t(id);
}

} // namespace

void SetUpPresetLists(HWND page, int32_t tab) {
    int32_t count = 0;
    const PresetListIds* lists = PresetListsOfTab(tab, count);
    const int32_t height = PresetRowHeight(ListFontHeight());
    for (int32_t i = 0; i < count; ++i) {
        const PresetListIds& ids = lists[i];
        HWND list = GetDlgItem(page, ids.list);
        if (!list) continue;
        SendMessageA(list, LB_SETITEMHEIGHT, 0, height);
        SetDlgItemTextA(page, ids.label, PresetSubFolder[ids.kind].c_str());
        FillList(list, ids.kind);
        FollowSelection(page, ids);
    }
}

bool MeasurePresetRow(MEASUREITEMSTRUCT* item) {
    if (!item || !IsPresetList(item->CtlType, item->CtlID)) return false;
    item->itemHeight = UINT(PresetRowHeight(ListFontHeight()));
    return true;
}

bool DrawPresetRow(const DRAWITEMSTRUCT* item) {
    if (!item || !IsPresetList(item->CtlType, item->CtlID)) return false;
    if (item->itemID == UINT(-1)) return true;
    HDC dc = item->hDC;
    const RECT& r = item->rcItem;
    const PresetRowLook look = LayOutPresetRow(RowText(item->hwndItem, int32_t(item->itemID)), r.left, r.top);
    HGDIOBJ oldBrush = SelectObject(dc, GetSysColorBrush(COLOR_WINDOW));
    HGDIOBJ oldPen = SelectObject(dc, GetStockObject(BLACK_PEN));
    if (item->itemState & (ODS_FOCUS | ODS_SELECTED)) Rectangle(dc, r.left, r.top, r.right, r.bottom);
    else FillRect(dc, &r, GetSysColorBrush(COLOR_WINDOW));
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
    if (look.bitmap)
        if (HBITMAP bitmap = FolderBitmap(look.bitmap)) {
            HDC memory = CreateCompatibleDC(dc);
            HGDIOBJ old = SelectObject(memory, bitmap);
            BitBlt(dc, look.bitmapX, look.bitmapY, kFolderRowWidth, kFolderRowHeight, memory, 0, 0, SRCCOPY);
            SelectObject(memory, old);
            DeleteDC(memory);
        }
    const int oldMode = SetBkMode(dc, TRANSPARENT);
    const COLORREF oldColor = SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    HGDIOBJ oldFont = SelectObject(dc, ListFont ? HGDIOBJ(ListFont) : GetStockObject(DEFAULT_GUI_FONT));
    RECT text{look.textX, r.top, r.right - 1, r.bottom};
    DrawTextA(dc, look.text.c_str(), int(look.text.size()), &text,
              DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(dc, oldFont);
    SetTextColor(dc, oldColor);
    SetBkMode(dc, oldMode);
    return true;
}

bool PresetListCommand(HWND page, int32_t id, int32_t code) {
    const PresetListIds* ids = PresetListByControl(id);
    if (!ids) return false;
    if (id == ids->list) {
        HWND list = GetDlgItem(page, id);
        if (code == LBN_SELCHANGE) RowClicked(page, *ids, list);
        if (code == LBN_DBLCLK) RowOpened(page, *ids, list);
    } else if (code == BN_CLICKED) {
        if (id == ids->save) SaveClicked(page, *ids);
        if (id == ids->remove) DeleteClicked(page, *ids);
    }
    return true;
}

void ForgetPresetLists() {
    for (HBITMAP& b : FolderBitmaps) {
        if (b) DeleteObject(b);
        b = nullptr;
    }
    BusyDialog = BusyFocus = nullptr;
}
