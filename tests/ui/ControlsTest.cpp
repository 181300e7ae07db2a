// The toolkit's windows under real input: one of each control in a plain window, the
// host's colour services played by hostsim, records read back.
#include "Exhibits.h"
#include "Gallery.h"

#include "controls/win32/Fonts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>

namespace {

using namespace gallery;

constexpr double kDeg = 180.0 / 3.14159265358979323846;

std::string TextOf(HWND window) {
    char text[64] = {};
    GetWindowTextA(window, text, sizeof text);
    return text;
}

int SpinPos(HWND spin) { return short(LOWORD(SendMessageA(spin, UDM_GETPOS, 0, 0))); }

class Controls : public ::testing::Test {
protected:
    Window window{96, 760, 560};
    Exhibits ex{window};
    std::vector<Command>& commands = window.commands;
    HWND Item(int id) const { return GetDlgItem(window.Handle(), id); }
};

// ---- The family ----

TEST_F(Controls, TheFamilyRegistersAndFindsItsRecords) {
    for (const char* name : {"Control CPP", "Control Button Fire CPP", "Control Glass CPP", "Control Button CPP",
                             "Contaner Anim CPP", "Contaner CPP", "Rotor CPP", "Mac Slider CPP", "Glass Slider CPP",
                             "Contaner Color CPP", "Spin Edit CPP", "Color Equalizer CPP", "ContainerLinkC"}) {
        WNDCLASSA wc{};
        ASSERT_TRUE(GetClassInfoA(GetModuleHandleA(nullptr), name, &wc)) << name;
        EXPECT_EQ(wc.style, 0u) << name;
        EXPECT_EQ(wc.cbWndExtra, 4) << name;
        EXPECT_EQ(wc.hbrBackground, FaceBrush) << name;
        EXPECT_EQ(wc.hCursor, LoadCursor(nullptr, IDC_ARROW)) << name;
    }

    // A record only through its own class name.
    HWND swatch = ex.surface->Window;
    EXPECT_EQ(FindControl(swatch, "Contaner Color CPP"), ex.surface);
    EXPECT_EQ(FindControl(swatch, "Rotor CPP"), nullptr);
    EXPECT_EQ(FindControl(swatch, "contaner color cpp"), nullptr);
    EXPECT_EQ(FindControl<TRotor>(swatch), nullptr);
    EXPECT_EQ(FindControl<TMacSlider>(ex.skinned), nullptr);
    EXPECT_EQ(FindControl<TLabel>(nullptr), nullptr);
    EXPECT_EQ(FindControl<TLink>(ex.link->Window), ex.link);

    // What creation fills in.
    const TLabel& label = *ex.labels[0];
    EXPECT_EQ(label.ControlId, ExhibitIdLabel);
    EXPECT_EQ(label.LabelKind, kLabelKindText);
    RECT client{};
    GetClientRect(ex.pad->Window, &client);
    EXPECT_EQ(ex.pad->Width, client.right);
    EXPECT_EQ(ex.pad->Height, client.bottom);
    // The slider's virtual table stands in front of the family's record.
    EXPECT_EQ(reinterpret_cast<char*>(static_cast<TContaner*>(ex.slider)) - reinterpret_cast<char*>(ex.slider),
              ptrdiff_t(sizeof(void*)));
}

TEST_F(Controls, TooltipsAndFonts) {
    // Each call its own balloon; the text and the 100-pixel width read back.
    HWND first = ex.tooltips[0];
    HWND second = AddTooltip(ex.button->Window, "Reset all wash settings", nullptr);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(AddTooltip(nullptr, "text", nullptr), nullptr);
    EXPECT_EQ(AddTooltip(ex.button->Window, nullptr, nullptr), nullptr);
    for (auto [tip, text] : {std::pair{first, "Open the help page of the tab that is shown"},
                             std::pair{second, "Reset all wash settings"}}) {
        EXPECT_TRUE(GetWindowLongA(tip, GWL_STYLE) & TTS_BALLOON);
        EXPECT_EQ(SendMessageA(tip, TTM_GETMAXTIPWIDTH, 0, 0), 100);
        EXPECT_EQ(GetWindow(tip, GW_OWNER), GetAncestor(ex.button->Window, GA_ROOT));
        char buffer[128] = {};
        TOOLINFOA tool{};
        tool.cbSize = TTTOOLINFOA_V2_SIZE;
        tool.hwnd = ex.button->Window;
        tool.lpszText = buffer;
        SendMessageA(tip, TTM_GETTEXTA, sizeof buffer, reinterpret_cast<LPARAM>(&tool));
        EXPECT_STREQ(buffer, text);
        ASSERT_TRUE(SendMessageA(tip, TTM_GETTOOLINFOA, 0, reinterpret_cast<LPARAM>(&tool)));
        EXPECT_EQ(tool.uFlags & (TTF_SUBCLASS | TTF_TRANSPARENT | TTF_CENTERTIP),
                  UINT(TTF_SUBCLASS | TTF_TRANSPARENT | TTF_CENTERTIP));
    }

    // The heaviest weight is kept as given; the About box remakes the link fonts at 14.
    LOGFONTA font{};
    GetObjectA(HeavyFont, sizeof font, &font);
    EXPECT_EQ(font.lfWeight, 2000);
    ASSERT_TRUE(MakeAboutLinkFonts());
    GetObjectA(LinkFont, sizeof font, &font);
    EXPECT_EQ(font.lfHeight, 14);
    EXPECT_EQ(font.lfWeight, 700);
    GetObjectA(LinkUnderFont, sizeof font, &font);
    EXPECT_EQ(font.lfHeight, 14);
    EXPECT_TRUE(font.lfUnderline);
}

// ---- The slider ----

TEST_F(Controls, SliderFollowsADragAndTellsThePageOnceAtTheEnd) {
    TMacSlider& slider = *ex.slider;
    HWND edit = Item(ExhibitIdSliderEdit), spin = Item(ExhibitIdSliderSpin);
    EXPECT_EQ(TextOf(edit), "120");
    EXPECT_EQ(SpinPos(spin), 120);
    EXPECT_EQ(HWND(SendMessageA(spin, UDM_GETBUDDY, 0, 0)), edit);
    EXPECT_EQ(SendMessageA(slider.Trackbar, TBM_GETPAGESIZE, 0, 0), 10);
    EXPECT_EQ(GetDlgCtrlID(slider.Trackbar), 333);

    RECT thumb{};
    SendMessageA(slider.Trackbar, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
    const int x = (thumb.left + thumb.right) / 2, y = (thumb.top + thumb.bottom) / 2;
    MouseTo(slider.Trackbar, x, y);
    MouseButton(true, true);
    MouseTo(slider.Trackbar, x - 20, y);
    MouseTo(slider.Trackbar, x - 40, y);
    const int pos = int(SendMessageA(slider.Trackbar, TBM_GETPOS, 0, 0));
    EXPECT_LT(pos, 110);
    EXPECT_EQ(TextOf(edit), std::to_string(pos));
    EXPECT_EQ(SpinPos(spin), pos);
    EXPECT_EQ(slider.Value, 120.0f); // not yet
    EXPECT_TRUE(commands.empty());
    MouseButton(true, false);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].id, ExhibitIdSlider);
    EXPECT_EQ(commands[0].lParam, 1);
    EXPECT_FALSE(commands[0].posted);
    EXPECT_EQ(slider.Value, float(pos));
}

