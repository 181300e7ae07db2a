#include "pickers/win32/Drawers.h"

#include "controls/win32/Contaner.h"
#include "dialog/DialogIds.h"
#include "dialog/PageRules.h"
#include "dialog/win32/LayerNavigator.h"
#include "dialog/win32/MainDialog.h"
#include "dialog/win32/Pages.h"
#include "effects/EffectLayer.h"
#include "effects/LayerTexture.h"
#include "host/ChannelAccess.h"
#include "pickers/DrawerLayout.h"
#include "pickers/Thumbnails.h"
#include "pickers/win32/DrawerPicker.h"
#include "platform/ModulePath.h"
#include "presets/PresetFormat.h"
#include "resources/ArtIds.h"
#include "state/Parameters.h"
#include "state/PathTable.h"
#include "state/ViewState.h"

#include <commctrl.h>

#include <cstring>
#include <string>

namespace {

TDrawerPicker* TextureDrawer = nullptr;
TDrawerPicker* ToneDrawer = nullptr;
DibSection DrawerBackground;

// What an opening keeps for Cancel, and which layer it serves.
struct Opening {
    int32_t button = 0;
    EffectLayer* layer = nullptr;
    char name[kNameLength] = {};
    uint8_t invert = 0;
    uint32_t colours[3] = {}; // highlight, midtone, shadow
} Current;

bool SecondWashShownNow() { return ViewWash == ViewCodeWashTwo && gParams->SecondWashExists; }
bool SecondSurfaceShownNow() { return ViewSurface == ViewCodeSurfaceTwo && gParams->SecondSurfaceExists; }

HWND Dlg(HWND dialog, int id) { return GetDlgItem(dialog, id); }

TabRecord* Tabs(HWND dialog) { return reinterpret_cast<TabRecord*>(GetWindowLongPtrA(dialog, DWLP_USER)); }

// The drawers' shared picture at their size: black, right corners rounded into the face.
void MakeBackground(int32_t width, int32_t height) {
    if (width <= 0 || height <= 0 || !DrawerBackground.Resize(width, height)) {
        DrawerBackground.Release();
        return;
    }
    PaintDrawerBackground(DrawerBackground.View(), DialogCornerWeights(), FacePixel());
    GdiFlush();
}

TDrawerPicker* MakeDrawer(HWND dialog, uint8_t mode, int32_t id, int32_t title, const RECT& area, const char* name,
                          const std::string& folder) {
    auto* drawer = new TDrawerPicker(mode);
    RowsPerPage = RowsPerPageFor(area.bottom);
    if (!drawer->Create(dialog, area.left, area.top, area.right, area.bottom, id)) {
        delete drawer;
        return nullptr;
    }
    drawer->BackBitmap = &DrawerBackground;
    drawer->SetTitle(HBITMAP(LoadImageA(ControlInstance, MAKEINTRESOURCEA(title), IMAGE_BITMAP, 0, 0, 0)));
    drawer->Initialise(name, folder.c_str(), mode);
    return drawer;
}

// (0, 80, L - 9, h - 89) as left, top, width, height.
RECT DrawerArea(int32_t clientHeight) { return RECT{0, 80, PreviewFrame.left - 9, clientHeight - 89}; }

char* TextureName(int32_t button, FilterParameters& p) {
    switch (button) {
    case IDC_WASH_CHOOSE: return SecondWashShownNow() ? p.WashFileName2 : p.WashFileName1;
    case IDC_SURF_CHOOSE: return SecondSurfaceShownNow() ? p.SurfaceFileName2 : p.SurfaceFileName1;
    default: return p.BackgroundFileName;
    }
}

// The invert flag of gParams that follows the layer's: only the second wash, the second
// surface and the background have one that the drawer keeps in step.
uint8_t* FollowingInvert(int32_t button, FilterParameters& p) {
    switch (button) {
    case IDC_WASH_CHOOSE: return SecondWashShownNow() ? &p.WashInvert2 : nullptr;
    case IDC_SURF_CHOOSE: return SecondSurfaceShownNow() ? &p.SurfaceInvert2 : nullptr;
    default: return &p.BackgroundInvert;
    }
}

int32_t TabOf(int32_t button) {
    switch (button) {
    case IDC_WASH_CHOOSE: return TabWash;
    case IDC_SURF_CHOOSE:
    case IDC_SURF_TONES_CHOOSE: return TabSurface;
    default: return TabBackground;
    }
}

void SetName(char* field, const char* name) { std::snprintf(field, kNameLength, "%s", name); }

void LoadChosen(HWND dialog, const char* name) {
    SetName(TextureName(Current.button, *gParams), name);
    LoadLayerTexture(*Current.layer, TexturePath(name));
    ComputeUseFlags();
    (void)dialog;
}

uint32_t Packed(uint8_t r, uint8_t g, uint8_t b) { return uint32_t(r) | uint32_t(g) << 8 | uint32_t(b) << 16; }

void LayerTones(uint32_t (&c)[3]) {
    const EffectLayer& l = BackgroundLayer;
    c[0] = Packed(l.HighlightRed, l.HighlightGreen, l.HighlightBlue);
    c[1] = Packed(l.MidtoneRed, l.MidtoneGreen, l.MidtoneBlue);
    c[2] = Packed(l.ShadowRed, l.ShadowGreen, l.ShadowBlue);
}

void SetBackgroundTones(const uint32_t (&c)[3]) {
    EffectLayer& l = BackgroundLayer;
    SetLayerTones(l, l.ToneHighlight, l.ToneMidtone, l.ToneShadow, c[0], c[1], c[2]);
    l.ToneDirty = 1;
}

void Render(HWND dialog) { SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_PARAMS_CHANGED, 0), 0); }

