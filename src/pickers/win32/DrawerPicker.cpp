#include "pickers/win32/DrawerPicker.h"

#include "controls/win32/Buttons.h"
#include "controls/win32/Fonts.h"
#include "pickers/DrawerLayout.h"
#include "pickers/Thumbnails.h"
#include "pickers/win32/Drawers.h"
#include "pickers/win32/PickerTile.h"
#include "resources/ArtIds.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>

HWND ThumbProgressBar = nullptr;

namespace {

constexpr int kSelectId = 1, kCancelId = 2, kNextPageId = 1003, kPreviousPageId = 1004, kLiveId = 1443;
constexpr int kSetComboId = 1110, kEffectComboId = 1111, kSetLabelId = 1116, kEffectLabelId = 1117;
constexpr int kPanelId = 33;
constexpr UINT_PTR kSlideTimer = 1;

void Move(TButton* button, const LayoutBox& b) {
    if (button) MoveWindow(button->Window, b.x, b.y, b.width, b.height, TRUE);
}

TButton* MakeButton(HWND parent, const LayoutBox& b, int id, int normal, int hover, int pressed, const char* tip) {
    TButton* record = nullptr;
    CreateButton(record, parent, ControlInstance, b.x, b.y, b.width, b.height, id);
    if (!record) return nullptr;
    SetFaces(record, normal, hover, pressed, 0);
    AddTooltip(record->Window, tip, nullptr);
    return record;
}

HWND MakeStatic(HWND parent, const LayoutBox& b, int id, const char* text) {
    HWND w = CreateWindowExA(0, "STATIC", text, WS_CHILD | WS_VISIBLE | SS_RIGHT, b.x, b.y, b.width, b.height, parent,
                             HMENU(INT_PTR(id)), ControlInstance, nullptr);
    if (w && SmallFont) SendMessageA(w, WM_SETFONT, WPARAM(SmallFont), FALSE);
    return w;
}

HWND MakeCombo(HWND parent, const LayoutBox& b, int id, bool scroll, const char* const* rows, size_t count,
               const char* tip) {
    HWND w = CreateWindowExA(0, "COMBOBOX", "",
                             WS_CHILD | WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWNLIST | (scroll ? WS_VSCROLL : 0), b.x,
                             b.y, b.width, b.height, parent, HMENU(INT_PTR(id)), ControlInstance, nullptr);
    if (!w) return nullptr;
    if (SmallFont) SendMessageA(w, WM_SETFONT, WPARAM(SmallFont), FALSE);
    for (size_t i = 0; i < count; ++i) SendMessageA(w, CB_ADDSTRING, 0, LPARAM(rows[i]));
    SendMessageA(w, CB_SETCURSEL, 0, 0);
    AddTooltip(w, tip, nullptr);
    return w;
}

} // namespace

TDrawerPicker::TDrawerPicker(uint8_t mode) { List.DrawerMode = mode; }

TDrawerPicker::~TDrawerPicker() {
    if (Window) KillTimer(Window, kSlideTimer);
    DropTiles();
    if (List.DrawerMode == kTextureDrawer) FreeThumbBuffers();
    if (Title) DeleteObject(Title);
}

void TDrawerPicker::CreateChildren() {
    const bool colours = List.DrawerMode == kColourDrawer;
    const DrawerPlaces d = PlaceDrawerParts(Width, Height, RowsPerPage);
    CancelButton = MakeButton(Window, d.cancel, kCancelId, art::kCancelNormal, art::kCancelHover, art::kCancelNormal,
                              "Close effect picker and return to plug-in");
    if (!colours) {
        LiveButton = MakeButton(Window, d.live, kLiveId, art::kLiveNormal, art::kLiveHover, art::kLiveOn,
                                "Preview all effects on current image in picker");
        if (LiveButton) LiveButton->ButtonMode = 1;
    }
    SelectButton = MakeButton(Window, d.select, kSelectId, art::kSelectNormal, art::kSelectHover, art::kSelectNormal,
                              "Select and apply this effect");
    PrevPageButton = MakeButton(Window, d.previous, kPreviousPageId, art::kPagePrevNormal, art::kPagePrevHover,
                                art::kPagePrevNormal, "Previous page");
    NextPageButton = MakeButton(Window, d.next, kNextPageId, art::kPageNextNormal, art::kPageNextHover,
                                art::kPageNextNormal, "Next page");

    const FilterRow f = PlaceFilterRow(colours);
    if (!colours) {
        const std::vector<std::string> sets = TextureSetRows();
        std::vector<const char*> rows;
        for (const std::string& s : sets) rows.push_back(s.c_str());
        SetLabel = MakeStatic(Window, f.setLabel, kSetLabelId, "Texture Set");
        SetCombo = MakeCombo(Window, f.setCombo, kSetComboId, false, rows.data(), rows.size(),
                             "Filter all texture effects by texture set or status");
        EffectLabel = MakeStatic(Window, f.effectLabel, kEffectLabelId, "Effect");
        EffectCombo = MakeCombo(Window, f.effectCombo, kEffectComboId, false, kEffectRows, std::size(kEffectRows),
                                "Filter all texture effects by style or effect");
    } else {
        EffectLabel = MakeStatic(Window, f.effectLabel, kEffectLabelId, "Category");
        EffectCombo = MakeCombo(Window, f.effectCombo, kEffectComboId, true, kCategoryRows, std::size(kCategoryRows),
                                "Choose a color category");
    }
}

