#include "controls/ControlLooks.h"

ButtonFace ChooseButtonFace(bool enabled, bool hasDisabledFace, bool toggle, bool toggled, uint8_t mouseState) {
    if (!enabled && hasDisabledFace) return ButtonFace::Disabled;
    if (toggle && toggled) return ButtonFace::Pressed;
    switch (mouseState) {
    case 1: return ButtonFace::Hover;
    case 2: return ButtonFace::Pressed;
    default: return ButtonFace::Normal;
    }
}

SkinImage SkinAtRest(const SkinPictures& has, bool checked) {
    return checked && has.checked ? SkinImage::Checked : SkinImage::Normal;
}

SkinImage SkinOnHover(const SkinPictures& has, bool checked) {
    return checked && has.checkedHover ? SkinImage::CheckedHover : SkinImage::Hover;
}

SkinImage SkinOnEnable(const SkinPictures& has, bool enabling, bool checked) {
    if (!has.disabled) return SkinImage::Keep;
    if (!enabling) return checked ? SkinImage::CheckedDisabled : SkinImage::Disabled;
    return SkinAtRest(has, checked);
}

SkinImage SkinOnSetCheck(const SkinPictures& has, bool enabled, bool checkedNow, uintptr_t newCheck) {
    if (!enabled) return SkinOnEnable(has, false, checkedNow);
    if (!has.checked) return SkinImage::Keep;
    return newCheck == 1 ? SkinImage::Checked : SkinImage::Normal;
}

TextLook ChooseLabelLook(int32_t backMode, bool windowEnabled, uint8_t enabled, uint8_t toggled,
                         const uint32_t stateColors[4]) {
    if (backMode == 0) return enabled ? TextLook{TextFont::LinkUnder, kLinkBlue} : TextLook{TextFont::Link, 0};
    if (!windowEnabled) return {TextFont::Heavy, stateColors[StateColorDisabled]};
    if (!enabled) return {TextFont::Own, stateColors[StateColorActive]};
    switch (toggled) {
    case 2: return {TextFont::Heavy, stateColors[StateColorActive]};
    case 1: return {TextFont::Heavy, stateColors[StateColorHover]};
    default: return {TextFont::Heavy, stateColors[StateColorIdle]};
    }
}

TextLook ChooseLinkLook(bool hasFont, bool clickable, bool useTextColor, uint32_t textColor) {
    const TextFont font = hasFont ? TextFont::Own : clickable ? TextFont::LinkUnder : TextFont::Link;
    const uint32_t color = useTextColor ? textColor : clickable ? kLinkBlue : 0;
    return {font, color};
}
