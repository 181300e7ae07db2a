// Help and About without windows: the manual's page table and the About box's geometry
// at 96, 120 and 144 dpi, worked out by hand.
#include "dialog/AboutLayout.h"
#include "dialog/HelpPages.h"
#include "state/PathTable.h"

#include <gtest/gtest.h>

TEST(HelpPages, TabsDrawerAndEveryOtherNumberTheIndex) {
    EXPECT_STREQ(HelpPageFile(HelpPageOfTab(0)), "basic.html");
    EXPECT_STREQ(HelpPageFile(HelpPageOfTab(1)), "wash.html");
    EXPECT_STREQ(HelpPageFile(HelpPageOfTab(2)), "surface.html");
    EXPECT_STREQ(HelpPageFile(HelpPageOfTab(3)), "background.html");
    EXPECT_STREQ(HelpPageFile(877), "texture_picker.html");
    for (int32_t other : {0, 776, 781, 876, 878, -777, 1126}) EXPECT_STREQ(HelpPageFile(other), "index.html") << other;
    EXPECT_EQ(HelpPageOfTab(4), kHelpPageIndex);
    EXPECT_EQ(HelpPageOfTab(-1), kHelpPageIndex);

    const PathTableRecord saved = PathTable;
    PathTable.Help = "C:\\Plug-ins\\Quenzit\\Help\\";
    EXPECT_EQ(HelpPagePath(778), "C:\\Plug-ins\\Quenzit\\Help\\wash.html");
    PathTable = saved;
    EXPECT_EQ(SiteAddress(kWebManualPath), std::string(kSiteAddress) + "/qzt/index.html");
    EXPECT_NE(std::string(kSiteAddress).back(), '/') << "the paths bring their own slash";
}

TEST(AboutLayout, ControlsComeBackOverThePictureByDpi) {
    using K = AboutControlKind;
    // At 96 dpi the template already fits the picture.
    const LayoutBox close{392, 447, 75, 23};
    EXPECT_EQ(AboutControlBox(close, K::Button, 96), close);
    EXPECT_FALSE(AboutBoxMoves(96));

    // 120 dpi (8 by 16 dialog base units): f = 0.8, no lift, buttons by 0.9.
    EXPECT_TRUE(AboutBoxMoves(120));
    EXPECT_EQ(AboutControlBox({320, 550, 116, 28}, K::Button, 120), (LayoutBox{256, 440, 104, 28}));
    EXPECT_EQ(AboutControlBox({158, 322, 164, 28}, K::Link, 120), (LayoutBox{126, 257, 131, 28}));

    // 144 dpi (9 by 20): f = 2/3 and 10 higher; buttons by 1 - (1/3) / 2.5.
    EXPECT_EQ(AboutControlBox({360, 688, 131, 35}, K::Button, 144), (LayoutBox{240, 448, 113, 35}));
    EXPECT_EQ(AboutControlBox({178, 403, 185, 35}, K::Link, 144), (LayoutBox{118, 258, 123, 35}));
}
