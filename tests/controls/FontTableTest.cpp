// Fonts by role and the link's background offset at the dpi settings users have.
#include "controls/FontTable.h"

#include <gtest/gtest.h>

namespace {

TEST(FontTable, HeightsGrowWithTheSquareRootOfTheDpi) {
    // Heights for Small, Thumb, Link, LinkUnder, Label, Heavy, Tab, List, worked out by hand
    // with s = sqrt(dpi / 96) truncated; the link text twice, the list linearly.
    struct Row {
        int32_t dpi;
        int32_t heights[8];
    };
    const FontRole roles[8] = {FontRole::Small, FontRole::Thumb, FontRole::Link, FontRole::LinkUnder,
                               FontRole::Label, FontRole::Heavy, FontRole::Tab,  FontRole::List};
    const int32_t weights[8] = {700, 400, 700, 400, 900, 2000, 700, 400};
    for (const Row& row : {Row{72, {13, 12, 15, 15, 14, 14, 14, 13}}, Row{96, {13, 12, 15, 15, 14, 14, 14, 13}},
                           Row{120, {14, 13, 16, 17, 15, 15, 15, 16}}, Row{144, {15, 14, 18, 22, 17, 17, 17, 19}},
                           Row{192, {18, 16, 21, 29, 19, 19, 19, 26}}}) {
        for (int i = 0; i < 8; ++i) {
            const FontStyle style = FontFor(roles[i], row.dpi);
            EXPECT_EQ(style.height, row.heights[i]) << row.dpi << " role " << i;
            EXPECT_EQ(style.weight, weights[i]) << i;
            EXPECT_EQ(style.underline, roles[i] == FontRole::LinkUnder) << i;
        }
    }
    // The About box's links: 14 high at any dpi, weights and underline kept.
    EXPECT_EQ(AboutFontFor(FontRole::Link).height, 14);
    EXPECT_EQ(AboutFontFor(FontRole::Link).weight, 700);
    EXPECT_EQ(AboutFontFor(FontRole::LinkUnder).height, 14);
    EXPECT_TRUE(AboutFontFor(FontRole::LinkUnder).underline);
}

TEST(FontTable, LinkBackgroundOffsetsByDpi) {
    struct Row {
        int32_t dpi, x, y;
    };
    // (100, 200) at 96 dpi; from 121 dpi on y moves up 10 more before truncation.
    for (const Row& row :
         {Row{96, 100, 200}, Row{120, 80, 160}, Row{121, 79, 148}, Row{144, 66, 123}, Row{192, 50, 90}}) {
        const PixelOffset at = LinkBackgroundOffset(100, 200, row.dpi);
        EXPECT_EQ(at.x, row.x) << row.dpi;
        EXPECT_EQ(at.y, row.y) << row.dpi;
    }
    // Truncation goes toward zero, so a small y above 121 dpi comes out negative by less.
    EXPECT_EQ(LinkBackgroundOffset(0, 1, 144).y, -9);
}

} // namespace
