// What the small controls show by state: button faces, skins over stock buttons, label and
// link text, the swatch's frame, and the slider's snap and spinner range.
#include "controls/ControlLooks.h"
#include "controls/SliderSteps.h"
#include "controls/Swatch.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// ---- Buttons ----

TEST(ButtonFaces, DisabledThenToggledThenTheMouse) {
    using F = ButtonFace;
    const F byMouse[3] = {F::Normal, F::Hover, F::Pressed};
    for (uint8_t mouse = 0; mouse < 3; ++mouse) {
        // Without a disabled face a disabled button paints by the mouse.
        EXPECT_EQ(ChooseButtonFace(false, false, false, false, mouse), byMouse[mouse]);
        EXPECT_EQ(ChooseButtonFace(false, true, true, true, mouse), F::Disabled);
        // A toggle that is on shows pressed whatever the mouse does.
        EXPECT_EQ(ChooseButtonFace(true, true, true, true, mouse), F::Pressed);
        EXPECT_EQ(ChooseButtonFace(true, true, true, false, mouse), byMouse[mouse]);
        // Toggled means nothing to a push button.
        EXPECT_EQ(ChooseButtonFace(true, true, false, true, mouse), byMouse[mouse]);
    }
}

TEST(ButtonSkins, PicturesFollowEnableCheckAndHover) {
    using S = SkinImage;
    const SkinPictures plain{true, true, false, false, false};
    const SkinPictures full{true, true, true, true, true};
    const SkinPictures noDisabled{true, false, true, true, true};

    // Without checked pictures BM_SETCHECK leaves the picture alone while enabled.
    EXPECT_EQ(SkinOnSetCheck(plain, true, false, 1), S::Keep);
    EXPECT_EQ(SkinOnSetCheck(full, true, false, 1), S::Checked);
    EXPECT_EQ(SkinOnSetCheck(full, true, true, 0), S::Normal);
    // Disabled, the check it has now picks the disabled picture.
    EXPECT_EQ(SkinOnSetCheck(full, false, true, 0), S::CheckedDisabled);
    EXPECT_EQ(SkinOnSetCheck(full, false, false, 1), S::Disabled);

    EXPECT_EQ(SkinOnEnable(noDisabled, false, true), S::Keep);
    EXPECT_EQ(SkinOnEnable(full, false, true), S::CheckedDisabled);
    EXPECT_EQ(SkinOnEnable(full, false, false), S::Disabled);
    EXPECT_EQ(SkinOnEnable(full, true, true), S::Checked);
    EXPECT_EQ(SkinOnEnable(plain, true, true), S::Normal);

    EXPECT_EQ(SkinOnHover(full, true), S::CheckedHover);
    EXPECT_EQ(SkinOnHover(plain, true), S::Hover);
    EXPECT_EQ(SkinOnHover(full, false), S::Hover);
    EXPECT_EQ(SkinAtRest(full, true), S::Checked);
    EXPECT_EQ(SkinAtRest(plain, true), S::Normal);
}

// ---- Labels and links ----