TEST_F(Controls, SnappingSliderKeysSetValueAndEnable) {
    TMacSlider& snap = *ex.snap;
    HWND edit = Item(ExhibitIdSnapEdit), spin = Item(ExhibitIdSnapSpin);
    EXPECT_EQ(SendMessageA(snap.Trackbar, TBM_GETRANGEMIN, 0, 0), -100);
    SetFocus(snap.Trackbar);
    Pump(20);
    // One step from 0 falls back to 0; a page does not.
    Key(VK_RIGHT);
    EXPECT_EQ(SendMessageA(snap.Trackbar, TBM_GETPOS, 0, 0), 0);
    EXPECT_EQ(snap.Value, 0.0f);
    EXPECT_EQ(TextOf(edit), "0");
    Key(VK_LEFT);
    EXPECT_EQ(snap.Value, 0.0f);
    EXPECT_FALSE(commands.empty());
    Key(VK_NEXT);
    EXPECT_EQ(snap.Value, 10.0f);
    EXPECT_EQ(TextOf(edit), "10");
    EXPECT_EQ(SpinPos(spin), 10);
    for (const Command& c : commands) EXPECT_EQ(c.lParam, 1);

    // A value typed in bypasses the snap; a negative one reaches the spinner as 16 bits.
    SetValue(&snap, 5, false);
    EXPECT_EQ(snap.Value, 5.0f);
    EXPECT_EQ(SendMessageA(snap.Trackbar, TBM_GETPOS, 0, 0), 5);
    EXPECT_EQ(TextOf(edit), "5");
    EXPECT_EQ(SpinPos(spin), 5);
    SetValue(&snap, -60, true); // from the spinner: the spinner is not written
    EXPECT_EQ(TextOf(edit), "-60");
    EXPECT_EQ(SpinPos(spin), 5);
    SetValue(&snap, -60, false);
    EXPECT_EQ(SpinPos(spin), -60);
    // No clamping: the edit shows what was given.
    SetValue(&snap, 250, false);
    EXPECT_EQ(TextOf(edit), "250");
    EXPECT_EQ(snap.Value, 250.0f);

    // Disabled together, enabled together.
    for (BOOL on : {FALSE, TRUE}) {
        EnableWindow(snap.Window, on);
        EXPECT_EQ(IsWindowEnabled(snap.Trackbar), on);
        EXPECT_EQ(IsWindowEnabled(edit), on);
        EXPECT_EQ(IsWindowEnabled(spin), on);
    }
    EXPECT_FALSE(IsWindowEnabled(ex.off->Trackbar));
    EXPECT_FALSE(IsWindowEnabled(Item(ExhibitIdOffSpin)));
}

