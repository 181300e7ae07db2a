// The preset strip without windows: what it lists, where a slide stands at each tick,
// and what a frame paints.
#include "presets/PresetFixture.h"

#include "pickers/Filmstrip.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

// ---- Listing ----

using StripListing = PresetFixture;

TEST_F(StripListing, CountsArchivedFilesAndNeedsItsOwnNone) {
    const fs::path folder = Presets() / "BackPalette";
    EXPECT_EQ(ListPresets(StripFolder()).Count, 0); // no folder: an empty strip

    WriteText(folder / "Moss.qztpst", "x");
    WriteText(folder / "ash.QZTPST", "x");
    WriteText(folder / "NONE.qztpst", "x");
    WriteText(folder / "notes.txt", "x");
    fs::create_directories(folder / "old.qztpst");
    StripPresets list = ListPresets(StripFolder());
    EXPECT_EQ(list.Count, 3);
    EXPECT_EQ(list.Names, (std::vector<std::string>{"none", "ash", "Moss"}));

    // Without a file of its own, "none" takes a slot and the last preset drops out.
    fs::remove(folder / "NONE.qztpst");
    list = ListPresets(StripFolder());
    EXPECT_EQ(list.Count, 2);
    EXPECT_EQ(list.Names, (std::vector<std::string>{"none", "ash"}));
}

// ---- Motion ----

TEST(StripMotion, LayoutSlidesAndArrows) {
    const StripGeometry g = LayOutStrip();
    EXPECT_EQ(g.Width, 355);
    EXPECT_EQ(g.Height, 63);
    EXPECT_EQ(g.StripWidth, 5 * g.TilePitch);
    EXPECT_EQ(g.NextButton.left, 335);

    // Eased by the square root: (first, shift) at each tick of a slide from page 1 of 12.
    const int32_t forward[11][2] = {{5, 0},   {6, -36}, {7, -14}, {7, -46}, {8, -10}, {8, -33},
                                    {8, -54}, {9, -11}, {9, -29}, {9, -46}, {10, 0}};
    const int32_t backward[11][2] = {{4, -63}, {3, -26}, {2, -48}, {2, -16}, {1, -52}, {1, -29},
                                     {1, -8},  {0, -51}, {0, -33}, {0, -16}, {0, 0}};
    for (bool ahead : {true, false}) {
        StripMotion m;
        ResetMotion(m, 12);
        EXPECT_EQ(m.PageCount, 3);
        m.Page = 1;
        ASSERT_TRUE(StartSlide(m, ahead));
        EXPECT_FALSE(StartSlide(m, !ahead)); // a press during a slide does nothing
        int ticks = 0;
        for (int k = 0; k < 11; ++k) {
            const StripFrame f = FrameOf(m, g.TilePitch);
            const int32_t* want = ahead ? forward[k] : backward[k];
            // At the last tick backward the first index would be -1: the strip stands still.
            EXPECT_EQ(f.first, want[0]) << k;
            EXPECT_EQ(f.shift, want[1]) << k;
            EXPECT_EQ(f.last, std::min(12, f.first + 6)) << k;
            ++ticks;
            if (TickSlide(m)) break;
        }
        EXPECT_EQ(ticks, 11);
        EXPECT_EQ(m.SlideDirection, 0);
        EXPECT_EQ(m.Page, ahead ? 2 : 0);
        EXPECT_EQ(FrameOf(m, g.TilePitch).last, ahead ? 12 : 5);
        EXPECT_EQ(PrevEnabled(m), ahead);
        EXPECT_EQ(NextEnabled(m), !ahead);
    }

    // Held at the ends when a slide starts anyway.
    StripMotion m;
    ResetMotion(m, 3);
    StartSlide(m, false);
    while (!TickSlide(m)) EXPECT_EQ(FrameOf(m, 63).first, 0);
    EXPECT_EQ(m.Page, 0);
    StartSlide(m, true);
    while (!TickSlide(m)) {}
    EXPECT_EQ(m.Page, 0);

    // The mouse: both edges of the pictures count, the sixth slot lies on the right edge.
    EXPECT_FALSE(InsideStrip(g, 19, 10));
    EXPECT_TRUE(InsideStrip(g, 20, 0));
    EXPECT_TRUE(InsideStrip(g, 335, 63));
    EXPECT_FALSE(InsideStrip(g, 20, 64));
    EXPECT_EQ(SlotAt(g, 20 + 62), 0);
    EXPECT_EQ(SlotAt(g, 20 + 63), 1);
    EXPECT_EQ(SlotAt(g, 335), 5);
}

TEST(StripPainting, HoverTilePictureAndCross) {
    const StripGeometry g = LayOutStrip();
    StripMotion m;
    ResetMotion(m, 2);
    std::vector<ThumbImage> thumbs(2);
    ThumbImage& t = thumbs[0];
    t.width = t.height = 61;
    t.stride = 184;
    t.bytes.assign(size_t(184) * 61, 0);
    t.bytes[size_t(60) * 184 + 0] = 10; // the top row's first pixel, stored last
    t.bytes[size_t(60) * 184 + 1] = 20;
    t.bytes[size_t(60) * 184 + 2] = 30;

    std::vector<uint32_t> pixels(size_t(g.StripWidth) * g.StripHeight);
    const PixelView view{pixels.data(), g.StripWidth, g.StripHeight, g.StripWidth};
    const uint32_t face = 0x00C0C0C0;
    PaintStrip(view, g, m, 0, thumbs, face);
    EXPECT_EQ(view.At(0, 0), 0u); // the hovered tile shows black round its picture
    EXPECT_EQ(view.At(62, 62), 0u);
    EXPECT_EQ(view.At(1, 1), PixelOf(30, 20, 10)); // the picture's top row is its last stored
    EXPECT_EQ(view.At(63 + 10, 10), 0u);           // no picture: a cross on white, both ways
    EXPECT_EQ(view.At(63 + 63 - 10, 10), 0u);
    EXPECT_EQ(view.At(63 + 5, 10), 0xFFFFFFu);
    EXPECT_EQ(view.At(126 + 5, 5), face); // no third tile
}