void TDrawerPicker::SetTitle(HBITMAP bitmap) {
    if (TitleControl) return;
    Title = bitmap;
    CreatePicture(TitleControl, Window, ControlInstance, (Width - 199) / 2, 17, 199, 20, -1, bitmap);
}

const char* TDrawerPicker::Category(char (&text)[64]) const {
    if (List.DrawerMode != kColourDrawer || !EffectCombo) return nullptr;
    const auto row = SendMessageA(EffectCombo, CB_GETCURSEL, 0, 0);
    if (row == CB_ERR || row == 0) return nullptr;
    const auto length = SendMessageA(EffectCombo, CB_GETLBTEXTLEN, WPARAM(row), 0);
    if (length == CB_ERR || length >= 64) return nullptr;
    text[0] = 0;
    SendMessageA(EffectCombo, CB_GETLBTEXT, WPARAM(row), LPARAM(text));
    return text;
}

void TDrawerPicker::MakeTiles() {
    const DrawerPlaces d = PlaceDrawerParts(Width, Height, RowsPerPage);
    TilePanel = new TDrawerWindow;
    if (!TilePanel->Create(Window, d.panel.x, d.panel.y, d.panel.width, d.panel.height, kPanelId)) return;
    for (int32_t i = 0; i < RowsPerPage * kTileColumns; ++i) {
        auto* tile = new TPickerThump2;
        const LayoutBox b = TileBox(i);
        tile->Owner = this;
        if (!tile->Create(TilePanel->Window, b.x, b.y, b.width, b.height, kFirstTileId + i)) {
            delete tile;
            continue;
        }
        tile->Place();
        Tiles.push_back(tile);
    }
    ShowWindow(TilePanel->Window, SW_SHOWNA);
}

void TDrawerPicker::DropTiles() {
    for (TPickerThump2* tile : Tiles) delete tile;
    Tiles.clear();
    delete TilePanel;
    TilePanel = nullptr;
}

void TDrawerPicker::Initialise(const char* currentName, const char* folder, uint8_t mode) {
    if (!Built) {
        List.DrawerMode = mode;
        RowsPerPage = RowsPerPageFor(Height);
        ListFolder(List, folder);
        char text[64];
        ApplyFilter(List, Category(text));
        MakeTiles();
        Built = 1;
    }
    if (List.DrawerMode == kTextureDrawer && currentName && *currentName) SelectByName(List, currentName);
    RefreshPage();
    if (List.DrawerMode == kTextureDrawer) SetToggle(LiveButton, LivePreviewOn != 0);
}

void TDrawerPicker::Rebuild(const char*, uint8_t) {
    DropTiles();
    RowsPerPage = RowsPerPageFor(Height);
    MakeTiles();
    const int32_t perPage = std::max(RowsPerPage, 1) * kTileColumns;
    List.PageCount = (List.ShownCount + perPage - 1) / perPage;
    if (List.CurrentPage > List.PageCount - 1) List.CurrentPage = std::max(List.PageCount - 1, 0);
    RefreshPage();
}

void TDrawerPicker::MoveButtons() {
    const DrawerPlaces d = PlaceDrawerParts(Width, Height, RowsPerPage);
    Move(CancelButton, d.cancel);
    Move(LiveButton, d.live);
    Move(SelectButton, d.select);
}