void ResetBar(HWND dialog) {
    SendMessageA(Dlg(dialog, IDC_PROGRESS), PBM_SETRANGE, 0, MAKELPARAM(0, 100));
    SendMessageA(Dlg(dialog, IDC_PROGRESS), PBM_SETPOS, 0, 0);
}

void ShowOnPage(HWND dialog, int32_t id, const char* text) {
    if (TabRecord* t = Tabs(dialog))
        if (HWND w = t->page ? GetDlgItem(t->page, id) : nullptr) SetWindowTextA(w, text);
}

std::string Bare(const char* name) {
    std::string s = name;
    const size_t n = std::strlen(kPresetExtension);
    if (s.size() > n && s.compare(s.size() - n, n, kPresetExtension) == 0) s.resize(s.size() - n);
    return s;
}

void TextureCommand(HWND dialog, int32_t notification) {
    TDrawerPicker& d = *TextureDrawer;
    FilterParameters& p = *gParams;
    if (!Current.layer) return;
    const char* name = d.List.CurrentName;
    const int32_t tab = TabOf(Current.button);
    if (notification == 1) {
        d.Close();
        if (std::strcmp(name, TextureName(Current.button, p)) != 0) LoadChosen(dialog, name);
        const int32_t edit = tab == TabWash ? IDC_WASH_NAME : tab == TabSurface ? IDC_SURF_NAME : IDC_BACK_NAME;
        ShowOnPage(dialog, edit, DisplayTextureName(TextureName(Current.button, p)));
        LinkAfterTextureChosen(tab);
        EnableCurrentPage();
        ResetBar(dialog);
        return;
    }
    if (notification == 2) {
        d.Close();
        if (std::strcmp(name, Current.name) == 0) return;
        Current.layer->Invert = Current.invert;
        if (uint8_t* follow = FollowingInvert(Current.button, p)) *follow = Current.invert;
        LoadChosen(dialog, Current.name);
        LinkAfterTextureChosen(tab);
        Render(dialog);
        return;
    }
    // A tile: try it in the preview; the drawer stays open. Solid has nothing to invert.
    const uint8_t invert = std::strcmp(name, "Solid.qzt") == 0 ? 0 : Current.invert;
    Current.layer->Invert = invert;
    if (uint8_t* follow = FollowingInvert(Current.button, p)) *follow = invert;
    if (std::strcmp(name, LayerFileName(*Current.layer)) == 0) return;
    LoadChosen(dialog, name);
    Render(dialog);
}

