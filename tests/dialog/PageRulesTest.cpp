// The pages' rules without windows: enabling as tables of cases, the offset moves worked
// out by hand, the reading of typed numbers and the names shown.
#include "dialog/PageRules.h"

#include <gtest/gtest.h>

#include <string>

TEST(PageRules, WashEnablingFollowsViewUseAndTexture) {
    PageState s;
    s.inUse = true, s.view = 0, s.washType = 1, s.hasRange = true, s.linkable = true;
    EXPECT_EQ(EnableWash(s), (WashEnabling{true, true, true, true, true}));
    // Two washes shown together: the sliders belong to neither.
    s.secondExists = true;
    EXPECT_FALSE(EnableWash(s).controls);
    s.view = 2;
    EXPECT_TRUE(EnableWash(s).controls);
    // The original picture: nothing, the link neither.
    s.view = 6;
    EXPECT_EQ(EnableWash(s), WashEnabling{});
    // No texture: everything off (Choose is not among these).
    s.view = 1, s.inUse = false;
    EXPECT_EQ(EnableWash(s), WashEnabling{});
    s.inUse = true, s.solid = true, s.washType = 0;
    EXPECT_EQ(EnableWash(s), (WashEnabling{true, true, false, false, false}));
    s.solid = false, s.hasRange = false;
    EXPECT_EQ(EnableWash(s), (WashEnabling{true, true, false, true, false}));
}

TEST(PageRules, SurfaceAndBackgroundEnabling) {
    PageState s;
    s.inUse = true, s.view = 0, s.transparent = true, s.useWash = true, s.surfaceEntire = true;
    EXPECT_EQ(EnableSurface(s), (SurfaceEnabling{true, true, false, true, true, true}));
    // Fill Wash needs the wash in use and Fill Canvas on, and Fill Canvas transparency.
    s.useWash = false;
    EXPECT_FALSE(EnableSurface(s).fillWash);
    s.useWash = true, s.surfaceEntire = false;
    EXPECT_FALSE(EnableSurface(s).fillWash);
    s.surfaceEntire = true, s.transparent = false;
    EXPECT_FALSE(EnableSurface(s).fillCanvas);
    EXPECT_FALSE(EnableSurface(s).fillWash);
    // Two surfaces in Composite: the shared shading stays, the per-layer controls go.
    s.transparent = true, s.secondExists = true;
    EXPECT_EQ(EnableSurface(s), (SurfaceEnabling{false, true, false, false, true, true}));
    s.view = 5, s.solid = true;
    EXPECT_EQ(EnableSurface(s), (SurfaceEnabling{true, true, false, false, true, true}));

    PageState b;
    b.inUse = true, b.solid = true, b.linkable = true;
    EXPECT_EQ(EnableBackground(b), (BackgroundEnabling{true, false, true, false}));
    b.inUse = false;
    EXPECT_EQ(EnableBackground(b), BackgroundEnabling{});

    EXPECT_TRUE(HasTransparency(4, false));
    EXPECT_FALSE(HasTransparency(3, false));
    EXPECT_FALSE(HasTransparency(4, true));
    EXPECT_TRUE(HasTransparency(5, true));
}

TEST(PageRules, LinkMatchesNeedTheSameUsedTexture) {
    LinkMatches m = MatchLinks("Rust.qzt", "Rust.qzt", true, true, "Rust.qzt", "", false, true, "Cloth.qzt", true);
    EXPECT_TRUE(m.washPair);
    EXPECT_TRUE(m.washSurface);
    EXPECT_FALSE(m.washBackground);
    EXPECT_FALSE(m.surfaceBackground);
    // Two different washes link with nothing.
    m = MatchLinks("Rust.qzt", "Cloth.qzt", true, true, "Rust.qzt", "", false, true, "Rust.qzt", true);
    EXPECT_FALSE(m.washSurface || m.washBackground);
    EXPECT_TRUE(m.surfaceBackground);
    m = MatchLinks("No_Texture.qzt", "", false, true, "No_Texture.qzt", "", false, true, "No_Texture.qzt", true);
    EXPECT_FALSE(m.washSurface || m.washBackground || m.surfaceBackground);
}

