#include "dialog/PresetRows.h"

#include "dialog/DialogIds.h"
#include "dialog/NavigatorRules.h"
#include "effects/EffectLayer.h"
#include "presets/PresetFormat.h"
#include "presets/PresetLibrary.h"
#include "resources/ArtIds.h"
#include "state/ViewState.h"

#include <algorithm>

namespace {

// Basic's two lists first, so that its page fills them in this order.
constexpr PresetListIds kLists[] = {
    {PresetBasic, IDC_DEFAULT_LIST, IDC_DEFAULT_PATH, 0, 0},
    {PresetUser, IDC_USER_LIST, IDC_USER_PATH, IDC_USER_SAVE, IDC_USER_DELETE},
    {PresetWash, IDC_WASH_LIST, IDC_WASH_PATH, IDC_WASH_SAVE, IDC_WASH_DELETE},
    {PresetSurface, IDC_SURF_LIST, IDC_SURF_PATH, IDC_SURF_SAVE, IDC_SURF_DELETE},
    {PresetBackground, IDC_BACK_LIST, IDC_BACK_PATH, IDC_BACK_SAVE, IDC_BACK_DELETE},
};

} // namespace

const PresetListIds* PresetListByControl(int32_t id) {
    if (id == 0) return nullptr;
    for (const PresetListIds& l : kLists)
        if (l.list == id || l.save == id || l.remove == id) return &l;
    return nullptr;
}

const PresetListIds* PresetListsOfTab(int32_t tab, int32_t& count) {
    count = 0;
    if (tab < TabBasic || tab > TabBackground) return nullptr;
    count = tab == TabBasic ? 2 : 1;
    return &kLists[tab == TabBasic ? 0 : tab + 1];
}

PresetRowLook LayOutPresetRow(const std::string& row, int32_t x, int32_t y) {
    PresetRowLook look;
    if (!IsFolderRow(row)) {
        look.text = row;
        look.textX = x + 3;
        return look;
    }
    look.text = row.substr(1);
    look.textX = x + 23;
    look.bitmap = look.text == ".." ? art::kParentFolderRow : art::kFolderRow;
    look.bitmapX = x + 2;
    look.bitmapY = y + 1;
    return look;
}

int32_t PresetRowHeight(int32_t fontHeight) { return std::max(fontHeight + 2, kFolderRowHeight + 2); }

KeepFlags KeepFlagsFor(int32_t kind, bool useWash, bool useSurface, bool useBackground) {
    KeepFlags k;
    k.wash = !useWash || kind == PresetSurface || kind == PresetBackground;
    k.surface = !useSurface || kind == PresetBackground;
    k.background = !useBackground || kind == PresetSurface;
    return k;
}

void ResetToFactory() {
    ApplyTabReset(*gParams, TabBasic);
    KeepWashLayers = KeepSurfaceLayers = KeepBackgroundLayer = false;
}

PresetClick ApplyPresetRow(int32_t kind, int32_t row, const std::string& text, const FilterParameters& lastUsed,
                           void (*busy)(bool on)) {
    PresetClick click;
    if (row < 0 || !gParams) return click;
    FilterParameters& p = *gParams;
    if (kind == PresetBasic && row <= 1) {
        if (row == 0) {
            ResetToFactory();
            p.PresetApplied = 1;
        } else {
            p = lastUsed;
            p.PresetApplied = 0;
        }
        click.reconcile = true;
    } else {
        p.PresetApplied = 0;
        if (IsFolderRow(text)) return click;
        click.deleteEnabled = true;
        if (busy) busy(true);
        const bool loaded = LoadPreset(text, kind);
        if (loaded) {
            p.PresetApplied = 1;
            ComputeUseFlags();
        }
        if (busy) busy(false);
        if (!loaded) return click;
    }
    click.applied = true;
    if (p.EffectOnMask) p.BackgroundInNewLayer = 1;
    const KeepFlags keep = KeepFlagsFor(kind, p.UseWash, p.UseSurface, p.UseBackground);
    KeepWashLayers = keep.wash;
    KeepSurfaceLayers = keep.surface;
    KeepBackgroundLayer = keep.background;
    return click;
}

void NoteParamsChanged(FilterParameters& params, FilterParameters& lastUsed) {
    if (params.PresetApplied) params.PresetApplied = 0;
    else lastUsed = params;
}