void ToneCommand(HWND dialog, int32_t notification) {
    TDrawerPicker& d = *ToneDrawer;
    FilterParameters& p = *gParams;
    const bool surface = d.TargetKind == kSurfaceTarget;
    const char* name = d.List.CurrentName;
    const bool reset = std::strcmp(name, "Reset Colors") == 0;
    if (notification == 1) {
        d.Close();
        const std::string label = reset ? std::string("Custom") : Bare(name);
        if (surface) {
            SetName(SurfaceColorsName, label.c_str());
        } else {
            uint32_t c[3];
            LayerTones(c);
            p.BackgroundHighlightColor = c[0], p.BackgroundMidtoneColor = c[1], p.BackgroundShadowColor = c[2];
            SetName(BackgroundColorsName, label.c_str());
        }
        RefreshPage();
        ResetBar(dialog);
        return;
    }
    if (notification == 2) {
        d.Close();
        if (surface) {
            p.SurfaceHighlightColor = Current.colours[0];
            p.SurfaceMidtoneColor = Current.colours[1];
            p.SurfaceShadowColor = Current.colours[2];
            SurfaceShadeDirty = 1;
        } else {
            SetBackgroundTones(Current.colours);
        }
        Render(dialog);
        return;
    }
    if (surface) {
        if (reset) {
            ResetSurfaceColors();
        } else if (LoadPresetPath((PathTable.Colors + kPathSeparator + name).c_str())) {
            p.SurfaceHighlightColor = PresetColorHi;
            p.SurfaceMidtoneColor = PresetColorMid;
            p.SurfaceShadowColor = PresetColorShadow;
        }
        SurfaceShadeDirty = 1;
    } else {
        // The look-around changes the layer alone; gParams follows at Select.
        if (reset) {
            ResetBackgroundColors();
        } else if (LoadPresetPath((PathTable.Colors + kPathSeparator + name).c_str())) {
            const uint32_t c[3] = {PresetColorHi, PresetColorMid, PresetColorShadow};
            SetBackgroundTones(c);
        }
        BackgroundLayer.ToneDirty = 1;
    }
    Render(dialog);
}

} // namespace

void CreateDrawers(HWND dialog) {
    RegisterDrawerClass(ControlInstance);
    SetFilterIndex = EffectFilterIndex = 0;
    CatalogueAlertOwner = dialog;
    ThumbProgressBar = Dlg(dialog, IDC_PROGRESS);
    // What wash and surface tiles show through: the target layer as read at the opening.
    if (LayerRaster) BuildDocumentThumb(*LayerRaster);
    RECT client{};
    GetClientRect(dialog, &client);
    const RECT area = DrawerArea(client.bottom);
    MakeBackground(area.right, area.bottom);
    const FilterParameters& p = *gParams;
    const char* first = ViewWash == ViewCodeWashTwo && p.SecondWashExists ? p.WashFileName2 : p.WashFileName1;
    TextureDrawer =
        MakeDrawer(dialog, kTextureDrawer, IDC_TEXTURE_DRAWER, art::kTitleTextures, area, first, PathTable.Data);
    ToneDrawer =
        MakeDrawer(dialog, kColourDrawer, IDC_TONE_DRAWER, art::kTitleColours, area, nullptr, PathTable.Colors);
}

void PlaceDrawers(HWND dialog, int32_t width, int32_t height) {
    if (!TextureDrawer && !ToneDrawer) return;
    // Every WM_SIZE comes here; only a new size costs a page of pictures.
    const TDrawerPicker* any = TextureDrawer ? TextureDrawer : ToneDrawer;
    if (any->Width == width && any->Height == height) return;
    MakeBackground(width, height);
    for (TDrawerPicker* d : {TextureDrawer, ToneDrawer}) {
        if (!d) continue;
        d->Width = width, d->Height = height;
        // While sliding the timer owns the x; the rest follows the dialog.
        RECT now{};
        GetWindowRect(d->Window, &now);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&now), 2);
        const int32_t x = d->SlideState ? now.left : d->Left;
        SetWindowPos(d->Window, nullptr, x, d->Top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
        d->BackBitmap = &DrawerBackground;
        d->MoveButtons();
        d->FollowWidth();
        d->Rebuild(d->List.Folder, d->List.DrawerMode);
        InvalidateRect(d->Window, nullptr, TRUE);
    }
}

