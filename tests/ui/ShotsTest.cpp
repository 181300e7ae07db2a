// Pictures of every control in every state, at 96 and 120 dpi, for people to look at
// (written only when QZ_UI_SHOTS names a folder; tests/ui/run-gallery.sh makes PNGs).
#include "Exhibits.h"
#include "Gallery.h"

#include "controls/win32/Fonts.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using namespace gallery;

bool Wanted() {
    const char* folder = std::getenv("QZ_UI_SHOTS");
    return folder && *folder;
}

TEST(ControlShots, EveryControlInEveryState) {
    if (!Wanted()) GTEST_SKIP() << "QZ_UI_SHOTS names no folder";
    for (int dpi : {96, 120}) {
        const std::string at = std::to_string(dpi);
        Window window(dpi, 760, 560);
        Exhibits ex(window);
        // The fifth skin shows its hover picture under the real mouse.
        MouseTo(ex.skins[4], 12, 12);
        Pump(100);
        EXPECT_TRUE(Shot(window.Top(), "gallery-" + at));

        // A drag under way: the edit and spinner follow, Value waits for the release.
        RECT thumb{};
        SendMessageA(ex.slider->Trackbar, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
        const int x = (thumb.left + thumb.right) / 2, y = (thumb.top + thumb.bottom) / 2;
        MouseTo(ex.slider->Trackbar, x, y);
        MouseButton(true, true);
        MouseTo(ex.slider->Trackbar, x - 45, y);
        // The rotor and the pad mid-drag in the same picture.
        EXPECT_TRUE(Shot(window.Top(), "slider-drag-" + at));
        MouseButton(true, false);
        MouseTo(ex.pad->Window, 50, 45);
        MouseButton(true, true);
        MouseTo(ex.pad->Window, 12, 10);
        EXPECT_TRUE(Shot(window.Top(), "pad-drag-" + at));
        MouseButton(true, false);

        // A tooltip: the mouse rests on the help button.
        MouseTo(ex.button->Window, 20, 10);
        Pump(1500);
        EXPECT_TRUE(Shot(window.Top(), "tooltip-" + at, 60));

        // The About box's link fonts.
        MakeAboutLinkFonts();
        RedrawWindow(window.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        MouseTo(window.Handle(), 740, 550);
        EXPECT_TRUE(Shot(window.Top(), "about-fonts-" + at));
    }
}

} // namespace