void TDrawerPicker::FollowWidth() {
    const DrawerPlaces d = PlaceDrawerParts(Width, Height, RowsPerPage);
    if (NextPageButton)
        SetWindowPos(NextPageButton->Window, nullptr, d.next.x, d.next.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    if (TitleControl)
        SetWindowPos(TitleControl->Window, nullptr, d.title.x, d.title.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

void TDrawerPicker::RepaintTiles() {
    for (TPickerThump2* tile : Tiles)
        if (tile->Window) RedrawWindow(tile->Window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void TDrawerPicker::RefreshPage() {
    if (Tiles.empty()) return;
    if (List.ShownEntries.empty()) {
        for (auto t = Tiles.rbegin(); t != Tiles.rend(); ++t) ShowWindow((*t)->Window, SW_HIDE);
        return;
    }
    const int32_t perPage = RowsPerPage * kTileColumns;
    const int32_t first = List.CurrentPage * perPage;
    int32_t last = first + perPage - 1;
    if (last >= List.ShownCount) {
        for (int32_t t = int32_t(Tiles.size()) - 1; t >= 0 && first + t > List.ShownCount - 1; --t)
            ShowWindow(Tiles[size_t(t)]->Window, SW_HIDE);
        last = List.ShownCount - 1;
    }
    if (ThumbProgressBar) {
        SendMessageA(ThumbProgressBar, PBM_SETRANGE, 0, MAKELPARAM(0, perPage));
        SendMessageA(ThumbProgressBar, PBM_SETPOS, 0, 0);
    }
    int32_t done = 0;
    for (TPickerThump2* tile : Tiles) {
        const int32_t entry = first + done;
        if (entry > last) break;
        ShowWindow(tile->Window, SW_SHOWNA);
        tile->EntryIndex = entry;
        tile->Bitmap = {};
        // Entry 0 is "No_Texture.qzt" or "Reset Colors": the placeholder shows it.
        if (entry != 0) {
            const TextureEntry& e = List.ShownEntries[size_t(entry)];
            if (List.DrawerMode == kColourDrawer) {
                if (!RenderColourThumb(ColourBase, TargetKind, e.Name, tile->Bitmap)) tile->Bitmap = {};
            } else if (LoadThumbFile(List, entry, tile->Bitmap) || MakeThumbFromTexture(List, entry, tile->Bitmap)) {
                if (LivePreviewOn)
                    tile->ThumbTileScale = RenderLive(tile->Bitmap, TargetKind, e.ThumbScale, e.ThumbResolution);
            } else {
                tile->Bitmap = {};
            }
        }
        InvalidateRect(tile->Window, nullptr, TRUE);
        ++done;
        if (ThumbProgressBar) SendMessageA(ThumbProgressBar, PBM_SETPOS, WPARAM(done), 0);
    }
    // Back to the renders' range, which reports in percent.
    if (ThumbProgressBar) {
        SendMessageA(ThumbProgressBar, PBM_SETPOS, 0, 0);
        SendMessageA(ThumbProgressBar, PBM_SETRANGE, 0, MAKELPARAM(0, 100));
    }
    const bool several = List.PageCount >= 2;
    if (PrevPageButton) ShowWindow(PrevPageButton->Window, several && List.CurrentPage >= 1 ? SW_SHOWNA : SW_HIDE);
    if (NextPageButton)
        ShowWindow(NextPageButton->Window, several && List.CurrentPage < List.PageCount - 1 ? SW_SHOWNA : SW_HIDE);
}

void TDrawerPicker::Open() {
    if (IsWindowVisible(Window)) return;
    SetWindowPos(Window, nullptr, -Width, 0, Width, Height, SWP_NOREDRAW | SWP_NOZORDER | SWP_NOACTIVATE);
    SlideState = 1;
    SlidePercent = 0.0f;
    SetTimer(Window, kSlideTimer, 10, nullptr);
    // Above the tab control and its page, which were made after the drawer.
    SetWindowPos(Window, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW);
}

void TDrawerPicker::Close() {
    SlideState = 255;
    SlidePercent = 0.0f;
    FreeUnderlay();
    SetTimer(Window, kSlideTimer, 10, nullptr);
}

void TDrawerPicker::Tick() {
    const uint8_t state = SlideState;
    const SlideTick t = AdvanceSlide(state, SlidePercent, Left, Width);
    if (state == 0) return;
    if (t.finished) {
        KillTimer(Window, kSlideTimer);
        SlideState = 0;
        if (state == 1) {
            UpdateWindow(Parent);
        } else {
            ShowWindow(Window, SW_HIDE);
            SetDrawerOpen(Parent, false);
        }
        return;
    }
    SetWindowPos(Window, nullptr, t.x, Top, Width, Height,
                 SWP_NOZORDER | SWP_NOACTIVATE | (t.repaintInMove ? 0 : SWP_NOREDRAW));
    if (!t.repaintInMove)
        RedrawWindow(Window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void TDrawerPicker::Turn(int32_t step) {
    List.CurrentPage = std::clamp(List.CurrentPage + step, 0, std::max(List.PageCount - 1, 0));
    RefreshPage();
    if (TilePanel)
        RedrawWindow(TilePanel->Window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void TDrawerPicker::FilterChanged(int32_t id) {
    if (id == kSetComboId) {
        SetFilterIndex = int32_t(SendMessageA(SetCombo, CB_GETCURSEL, 0, 0));
    } else if (List.DrawerMode == kTextureDrawer) {
        EffectFilterIndex = int32_t(SendMessageA(EffectCombo, CB_GETCURSEL, 0, 0));
    } else {
        const auto row = SendMessageA(EffectCombo, CB_GETCURSEL, 0, 0);
        char text[64] = {};
        const auto length = SendMessageA(EffectCombo, CB_GETLBTEXTLEN, WPARAM(row), 0);
        if (row != CB_ERR && length != CB_ERR && length < 64)
            SendMessageA(EffectCombo, CB_GETLBTEXT, WPARAM(row), LPARAM(text));
        if (std::strcmp(text, kCategorySeparator) == 0) {
            // The list sets its pick after this message: put the old row back after it too.
            SendMessageA(EffectCombo, CB_SETCURSEL, WPARAM(EffectFilterIndex), 0);
            PostMessageA(EffectCombo, CB_SETCURSEL, WPARAM(EffectFilterIndex), 0);
            return;
        }
        EffectFilterIndex = int32_t(row);
    }
    char text[64];
    ApplyFilter(List, Category(text));
    List.CurrentPage = 0;
    List.SelectedIndex = 0;
    char name[64];
    std::memcpy(name, List.CurrentName, sizeof name);
    SelectByName(List, name);
    List.CurrentPage = 0; // the page does not follow the selection here
    RefreshPage();
    if (TilePanel)
        RedrawWindow(TilePanel->Window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void TDrawerPicker::TileClicked(int32_t index) {
    List.SelectedIndex = index;
    RepaintTiles();
    if (index >= 0 && index < int32_t(List.ShownEntries.size()))
        std::snprintf(List.CurrentName, sizeof List.CurrentName, "%s", List.ShownEntries[size_t(index)].Name);
    SendMessageA(Parent, WM_COMMAND, MAKEWPARAM(ControlId, 0), LPARAM(Window));
}

LRESULT TDrawerPicker::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND: {
        const int id = LOWORD(wParam), code = HIWORD(wParam);
        switch (id) {
        case kSelectId:
        case kCancelId: SendMessageA(Parent, WM_COMMAND, MAKEWPARAM(ControlId, id), LPARAM(Window)); return 0;
        case kNextPageId: Turn(1); return 0;
        case kPreviousPageId: Turn(-1); return 0;
        case kLiveId:
            LivePreviewOn = LiveButton && LiveButton->Toggled;
            RefreshPage();
            RepaintTiles();
            return 0;
        case kSetComboId:
        case kEffectComboId:
            if (code == CBN_SELENDOK) FilterChanged(id);
            return 0;
        default: return 0;
        }
    }
    case WM_TIMER:
        if (wParam == kSlideTimer) Tick();
        return 0;
    case WM_CTLCOLORSTATIC:
        if (HWND(lParam) != SetLabel && HWND(lParam) != EffectLabel) break;
        SetTextColor(HDC(wParam), RGB(255, 255, 255));
        SetBkMode(HDC(wParam), TRANSPARENT);
        return LRESULT(GetStockObject(BLACK_BRUSH));
    case WM_CTLCOLORDLG: return LRESULT(GetStockObject(BLACK_BRUSH));
    default: break;
    }
    return TDrawerWindow::WindowProc(window, message, wParam, lParam);
}
