// Which picture, font and colour the button, skin, label and link controls show, as tables
// of their state. Colours are Win32 colour values (red in the low byte).
#pragma once

#include <cstdint>

// ---- The skinned button ("Control Button CPP") ----

enum class ButtonFace { Normal, Hover, Pressed, Disabled };

// Disabled (by the record) with a disabled face; else a toggle that is on shows pressed;
// else by the mouse: 0 normal, 1 hover, 2 pressed.
ButtonFace ChooseButtonFace(bool enabled, bool hasDisabledFace, bool toggle, bool toggled, uint8_t mouseState);

// ---- The skin over a stock button ----

enum class SkinImage { Keep, Normal, Hover, Disabled, Checked, CheckedHover, CheckedDisabled };

// Which of a skin's optional pictures exist (the normal one always counts as present).
struct SkinPictures {
    bool hover = false, disabled = false, checked = false, checkedHover = false, checkedDisabled = false;
};

// The picture at rest: checked when checked and there is one, else normal.
SkinImage SkinAtRest(const SkinPictures& has, bool checked);
// The mouse came in.
SkinImage SkinOnHover(const SkinPictures& has, bool checked);
// WM_ENABLE; nothing changes without a disabled picture.
SkinImage SkinOnEnable(const SkinPictures& has, bool enabling, bool checked);
// BM_SETCHECK with `newCheck`; a disabled button keeps to its disabled pictures by the check
// it has now.
SkinImage SkinOnSetCheck(const SkinPictures& has, bool enabled, bool checkedNow, uintptr_t newCheck);

// ---- Labels ("Contaner CPP") and links ("ContainerLinkC") ----

enum class TextFont {
    Heavy,     // HeavyFont
    Own,       // the record's font, or LabelFont when it has none
    Link,      // LinkFont
    LinkUnder, // LinkUnderFont
};

struct TextLook {
    TextFont font = TextFont::Heavy;
    uint32_t color = 0;
};

// Text colour of a label by state, in the record's order.
enum StateColor : uint8_t { StateColorIdle, StateColorHover, StateColorDisabled, StateColorActive };

constexpr uint32_t kLinkBlue = 0xFF0000; // RGB(0, 0, 255)

// With a background mode other than 0 by window state, Enabled and Toggled (0 idle,
// 1 hover, 2 chosen); with mode 0 a blue underlined link, or black when not Enabled.
TextLook ChooseLabelLook(int32_t backMode, bool windowEnabled, uint8_t enabled, uint8_t toggled,
                         const uint32_t stateColors[4]);
// A link: its own font and colour when set, else blue underlined when clickable, black not.
TextLook ChooseLinkLook(bool hasFont, bool clickable, bool useTextColor, uint32_t textColor);