TEST(PageRules, OffsetMovesAtScaleOneAndFour) {
    // Knob at the centre of a 400 by 200 overhang puts the layer at half of it.
    EXPECT_EQ(PadOffsetMove(0, 0, 400, 200, 0, 0, 1), (OffsetMove{200, 100}));
    EXPECT_EQ(PadOffsetMove(0, 0, 400, 200, 50, 20, 4), (OffsetMove{37, 20}));
    // Right and top edges: no overhang used on x, all of it on y.
    EXPECT_EQ(PadOffsetMove(100, 100, 400, 200, 0, 0, 1), (OffsetMove{0, 200}));
    EXPECT_EQ(PadOffsetMove(-100, -100, 400, 200, 400, 0, 1), (OffsetMove{0, 0}));
    // Truncation toward zero on a negative move.
    EXPECT_EQ(PadOffsetMove(100, -100, 10, 10, 7, 7, 4), (OffsetMove{-1, -1}));

    EXPECT_EQ(EditOffsetMove(120, 400, 100, 1), 20);
    EXPECT_EQ(EditOffsetMove(120, 400, 100, 4), 5);
    EXPECT_EQ(EditOffsetMove(400, 400, 100, 1), 299); // at the range: one short of it
    EXPECT_EQ(EditOffsetMove(999, 400, 100, 4), 74);
    EXPECT_EQ(EditOffsetMove(-5, 400, 100, 1), -100);

    EXPECT_EQ(OffsetKnob(0, 400), 100);
    EXPECT_EQ(OffsetKnob(200, 400), 0);
    EXPECT_EQ(OffsetKnob(400, 400), -100);
    EXPECT_EQ(OffsetKnob(0, 1), 100); // a zero half range
    EXPECT_EQ(OffsetKnob(5, 0), 100);
}

TEST(PageRules, TypedNumbersSeedsAndNames) {
    EXPECT_EQ(ParseFieldNumber("", 1, 200), 1.0f);
    EXPECT_EQ(ParseFieldNumber("", -100, 100), 0.0f);
    EXPECT_EQ(ParseFieldNumber("150", 0, 100), 100.0f);
    EXPECT_EQ(int32_t(ParseFieldNumber("12.7", 0, 100)), 12);
    EXPECT_EQ(ParseFieldNumber("Rusted.qzt", -100, 100), 0.0f);
    EXPECT_EQ(ParseFieldNumber("-40", 0, 100), 0.0f);
    EXPECT_EQ(SeedOf(1234), 234);
    EXPECT_EQ(SeedOf(-1), -1);
    EXPECT_EQ(SeedOf(999), 999);

    EXPECT_EQ(std::string(DisplayTextureName("Rusted.qzt")), "Rusted");
    EXPECT_EQ(std::string(DisplayTextureName("a.qzt")), "a");
    EXPECT_EQ(std::string(DisplayTextureName(".qzt")), ".qzt");
    EXPECT_EQ(std::string(DisplayTextureName("Rust.png")), "Rust.png");
    EXPECT_EQ(std::string(DisplayTextureName(std::string(300, 'x').c_str())), std::string(127, 'x'));
}

TEST(PageRules, PagesStretchToTheDialog) {
    UserGroupBoxes b{{9, 300, 340, 120}, {22, 316, 310, 60}, {90, 400, 75, 23}, {190, 400, 75, 23}};
    const UserGroupBoxes s = StretchUserGroup(520, b);
    EXPECT_EQ(s.group, (LayoutBox{9, 300, 340, 211}));
    EXPECT_EQ(s.save, (LayoutBox{90, 482, 75, 23}));
    EXPECT_EQ(s.remove, (LayoutBox{190, 482, 75, 23}));
    EXPECT_EQ(s.list, (LayoutBox{22, 316, 310, 161}));
}