// ---- The rotor ----

TEST_F(Controls, RotorTellsThePageOncePerPress) {
    TRotor& rotor = *ex.lighting;
    MouseTo(rotor.Window, 45, 15);
    MouseButton(true, true);
    EXPECT_NEAR(rotor.Alpha, 45.0, 1e-3);
    EXPECT_NEAR(rotor.Beta, std::acos(std::hypot(15.0, 15.0) / 28.0) * kDeg, 1e-3);
    MouseTo(rotor.Window, 10, 50);
    MouseTo(rotor.Window, -30, 50); // outside: held at the edge
    EXPECT_EQ(rotor.KnobX, 0);
    EXPECT_EQ(rotor.KnobY, 50);
    EXPECT_NEAR(rotor.Alpha, std::atan2(-20.0, -30.0) * kDeg, 1e-3);
    EXPECT_TRUE(commands.empty());
    char text[32];
    std::snprintf(text, sizeof text, "%0.2f", double(rotor.Alpha));
    EXPECT_EQ(TextOf(rotor.AlphaEdit), text);
    std::snprintf(text, sizeof text, "%0.2f", double(rotor.Beta));
    EXPECT_EQ(TextOf(rotor.BetaEdit), text);
    MouseButton(true, false);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].id, ExhibitIdLighting);
    EXPECT_FALSE(commands[0].posted);

    // Moves without the button, and a release that follows no press, tell nothing.
    const float alpha = rotor.Alpha;
    MouseTo(rotor.Window, 30, 5);
    SendMessageA(rotor.Window, WM_LBUTTONUP, 0, MAKELPARAM(30, 5));
    EXPECT_EQ(rotor.Alpha, alpha);
    EXPECT_EQ(commands.size(), 1u);
    MouseButton(true, true);
    MouseButton(true, false);
    EXPECT_EQ(commands.size(), 2u);
    EXPECT_NEAR(rotor.Alpha, 90.0, 1e-3);

    // The pad's square, and enabling reaching the buddies.
    float px = 0, py = 0;
    PercentToPad(ex.pad, 40, 30);
    PadToPercent(ex.pad, px, py);
    EXPECT_NEAR(px, 40.0, 0.02);
    EXPECT_NEAR(py, -30.0, 0.02);
    EnableWindow(rotor.Window, FALSE);
    EXPECT_EQ(rotor.Enabled, 0);
    EXPECT_FALSE(IsWindowEnabled(rotor.AlphaEdit));
    EXPECT_FALSE(IsWindowEnabled(rotor.BetaEdit));
}

// ---- The swatch ----

