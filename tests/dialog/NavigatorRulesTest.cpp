// The navigator's rules without windows: each tab's row at three screen scales against
// positions worked out by hand, the views each tab keeps, the deletes that swap a pair, the
// reconcile after a wholesale change and the resets by tab.
#include "dialog/NavigatorRules.h"

#include "state/ViewState.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

namespace {

struct Placed {
    int32_t id, x;
    bool operator==(const Placed&) const = default;
};

std::vector<Placed> Xs(const NavigatorRow& row) {
    std::vector<Placed> xs;
    for (size_t i = 0; i < row.count; ++i) xs.push_back({row.items[i].id, row.items[i].box.x});
    return xs;
}

const LayoutBox& BoxOf(const NavigatorRow& row, int32_t id) {
    for (size_t i = 0; i < row.count; ++i)
        if (row.items[i].id == id) return row.items[i].box;
    static const LayoutBox none{};
    return none;
}

// A record fresh from the defaults, with gParams left where it was.
FilterParameters Defaults() {
    FilterParameters p{};
    FilterParameters* saved = gParams;
    gParams = &p;
    ResetAllParameters();
    gParams = saved;
    return p;
}

void Name(char (&field)[kNameLength], const char* text) { std::snprintf(field, kNameLength, "%s", text); }

size_t FieldSize(FieldKind kind) {
    switch (kind) {
    case FieldKind::Flag:
    case FieldKind::Byte: return 1;
    case FieldKind::Int16: return 2;
    case FieldKind::Buffer: return 8;
    case FieldKind::Name: return kNameLength;
    default: return 4;
    }
}

// The first field in which the records differ, or "".
std::string FirstDifference(const FilterParameters& a, const FilterParameters& b) {
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const ParameterField& f = kParameterFields[i];
        const char* x = reinterpret_cast<const char*>(&a) + f.offset;
        const char* y = reinterpret_cast<const char*>(&b) + f.offset;
        if (std::memcmp(x, y, FieldSize(f.kind)) != 0) return f.name;
    }
    return "";
}

// Tests share the view globals: each starts and ends with the composite on Basic.
struct ViewsReset {
    static void Clear() { ActiveTab = ViewBasic = ViewWash = ViewSurface = ViewBackground = 0; }
    ViewsReset() { Clear(); }
    ~ViewsReset() { Clear(); }
};

} // namespace

TEST(NavigatorRules, RowStartsFromTheGroupBoxByDpi) {
    const LayoutRect box{250, 46, 540, 344};
    EXPECT_EQ(NavigatorRowOrigin(box, 96), (NavigatorOrigin{279, 62}));
    EXPECT_EQ(NavigatorRowOrigin(box, 100), (NavigatorOrigin{264, 82}));
    EXPECT_EQ(NavigatorRowOrigin(box, 120), (NavigatorOrigin{209, 72}));
    EXPECT_EQ(NavigatorRowOrigin(box, 144), (NavigatorOrigin{279, 82}));
    EXPECT_EQ(NavigatorRowOrigin(box, 216), (NavigatorOrigin{279, 32}));
}

