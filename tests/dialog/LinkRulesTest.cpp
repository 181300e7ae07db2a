// Linking without windows: which links survive a change of textures, the link dialog's
// radios, and what a press on a link button leads to.
#include "dialog/LinkRules.h"

#include "state/Parameters.h"
#include "state/ViewState.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

class LinkRulesTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::memset(&params_, 0, sizeof params_);
        gParams = &params_;
        InitParameters();
        ActiveTab = TabBasic;
        Name(params_.WashFileName1, "Rust.qzt");
        Name(params_.SurfaceFileName1, "Rust.qzt");
        Name(params_.BackgroundFileName, "Rust.qzt");
        params_.SecondWashExists = params_.SecondSurfaceExists = 0;
        LinkWash = LinkSurface = LinkBackground = 1;
    }
    void TearDown() override {
        LinkWash = LinkSurface = LinkBackground = 0;
        gParams = nullptr;
    }
    static void Name(char* field, const char* name) { std::strcpy(field, name); }
    static LinkFlags Links() { return {LinkWash != 0, LinkSurface != 0, LinkBackground != 0}; }
    FilterParameters params_;
};

LinkMatches Matches(bool washSurface, bool washBackground, bool surfaceBackground) {
    LinkMatches m;
    m.washSurface = washSurface, m.washBackground = washBackground, m.surfaceBackground = surfaceBackground;
    return m;
}

} // namespace

TEST_F(LinkRulesTest, LinksLastWhileTheirTexturesMatch) {
    UpdateLinkMatches();
    EXPECT_EQ(Links(), (LinkFlags{true, true, true}));
    EXPECT_TRUE(SameWashSurface && SameWashBackground && SameSurfaceBackground);
    // The wash unlinked by its button: the others stay linked.
    LinkWash = 0;
    UpdateLinkMatches();
    EXPECT_EQ(Links(), (LinkFlags{false, true, true}));
    LinkWash = 1;

    // A new texture on the surface leaves it alone; wash and background keep each other.
    Name(params_.SurfaceFileName1, "Cloth.qzt");
    UpdateLinkMatches();
    EXPECT_EQ(Links(), (LinkFlags{true, false, true}));
    EXPECT_EQ(StartLinkPress(LinkKindSurface, false, false, CurrentLinkMatches()), LinkStart::Disable);

    // Two washes on different textures link with nothing, whatever their first shares.
    LinkWash = LinkSurface = 1;
    params_.SecondWashExists = 1;
    Name(params_.WashFileName2, "Cloth.qzt");
    Name(params_.SurfaceFileName1, "Rust.qzt");
    UpdateLinkMatches();
    EXPECT_EQ(Links(), (LinkFlags{false, true, true}));
    EXPECT_FALSE(SameWashPair);
    EXPECT_EQ(StartLinkPress(LinkKindWash, false, false, CurrentLinkMatches()), LinkStart::Disable);
    Name(params_.WashFileName2, "Rust.qzt");
    UpdateLinkMatches();
    EXPECT_TRUE(SameWashPair && SameWashSurface);

    // No texture never links, even shared by every tab.
    LinkWash = LinkSurface = LinkBackground = 1;
    for (char* field :
         {params_.WashFileName1, params_.WashFileName2, params_.SurfaceFileName1, params_.BackgroundFileName})
        Name(field, "No_Texture.qzt");
    UpdateLinkMatches();
    EXPECT_EQ(Links(), LinkFlags{});
    EXPECT_FALSE(SameWashSurface || SameWashBackground || SameSurfaceBackground);
}

TEST(LinkRules, RadiosOfferTheFirstPartner) {
    const LinkMatches all = Matches(true, true, true);
    LinkRadios r = RadiosFor(LinkKindWash, all);
    EXPECT_TRUE(r.shown[1] && r.shown[2] && r.shown[3]);
    EXPECT_EQ(r.checked, 2);
    r = RadiosFor(LinkKindBackground, all);
    EXPECT_EQ(r.checked, 1);

    // Surface with the wash only: the background's radio is hidden.
    r = RadiosFor(LinkKindSurface, Matches(true, false, false));
    EXPECT_TRUE(r.shown[2]) << "the asking tab's own radio always shows";
    EXPECT_TRUE(r.shown[1]);
    EXPECT_FALSE(r.shown[3]);
    EXPECT_EQ(r.checked, 1);
    r = RadiosFor(LinkKindSurface, Matches(false, false, true));
    EXPECT_FALSE(r.shown[1]);
    EXPECT_EQ(r.checked, 3);
    r = RadiosFor(LinkKindBackground, Matches(false, false, true));
    EXPECT_EQ(r.checked, 2);
    EXPECT_EQ(RadiosFor(0, all).checked, 0);
}

TEST(LinkRules, PressAndTextureChoiceTruthTable) {
    const LinkMatches ws = Matches(true, false, true);
    // Press: on turns off, off asks; a choice of texture asks either way.
    EXPECT_EQ(StartLinkPress(LinkKindSurface, false, false, ws), LinkStart::Ask);
    EXPECT_EQ(StartLinkPress(LinkKindSurface, true, false, ws), LinkStart::TurnOff);
    EXPECT_EQ(StartLinkPress(LinkKindSurface, true, true, ws), LinkStart::Ask);
    EXPECT_EQ(StartLinkPress(LinkKindBackground, true, true, Matches(true, false, false)), LinkStart::Disable);
    // A wash pair alone is no partner.
    LinkMatches pair;
    pair.washPair = true;
    EXPECT_EQ(StartLinkPress(LinkKindWash, false, false, pair), LinkStart::Disable);

    // Yes with the wash as master: the surface's partners come on, the page shows the wash's
    // placement, and the press renders.
    LinkPlan plan = AnswerLinkPress(LinkKindSurface, LinkKindWash, false, ws);
    EXPECT_EQ(plan, (LinkPlan{true, LinkKindWash, LinkFlags{true, false, true}, true, true}));
    // Its own placement as master after a texture choice: no refresh, no render.
    plan = AnswerLinkPress(LinkKindSurface, LinkKindSurface, true, ws);
    EXPECT_EQ(plan, (LinkPlan{true, LinkKindSurface, LinkFlags{true, false, true}, false, false}));
    // Only tabs that match the asking one join: the background does not match the wash.
    plan = AnswerLinkPress(LinkKindWash, LinkKindSurface, false, Matches(true, false, true));
    EXPECT_EQ(plan.partners, (LinkFlags{false, true, false}));
    // No: the link stays off, nothing runs.
    EXPECT_EQ(AnswerLinkPress(LinkKindSurface, -1, false, ws), LinkPlan{});
    EXPECT_EQ(AnswerLinkPress(LinkKindSurface, -1, true, ws), LinkPlan{});
}