TEST_F(Controls, SwatchPicksThroughTheHostAndFallsBackToTheSystem) {
    Host host;
    TColorSwatch& swatch = *ex.surface;
    host.setup.pickedColour = std::array<uint8, 3>{10, 200, 30};
    MouseTo(swatch.Window, 20, 10);
    EXPECT_EQ(swatch.HoverFlag, 1);
    EXPECT_EQ(GetCapture(), swatch.Window);
    MouseButton(true, true);
    MouseButton(true, false);
    ASSERT_EQ(host.requests.size(), 1u);
    const ColorServicesInfo& asked = host.requests[0];
    EXPECT_EQ(asked.infoSize, 56);
    EXPECT_EQ(asked.selector, plugIncolorServicesChooseColor);
    EXPECT_EQ(asked.sourceSpace, plugIncolorServicesRGBSpace);
    EXPECT_EQ(asked.resultSpace, plugIncolorServicesRGBSpace);
    EXPECT_EQ(std::vector<int16>(asked.colorComponents, asked.colorComponents + 4),
              (std::vector<int16>{128, 128, 128, 255}));
    EXPECT_EQ(host.prompts, std::vector<std::string>{"Select a Color"});
    EXPECT_EQ(swatch.Color, RGB(10, 200, 30));
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].id, ExhibitIdSurfaceSwatch);
    EXPECT_FALSE(commands[0].posted);

    // The right button as well.
    host.setup.pickedColour = std::array<uint8, 3>{200, 100, 0};
    MouseTo(swatch.Window, 24, 12);
    MouseButton(false, true);
    MouseButton(false, false);
    ASSERT_EQ(host.requests.size(), 2u);
    EXPECT_EQ(host.requests[1].colorComponents[1], 200);
    EXPECT_EQ(swatch.Color, RGB(200, 100, 0));
    EXPECT_EQ(commands.size(), 2u);

    // The user's cancel: no colour, no command, not even a repaint.
    host.setup.pickerAnswer = userCanceledErr;
    MouseTo(window.Handle(), 700, 540);
    Pump(30);
    ValidateRect(swatch.Window, nullptr);
    SendMessageA(swatch.Window, WM_LBUTTONUP, 0, 0);
    EXPECT_EQ(host.requests.size(), 3u);
    EXPECT_EQ(swatch.Color, RGB(200, 100, 0));
    EXPECT_EQ(commands.size(), 2u);
    EXPECT_FALSE(GetUpdateRect(swatch.Window, nullptr, FALSE));

    // A host that cannot show its picker: the system's comes up, owned by the dialog.
    host.setup.pickerAnswer = paramErr;
    bool visible = false;
    HWND owner = nullptr;
    AnswerSystemPicker(RGB(1, 2, 3), [&](HWND dialog, bool) {
        visible = IsWindowVisible(dialog);
        owner = GetWindow(dialog, GW_OWNER);
        Shot(dialog, "picker-fallback-" + std::to_string(window.Dpi()));
    });
    const int answered = SystemPickersAnswered();
    SendMessageA(ex.stain->Window, WM_RBUTTONUP, 0, 0);
    EXPECT_EQ(SystemPickersAnswered(), answered + 1);
    EXPECT_TRUE(visible);
    EXPECT_EQ(owner, window.Top());
    EXPECT_EQ(ex.stain->Color, RGB(1, 2, 3));
    ASSERT_EQ(commands.size(), 3u);
    EXPECT_EQ(commands[2].id, ExhibitIdStainSwatch);
}

TEST_F(Controls, SwatchWithoutAHostOpensTheSystemPicker) {
    // The hook shows the picker as it starts, before its loop would.
    bool visible = false;
    AnswerSystemPicker(RGB(9, 8, 7), [&](HWND dialog, bool shownAtOnce) {
        visible = shownAtOnce;
        Shot(dialog, "picker-system-" + std::to_string(window.Dpi()));
    });
    SendMessageA(ex.stain->Window, WM_LBUTTONUP, 0, 0);
    EXPECT_TRUE(visible);
    EXPECT_EQ(ex.stain->Color, RGB(9, 8, 7));
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].id, ExhibitIdStainSwatch);
}

// ---- Buttons, skins, labels and links ----

TEST_F(Controls, ButtonsPostAClickThatEndsAnywhere) {
    TButton& button = *ex.button;
    MouseTo(button.Window, 10, 10);
    EXPECT_EQ(button.MouseState, 1);
    MouseButton(true, true);
    EXPECT_EQ(button.MouseState, 2);
    MouseTo(window.Handle(), 700, 540);
    EXPECT_EQ(button.MouseState, 2);
    MouseButton(true, false);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].id, ExhibitIdButton);
    EXPECT_EQ(commands[0].lParam, 0);
    EXPECT_TRUE(commands[0].posted);
    EXPECT_EQ(button.MouseState, 0);

    // A toggle flips at each click and says so.
    TButton& toggle = *ex.toggle;
    for (uint8_t expected : {1, 0}) {
        MouseTo(toggle.Window, 20, 10);
        MouseButton(true, true);
        MouseButton(true, false);
        EXPECT_EQ(toggle.Toggled, expected);
    }
    EXPECT_EQ(commands.size(), 3u);

    // Hover ends when another window takes the mouse.
    MouseTo(button.Window, 10, 10);
    EXPECT_EQ(button.MouseState, 1);
    SetCapture(window.Handle());
    EXPECT_EQ(button.MouseState, 0);
    ReleaseCapture();
    MouseTo(ex.surface->Window, 10, 10);
    EXPECT_EQ(ex.surface->HoverFlag, 1);
    SetCapture(window.Handle());
    EXPECT_EQ(ex.surface->HoverFlag, 0);
    ReleaseCapture();
}