TEST(NavigatorRules, EveryRowAtThreeScales) {
    const NavigatorOrigin o{300, 100};
    struct Case {
        int32_t tab;
        bool two;
        std::vector<Placed> at1, at125, at150;
    };
    // Worked out by hand: 66 s, 60 s and 70 s are 73.79, 67.08, 78.26 at s = sqrt(1.25) and
    // 80.83, 73.48, 85.73 at s = sqrt(1.5); each x is truncated on its own.
    const Case cases[] = {
        {TabBasic,
         false,
         {{500, 300}, {604, 366}, {504, 374}},
         {{500, 300}, {604, 373}, {504, 381}},
         {{500, 300}, {604, 380}, {504, 388}}},
        {TabWash,
         false,
         {{500, 300}, {604, 366}, {501, 374}, {608, 434}, {503, 441}, {612, 501}, {504, 508}},
         {{500, 300}, {604, 373}, {501, 381}, {608, 448}, {503, 455}, {612, 522}, {504, 529}},
         {{500, 300}, {604, 380}, {501, 388}, {608, 462}, {503, 469}, {612, 542}, {504, 549}}},
        {TabWash,
         true,
         {{500, 300}, {604, 366}, {501, 374}, {512, 437}, {608, 454}, {502, 461}, {511, 524}, {616, 541}, {504, 548}},
         {{500, 300}, {604, 373}, {501, 381}, {512, 451}, {608, 468}, {502, 475}, {511, 545}, {616, 562}, {504, 569}},
         {{500, 300}, {604, 380}, {501, 388}, {512, 465}, {608, 482}, {502, 489}, {511, 565}, {616, 582}, {504, 589}}},
        {TabSurface,
         false,
         {{500, 300}, {604, 366}, {506, 373}, {608, 445}, {508, 452}, {612, 522}, {504, 529}},
         {{500, 300}, {604, 373}, {506, 380}, {608, 461}, {508, 468}, {612, 546}, {504, 553}},
         {{500, 300}, {604, 380}, {506, 387}, {608, 475}, {508, 482}, {612, 568}, {504, 575}}},
        {TabSurface,
         true,
         {{500, 300}, {604, 366}, {506, 373}, {510, 447}, {608, 465}, {507, 472}, {509, 546}, {616, 564}, {504, 571}},
         {{500, 300}, {604, 373}, {506, 380}, {510, 463}, {608, 481}, {507, 488}, {509, 570}, {616, 588}, {504, 595}},
         {{500, 300}, {604, 380}, {506, 387}, {510, 477}, {608, 495}, {507, 502}, {509, 592}, {616, 610}, {504, 617}}},
        {TabBackground,
         false,
         {{500, 300}, {604, 366}, {505, 374}, {608, 444}, {504, 451}},
         {{500, 300}, {604, 373}, {505, 381}, {608, 460}, {504, 467}},
         {{500, 300}, {604, 380}, {505, 388}, {608, 474}, {504, 481}}},
    };
    const float scales[3] = {1.0f, std::sqrt(1.25f), std::sqrt(1.5f)};
    for (const Case& c : cases) {
        const std::vector<Placed>* expected[3] = {&c.at1, &c.at125, &c.at150};
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(Xs(LayOutNavigator(c.tab, c.two, c.two, o, scales[i])), *expected[i])
                << "tab " << c.tab << (c.two ? " with two" : "") << " at s " << scales[i];
    }
    // Widths truncate; delete buttons sit 2 lower; the separators are 7 or 8 wide, so the
    // next button starts where they end.
    const NavigatorRow wash = LayOutNavigator(TabWash, true, false, o, scales[1]);
    EXPECT_EQ(BoxOf(wash, 500), (LayoutBox{300, 100, 73, 16}));
    EXPECT_EQ(BoxOf(wash, 504), (LayoutBox{569, 100, 61, 16}));
    EXPECT_EQ(BoxOf(wash, 512), (LayoutBox{451, 102, 13, 13}));
    EXPECT_EQ(BoxOf(wash, 608).x + BoxOf(wash, 608).width, BoxOf(wash, 502).x);
    const NavigatorRow surface = LayOutNavigator(TabSurface, false, false, o, scales[2]);
    EXPECT_EQ(BoxOf(surface, 604).x + BoxOf(surface, 604).width, BoxOf(surface, 506).x);
    EXPECT_EQ(BoxOf(surface, 506).width, 85);
    // A second wash never shows on another tab.
    EXPECT_EQ(Xs(LayOutNavigator(TabBasic, true, true, o, 1.0f)).size(), 3u);
}

TEST(NavigatorRules, ViewsAreKeptPerTab) {
    const ViewsReset views;
    FilterParameters p = Defaults();
    uint8_t washShown = 0, surfaceShown = 0;
    const auto run = [&](int32_t tab, int32_t id) {
        ActiveTab = tab;
        const NavigatorWork w = ApplyNavigatorCommand(id, p, washShown, surfaceShown);
        CommitNavigatorView(w);
        return w;
    };
    run(TabWash, NavWashOne);
    run(TabSurface, NavOriginal);
    run(TabBackground, NavBackground);
    run(TabBasic, NavOriginal);
    run(TabWash, NavComposite);
    EXPECT_EQ(std::tuple(ViewBasic, ViewWash, ViewSurface, ViewBackground),
              std::tuple(ViewCodeOriginal, ViewCodeComposite, ViewCodeOriginal, ViewCodeBackground));

    // Adding asks for the second layer and its links; the view waits for the commit, so
    // that the links are carried from the layer the user came from.
    ActiveTab = TabWash;
    const NavigatorWork add = ApplyNavigatorCommand(NavAddWash, p, washShown, surfaceShown);
    EXPECT_TRUE(add.prepareSecondWash && add.syncWash && !add.remakeWashes);
    EXPECT_EQ(ViewWash, ViewCodeComposite);
    CommitNavigatorView(add);
    EXPECT_EQ(std::tuple(ViewWash, washShown, p.SecondWashExists), std::tuple(ViewCodeWashTwo, 1, 1));
    const NavigatorWork addSurface = run(TabSurface, NavAddSurface);
    EXPECT_TRUE(addSurface.prepareSecondSurface && addSurface.syncSurface && addSurface.surfacesChanged);

    // Deleting the second layer leaves the first as it was.
    const FilterParameters before = p;
    EXPECT_FALSE(run(TabSurface, NavDeleteSurfaceTwo).remakeSurfaces);
    EXPECT_EQ(std::tuple(ViewSurface, surfaceShown, p.SecondSurfaceExists), std::tuple(ViewCodeSurfaceOne, 0, 0));
    EXPECT_EQ(FirstDifference(p, before), "SecondSurfaceExists");

    // Resets and unknown ids are not view commands.
    EXPECT_FALSE(run(TabWash, NavResetWash).known);
    EXPECT_FALSE(run(TabWash, 499).known);
    EXPECT_EQ(ViewWash, ViewCodeWashTwo);
}

