#include "dialog/win32/Pages.h"

#include "controls/win32/Buttons.h"
#include "controls/win32/ColorSwatch.h"
#include "controls/win32/Fonts.h"
#include "controls/win32/MacSlider.h"
#include "controls/win32/Rotor.h"
#include "dialog/DialogIds.h"
#include "dialog/PageRules.h"
#include "dialog/win32/LinkDialog.h"
#include "dialog/win32/PresetLists.h"
#include "dialog/win32/ThisModule.h"
#include "effects/EffectLayer.h"
#include "effects/LayerTexture.h"
#include "effects/LinkSync.h"
#include "effects/WashMask.h"
#include "host/Session.h"
#include "pickers/win32/Drawers.h"
#include "pickers/win32/Filmstrip.h"
#include "platform/CRandom.h"
#include "resources/ArtIds.h"
#include "state/Parameters.h"
#include "state/ViewState.h"
#include "state/WorkImages.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <cstring>

uint8_t SpinTimerPending = 0;

namespace {

// A slider with its edit and spinner, the timer its spinner starts, and its record once
// the page exists.
struct SliderRow {
    int32_t tab, slider, edit, spin;
    float low, high;
    int32_t timer;
    TMacSlider* record;
};

SliderRow Sliders[] = {
    {TabWash, IDC_WASH_SCALE, IDC_WASH_SCALE_EDIT, IDC_WASH_SCALE_SPIN, 0, 200, QZ_TIMER_WASH_SCALE, nullptr},
    {TabWash, IDC_WASH_INTENSITY, IDC_WASH_INTENSITY_EDIT, IDC_WASH_INTENSITY_SPIN, 1, 200, QZ_TIMER_RENDER, nullptr},
    {TabWash, IDC_WASH_COVERAGE, IDC_WASH_COVERAGE_EDIT, IDC_WASH_COVERAGE_SPIN, -100, 100, QZ_TIMER_WASH_COVERAGE,
     nullptr},
    {TabWash, IDC_WASH_COVERAGE_SCALE, IDC_WASH_COVERAGE_SCALE_EDIT, IDC_WASH_COVERAGE_SCALE_SPIN, 1, 200,
     QZ_TIMER_COVERAGE_SCALE, nullptr},
    {TabWash, IDC_WASH_EDGE_DISTANCE, IDC_WASH_EDGE_DISTANCE_EDIT, IDC_WASH_EDGE_DISTANCE_SPIN, 0, 100, QZ_TIMER_RENDER,
     nullptr},
    {TabWash, IDC_WASH_EDGE_SOFTNESS, IDC_WASH_EDGE_SOFTNESS_EDIT, IDC_WASH_EDGE_SOFTNESS_SPIN, 0, 200, QZ_TIMER_RENDER,
     nullptr},
    {TabSurface, IDC_SURF_SCALE, IDC_SURF_SCALE_EDIT, IDC_SURF_SCALE_SPIN, 0, 200, QZ_TIMER_SURFACE_SCALE, nullptr},
    {TabSurface, IDC_SURF_DEPTH, IDC_SURF_DEPTH_EDIT, IDC_SURF_DEPTH_SPIN, 0, 100, QZ_TIMER_RENDER, nullptr},
    {TabSurface, IDC_SURF_INTENSITY, IDC_SURF_INTENSITY_EDIT, IDC_SURF_INTENSITY_SPIN, 0, 100, QZ_TIMER_RENDER,
     nullptr},
    {TabSurface, IDC_SURF_HUE, IDC_SURF_HUE_EDIT, IDC_SURF_HUE_SPIN, -100, 100, QZ_TIMER_RENDER, nullptr},
    {TabSurface, IDC_SURF_BRIGHTNESS, IDC_SURF_BRIGHTNESS_EDIT, IDC_SURF_BRIGHTNESS_SPIN, 0, 200, QZ_TIMER_RENDER,
     nullptr},
    {TabSurface, IDC_SURF_CONTRAST, IDC_SURF_CONTRAST_EDIT, IDC_SURF_CONTRAST_SPIN, 0, 200, QZ_TIMER_RENDER, nullptr},
    {TabBackground, IDC_BACK_SCALE, IDC_BACK_SCALE_EDIT, IDC_BACK_SCALE_SPIN, 0, 200, QZ_TIMER_BACKGROUND_SCALE,
     nullptr},
    {TabBackground, IDC_BACK_HUE, IDC_BACK_HUE_EDIT, IDC_BACK_HUE_SPIN, -100, 100, QZ_TIMER_RENDER, nullptr},
    {TabBackground, IDC_BACK_SATURATION, IDC_BACK_SATURATION_EDIT, IDC_BACK_SATURATION_SPIN, 0, 100, QZ_TIMER_RENDER,
     nullptr},
};

struct Tip {
    int32_t tab, id;
    const char* text;
};
// Texts as the users know them, mismatched flips on the Background page included.
const Tip Tips[] = {
    {TabBasic, IDC_DEFAULT_LIST, "Click to apply factory created settings"},
    {TabBasic, IDC_USER_LIST, "Click to apply previously saved settings"},
    {TabBasic, IDC_USER_DELETE, "Delete selected preset"},
    {TabBasic, IDC_USER_SAVE, "Save current settings"},
    {TabWash, IDC_WASH_CHOOSE, "Select texture to apply wash effect"},
    {TabWash, IDC_WASH_NAME, "Select texture to apply wash effect"},
    {TabWash, IDC_WASH_FLIP_H, "Flip wash effect horizontally"},
    {TabWash, IDC_WASH_FLIP_V, "Flip wash effect vertically"},
    {TabWash, IDC_WASH_INVERT, "Invert wash effect"},
    {TabWash, IDC_WASH_ROTATE_CW, "Rotate wash effect 90 degrees clockwise"},
    {TabWash, IDC_WASH_ROTATE_CCW, "Rotate wash effect 90 degrees counter-clockwise"},
    {TabWash, IDC_WASH_LINK, "Link/Unlink texture settings for the same texture"},
    {TabWash, IDC_WASH_RANDOM, "Randomize the wash effect coverage area"},
    {TabWash, IDC_WASH_SEED, "Randomize the wash effect coverage area"},
    {TabWash, IDC_WASH_INSIDE, "Apply wash effect inside image selection"},
    {TabWash, IDC_WASH_OUTSIDE, "Apply wash effect outside image selection"},
    {TabWash, IDC_WASH_LIST, "Click to apply previously saved settings"},
    {TabWash, IDC_WASH_SAVE, "Save current settings"},
    {TabWash, IDC_WASH_DELETE, "Delete selected preset"},
    {TabWash, IDC_WASH_SCALE, "Reduce or enlarge the size of the wash effect"},
    {TabWash, IDC_WASH_SCALE_EDIT, "Reduce or enlarge the size of the wash effect"},
    {TabWash, IDC_WASH_SCALE_SPIN, "Reduce or enlarge the size of the wash effect"},
    {TabWash, IDC_WASH_INTENSITY, "Reduce or enlarge the intensity of the wash effect"},
    {TabWash, IDC_WASH_INTENSITY_EDIT, "Reduce or enlarge the intensity of the wash effect"},
    {TabWash, IDC_WASH_INTENSITY_SPIN, "Reduce or enlarge the intensity of the wash effect"},
    {TabWash, IDC_WASH_COVERAGE, "Adjust the area the wash effect is applied"},
    {TabWash, IDC_WASH_COVERAGE_EDIT, "Adjust the area the wash effect is applied"},
    {TabWash, IDC_WASH_COVERAGE_SPIN, "Adjust the area the wash effect is applied"},
    {TabWash, IDC_WASH_COVERAGE_SCALE, "Reduce or enlarge the size of effect area patches"},
    {TabWash, IDC_WASH_COVERAGE_SCALE_EDIT, "Reduce or enlarge the size of effect area patches"},
    {TabWash, IDC_WASH_COVERAGE_SCALE_SPIN, "Reduce or enlarge the size of effect area patches"},
    {TabWash, IDC_WASH_EDGE_DISTANCE, "Adjust the distance of the wash effect from the edge"},
    {TabWash, IDC_WASH_EDGE_DISTANCE_EDIT, "Adjust the distance of the wash effect from the edge"},
    {TabWash, IDC_WASH_EDGE_DISTANCE_SPIN, "Adjust the distance of the wash effect from the edge"},
    {TabWash, IDC_WASH_EDGE_SOFTNESS,
     "Adjust the blur or sharpness of the wash effect at the edge of the image selection"},
    {TabWash, IDC_WASH_EDGE_SOFTNESS_EDIT,
     "Adjust the blur or sharpness of the wash effect at the edge of the image selection"},
    {TabWash, IDC_WASH_EDGE_SOFTNESS_SPIN,
     "Adjust the blur or sharpness of the wash effect at the edge of the image selection"},
    {TabWash, IDC_WASH_OFFSET, "Set offset of wash effect (Hold CTRL + Drag in Preview Area)"},
    {TabWash, IDC_WASH_OFFSET_X, "Set offset of wash effect (Hold CTRL + Drag in Preview Area)"},
    {TabWash, IDC_WASH_OFFSET_Y, "Set offset of wash effect (Hold CTRL + Drag in Preview Area)"},
    {TabWash, IDC_WASH_COLOR, "Select wash color"},
    {TabWash, IDC_WASH_TYPE, "Select desired wash type"},
    {TabSurface, IDC_SURF_TONES_CHOOSE, "Select preset colors to apply to surface effect"},
    {TabSurface, IDC_SURF_TONES_NAME, "Select preset colors to apply to surface effect"},
    {TabSurface, IDC_SURF_CHOOSE, "Select texture to apply surface effect"},
    {TabSurface, IDC_SURF_NAME, "Select texture to apply surface effect"},
    {TabSurface, IDC_SURF_ROTATE_CW, "Rotate surface effect 90 degrees clockwise"},
    {TabSurface, IDC_SURF_ROTATE_CCW, "Rotate surface effect 90 degrees counter-clockwise"},
    {TabSurface, IDC_SURF_LINK, "Link/Unlink texture settings for the same texture"},
    {TabSurface, IDC_SURF_PERSPECTIVE, "Apply depth perspective to image"},
    {TabSurface, IDC_SURF_FILL_CANVAS, "Apply surface effect to entire image"},
    {TabSurface, IDC_SURF_FILL_WASH, "Apply surface effect to wash effected areas"},
    {TabSurface, IDC_SURF_FLIP_V, "Flip surface effect vertically"},
    {TabSurface, IDC_SURF_FLIP_H, "Flip surface effect horizontally"},
    {TabSurface, IDC_SURF_INVERT, "Invert surface texture"},
    {TabSurface, IDC_SURF_SCALE, "Reduce or enlarge the size of the surface effect"},
    {TabSurface, IDC_SURF_SCALE_EDIT, "Reduce or enlarge the size of the surface effect"},
    {TabSurface, IDC_SURF_SCALE_SPIN, "Reduce or enlarge the size of the surface effect"},
    {TabSurface, IDC_SURF_DEPTH, "Reduce or increase the intensity of the surface effect"},
    {TabSurface, IDC_SURF_DEPTH_EDIT, "Reduce or increase the intensity of the surface effect"},
    {TabSurface, IDC_SURF_DEPTH_SPIN, "Reduce or increase the intensity of the surface effect"},
    {TabSurface, IDC_SURF_BRIGHTNESS, "Reduce or increase the strength of the image brightness"},
    {TabSurface, IDC_SURF_BRIGHTNESS_EDIT, "Reduce or increase the strength of the image brightness"},
    {TabSurface, IDC_SURF_BRIGHTNESS_SPIN, "Reduce or increase the strength of the image brightness"},
    {TabSurface, IDC_SURF_CONTRAST, "Reduce or increase the strength of the image contrast"},
    {TabSurface, IDC_SURF_CONTRAST_EDIT, "Reduce or increase the strength of the image contrast"},
    {TabSurface, IDC_SURF_CONTRAST_SPIN, "Reduce or increase the strength of the image contrast"},
    {TabSurface, IDC_SURF_HUE, "Adjust surface color hue"},
    {TabSurface, IDC_SURF_HUE_EDIT, "Adjust surface color hue"},
    {TabSurface, IDC_SURF_HUE_SPIN, "Adjust surface color hue"},
    {TabSurface, IDC_SURF_INTENSITY, "Adjust the amount of colorization applied to the surface effect"},
    {TabSurface, IDC_SURF_INTENSITY_EDIT, "Adjust the amount of colorization applied to the surface effect"},
    {TabSurface, IDC_SURF_INTENSITY_SPIN, "Adjust the amount of colorization applied to the surface effect"},
    {TabSurface, IDC_SURF_HIGHLIGHT, "Launch the color picker to update the surface tone color"},
    {TabSurface, IDC_SURF_MIDTONE, "Launch the color picker to update the surface tone color"},
    {TabSurface, IDC_SURF_SHADOW, "Launch the color picker to update the surface tone color"},
    {TabSurface, IDC_SURF_LIGHT, "Adjust the lighting direction applied to surface effect"},
    {TabSurface, IDC_SURF_LIGHT_ALPHA, "Adjust the lighting direction applied to surface effect"},
    {TabSurface, IDC_SURF_LIGHT_BETA, "Adjust the lighting direction applied to surface effect"},
    {TabSurface, IDC_SURF_LIST, "Click to apply previously saved settings"},
    {TabSurface, IDC_SURF_SAVE, "Save current settings"},
    {TabSurface, IDC_SURF_DELETE, "Delete selected preset"},
    {TabSurface, IDC_SURF_TYPE, "Type of Surface"},
    {TabBackground, IDC_BACK_STRIP, "Select and apply preset effect"},
    {TabBackground, IDC_BACK_CHOOSE, " Select texture to apply background effect"},
    {TabBackground, IDC_BACK_NAME, " Select texture to apply background effect"},
    {TabBackground, IDC_BACK_ROTATE_CW, "Rotate background effect 90 degrees clockwise"},
    {TabBackground, IDC_BACK_ROTATE_CCW, "Rotate background effect 90 degrees counter-clockwise"},
    {TabBackground, IDC_BACK_LINK, "Link/Unlink texture settings for the same texture"},
    {TabBackground, IDC_BACK_FILL_CANVAS, "Apply background effect to entire image"},
    {TabBackground, IDC_BACK_ENHANCE, "Enhanced mode"},
    {TabBackground, IDC_BACK_FLIP_V, "Flip background effect horizontally"},
    {TabBackground, IDC_BACK_FLIP_H, "Flip background effect vertically"},
    {TabBackground, IDC_BACK_INVERT, "Invert background effect"},
    {TabBackground, IDC_BACK_TONES_CHOOSE, "Select preset colors to apply to background effect"},
    {TabBackground, IDC_BACK_TONES_NAME, "Select preset colors to apply to background effect"},
    {TabBackground, IDC_BACK_SCALE, "Reduce or enlarge the size of the background effect"},
    {TabBackground, IDC_BACK_SCALE_EDIT, "Reduce or enlarge the size of the background effect"},
    {TabBackground, IDC_BACK_SCALE_SPIN, "Reduce or enlarge the size of the background effect"},
    {TabBackground, IDC_BACK_SATURATION, "Adjust background color saturation"},
    {TabBackground, IDC_BACK_SATURATION_EDIT, "Adjust background color saturation"},
    {TabBackground, IDC_BACK_SATURATION_SPIN, "Adjust background color saturation"},
    {TabBackground, IDC_BACK_HUE, "Adjust background color hue"},
    {TabBackground, IDC_BACK_HUE_EDIT, "Adjust background color hue"},
    {TabBackground, IDC_BACK_HUE_SPIN, "Adjust background color hue"},
    {TabBackground, IDC_BACK_HIGHLIGHT, "Launch the color picker to update the background tone color"},
    {TabBackground, IDC_BACK_MIDTONE, "Launch the color picker to update the background tone color"},
    {TabBackground, IDC_BACK_SHADOW, "Launch the color picker to update the background tone color"},
    {TabBackground, IDC_BACK_LIST, "Click to apply previously saved settings"},
    {TabBackground, IDC_BACK_SAVE, "Save current settings"},
    {TabBackground, IDC_BACK_DELETE, "Delete selected preset"},
};

const int32_t kTemplates[4] = {IDD_PAGE_BASIC, IDD_PAGE_WASH, IDD_PAGE_SURFACE, IDD_PAGE_BACKGROUND};

HWND Pages[4] = {};
TRotor* OffsetPad = nullptr;
TRotor* LightRotor = nullptr;
TColorSwatch* WashSwatch = nullptr;
TColorSwatch* SurfaceSwatches[3] = {};    // highlight, midtone, shadow
TColorSwatch* BackgroundSwatches[3] = {}; // highlight, midtone, shadow
// Skins of the rotate and link buttons, with the bitmaps they show; by tab.
struct PageSkins {
    ButtonSkin cw, ccw, link;
    HBITMAP bitmaps[12] = {};
};
PageSkins Skins[4];
// The user-settings group's boxes as the template made them, by tab.
UserGroupBoxes TemplateGroups[4];

FilterParameters& P() { return *gParams; }

HWND PageOf(int32_t tab) { return tab >= 0 && tab < 4 ? Pages[tab] : nullptr; }
HWND Ctl(int32_t tab, int32_t id) { return PageOf(tab) ? GetDlgItem(Pages[tab], id) : nullptr; }

void Render(HWND page) { SendMessageA(GetParent(page), WM_COMMAND, MAKEWPARAM(IDC_PARAMS_CHANGED, 0), 0); }

bool SecondWash() { return ViewWash == ViewCodeWashTwo && P().SecondWashExists; }
bool SecondSurface() { return ViewSurface == ViewCodeSurfaceTwo && P().SecondSurfaceExists; }
EffectLayer& Wash() { return WashLayers[SecondWash() ? 1 : 0]; }
EffectLayer& SurfaceLayer() { return SurfaceLayers[SecondSurface() ? 1 : 0]; }

template <class T> T& Pick(bool second, T& one, T& two) { return second ? two : one; }

SliderRow* RowBy(int32_t id, int32_t SliderRow::*member) {
    for (SliderRow& row : Sliders)
        if (row.*member == id && Pages[row.tab] && row.tab == ActiveTab) return &row;
    return nullptr;
}

// The gParams field a slider writes; the surface's scale and depth edits pick theirs by
// the wash selection, as they always have.
int32_t* Field(int32_t slider, bool fromEdit) {
    FilterParameters& p = P();
    const bool w = SecondWash(), s = fromEdit ? SecondWash() : SecondSurface();
    switch (slider) {
    case IDC_WASH_SCALE: return &Pick(w, p.WashScale1, p.WashScale2);
    case IDC_WASH_INTENSITY: return &Pick(w, p.WashIntensity1, p.WashIntensity2);
    case IDC_WASH_COVERAGE: return &Pick(w, p.WashCoverage1, p.WashCoverage2);
    case IDC_WASH_COVERAGE_SCALE: return &Pick(w, p.WashCoverageScale1, p.WashCoverageScale2);
    case IDC_WASH_EDGE_DISTANCE: return &Pick(w, p.WashEdgeDistance1, p.WashEdgeDistance2);
    case IDC_WASH_EDGE_SOFTNESS: return &Pick(w, p.WashEdgeSoftness1, p.WashEdgeSoftness2);
    case IDC_SURF_SCALE: return &Pick(s, p.SurfaceScale1, p.SurfaceScale2);
    case IDC_SURF_DEPTH: return &Pick(s, p.SurfaceDepth1, p.SurfaceDepth2);
    case IDC_SURF_INTENSITY: return &p.SurfaceMidtone;
    case IDC_SURF_HUE: return &p.SurfaceHue;
    case IDC_SURF_BRIGHTNESS: return &p.SurfaceBrightness;
    case IDC_SURF_CONTRAST: return &p.SurfaceContrast;
    case IDC_BACK_SCALE: return &p.BackgroundScale;
    case IDC_BACK_HUE: return &p.BackgroundHue;
    case IDC_BACK_SATURATION: return &p.BackgroundMidtone;
    default: return nullptr;
    }
}

void BackgroundTones() {
    const FilterParameters& p = P();
    const float saturation = float(p.BackgroundMidtone);
    SetLayerTones(BackgroundLayer, saturation, saturation, saturation, p.BackgroundHighlightColor,
                  p.BackgroundMidtoneColor, p.BackgroundShadowColor);
}

// The setter of a slider's layer; `deferred` leaves out what the spinner's timer does.
void ApplySlider(int32_t slider, int32_t v, bool deferred) {
    switch (slider) {
    case IDC_WASH_SCALE:
        if (deferred) return;
        SetLayerScale(Wash(), v);
        SyncWashLinks();
        return;
    case IDC_WASH_INTENSITY: SetLayerIntensity(Wash(), v); return;
    case IDC_WASH_COVERAGE:
        if (!deferred) SetLayerCoverage(Wash(), v);
        return;
    case IDC_WASH_COVERAGE_SCALE:
        if (!deferred) SetLayerCoverageScale(Wash(), v);
        return;
    case IDC_WASH_EDGE_DISTANCE: SetLayerEdgeDistance(Wash(), v); return;
    case IDC_WASH_EDGE_SOFTNESS: SetLayerEdgeSoftness(Wash(), v); return;
    case IDC_SURF_SCALE:
        SurfaceShadeDirty = 1;
        if (deferred) return;
        SetLayerScale(SurfaceLayer(), v);
        SyncSurfaceLinks();
        return;
    case IDC_SURF_DEPTH: SurfaceLayer().Depth = v; [[fallthrough]];
    case IDC_SURF_INTENSITY:
    case IDC_SURF_HUE:
    case IDC_SURF_BRIGHTNESS:
    case IDC_SURF_CONTRAST: SurfaceShadeDirty = 1; return;
    case IDC_BACK_SCALE:
        if (deferred) return;
        SetLayerScale(BackgroundLayer, v);
        SyncBackgroundLinks();
        return;
    case IDC_BACK_HUE:
    case IDC_BACK_SATURATION: BackgroundTones(); return;
    default: return;
    }
}

// ---- Names, checks, colours ----

void ShowText(int32_t tab, int32_t id, const char* text) {
    if (HWND w = Ctl(tab, id)) SetWindowTextA(w, text);
}
void SetNumber(int32_t tab, int32_t id, int32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "%d", value);
    ShowText(tab, id, text);
}
void Check(int32_t tab, int32_t id, bool on) {
    if (HWND w = Ctl(tab, id)) SendMessageA(w, BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
}
bool Checked(HWND page, int32_t id) { return IsDlgButtonChecked(page, id) == BST_CHECKED; }
void Enable(int32_t tab, std::initializer_list<int32_t> ids, bool on) {
    for (int32_t id : ids)
        if (HWND w = Ctl(tab, id)) EnableWindow(w, on);
}
bool IsSolid(const char* name) { return std::strcmp(name, "Solid.qzt") == 0; }

LinkMatches Links() {
    const FilterParameters& p = P();
    return MatchLinks(p.WashFileName1, p.WashFileName2, p.SecondWashExists, p.UseWash, p.SurfaceFileName1,
                      p.SurfaceFileName2, p.SecondSurfaceExists, p.UseSurface, p.BackgroundFileName, p.UseBackground);
}

bool DocumentTransparent() {
    if (!gFilterRecord) return false;
    return HasTransparency(gFilterRecord->planes, gFilterRecord->imageMode == plugInModeCMYKColor);
}

// ---- Enabling ----

void EnableWashPage() {
    const FilterParameters& p = P();
    PageState s;
    s.view = ViewWash;
    s.secondExists = p.SecondWashExists;
    s.inUse = p.UseWash;
    const LinkMatches m = Links();
    s.linkable = m.washPair || m.washBackground;
    s.solid = IsSolid(SecondWash() ? p.WashFileName2 : p.WashFileName1);
    s.hasRange = LayerOffsetRange(Wash()).AnyRoom;
    s.washType = SecondWash() ? p.WashType2 : p.WashType1;
    const WashEnabling e = EnableWash(s);
    Enable(TabWash,
           {IDC_WASH_SCALE,
            IDC_WASH_INTENSITY,
            IDC_WASH_COVERAGE,
            IDC_WASH_COVERAGE_SCALE,
            IDC_WASH_EDGE_DISTANCE,
            IDC_WASH_EDGE_SOFTNESS,
            IDC_WASH_INSIDE,
            IDC_WASH_OUTSIDE,
            IDC_WASH_RANDOM,
            IDC_WASH_SEED,
            IDC_WASH_TYPE,
            IDC_WASH_SCALE_LABEL,
            IDC_WASH_INTENSITY_LABEL,
            IDC_WASH_TYPE_LABEL,
            IDC_WASH_COVERAGE_GROUP,
            IDC_WASH_SOFT_LABEL,
            IDC_WASH_HARD_LABEL,
            IDC_WASH_COVERAGE_SCALE_LABEL,
            IDC_WASH_EDGE_GROUP,
            IDC_WASH_EDGE_DISTANCE_LABEL,
            IDC_WASH_EDGE_SOFTNESS_LABEL,
            IDC_WASH_ORIENTATION_GROUP,
            IDC_WASH_OFFSET_GROUP},
           e.controls);
    Enable(TabWash, {IDC_WASH_LINK}, e.link);
    Enable(TabWash, {IDC_WASH_COLOR}, e.swatch);
    Enable(TabWash, {IDC_WASH_FLIP_H, IDC_WASH_FLIP_V, IDC_WASH_INVERT, IDC_WASH_ROTATE_CW, IDC_WASH_ROTATE_CCW},
           e.orientation);
    Enable(TabWash, {IDC_WASH_OFFSET, IDC_WASH_OFFSET_X, IDC_WASH_OFFSET_Y}, e.offset);
}

void EnableSurfacePage() {
    const FilterParameters& p = P();
    PageState s;
    s.view = ViewSurface;
    s.secondExists = p.SecondSurfaceExists;
    s.inUse = p.UseSurface;
    s.useWash = p.UseWash;
    const LinkMatches m = Links();
    s.linkable = m.washSurface || m.surfaceBackground;
    s.solid = IsSolid(SecondSurface() ? p.SurfaceFileName2 : p.SurfaceFileName1);
    s.transparent = DocumentTransparent();
    s.surfaceEntire = p.SurfaceEntire;
    const SurfaceEnabling e = EnableSurface(s);
    Enable(TabSurface,
           {IDC_SURF_SCALE, IDC_SURF_DEPTH, IDC_SURF_SCALE_LABEL, IDC_SURF_DEPTH_LABEL, IDC_SURF_TYPE,
            IDC_SURF_TYPE_LABEL},
           e.layer);
    Enable(TabSurface, {IDC_SURF_BRIGHTNESS,      IDC_SURF_CONTRAST,        IDC_SURF_HUE,
                        IDC_SURF_INTENSITY,       IDC_SURF_HIGHLIGHT,       IDC_SURF_MIDTONE,
                        IDC_SURF_SHADOW,          IDC_SURF_HIGHLIGHT_LABEL, IDC_SURF_MIDTONE_LABEL,
                        IDC_SURF_SHADOW_LABEL,    IDC_SURF_TONES_CHOOSE,    IDC_SURF_TONES_NAME,
                        IDC_SURF_LIGHT,           IDC_SURF_LIGHT_ALPHA,     IDC_SURF_LIGHT_BETA,
                        IDC_SURF_INTENSITY_LABEL, IDC_SURF_HUE_LABEL,       IDC_SURF_BRIGHTNESS_LABEL,
                        IDC_SURF_CONTRAST_LABEL,  IDC_SURF_COLOR_GROUP,     IDC_SURF_LIGHT_GROUP},
           e.shading);
    Enable(TabSurface, {IDC_SURF_LINK}, e.link);
    Enable(TabSurface,
           {IDC_SURF_PERSPECTIVE, IDC_SURF_INVERT, IDC_SURF_FLIP_H, IDC_SURF_FLIP_V, IDC_SURF_ROTATE_CW,
            IDC_SURF_ROTATE_CCW, IDC_SURF_ORIENTATION_GROUP},
           e.orientation);
    Enable(TabSurface, {IDC_SURF_FILL_CANVAS}, e.fillCanvas);
    if (!e.fillCanvas) Check(TabSurface, IDC_SURF_FILL_CANVAS, false);
    Enable(TabSurface, {IDC_SURF_FILL_WASH}, e.fillWash);
}

void EnableBackgroundPage() {
    const FilterParameters& p = P();
    PageState s;
    s.inUse = p.UseBackground;
    const LinkMatches m = Links();
    s.linkable = m.washBackground || m.surfaceBackground;
    s.solid = IsSolid(p.BackgroundFileName);
    s.transparent = DocumentTransparent();
    const BackgroundEnabling e = EnableBackground(s);
    Enable(TabBackground,
           {IDC_BACK_SCALE, IDC_BACK_HUE, IDC_BACK_SATURATION, IDC_BACK_HIGHLIGHT, IDC_BACK_MIDTONE, IDC_BACK_SHADOW,
            IDC_BACK_HIGHLIGHT_LABEL, IDC_BACK_MIDTONE_LABEL, IDC_BACK_SHADOW_LABEL, IDC_BACK_ENHANCE,
            IDC_BACK_TONES_CHOOSE, IDC_BACK_TONES_NAME, IDC_BACK_SCALE_LABEL, IDC_BACK_HUE_LABEL,
            IDC_BACK_SATURATION_LABEL, IDC_BACK_COLOR_GROUP},
           e.controls);
    Enable(TabBackground,
           {IDC_BACK_ROTATE_CW, IDC_BACK_ROTATE_CCW, IDC_BACK_FLIP_H, IDC_BACK_FLIP_V, IDC_BACK_INVERT,
            IDC_BACK_ORIENTATION_GROUP},
           e.orientation);
    Enable(TabBackground, {IDC_BACK_LINK}, e.link);
    Enable(TabBackground, {IDC_BACK_FILL_CANVAS}, e.fillCanvas);
}

void EnablePage(int32_t tab) {
    if (!PageOf(tab)) return;
    if (tab == TabWash) EnableWashPage();
    if (tab == TabSurface) EnableSurfacePage();
    if (tab == TabBackground) EnableBackgroundPage();
}

// ---- The wash offset ----

void RefreshOffset() {
    if (!PageOf(TabWash)) return;
    const OffsetRange r = LayerOffsetRange(Wash());
    SetNumber(TabWash, IDC_WASH_OFFSET_X, r.OffsetX);
    SetNumber(TabWash, IDC_WASH_OFFSET_Y, r.OffsetY);
    if (OffsetPad)
        PercentToPad(OffsetPad, float(OffsetKnob(r.OffsetX, r.RoomX)), float(OffsetKnob(r.OffsetY, r.RoomY)));
}

void StoreWashOffset() {
    FilterParameters& p = P();
    const EffectLayer& layer = Wash();
    Pick(SecondWash(), p.WashOffsetX1, p.WashOffsetX2) = layer.OffsetX;
    Pick(SecondWash(), p.WashOffsetY1, p.WashOffsetY2) = layer.OffsetY;
}

void PadMoved(HWND page) {
    if (!OffsetPad) return;
    float px = 0, py = 0;
    PadToPercent(OffsetPad, px, py);
    EffectLayer& layer = Wash();
    const OffsetRange r = LayerOffsetRange(layer);
    const OffsetMove m = PadOffsetMove(px, py, r.RoomX, r.RoomY, r.OffsetX, r.OffsetY, PreviewScale);
    MoveLayer(layer, m.dx, m.dy);
    StoreWashOffset();
    SetNumber(TabWash, IDC_WASH_OFFSET_X, layer.OffsetX);
    SetNumber(TabWash, IDC_WASH_OFFSET_Y, layer.OffsetY);
    SyncWashLinks();
    Render(page);
}

void OffsetEdit(HWND page, int32_t id, int32_t code) {
    EffectLayer& layer = Wash();
    const OffsetRange r = LayerOffsetRange(layer);
    const bool x = id == IDC_WASH_OFFSET_X;
    if (code == QZ_EDIT_RESTORE) {
        SetNumber(TabWash, id, x ? r.OffsetX : r.OffsetY);
        return;
    }
    // Only a typed number moves the layer: a drag in the preview may have moved it since
    // the edit was last written.
    if (!SendDlgItemMessageA(page, id, EM_GETMODIFY, 0, 0)) return;
    SendDlgItemMessageA(page, id, EM_SETMODIFY, FALSE, 0);
    char text[17] = {};
    GetDlgItemTextA(page, id, text, sizeof text);
    const int32_t value = std::atoi(text);
    const int32_t delta = EditOffsetMove(value, x ? r.RoomX : r.RoomY, x ? r.OffsetX : r.OffsetY, PreviewScale);
    if (delta == 0) return;
    MoveLayer(layer, x ? delta : 0, x ? 0 : delta);
    StoreWashOffset();
    RefreshOffset();
    SyncWashLinks();
    Render(page);
}

// ---- Numbers typed and stepped ----

bool IsDone(int32_t code) { return code == EN_KILLFOCUS || code == QZ_EDIT_DONE || code == QZ_EDIT_RETURN; }

void EndWholeDialog(HWND page) {
    // The stored value already stood in the field: a second Esc leaves, keeping what was
    // committed (the caller reads it as a cancel).
    EndDialog(GetParent(page), 2);
}

void NumberEdit(HWND page, SliderRow& row, int32_t code) {
    TMacSlider* s = row.record;
    if (!s) return;
    const bool crossed = row.edit == IDC_SURF_SCALE_EDIT || row.edit == IDC_SURF_DEPTH_EDIT;
    int32_t* field = Field(row.slider, crossed);
    char text[17] = {};
    GetDlgItemTextA(page, row.edit, text, sizeof text);
    if (code == QZ_EDIT_RESTORE) {
        char stored[16];
        std::snprintf(stored, sizeof stored, "%d", field ? *field : int32_t(s->Value));
        if (std::strcmp(text, stored) == 0) {
            EndWholeDialog(page);
            return;
        }
        SetDlgItemTextA(page, row.edit, stored);
        return;
    }
    const float value = ParseFieldNumber(text, row.low, row.high);
    const bool same = value == s->Value;
    if (row.slider == IDC_WASH_SCALE) {
        // The scale edit renders before it syncs, and syncs even when nothing changed.
        if (!same) {
            SetValue(s, value, false);
            if (field) *field = int32_t(value);
            SetLayerScale(Wash(), int32_t(value));
            Render(page);
        }
        SyncWashLinks();
        return;
    }
    if (same) {
        // The edit shows the clamped number even when the value stands.
        SetValue(s, s->Value, false);
        return;
    }
    SetValue(s, value, false);
    if (field) *field = int32_t(value);
    ApplySlider(row.slider, int32_t(value), false);
    Render(page);
}

void SliderMoved(HWND page, SliderRow& row) {
    TMacSlider* s = row.record;
    if (!s) return;
    if (int32_t* field = Field(row.slider, false)) *field = int32_t(s->Value);
    ApplySlider(row.slider, int32_t(s->Value), false);
    Render(page);
}

void Spun(HWND page, HWND spin, WPARAM wparam) {
    SliderRow* row = RowBy(GetDlgCtrlID(spin), &SliderRow::spin);
    if (!row || !row->record) return;
    const bool signed32 =
        row->spin == IDC_BACK_HUE_SPIN || row->spin == IDC_WASH_COVERAGE_SPIN || row->spin == IDC_SURF_HUE_SPIN;
    int32_t pos = signed32 ? int32_t(SendMessageA(spin, UDM_GETPOS32, 0, 0))
                           : int32_t(LOWORD(SendMessageA(spin, UDM_GETPOS, 0, 0)));
    pos = std::max(int32_t(row->low), std::min(int32_t(row->high), pos));
    SetValue(row->record, float(pos), true);
    if (LOWORD(wparam) != SB_ENDSCROLL) return;
    if (int32_t* field = Field(row->slider, false)) *field = pos;
    ApplySlider(row->slider, pos, true);
    if (SpinTimerPending) KillTimer(page, UINT_PTR(row->timer));
    SetTimer(page, UINT_PTR(row->timer), 500, nullptr);
    SpinTimerPending = 1;
}

void TimerFired(HWND page, UINT_PTR timer) {
    KillTimer(page, timer);
    const FilterParameters& p = P();
    switch (timer) {
    case QZ_TIMER_WASH_SCALE:
        SetLayerScale(Wash(), Pick(SecondWash(), p.WashScale1, p.WashScale2));
        SyncWashLinks();
        break;
    case QZ_TIMER_WASH_COVERAGE: SetLayerCoverage(Wash(), Pick(SecondWash(), p.WashCoverage1, p.WashCoverage2)); break;
    case QZ_TIMER_COVERAGE_SCALE: SetLayerCoverageScale(Wash(), p.WashCoverageScale1); break;
    case QZ_TIMER_SURFACE_SCALE:
        SetLayerScale(SurfaceLayer(), Pick(SecondSurface(), p.SurfaceScale1, p.SurfaceScale2));
        SurfaceShadeDirty = 1;
        SyncSurfaceLinks();
        break;
    case QZ_TIMER_BACKGROUND_SCALE:
        SetLayerScale(BackgroundLayer, p.BackgroundScale);
        SyncBackgroundLinks();
        break;
    case QZ_TIMER_RENDER: break;
    default: return;
    }
    Render(page);
    SpinTimerPending = 0;
}

// ---- The light ----

void LightEdit(HWND page, int32_t id, int32_t code) {
    FilterParameters& p = P();
    const bool alpha = id == IDC_SURF_LIGHT_ALPHA;
    if (code == QZ_EDIT_RESTORE) {
        // The light's edits may stand on no page yet; the rotor's number if it exists.
        const float stored = LightRotor ? (alpha ? LightRotor->Alpha : LightRotor->Beta)
                                        : (alpha ? p.SurfaceLightAlpha : p.SurfaceLightBeta);
        if (HWND edit = Ctl(TabSurface, id)) {
            char text[16];
            std::snprintf(text, sizeof text, "%d", int32_t(stored));
            SetWindowTextA(edit, text);
        }
        return;
    }
    // Any page's 1015 ends here: the wash's and the tones' names too, read as numbers.
    char text[17] = {};
    GetDlgItemTextA(page, id, text, sizeof text);
    const float value = float(std::atof(text));
    (alpha ? p.SurfaceLightAlpha : p.SurfaceLightBeta) = value;
    if (LightRotor && page == Pages[TabSurface]) SetAngles(LightRotor, p.SurfaceLightAlpha, p.SurfaceLightBeta);
    SurfaceLayers[0].LightAlpha = SurfaceLayers[1].LightAlpha = p.SurfaceLightAlpha;
    SurfaceLayers[0].LightBeta = SurfaceLayers[1].LightBeta = p.SurfaceLightBeta;
    SurfaceShadeDirty = 1;
    Render(page);
}

// ---- Commands ----

void Orientation(HWND page, int32_t id) {
    FilterParameters& p = P();
    const bool w2 = SecondWash(), s2 = SecondSurface();
    switch (id) {
    // Flip Horizontal writes the field named for the vertical, and the reverse.
    case IDC_WASH_FLIP_H:
        FlipLayerHor(Wash());
        Pick(w2, p.WashFlipVer1, p.WashFlipVer2) = Checked(page, id);
        SyncWashLinks();
        break;
    case IDC_WASH_FLIP_V:
        FlipLayerVer(Wash());
        Pick(w2, p.WashFlipHor1, p.WashFlipHor2) = Checked(page, id);
        SyncWashLinks();
        break;
    case IDC_WASH_INVERT:
        Pick(w2, p.WashInvert1, p.WashInvert2) = Checked(page, id);
        InvertLayer(Wash());
        break;
    case IDC_WASH_ROTATE_CW:
    case IDC_WASH_ROTATE_CCW:
        (id == IDC_WASH_ROTATE_CW ? RotateLayerCw : RotateLayerCcw)(Wash());
        Pick(w2, p.WashAngle1, p.WashAngle2) = Wash().Angle;
        SyncWashLinks();
        break;
    case IDC_SURF_FLIP_H:
        FlipLayerHor(SurfaceLayer());
        Pick(s2, p.SurfaceFlipVer1, p.SurfaceFlipVer2) = Checked(page, id);
        SyncSurfaceLinks();
        break;
    case IDC_SURF_FLIP_V:
        FlipLayerVer(SurfaceLayer());
        Pick(s2, p.SurfaceFlipHor1, p.SurfaceFlipHor2) = Checked(page, id);
        SyncSurfaceLinks();
        break;
    case IDC_SURF_INVERT:
        Pick(s2, p.SurfaceInvert1, p.SurfaceInvert2) = Checked(page, id);
        InvertLayer(SurfaceLayer());
        break;
    case IDC_SURF_ROTATE_CW:
    case IDC_SURF_ROTATE_CCW:
        (id == IDC_SURF_ROTATE_CW ? RotateLayerCw : RotateLayerCcw)(SurfaceLayer());
        Pick(s2, p.SurfaceAngle1, p.SurfaceAngle2) = SurfaceLayer().Angle;
        SyncSurfaceLinks();
        break;
    case IDC_BACK_FLIP_H:
        FlipLayerHor(BackgroundLayer);
        p.BackgroundFlipVer = Checked(page, id);
        SyncBackgroundLinks();
        break;
    case IDC_BACK_FLIP_V:
        FlipLayerVer(BackgroundLayer);
        p.BackgroundFlipHor = Checked(page, id);
        SyncBackgroundLinks();
        break;
    case IDC_BACK_INVERT:
        p.BackgroundInvert = Checked(page, id);
        InvertLayer(BackgroundLayer);
        break;
    case IDC_BACK_ROTATE_CW:
    case IDC_BACK_ROTATE_CCW:
        (id == IDC_BACK_ROTATE_CW ? RotateLayerCw : RotateLayerCcw)(BackgroundLayer);
        p.BackgroundAngle = BackgroundLayer.Angle;
        SyncBackgroundLinks();
        break;
    default: return;
    }
    // The surface's relief and shade are kept between renders unless marked.
    if (PageOf(TabSurface) == page) SurfaceShadeDirty = 1;
    Render(page);
}

void SwatchPicked(HWND page, int32_t id) {
    FilterParameters& p = P();
    auto color = [&](TColorSwatch* s, uint32_t& into) {
        if (s) into = s->Color;
    };
    switch (id) {
    case IDC_WASH_COLOR: {
        uint32_t& c = Pick(SecondWash(), p.WashStainColor1, p.WashStainColor2);
        color(WashSwatch, c);
        EffectLayer& l = Wash();
        l.StainRed = uint8_t(c), l.StainGreen = uint8_t(c >> 8), l.StainBlue = uint8_t(c >> 16);
        break;
    }
    case IDC_SURF_HIGHLIGHT:
    case IDC_SURF_MIDTONE:
    case IDC_SURF_SHADOW:
        color(SurfaceSwatches[0], p.SurfaceHighlightColor);
        color(SurfaceSwatches[1], p.SurfaceMidtoneColor);
        color(SurfaceSwatches[2], p.SurfaceShadowColor);
        SurfaceShadeDirty = 1;
        std::strcpy(SurfaceColorsName, "Custom");
        ShowText(TabSurface, IDC_SURF_TONES_NAME, "Custom");
        break;
    case IDC_BACK_HIGHLIGHT:
    case IDC_BACK_MIDTONE:
    case IDC_BACK_SHADOW:
        color(BackgroundSwatches[0], p.BackgroundHighlightColor);
        color(BackgroundSwatches[1], p.BackgroundMidtoneColor);
        color(BackgroundSwatches[2], p.BackgroundShadowColor);
        BackgroundTones();
        std::strcpy(BackgroundColorsName, "Custom");
        ShowText(TabBackground, IDC_BACK_TONES_NAME, "Custom");
        break;
    default: return;
    }
    Render(page);
}

void Seed(HWND page, int32_t value) {
    int32_t& seed = Pick(SecondWash(), P().WashRandomize1, P().WashRandomize2);
    value = SeedOf(value);
    SetNumber(TabWash, IDC_WASH_SEED, value);
    if (value == seed && Wash().CoverageNoise) return;
    seed = value;
    SetLayerRandomize(Wash(), value);
    Render(page);
}

// The Choose buttons; their ids mean other controls on other pages.
bool OpensDrawer(HWND page, int32_t id) {
    switch (id) {
    case IDC_WASH_CHOOSE: return page == Pages[TabWash];
    case IDC_SURF_CHOOSE:
    case IDC_SURF_TONES_CHOOSE: return page == Pages[TabSurface];
    case IDC_BACK_CHOOSE:
    case IDC_BACK_TONES_CHOOSE: return page == Pages[TabBackground];
    default: return false;
    }
}

void Command(HWND page, int32_t id, int32_t code, HWND from) {
    FilterParameters& p = P();
    if (PresetListCommand(page, id, code)) return;
    if (code == BN_CLICKED && OpensDrawer(page, id)) {
        OpenDrawerFor(GetParent(page), id);
        return;
    }
    // Shared ids first: they act alike on whichever page sends them.
    if (id == IDC_SURF_LIGHT_ALPHA || id == IDC_SURF_LIGHT_BETA) {
        if (IsDone(code) || code == QZ_EDIT_RESTORE) LightEdit(page, id, code);
        return;
    }
    if (id == IDC_WASH_OFFSET_X || id == IDC_WASH_OFFSET_Y) {
        if ((IsDone(code) || code == QZ_EDIT_RESTORE) && page == Pages[TabWash]) OffsetEdit(page, id, code);
        return;
    }
    if (SliderRow* row = RowBy(id, &SliderRow::edit)) {
        if (IsDone(code) || code == QZ_EDIT_RESTORE) NumberEdit(page, *row, code);
        return;
    }
    if (SliderRow* row = RowBy(id, &SliderRow::slider)) {
        SliderMoved(page, *row);
        return;
    }
    switch (id) {
    case IDC_WASH_TYPE:
    case IDC_SURF_TYPE: {
        if (code != CBN_SELCHANGE) return;
        const auto index = uint8_t(SendMessageA(from, CB_GETCURSEL, 0, 0));
        if (id == IDC_WASH_TYPE) {
            Pick(SecondWash(), p.WashType1, p.WashType2) = index;
            Wash().WashType = index;
            EnablePage(TabWash);
        } else {
            Pick(SecondSurface(), p.SurfaceType1, p.SurfaceType2) = index;
            SurfaceLayer().SurfaceType = index;
            SurfaceShadeDirty = 1;
        }
        Render(page);
        return;
    }
    case IDC_WASH_SEED:
        if (IsDone(code)) Seed(page, GetDlgItemInt(page, id, nullptr, TRUE));
        if (code == QZ_EDIT_RESTORE) SetNumber(TabWash, id, Pick(SecondWash(), p.WashRandomize1, p.WashRandomize2));
        return;
    case IDC_WASH_RANDOM:
        if (code == BN_CLICKED) Seed(page, CRandom() % 1000);
        return;
    case IDC_WASH_INSIDE:
    case IDC_WASH_OUTSIDE: {
        if (code != BN_CLICKED) return;
        const uint8_t inside = Checked(page, IDC_WASH_INSIDE);
        Pick(SecondWash(), p.WashInside1, p.WashInside2) = inside;
        SetLayerInside(Wash(), inside);
        Render(page);
        return;
    }
    case IDC_WASH_OFFSET: PadMoved(page); return;
    case IDC_WASH_LINK:
    case IDC_SURF_LINK:
    case IDC_BACK_LINK:
        if (code != BN_CLICKED) return;
        PressLink(page, id == IDC_WASH_LINK ? TabWash : id == IDC_SURF_LINK ? TabSurface : TabBackground, false);
        return;
    case IDC_WASH_COLOR:
    case IDC_SURF_HIGHLIGHT:
    case IDC_SURF_MIDTONE:
    case IDC_SURF_SHADOW:
    case IDC_BACK_HIGHLIGHT:
    case IDC_BACK_MIDTONE:
    case IDC_BACK_SHADOW: SwatchPicked(page, id); return;
    case IDC_SURF_LIGHT:
        if (!LightRotor) return;
        p.SurfaceLightAlpha = LightRotor->Alpha;
        p.SurfaceLightBeta = LightRotor->Beta;
        SurfaceLayers[0].LightAlpha = SurfaceLayers[1].LightAlpha = p.SurfaceLightAlpha;
        SurfaceLayers[0].LightBeta = SurfaceLayers[1].LightBeta = p.SurfaceLightBeta;
        SurfaceShadeDirty = 1;
        Render(page);
        return;
    case IDC_SURF_PERSPECTIVE:
        if (code != BN_CLICKED) return;
        p.SurfacePerspectiveOn = Checked(page, id);
        SurfaceLayers[0].Perspective = SurfaceLayers[1].Perspective = p.SurfacePerspectiveOn;
        SurfaceShadeDirty = 1;
        Render(page);
        return;
    case IDC_SURF_FILL_CANVAS:
        if (code != BN_CLICKED) return;
        p.SurfaceEntire = Checked(page, id);
        SurfaceShadeDirty = 1;
        EnablePage(TabSurface);
        Render(page);
        return;
    case IDC_SURF_FILL_WASH:
        if (code != BN_CLICKED) return;
        p.SurfaceIncludeWashArea = Checked(page, id);
        SurfaceShadeDirty = 1;
        Render(page);
        return;
    case IDC_BACK_FILL_CANVAS:
        if (code != BN_CLICKED) return;
        p.BackgroundEntire = Checked(page, id);
        Render(page);
        return;
    case IDC_BACK_ENHANCE:
        if (code != BN_CLICKED) return;
        p.BackgroundEnhanced = Checked(page, id);
        BackgroundLayer.ToneDirty = 1;
        Render(page);
        return;
    default:
        if (code == BN_CLICKED) Orientation(page, id);
        return;
    }
}

// ---- Setup ----

HBITMAP Art(int32_t id) {
    return HBITMAP(LoadImageA(ControlInstance, MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
}

void SkinButtons(int32_t tab, HWND page, int32_t cw, int32_t ccw, int32_t link) {
    PageSkins& s = Skins[tab];
    const int32_t ids[12] = {art::kRotateCwNormal,  art::kRotateCwHover,  art::kRotateCwDisabled,
                             art::kRotateCcwNormal, art::kRotateCcwHover, art::kRotateCcwDisabled,
                             art::kUnlinkedNormal,  art::kUnlinkedHover,  art::kUnlinkedDisabled,
                             art::kLinkedNormal,    art::kLinkedHover,    art::kLinkedDisabled};
    for (int i = 0; i < 12; ++i) s.bitmaps[i] = Art(ids[i]);
    HBITMAP* b = s.bitmaps;
    AttachSkin(&s.cw, GetDlgItem(page, cw), b[0], b[1], b[2], nullptr, nullptr, nullptr);
    AttachSkin(&s.ccw, GetDlgItem(page, ccw), b[3], b[4], b[5], nullptr, nullptr, nullptr);
    AttachSkin(&s.link, GetDlgItem(page, link), b[6], b[7], b[8], b[9], b[10], b[11]);
}

void SetUpPage(HWND page, int32_t tab) {
    Pages[tab] = page;
    for (SliderRow& row : Sliders) {
        if (row.tab != tab) continue;
        row.record = FindControl<TMacSlider>(GetDlgItem(page, row.slider));
        if (!row.record) continue;
        if (row.slider == IDC_WASH_COVERAGE) {
            row.record->SnapOn = 1;
            row.record->SnapValue = 0;
        }
        AttachTrackbar(row.record);
        row.record->EditId = row.edit;
        row.record->SpinId = row.spin;
        SetRange(row.record, row.low, row.high);
        if (HWND edit = GetDlgItem(page, row.edit)) SendMessageA(edit, EM_LIMITTEXT, 16, 0);
    }
    auto items = [&](int32_t id, std::initializer_list<const char*> names) {
        for (const char* name : names) SendDlgItemMessageA(page, id, CB_ADDSTRING, 0, LPARAM(name));
    };
    if (tab == TabWash) {
        items(IDC_WASH_TYPE, {"Erosion", "Stain", "Bleach", "Color"});
        WashSwatch = FindControl<TColorSwatch>(GetDlgItem(page, IDC_WASH_COLOR));
        OffsetPad = FindControl<TRotor>(GetDlgItem(page, IDC_WASH_OFFSET));
        if (OffsetPad) {
            std::strcpy(OffsetPad->Caption, "Wash Offset");
            OffsetPad->IsOffsetPad = 1;
        }
        SkinButtons(tab, page, IDC_WASH_ROTATE_CW, IDC_WASH_ROTATE_CCW, IDC_WASH_LINK);
    } else if (tab == TabSurface) {
        items(IDC_SURF_TYPE, {"Colorize", "Tint", "Boost", "Enhance", "Vivid"});
        const int32_t swatches[3] = {IDC_SURF_HIGHLIGHT, IDC_SURF_MIDTONE, IDC_SURF_SHADOW};
        for (int i = 0; i < 3; ++i) SurfaceSwatches[i] = FindControl<TColorSwatch>(GetDlgItem(page, swatches[i]));
        LightRotor = FindControl<TRotor>(GetDlgItem(page, IDC_SURF_LIGHT));
        if (LightRotor) {
            std::strcpy(LightRotor->Caption, "Lighting direction");
            LightRotor->AlphaEdit = GetDlgItem(page, IDC_SURF_LIGHT_ALPHA);
            LightRotor->BetaEdit = GetDlgItem(page, IDC_SURF_LIGHT_BETA);
        }
        ShowWindow(GetDlgItem(page, IDC_SURF_SAVE_COLOR), SW_HIDE);
        SkinButtons(tab, page, IDC_SURF_ROTATE_CW, IDC_SURF_ROTATE_CCW, IDC_SURF_LINK);
    } else if (tab == TabBackground) {
        const int32_t swatches[3] = {IDC_BACK_HIGHLIGHT, IDC_BACK_MIDTONE, IDC_BACK_SHADOW};
        for (int i = 0; i < 3; ++i) BackgroundSwatches[i] = FindControl<TColorSwatch>(GetDlgItem(page, swatches[i]));
        ShowWindow(GetDlgItem(page, IDC_BACK_SAVE_COLORS), SW_HIDE);
        SkinButtons(tab, page, IDC_BACK_ROTATE_CW, IDC_BACK_ROTATE_CCW, IDC_BACK_LINK);
        AttachFilmstrip(GetDlgItem(page, IDC_BACK_STRIP));
    }
    for (const Tip& tip : Tips)
        if (tip.tab == tab)
            if (HWND w = GetDlgItem(page, tip.id)) AddTooltip(w, tip.text, nullptr);

    // The user-settings group as the template made it, for the stretch.
    const int32_t save[4] = {IDC_USER_SAVE, IDC_WASH_SAVE, IDC_SURF_SAVE, IDC_BACK_SAVE};
    const int32_t remove[4] = {IDC_USER_DELETE, IDC_WASH_DELETE, IDC_SURF_DELETE, IDC_BACK_DELETE};
    const int32_t list[4] = {IDC_USER_LIST, IDC_WASH_LIST, IDC_SURF_LIST, IDC_BACK_LIST};
    auto box = [&](int32_t id) {
        RECT r{};
        if (HWND w = GetDlgItem(page, id)) {
            GetWindowRect(w, &r);
            MapWindowPoints(nullptr, page, reinterpret_cast<POINT*>(&r), 2);
        }
        return LayoutBox{r.left, r.top, r.right - r.left, r.bottom - r.top};
    };
    TemplateGroups[tab] = {box(IDC_USER_GROUP), box(list[tab]), box(save[tab]), box(remove[tab])};
    SetUpPresetLists(page, tab);
}

void RefreshSliders(int32_t tab) {
    for (SliderRow& row : Sliders)
        if (row.tab == tab && row.record)
            if (const int32_t* field = Field(row.slider, false)) SetValue(row.record, float(*field), false);
}

void RefreshWash() {
    const FilterParameters& p = P();
    const bool w = SecondWash();
    ShowText(TabWash, IDC_WASH_NAME, DisplayTextureName(w ? p.WashFileName2 : p.WashFileName1));
    Check(TabWash, IDC_WASH_LINK, LinkWash);
    SendDlgItemMessageA(Pages[TabWash], IDC_WASH_TYPE, CB_SETCURSEL, w ? p.WashType2 : p.WashType1, 0);
    SetColor(WashSwatch, w ? p.WashStainColor2 : p.WashStainColor1);
    SetNumber(TabWash, IDC_WASH_SEED, w ? p.WashRandomize2 : p.WashRandomize1);
    const bool inside = w ? p.WashInside2 : p.WashInside1;
    Check(TabWash, IDC_WASH_INSIDE, inside);
    Check(TabWash, IDC_WASH_OUTSIDE, !inside);
    Check(TabWash, IDC_WASH_FLIP_H, w ? p.WashFlipVer2 : p.WashFlipVer1);
    Check(TabWash, IDC_WASH_FLIP_V, w ? p.WashFlipHor2 : p.WashFlipHor1);
    Check(TabWash, IDC_WASH_INVERT, w ? p.WashInvert2 : p.WashInvert1);
    RefreshOffset();
}

void RefreshSurface() {
    const FilterParameters& p = P();
    const bool s = SecondSurface();
    ShowText(TabSurface, IDC_SURF_NAME, DisplayTextureName(s ? p.SurfaceFileName2 : p.SurfaceFileName1));
    Check(TabSurface, IDC_SURF_LINK, LinkSurface);
    SendDlgItemMessageA(Pages[TabSurface], IDC_SURF_TYPE, CB_SETCURSEL, s ? p.SurfaceType2 : p.SurfaceType1, 0);
    SetColor(SurfaceSwatches[0], p.SurfaceHighlightColor);
    SetColor(SurfaceSwatches[1], p.SurfaceMidtoneColor);
    SetColor(SurfaceSwatches[2], p.SurfaceShadowColor);
    ShowText(TabSurface, IDC_SURF_TONES_NAME, SurfaceColorsName);
    Check(TabSurface, IDC_SURF_FLIP_H, s ? p.SurfaceFlipVer2 : p.SurfaceFlipVer1);
    Check(TabSurface, IDC_SURF_FLIP_V, s ? p.SurfaceFlipHor2 : p.SurfaceFlipHor1);
    Check(TabSurface, IDC_SURF_INVERT, s ? p.SurfaceInvert2 : p.SurfaceInvert1);
    Check(TabSurface, IDC_SURF_PERSPECTIVE, p.SurfacePerspectiveOn);
    Check(TabSurface, IDC_SURF_FILL_CANVAS, p.SurfaceEntire);
    Check(TabSurface, IDC_SURF_FILL_WASH, p.SurfaceIncludeWashArea);
    if (LightRotor) SetAngles(LightRotor, p.SurfaceLightAlpha, p.SurfaceLightBeta);
}

void RefreshBackground() {
    const FilterParameters& p = P();
    ShowText(TabBackground, IDC_BACK_NAME, DisplayTextureName(p.BackgroundFileName));
    Check(TabBackground, IDC_BACK_LINK, LinkBackground);
    SetColor(BackgroundSwatches[0], p.BackgroundHighlightColor);
    SetColor(BackgroundSwatches[1], p.BackgroundMidtoneColor);
    SetColor(BackgroundSwatches[2], p.BackgroundShadowColor);
    ShowText(TabBackground, IDC_BACK_TONES_NAME, BackgroundColorsName);
    Check(TabBackground, IDC_BACK_FLIP_H, p.BackgroundFlipVer);
    Check(TabBackground, IDC_BACK_FLIP_V, p.BackgroundFlipHor);
    Check(TabBackground, IDC_BACK_INVERT, p.BackgroundInvert);
    Check(TabBackground, IDC_BACK_FILL_CANVAS, p.BackgroundEntire);
    Check(TabBackground, IDC_BACK_ENHANCE, p.BackgroundEnhanced);
}

RECT DisplayArea(const TabRecord& tabs) {
    RECT r{};
    GetWindowRect(tabs.tabs, &r);
    MapWindowPoints(nullptr, GetParent(tabs.tabs), reinterpret_cast<POINT*>(&r), 2);
    RECT display = r;
    SendMessageA(tabs.tabs, TCM_ADJUSTRECT, FALSE, LPARAM(&display));
    display.right = r.right - GetSystemMetrics(SM_CXDLGFRAME);
    display.bottom = r.bottom - GetSystemMetrics(SM_CYDLGFRAME);
    return display;
}

void PlacePage(HWND dialog, const TabRecord& tabs, int32_t tab) {
    HWND page = Pages[tab];
    if (!page) return;
    const RECT area = DisplayArea(tabs);
    RECT client{}, tabRect{};
    GetClientRect(dialog, &client);
    GetWindowRect(tabs.tabs, &tabRect);
    const int32_t width = area.right - area.left;
    const int32_t height =
        std::min<int32_t>(area.bottom - area.top, PageHeight(client.bottom, tabRect.right - tabRect.left, width,
                                                             GetSystemMetrics(SM_CYSMCAPTION)));
    SetWindowPos(page, HWND_TOP, area.left, area.top, width, height, SWP_NOACTIVATE);
    const int32_t list[4] = {IDC_USER_LIST, IDC_WASH_LIST, IDC_SURF_LIST, IDC_BACK_LIST};
    const int32_t save[4] = {IDC_USER_SAVE, IDC_WASH_SAVE, IDC_SURF_SAVE, IDC_BACK_SAVE};
    const int32_t remove[4] = {IDC_USER_DELETE, IDC_WASH_DELETE, IDC_SURF_DELETE, IDC_BACK_DELETE};
    const UserGroupBoxes b = StretchUserGroup(height, TemplateGroups[tab]);
    auto move = [&](int32_t id, const LayoutBox& to) {
        if (HWND w = GetDlgItem(page, id)) MoveWindow(w, to.x, to.y, to.width, to.height, TRUE);
    };
    move(IDC_USER_GROUP, b.group);
    move(list[tab], b.list);
    move(save[tab], b.save);
    move(remove[tab], b.remove);
    // The group box is transparent: its old edges stay unless the page is painted anew.
    RedrawWindow(page, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

INT_PTR Dispatch(HWND page, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_INITDIALOG: {
        const auto tab = int32_t(lparam);
        SetWindowLongPtrA(page, DWLP_USER, LONG_PTR(tab));
        SetUpPage(page, tab);
        RefreshPage();
        return FALSE;
    }
    case WM_COMMAND: Command(page, LOWORD(wparam), HIWORD(wparam), HWND(lparam)); return TRUE;
    case WM_VSCROLL:
    case WM_HSCROLL:
        if (lparam) Spun(page, HWND(lparam), wparam);
        return TRUE;
    case WM_TIMER: TimerFired(page, wparam); return TRUE;
    case WM_MEASUREITEM: return MeasurePresetRow(reinterpret_cast<MEASUREITEMSTRUCT*>(lparam));
    case WM_DRAWITEM: return DrawPresetRow(reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
    case WM_DESTROY: {
        const auto tab = int32_t(GetWindowLongPtrA(page, DWLP_USER));
        if (tab < 0 || tab > 3) return FALSE;
        Pages[tab] = nullptr;
        for (SliderRow& row : Sliders)
            if (row.tab == tab) row.record = nullptr;
        if (tab == TabWash) WashSwatch = nullptr, OffsetPad = nullptr;
        if (tab == TabSurface)
            LightRotor = nullptr, SurfaceSwatches[0] = SurfaceSwatches[1] = SurfaceSwatches[2] = nullptr;
        if (tab == TabBackground) BackgroundSwatches[0] = BackgroundSwatches[1] = BackgroundSwatches[2] = nullptr;
        for (HBITMAP& b : Skins[tab].bitmaps) {
            if (b) DeleteObject(b);
            b = nullptr;
        }
        return FALSE;
    }
    default: return FALSE;
    }
}

} // namespace

void RefreshPage() {
    const int32_t tab = ActiveTab;
    if (!PageOf(tab) || !gParams) return;
    if (tab == TabBasic) return; // its Delete button follows the preset lists
    ComputeUseFlags();
    RefreshSliders(tab);
    if (tab == TabWash) RefreshWash();
    if (tab == TabSurface) RefreshSurface();
    if (tab == TabBackground) RefreshBackground();
    EnablePage(tab);
}

void EnableCurrentPage() {
    if (!gParams) return;
    ComputeUseFlags();
    EnablePage(ActiveTab);
}

void LinkAfterTextureChosen(int32_t tab) {
    // The link kinds number the tabs as the tab control does.
    if (tab >= TabWash && tab <= TabBackground) PressLink(PageOf(tab), tab, true);
}

void SelectTab(HWND dialog, TabRecord& tabs) {
    if (tabs.page) ShowWindow(tabs.page, SW_HIDE);
    const int32_t tab = std::max(0, std::min(3, ActiveTab));
    if (!Pages[tab]) {
        CreateDialogParamA(ThisModule(), MAKEINTRESOURCEA(kTemplates[tab]), dialog, PageProc, LPARAM(tab));
        tabs.pages[tab] = Pages[tab];
        PlacePage(dialog, tabs, tab);
    } else {
        RefreshPage();
    }
    tabs.page = Pages[tab];
    if (tabs.page) ShowWindow(tabs.page, SW_SHOW);
}

void PlacePages(HWND dialog, TabRecord& tabs) {
    if (!tabs.tabs) return;
    for (int32_t tab = 0; tab < 4; ++tab) PlacePage(dialog, tabs, tab);
}

void ForgetPages() {
    for (HWND& page : Pages) page = nullptr;
    for (SliderRow& row : Sliders) row.record = nullptr;
    OffsetPad = LightRotor = nullptr;
    WashSwatch = nullptr;
    for (int i = 0; i < 3; ++i) SurfaceSwatches[i] = BackgroundSwatches[i] = nullptr;
    SpinTimerPending = 0;
    ForgetPresetLists();
}

INT_PTR CALLBACK PageProc(HWND page, UINT message, WPARAM wparam, LPARAM lparam) {
    try {
        return Dispatch(page, message, wparam, lparam);
    } catch (...) {
        return FALSE;
    }
}