TEST_F(Controls, SkinsChangeTheirPicture) {
    HWND stock = ex.skinned;
    const ButtonSkin& skin = ex.Skin(0);
    const auto image = [&](HWND b) { return HBITMAP(SendMessageA(b, BM_GETIMAGE, IMAGE_BITMAP, 0)); };
    EXPECT_EQ(image(stock), skin.NormalBitmap);
    SendMessageA(stock, BM_SETCHECK, BST_CHECKED, 0);
    EXPECT_EQ(image(stock), skin.CheckedBitmap);
    MouseTo(stock, 10, 10);
    EXPECT_EQ(skin.Hover, 1u);
    EXPECT_EQ(image(stock), skin.CheckedHoverBitmap);
    MouseTo(window.Handle(), 700, 540);
    EXPECT_EQ(skin.Hover, 0u);
    EXPECT_EQ(image(stock), skin.CheckedBitmap);
    EnableWindow(stock, FALSE);
    EXPECT_EQ(image(stock), skin.CheckedDisabledBitmap);
    EnableWindow(stock, TRUE);
    SendMessageA(stock, BM_SETCHECK, BST_UNCHECKED, 0);
    EXPECT_EQ(image(stock), skin.NormalBitmap);
    MouseTo(stock, 10, 10);
    EXPECT_EQ(image(stock), skin.HoverBitmap);
    MouseTo(window.Handle(), 700, 540);
    EnableWindow(stock, FALSE);
    EXPECT_EQ(image(stock), skin.DisabledBitmap);
    // Without checked pictures a check leaves the picture alone.
    const ButtonSkin& plain = ex.Skin(5);
    EXPECT_EQ(image(ex.plainSkinned), plain.NormalBitmap);
}

TEST_F(Controls, LabelsAndLinks) {
    TLabel& label = *ex.label;
    MouseTo(label.Window, 30, 10);
    EXPECT_EQ(label.Toggled, 1);
    EXPECT_EQ(GetCursor(), LoadCursor(nullptr, IDC_HAND));
    MouseTo(window.Handle(), 700, 540);
    EXPECT_EQ(label.Toggled, 0);
    // Chosen stays chosen through hover and click; the click is posted.
    label.Toggled = 2;
    MouseTo(label.Window, 30, 10);
    EXPECT_EQ(label.Toggled, 2);
    MouseButton(true, true);
    MouseButton(true, false);
    EXPECT_EQ(label.Toggled, 2);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].id, ExhibitIdLabel);
    EXPECT_TRUE(commands[0].posted);
    // Painting a label whose window is disabled clears its Enabled.
    EXPECT_EQ(ex.labels[4]->Enabled, 0);

    // A clickable link sends at the press; one that is not sends nothing.
    MouseTo(ex.link->Window, 60, 10);
    MouseButton(true, true);
    ASSERT_EQ(commands.size(), 2u);
    EXPECT_EQ(commands[1].id, ExhibitIdLink);
    EXPECT_FALSE(commands[1].posted);
    MouseButton(true, false);
    MouseTo(ex.plainLink->Window, 60, 10);
    EXPECT_NE(GetCursor(), LoadCursor(nullptr, IDC_HAND));
    MouseButton(true, true);
    MouseButton(true, false);
    EXPECT_EQ(commands.size(), 2u);
    // Commands that reach a label or a link go on to the parent.
    SendMessageA(label.Window, WM_COMMAND, 77, 0);
    SendMessageA(ex.link->Window, WM_COMMAND, 78, 0);
    Pump(20);
    ASSERT_EQ(commands.size(), 4u);
    EXPECT_EQ(commands[2].id, 78);
    EXPECT_EQ(commands[3].id, 77);
    EXPECT_TRUE(commands[3].posted);
}

// ---- Resources ----

TEST(ControlResources, TwentyGalleriesLeaveNoGdiObjectBehind) {
    const auto cycle = [] {
        Window window(96, 760, 560);
        Exhibits ex(window);
        MouseTo(ex.button->Window, 10, 10);
        MouseTo(ex.label->Window, 10, 10);
        Pump(20);
    };
    cycle(); // the first one also makes what GDI keeps for the process
    const size_t before = LiveGdiObjects();
    ASSERT_GT(before, 0u);
    for (int i = 0; i < 20; ++i) cycle();
    EXPECT_EQ(LiveGdiObjects(), before);
}

} // namespace