TEST(NavigatorRules, DeletingTheFirstLayerKeepsTheSecondsTexture) {
    const ViewsReset views;
    FilterParameters p = Defaults();
    p.SecondWashExists = 1;
    Name(p.WashFileName1, "One.qzt");
    Name(p.WashFileName2, "Two.qzt");
    p.WashType1 = 0, p.WashType2 = 3;
    p.WashStainColor1 = 0x010203, p.WashStainColor2 = 0x0A0B0C;
    p.WashScale1 = 10, p.WashScale2 = 20;
    p.WashIntensity1 = 30, p.WashIntensity2 = 40;
    p.WashCoverage1 = -5, p.WashCoverage2 = 15;
    p.WashCoverageScale1 = 50, p.WashCoverageScale2 = 60;
    p.WashEdgeSoftness1 = 7, p.WashEdgeSoftness2 = 8;
    p.WashInside1 = 1, p.WashInside2 = 0;
    p.WashFlipHor2 = p.WashFlipVer2 = p.WashInvert2 = 1;
    p.WashRandomize1 = 111, p.WashRandomize2 = 222;
    p.WashEdgeDistance1 = 11, p.WashEdgeDistance2 = 22;
    p.WashAngle1 = 90, p.WashAngle2 = 180;
    p.WashOffsetX1 = 3, p.WashOffsetY1 = 4, p.WashOffsetX2 = 5, p.WashOffsetY2 = 6;
    uint8_t washShown = 1, surfaceShown = 0;
    ActiveTab = TabWash;
    ViewWash = ViewCodeWashTwo;
    const NavigatorWork w = ApplyNavigatorCommand(NavDeleteWashOne, p, washShown, surfaceShown);
    CommitNavigatorView(w);
    EXPECT_TRUE(w.remakeWashes);
    EXPECT_EQ(std::tuple(ViewWash, washShown, p.SecondWashExists), std::tuple(ViewCodeWashOne, 0, 0));
    // The texture and its look move to the first slot...
    EXPECT_STREQ(p.WashFileName1, "Two.qzt");
    EXPECT_STREQ(p.WashFileName2, "One.qzt");
    EXPECT_EQ(std::tuple(p.WashType1, p.WashStainColor1, p.WashScale1, p.WashIntensity1, p.WashCoverage1,
                         p.WashCoverageScale1, p.WashEdgeSoftness1, p.WashInside1),
              std::tuple(3, 0x0A0B0Cu, 20, 40, 15, 60, 8, 0));
    EXPECT_EQ(p.WashFlipHor1 + p.WashFlipVer1 + p.WashInvert1, 3);
    // ...while seed, edge distance, angle and offsets stay in their slot.
    EXPECT_EQ(std::tuple(p.WashRandomize1, p.WashEdgeDistance1, p.WashAngle1, p.WashOffsetX1, p.WashOffsetY1),
              std::tuple(111, 11, 90, 3, 4));

    p.SecondSurfaceExists = 1;
    Name(p.SurfaceFileName1, "Rough.qzt");
    Name(p.SurfaceFileName2, "Smooth.qzt");
    p.SurfaceType1 = 1, p.SurfaceType2 = 0;
    p.SurfaceDepth1 = 10, p.SurfaceDepth2 = 90;
    p.SurfaceScale1 = 5, p.SurfaceScale2 = 50;
    p.SurfaceAngle1 = 270, p.SurfaceAngle2 = 0;
    p.SurfaceOffsetX1 = 9, p.SurfaceOffsetX2 = 1;
    surfaceShown = 1;
    ActiveTab = TabSurface;
    const NavigatorWork s = ApplyNavigatorCommand(NavDeleteSurfaceOne, p, washShown, surfaceShown);
    EXPECT_TRUE(s.remakeSurfaces && s.surfacesChanged);
    EXPECT_EQ(s.view, ViewCodeSurfaceOne);
    EXPECT_STREQ(p.SurfaceFileName1, "Smooth.qzt");
    EXPECT_EQ(std::tuple(p.SurfaceType1, p.SurfaceDepth1, p.SurfaceScale1, p.SurfaceAngle1, p.SurfaceOffsetX1,
                         p.SecondSurfaceExists),
              std::tuple(0, 90, 50, 270, 9, 0));
}

