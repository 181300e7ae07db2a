// A drawer's geometry, its slide tick by tick, and its background's corners.
#include "pickers/DrawerLayout.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(DrawerLayoutTest, PartsFollowTheDrawerSize) {
    EXPECT_EQ(RowsPerPageFor(590), 4);
    EXPECT_EQ(RowsPerPageFor(589), 3);
    const DrawerPlaces d = PlaceDrawerParts(400, 590, 4);
    EXPECT_EQ(d.panel, (LayoutBox{17, 85, 366, 440}));
    EXPECT_EQ(d.next, (LayoutBox{368, 16, 12, 25}));
    EXPECT_EQ(d.cancel, (LayoutBox{49, 533, 116, 38}));
    EXPECT_EQ(d.live, (LayoutBox{180, 533, 40, 38}));
    EXPECT_EQ(d.select, (LayoutBox{235, 533, 116, 38}));
    EXPECT_EQ(d.title.x, 100);
    EXPECT_EQ(TileBox(5), (LayoutBox{244, 110, 122, 110}));
    EXPECT_EQ(PlaceFilterRow(false).effectCombo, (LayoutBox{237, 56, 125, 350}));
    EXPECT_EQ(PlaceFilterRow(true).setCombo.width, 0);
}

TEST(DrawerLayoutTest, SlideInPlaceAtTheEleventhTickAndOverAtTheTwelfth) {
    const int32_t left = 0, width = 333;
    float percent = 0;
    std::vector<int32_t> xs;
    SlideTick t;
    for (int tick = 1; tick <= 11; ++tick) {
        t = AdvanceSlide(1, percent, left, width);
        ASSERT_FALSE(t.finished) << tick;
        EXPECT_EQ(t.repaintInMove, tick == 11);
        xs.push_back(t.x);
    }
    EXPECT_EQ(xs, (std::vector<int32_t>{-333, -299, -266, -233, -199, -166, -133, -99, -66, -33, 0}));
    EXPECT_TRUE(AdvanceSlide(1, percent, left, width).finished);

    percent = 0;
    xs.clear();
    for (int tick = 1; tick <= 11; ++tick) xs.push_back(AdvanceSlide(255, percent, 5, 333).x);
    EXPECT_EQ(xs, (std::vector<int32_t>{5, -28, -61, -94, -128, -161, -194, -228, -261, -294, -328}));
    EXPECT_TRUE(AdvanceSlide(255, percent, 5, 333).finished);

    percent = 40;
    const SlideTick idle = AdvanceSlide(0, percent, 0, 100);
    EXPECT_FALSE(idle.finished);
    EXPECT_EQ(percent, 40.0f);
}

TEST(DrawerLayoutTest, BackgroundRoundsOnlyTheRightCorners) {
    ShadowWeights w{};
    for (int32_t r = 0; r < kCornerRows; ++r)
        for (int32_t c = 0; c < kCornerColumns; ++c) w[size_t(r * kCornerColumns + c)] = r == 0 && c == 0 ? 1.0f : 0.0f;
    w[size_t(1 * kCornerColumns + 2)] = 0.5f;
    std::vector<uint32_t> pixels(50 * 80, 0xABCDEF);
    const PixelView view{pixels.data(), 50, 80, 50};
    PaintDrawerBackground(view, w, PixelOf(200, 100, 50));
    EXPECT_EQ(view.At(49, 0), PixelOf(200, 100, 50)); // the outer corner: the face
    EXPECT_EQ(view.At(49, 79), PixelOf(200, 100, 50));
    EXPECT_EQ(view.At(47, 1), PixelOf(100, 50, 25));
    EXPECT_EQ(view.At(47, 78), PixelOf(100, 50, 25));
    EXPECT_EQ(view.At(0, 0), 0u);
    EXPECT_EQ(view.At(48, 0), 0u);
    EXPECT_EQ(view.At(25, 40), 0u);
}

} // namespace