void OpenDrawerFor(HWND dialog, int32_t button) {
    FilterParameters& p = *gParams;
    Current = Opening{};
    Current.button = button;
    const bool tones = button == IDC_SURF_TONES_CHOOSE || button == IDC_BACK_TONES_CHOOSE;
    TDrawerPicker* d = tones ? ToneDrawer : TextureDrawer;
    if (!d) return;
    const bool second = SecondSurfaceShownNow();
    switch (button) {
    case IDC_WASH_CHOOSE:
        d->TargetKind = kWashTarget;
        Current.layer = &WashLayers[SecondWashShownNow() ? 1 : 0];
        break;
    case IDC_SURF_CHOOSE:
        d->TargetKind = kSurfaceTarget;
        Current.layer = &SurfaceLayers[second ? 1 : 0];
        ThumbSurfaceLayer = Current.layer;
        ThumbDepthScale = float(second ? p.SurfaceDepth2 : p.SurfaceDepth1) / 150.0f;
        break;
    case IDC_BACK_CHOOSE:
        d->TargetKind = kBackgroundTarget;
        Current.layer = &BackgroundLayer;
        break;
    case IDC_SURF_TONES_CHOOSE:
        d->TargetKind = kSurfaceTarget;
        Current.colours[0] = p.SurfaceHighlightColor;
        Current.colours[1] = p.SurfaceMidtoneColor;
        Current.colours[2] = p.SurfaceShadowColor;
        // Crossed on purpose: the tones drawer of surface one shows the depth of surface two.
        ThumbSurfaceLayer = &SurfaceLayers[second ? 1 : 0];
        ThumbDepthScale = float(second ? p.SurfaceDepth1 : p.SurfaceDepth2) / 150.0f;
        break;
    case IDC_BACK_TONES_CHOOSE:
        d->TargetKind = kBackgroundTarget;
        LayerTones(Current.colours);
        break;
    default: return;
    }
    if (Current.layer) {
        Current.invert = Current.layer->Invert;
        SetName(Current.name, TextureName(button, p));
    }
    SetDrawerOpen(dialog, true);
    if (!tones) {
        if (button == IDC_WASH_CHOOSE) PrepareUnderlay(4.0f, 2048, PathTable.Data.c_str());
        SelectByName(d->List, Current.name);
    } else {
        d->List.SelectedIndex = -1;
        if (!PrepareColourBase(d->ColourBase, d->TargetKind, PathTable.Data.c_str())) d->ColourBase = {};
    }
    d->RefreshPage();
    d->Open();
}

void DrawerCommand(HWND dialog, int32_t id, int32_t notification) {
    if (id == IDC_TEXTURE_DRAWER && TextureDrawer) TextureCommand(dialog, notification);
    if (id == IDC_TONE_DRAWER && ToneDrawer) ToneCommand(dialog, notification);
}

void SetDrawerOpen(HWND dialog, bool open) {
    DrawerOpen = open ? 1 : 0;
    for (int id : {IDD_OK, IDD_CANCEL, IDC_TABS, IDC_HELP_BUTTON, IDC_ALL_PRESETS, IDC_AUTO, IDC_ABOUT})
        if (HWND w = Dlg(dialog, id)) EnableWindow(w, !open);
    if (TabRecord* t = Tabs(dialog))
        if (t->page) EnableWindow(t->page, !open);
    EnableNavigator(!open);
}

RandomSources DrawerRandomSources() {
    RandomSources sources;
    if (TextureDrawer)
        for (const TextureEntry& e : TextureDrawer->List.ShownEntries)
            if (e.Name[0]) sources.textures.emplace_back(e.Name);
    if (ToneDrawer)
        for (const TextureEntry& e : ToneDrawer->List.ShownEntries) sources.tones.emplace_back(e.Name);
    sources.tonesDrawer = ToneDrawer != nullptr;
    return sources;
}

void DestroyDrawers() {
    delete ToneDrawer;
    ToneDrawer = nullptr;
    delete TextureDrawer;
    TextureDrawer = nullptr;
    DrawerBackground.Release();
    ThumbProgressBar = nullptr;
    CatalogueAlertOwner = nullptr;
    UnregisterDrawerClass();
}