TEST(NavigatorRules, ReconcileFollowsTheExistsFlags) {
    const ViewsReset views;
    FilterParameters p = Defaults();
    uint8_t washShown = 1, surfaceShown = 0;
    ViewWash = ViewCodeWashTwo;
    // A wash button without its wash goes, and the wash tab shows the composite.
    ReconcileWork w = ReconcileShown(p, washShown, surfaceShown);
    EXPECT_TRUE(w.changed);
    EXPECT_FALSE(w.prepareSecondWash || w.prepareSecondSurface);
    EXPECT_EQ(washShown, 0);
    EXPECT_EQ(ViewWash, ViewCodeComposite);
    // A second surface without its button gets one, prepared and synced.
    p.SecondSurfaceExists = 1;
    ViewSurface = ViewCodeOriginal;
    w = ReconcileShown(p, washShown, surfaceShown);
    EXPECT_TRUE(w.changed && w.prepareSecondSurface && w.syncSurface && !w.prepareSecondWash);
    EXPECT_EQ(std::tuple(surfaceShown, ViewSurface), std::tuple(1, ViewCodeComposite));
    // In line already: nothing, even with the second layer in view.
    p.SecondWashExists = 1, washShown = 1;
    ViewWash = ViewCodeWashTwo;
    ViewSurface = ViewCodeSurfaceTwo;
    w = ReconcileShown(p, washShown, surfaceShown);
    EXPECT_FALSE(w.changed);
    EXPECT_EQ(std::tuple(ViewWash, ViewSurface), std::tuple(ViewCodeWashTwo, ViewCodeSurfaceTwo));
}

TEST(NavigatorRules, ResetsActByTab) {
    EXPECT_TRUE(ResetPlanFor(TabBasic).ask);
    const ResetPlan wash = ResetPlanFor(TabWash);
    EXPECT_TRUE(!wash.ask && !wash.keepWash && wash.keepSurface && wash.keepBackground);
    const ResetPlan back = ResetPlanFor(TabBackground);
    EXPECT_TRUE(!back.ask && back.keepWash && back.keepSurface && !back.keepBackground);

    const FilterParameters defaults = Defaults();
    FilterParameters live = defaults;
    FilterParameters* saved = gParams;
    gParams = &live;

    // Wash: both washes to defaults, the first without texture, the second's name kept;
    // surfaces untouched; gParams still the caller's.
    FilterParameters p = defaults;
    p.SecondWashExists = 1;
    p.WashScale1 = p.WashScale2 = 177;
    p.WashRandomize1 = 5;
    Name(p.WashFileName2, "Kept.qzt");
    p.SurfaceScale1 = 33;
    p.SurfaceHue = 12;
    ApplyTabReset(p, TabWash);
    EXPECT_EQ(gParams, &live);
    EXPECT_STREQ(p.WashFileName1, kNoTextureName);
    EXPECT_STREQ(p.WashFileName2, "Kept.qzt");
    EXPECT_EQ(
        std::tuple(p.SecondWashExists, p.WashScale1, p.WashScale2, p.WashRandomize1, p.SurfaceScale1, p.SurfaceHue),
        std::tuple(0, defaults.WashScale1, defaults.WashScale2, defaults.WashRandomize1, 33, 12));

    // Surface: the shared shading goes back too; the washes stay.
    p.SecondSurfaceExists = 1;
    p.WashScale1 = 44;
    ApplyTabReset(p, TabSurface);
    EXPECT_STREQ(p.SurfaceFileName1, kNoTextureName);
    EXPECT_EQ(std::tuple(p.SecondSurfaceExists, p.SurfaceScale1, p.SurfaceHue, p.WashScale1),
              std::tuple(0, defaults.SurfaceScale1, defaults.SurfaceHue, 44));

    // Basic: the defaults throughout but for the three first names.
    p.BackgroundScale = 3;
    ApplyTabReset(p, TabBasic);
    FilterParameters expected = defaults;
    Name(expected.WashFileName1, kNoTextureName);
    Name(expected.SurfaceFileName1, kNoTextureName);
    Name(expected.BackgroundFileName, kNoTextureName);
    EXPECT_EQ(FirstDifference(p, expected), "");
    EXPECT_EQ(FirstDifference(live, defaults), "");
    gParams = saved;
}
