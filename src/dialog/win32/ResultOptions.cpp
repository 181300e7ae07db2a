#include "dialog/win32/ResultOptions.h"

#include "controls/win32/Buttons.h"
#include "dialog/DialogIds.h"
#include "host/Session.h"
#include "state/Parameters.h"

namespace {

// By tab: Basic, Wash, Surface, Background.
constexpr int kBoxes[4] = {IDC_OPTION_BASIC, IDC_OPTION_WASH, IDC_OPTION_SURFACE, IDC_OPTION_BACKGROUND};
constexpr int kLabels[4] = {IDC_LABEL_BASIC, IDC_LABEL_WASH, IDC_LABEL_SURFACE, IDC_LABEL_BACKGROUND};

uint8_t& OptionOf(FilterParameters& p, int tab) {
    switch (tab) {
    case 0: return p.EffectInNewLayer;
    case 1: return p.EffectOnMask;
    case 2: return p.SurfaceInNewLayer;
    default: return p.BackgroundInNewLayer;
    }
}

int TabOfLabel(int id) {
    for (int tab = 0; tab < 4; ++tab)
        if (kLabels[tab] == id) return tab;
    return -1;
}

// The mask layer needs a background layer under it; switching the mask off keeps it.
void MaskNeedsBackground(FilterParameters& p, uint8_t maskBefore) {
    if (p.EffectOnMask && !maskBefore) p.BackgroundInNewLayer = 1;
}

} // namespace

void MakeOptionLabels(HWND dialog, float dpiScale) {
    RECT box{};
    GetClientRect(GetDlgItem(dialog, IDC_OPTION_BASIC), &box);
    const struct {
        int id;
        const char* text;
        int32_t extra;
    } labels[4] = {{IDC_LABEL_BASIC, "Generate Effect in New Layer Above", 0},
                   {IDC_LABEL_WASH, "Generate Wash Effect in Mask Layer", 0},
                   {IDC_LABEL_SURFACE, "Generate Effect in New Layer Above", 0},
                   {IDC_LABEL_BACKGROUND, "Generate Background in New Layer Below", 50}};
    for (const auto& l : labels) {
        // The template's static only reserves the id.
        if (HWND old = GetDlgItem(dialog, l.id)) DestroyWindow(old);
        const int32_t width = int32_t(dpiScale * 210) + l.extra;
        if (TLabel* label = CreateLabel(box.right + 5, box.top - 4, width, 20, dialog, l.id, l.text, true, true))
            label->BackMode = kBackModeBand;
    }
}

void CheckResultOptions(HWND dialog) {
    FilterParameters& p = *gParams;
    for (int tab = 0; tab < 4; ++tab) {
        const bool on = OptionOf(p, tab) != 0;
        CheckDlgButton(dialog, kBoxes[tab], on ? BST_CHECKED : BST_UNCHECKED);
        if (TLabel* label = FindControl<TLabel>(GetDlgItem(dialog, kLabels[tab]))) {
            label->Toggled = on ? 2 : 0;
            Repaint(label->Window);
        }
    }
}

void ReadResultOptions(HWND dialog) {
    FilterParameters& p = *gParams;
    const uint8_t maskBefore = p.EffectOnMask;
    for (int tab = 0; tab < 4; ++tab) OptionOf(p, tab) = IsDlgButtonChecked(dialog, kBoxes[tab]) == BST_CHECKED;
    MaskNeedsBackground(p, maskBefore);
    CheckResultOptions(dialog);
}

void ToggleResultOption(HWND dialog, int id) {
    const int tab = TabOfLabel(id);
    if (tab < 0) return;
    FilterParameters& p = *gParams;
    const uint8_t maskBefore = p.EffectOnMask;
    uint8_t& option = OptionOf(p, tab);
    option = !option;
    MaskNeedsBackground(p, maskBefore);
    CheckResultOptions(dialog);
}

void EnableResultOptions(HWND dialog) {
    const bool cmyk = gFilterRecord->imageMode == plugInModeCMYKColor;
    const bool mask = HostActionSuites && gFilterRecord->planes >= (cmyk ? 5 : 4);
    for (int tab = 0; tab < 4; ++tab) {
        const bool on = tab == 1 ? mask : HostActionSuites;
        EnableWindow(GetDlgItem(dialog, kBoxes[tab]), on);
        EnableWindow(GetDlgItem(dialog, kLabels[tab]), on);
    }
}

void ShowResultOptions(HWND dialog, int tab) {
    for (int t = 0; t < 4; ++t) {
        const int show = !gParams->ApplySeries && t == tab ? SW_SHOW : SW_HIDE;
        ShowWindow(GetDlgItem(dialog, kBoxes[t]), show);
        ShowWindow(GetDlgItem(dialog, kLabels[t]), show);
    }
}

void PlaceResultOptions(HWND dialog, const DialogLayout& layout) {
    for (int tab = 0; tab < 4; ++tab) {
        const LayoutBox& b = layout.optionBox;
        MoveWindow(GetDlgItem(dialog, kBoxes[tab]), b.x, b.y, b.width, b.height, TRUE);
        const LayoutBox& l = layout.optionLabel[size_t(tab)];
        HWND label = GetDlgItem(dialog, kLabels[tab]);
        MoveWindow(label, l.x, l.y, l.width, l.height, TRUE);
        // The label paints its recorded size.
        if (TLabel* record = FindControl<TLabel>(label)) record->Width = l.width, record->Height = l.height;
    }
}

bool IsResultOptionBox(int id) {
    for (int box : kBoxes)
        if (box == id) return true;
    return false;
}
