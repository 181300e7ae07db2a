#include "dialog/win32/LayerNavigator.h"

#include "controls/win32/Buttons.h"
#include "controls/win32/Fonts.h"
#include "dialog/DialogIds.h"
#include "dialog/NavigatorRules.h"
#include "dialog/win32/MainDialog.h"
#include "dialog/win32/Pages.h"
#include "dialog/win32/ResultOptions.h"
#include "effects/EffectLayer.h"
#include "effects/LinkSync.h"
#include "effects/Surface.h"
#include "platform/Alert.h"
#include "presets/PresetHooks.h"
#include "resources/ArtIds.h"
#include "state/Parameters.h"
#include "state/ViewState.h"

uint8_t SecondWashShown = 0, SecondSurfaceShown = 0;

namespace {

HWND Dialog = nullptr;
NavigatorOrigin Origin;

HWND Item(int32_t id) { return Dialog ? GetDlgItem(Dialog, id) : nullptr; }

void PrepareSecondWash() {
    DestroyLayer(WashLayers[1]);
    FillLayer(WashLayers[1], LayerWash, true);
}

void PrepareSecondSurface() {
    DestroyLayer(SurfaceLayers[1]);
    FillLayer(SurfaceLayers[1], LayerSurface, true);
    SurfaceShadeDirty = 1;
}

// One group made anew from gParams, the others as they are.
void Remake(bool washes, bool surfaces) {
    KeepWashLayers = !washes;
    KeepSurfaceLayers = !surfaces;
    KeepBackgroundLayer = true;
    CreateEngine();
    KeepWashLayers = KeepSurfaceLayers = KeepBackgroundLayer = false;
}

// Labels and the delete buttons, the windows a user can press.
template <class Each> void ForEachButton(Each each) {
    for (const NavigatorLabel& l : kNavigatorLabels) each(l.id);
    for (const NavigatorDelete& d : kNavigatorDeletes) each(d.id);
}

// A random look replaces everything: every group made anew.
void RebuildAllLayers() {
    KeepWashLayers = KeepSurfaceLayers = KeepBackgroundLayer = false;
    RebuildLayers();
}

bool IsReset(int32_t id) { return id >= NavResetAll && id <= NavResetBackground; }

void ResetByTab(HWND dialog) {
    const int32_t tab = ActiveTab;
    const ResetPlan plan = ResetPlanFor(tab);
    if (plan.ask &&
        ShowAlert(kResetQuestion, kResetTitle, AlertIcon::Question, AlertButtons::YesNo, dialog) != AlertAnswer::Yes)
        return;
    FilterParameters& p = *gParams;
    ApplyTabReset(p, tab);
    KeepWashLayers = plan.keepWash;
    KeepSurfaceLayers = plan.keepSurface;
    KeepBackgroundLayer = plan.keepBackground;
    p.PresetApplied = 1;
    RebuildLayers();
    KeepWashLayers = KeepSurfaceLayers = KeepBackgroundLayer = false;
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_PARAMS_CHANGED, 0), 0);
    RefreshPage();
    ReconcileNavigator();
}

} // namespace

void BuildNavigator(HWND dialog) {
    Dialog = dialog;
    SecondWashShown = gParams->SecondWashExists;
    SecondSurfaceShown = gParams->SecondSurfaceExists;
    RECT box{};
    GetWindowRect(GetDlgItem(dialog, IDC_RIGHT_PANE), &box);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&box), 2);
    Origin = NavigatorRowOrigin(LayoutRect{box.left, box.top, box.right, box.bottom}, ScreenDpi);

    for (const NavigatorLabel& l : kNavigatorLabels) {
        const int32_t width = NavigatorLabelWidth(l.width, DpiScale);
        TLabel* label = CreateLabel(Origin.x, Origin.y, width, kNavigatorHeight, dialog, l.id, l.caption, true, false);
        if (!label) continue;
        label->BackMode = kBackModeBand;
        AddTooltip(label->Window, l.tip, nullptr);
        ShowWindow(label->Window, SW_HIDE);
    }
    for (const NavigatorDelete& d : kNavigatorDeletes) {
        TButton* button = nullptr;
        HWND window = CreateButton(button, dialog, ControlInstance, Origin.x, Origin.y, kDeleteButtonSize,
                                   kDeleteButtonSize, d.id);
        SetFaces(button, art::kDeleteNormal, art::kDeleteHover, art::kDeleteNormal, 0);
        AddTooltip(window, d.tip, nullptr);
        ShowWindow(window, SW_HIDE);
    }
    for (int32_t id : kNavigatorSeparators) {
        HWND bar = CreateWindowExA(0, "STATIC", "|", WS_CHILD | SS_CENTER, Origin.x, Origin.y, 8, kNavigatorHeight,
                                   dialog, HMENU(INT_PTR(id)), ControlInstance, nullptr);
        if (bar && LinkFont) SendMessageA(bar, WM_SETFONT, WPARAM(LinkFont), FALSE);
    }
    PresetHooks.ReconcileNavigator = ReconcileNavigator;
    PresetHooks.RebuildAllLayers = RebuildAllLayers;
    if (!PresetHooks.RefreshCurrentPage) PresetHooks.RefreshCurrentPage = RefreshPage;
}