TEST(TextLooks, LabelFontAndColourByState) {
    const uint32_t colors[4] = {0x7F7F7F, 0xB4BCB4, 0x646464, 0xFFFFFF};
    struct Row {
        bool window;
        uint8_t enabled, toggled;
        TextFont font;
        uint32_t color;
    };
    for (const Row& row : {Row{true, 1, 2, TextFont::Heavy, 0xFFFFFF}, Row{true, 1, 1, TextFont::Heavy, 0xB4BCB4},
                           Row{true, 1, 0, TextFont::Heavy, 0x7F7F7F}, Row{true, 0, 1, TextFont::Own, 0xFFFFFF},
                           Row{false, 1, 2, TextFont::Heavy, 0x646464}, Row{false, 0, 0, TextFont::Heavy, 0x646464}}) {
        const TextLook look = ChooseLabelLook(6, row.window, row.enabled, row.toggled, colors);
        EXPECT_EQ(look.font, row.font) << row.window << int(row.enabled) << int(row.toggled);
        EXPECT_EQ(look.color, row.color) << row.window << int(row.enabled) << int(row.toggled);
    }
    // Background mode 0 is a link: blue underlined, or black when not Enabled.
    EXPECT_EQ(ChooseLabelLook(0, true, 1, 2, colors).font, TextFont::LinkUnder);
    EXPECT_EQ(ChooseLabelLook(0, false, 1, 0, colors).color, kLinkBlue);
    EXPECT_EQ(ChooseLabelLook(0, true, 0, 2, colors).font, TextFont::Link);
    EXPECT_EQ(ChooseLabelLook(0, true, 0, 2, colors).color, 0u);
    EXPECT_EQ(kLinkBlue, 0xFF0000u); // blue is the high byte of a Win32 colour

    EXPECT_EQ(ChooseLinkLook(false, true, false, 0x123456).font, TextFont::LinkUnder);
    EXPECT_EQ(ChooseLinkLook(false, true, false, 0x123456).color, kLinkBlue);
    EXPECT_EQ(ChooseLinkLook(false, false, false, 0x123456).font, TextFont::Link);
    EXPECT_EQ(ChooseLinkLook(false, false, false, 0x123456).color, 0u);
    EXPECT_EQ(ChooseLinkLook(true, false, true, 0x123456).font, TextFont::Own);
    EXPECT_EQ(ChooseLinkLook(true, true, true, 0x123456).color, 0x123456u);
}

// ---- The swatch ----

TEST(Swatch, FramesStandOutAndDisabledSwatchesShrink) {
    // Mid-grey: hover and plain frames differ, and the plain one is far from the fill.
    EXPECT_EQ(SwatchPen(0x808080, false), 0x3F3F3Fu);
    EXPECT_EQ(SwatchPen(0x808080, true), 0x7F7F7Fu);
    // Channel by channel, red in the low byte: 255 - c, then d + 127 below 127, else d / 2.
    EXPECT_EQ(SwatchPen(0x80C800, true), 0x7F37FFu);
    EXPECT_EQ(SwatchPen(0x80C800, false), 0x3FB67Fu);
    EXPECT_EQ(SwatchPen(0x818181, false), 0xFDFDFDu); // d = 126 is below 127

    const uint32_t face = PixelOf(212, 208, 200), color = 0x2040C0; // RGB(0xC0, 0x40, 0x20)
    std::vector<uint32_t> bits(12 * 9, 1);
    const PixelView view{bits.data(), 12, 9, 12};
    PaintSwatch(view, SwatchLook{color, false, true, face});
    EXPECT_EQ(view.At(0, 0), PixelOfColorRef(SwatchPen(color, false)));
    EXPECT_EQ(view.At(11, 8), PixelOfColorRef(SwatchPen(color, false)));
    EXPECT_EQ(view.At(1, 1), PixelOf(0xC0, 0x40, 0x20));
    EXPECT_EQ(view.At(10, 7), PixelOf(0xC0, 0x40, 0x20));
    PaintSwatch(view, SwatchLook{color, true, true, face});
    EXPECT_EQ(view.At(5, 0), PixelOfColorRef(SwatchPen(color, true)));

    PaintSwatch(view, SwatchLook{color, true, false, face});
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 12; ++x)
            EXPECT_EQ(view.At(x, y), x >= 4 && x < 8 && y >= 3 && y < 6 ? PixelOf(0xC0, 0x40, 0x20) : face)
                << x << "," << y;
}

// ---- The slider ----

TEST(SliderSteps, SnapWindowAndSpinnerRange) {
    for (int pos = -9; pos <= 9; ++pos) EXPECT_EQ(SnapPosition(pos, true, 0, 10), 0) << pos;
    EXPECT_EQ(SnapPosition(10, true, 0, 10), 10);
    EXPECT_EQ(SnapPosition(-10, true, 0, 10), -10);
    EXPECT_EQ(SnapPosition(5, false, 0, 10), 5);
    // The lower bound travels in the high word, as 16 bits.
    EXPECT_EQ(SpinRangeParam(-100, 100), 0xFF9C0064u);
    EXPECT_EQ(SpinRangeParam(1, 200), 0x000100C8u);
}

} // namespace