void ForgetNavigator() {
    Dialog = nullptr;
    if (PresetHooks.ReconcileNavigator == ReconcileNavigator) PresetHooks.ReconcileNavigator = nullptr;
    if (PresetHooks.RebuildAllLayers == RebuildAllLayers) PresetHooks.RebuildAllLayers = nullptr;
    if (PresetHooks.RefreshCurrentPage == RefreshPage) PresetHooks.RefreshCurrentPage = nullptr;
}

void PlaceNavigatorResets(const std::array<LayoutBox, 4>& resets) {
    for (int32_t tab = 0; tab < 4; ++tab) {
        const LayoutBox& b = resets[size_t(tab)];
        if (HWND w = Item(ResetButtonOfTab(tab))) MoveWindow(w, b.x, Origin.y, b.width, kNavigatorHeight, TRUE);
    }
}

bool IsNavigatorSeparator(int32_t id) {
    for (int32_t bar : kNavigatorSeparators)
        if (bar == id) return true;
    return false;
}

void ShowNavigatorFor(int32_t tab) {
    if (!Dialog) return;
    const NavigatorRow row = LayOutNavigator(tab, SecondWashShown, SecondSurfaceShown, Origin, DpiScale);
    const int32_t view = ViewOfTab(tab);
    const int32_t reset = ResetButtonOfTab(tab);
    const auto place = [&](int32_t id) {
        HWND w = Item(id);
        if (!w) return;
        // A hovered label holds the mouse; hidden, it would keep it from the next click.
        if (GetCapture() == w) ReleaseCapture();
        if (IsReset(id)) {
            ShowWindow(w, id == reset ? SW_SHOW : SW_HIDE);
            return;
        }
        for (size_t i = 0; i < row.count; ++i) {
            if (row.items[i].id != id) continue;
            const LayoutBox& b = row.items[i].box;
            MoveWindow(w, b.x, b.y, b.width, b.height, FALSE);
            ShowWindow(w, SW_SHOW);
            return;
        }
        ShowWindow(w, SW_HIDE);
    };
    for (const NavigatorLabel& l : kNavigatorLabels) {
        // The view in sight looks chosen and still takes a click.
        if (TLabel* label = FindControl<TLabel>(Item(l.id))) {
            const int32_t code = ViewOfButton(l.id);
            label->Enabled = code < 0 || code != view;
            if (label->Toggled != 2) label->Toggled = 0;
        }
        place(l.id);
    }
    for (const NavigatorDelete& d : kNavigatorDeletes) place(d.id);
    for (int32_t id : kNavigatorSeparators) place(id);
    ShowResultOptions(Dialog, tab);
    for (const LayoutRect& band : {TabBandTop, TabBandBottom}) {
        const RECT r{band.left, band.top, band.right, band.bottom};
        RedrawWindow(Dialog, &r, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    }
}

void NavigatorCommand(HWND dialog, int32_t id) {
    // A pressed button keeps the focus; the row may be about to hide it.
    if (GetFocus() == GetDlgItem(dialog, id)) SetFocus(GetDlgItem(dialog, IDD_OK));
    if (IsReset(id)) {
        ResetByTab(dialog);
        return;
    }
    FilterParameters& p = *gParams;
    const NavigatorWork w = ApplyNavigatorCommand(id, p, SecondWashShown, SecondSurfaceShown);
    if (!w.known) return;
    // The engine's part runs with the view the command came from.
    if (w.remakeWashes || w.remakeSurfaces) Remake(w.remakeWashes, w.remakeSurfaces);
    if (w.prepareSecondWash) PrepareSecondWash();
    if (w.syncWash) SyncWashLinks();
    if (w.prepareSecondSurface) PrepareSecondSurface();
    if (w.syncSurface) SyncSurfaceLinks();
    if (w.surfacesChanged) SurfaceShadeDirty = 1;
    CommitNavigatorView(w);
    ComputeUseFlags();
    ShowNavigatorFor(ActiveTab);
    if (PageActionAfter(ActiveTab, w.view) == PageAfterCommand::Refresh) RefreshPage();
    else EnableCurrentPage();
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_PARAMS_CHANGED, 0), 0);
}

void EnableNavigator(bool on) {
    ForEachButton([&](int32_t id) {
        if (HWND w = Item(id)) EnableWindow(w, on);
    });
    if (on) ShowNavigatorFor(ActiveTab);
}

void ReconcileNavigator() {
    const ReconcileWork w = ReconcileShown(*gParams, SecondWashShown, SecondSurfaceShown);
    if (w.prepareSecondWash) PrepareSecondWash();
    if (w.syncWash) SyncWashLinks();
    if (w.prepareSecondSurface) PrepareSecondSurface();
    if (w.syncSurface) SyncSurfaceLinks();
    if (w.changed) {
        ComputeUseFlags();
        ShowNavigatorFor(ActiveTab);
    }
}

// CreateEngine frees and fills only the groups whose keep flag is off, then works out the
// Use flags.
void RebuildLayers() { CreateEngine(); }
