// Carrying a placement to the linked layers: which layers take it, from which source, and
// that turns go the short way round in whole quarters.
#include "EffectsFixture.h"

#include "effects/LinkSync.h"
#include "state/ViewState.h"

using namespace effectstest;

namespace {

class LinkSyncTest : public ParamsEngineTest {
protected:
    void SetUp() override {
        ParamsEngineTest::SetUp();
        Work(8, 6);
        ActiveTab = TabBasic;
        ViewWash = ViewSurface = 0;
        for (char* name : {params_.WashFileName1, params_.WashFileName2, params_.SurfaceFileName1,
                           params_.SurfaceFileName2, params_.BackgroundFileName})
            std::strcpy(name, "Rust.qzt");
        params_.SecondWashExists = 1;
        CreateEngine();
    }
    void TearDown() override {
        DestroyEngine();
        LinkWash = LinkSurface = LinkBackground = 0;
        ViewWash = ViewSurface = 0;
        ParamsEngineTest::TearDown();
    }
    // Wash 2's placement, as its page leaves it after a scale, a flip, a drag and a turn.
    void EditSecondWash() {
        params_.WashScale2 = 150;
        params_.WashFlipVer2 = 1;
        params_.WashOffsetX2 = 3;
        params_.WashOffsetY2 = 2;
        RotateLayerCcw(WashLayers[1]);
        params_.WashAngle2 = WashLayers[1].Angle;
    }
};

} // namespace

TEST(LinkSync, QuarterTurnsRoundUp) {
    EXPECT_EQ(QuarterTurns(90), 1);
    EXPECT_EQ(QuarterTurns(-90), 1);
    EXPECT_EQ(QuarterTurns(91), 2);
    EXPECT_EQ(QuarterTurns(180), 2);
    EXPECT_EQ(QuarterTurns(-270), 3);
    EXPECT_EQ(QuarterTurns(270), 3);
}

TEST_F(LinkSyncTest, EditedWashReachesLinkedLayersInUse) {
    ViewWash = ViewCodeWashTwo;
    LinkWash = LinkSurface = LinkBackground = 1;
    std::strcpy(params_.BackgroundFileName, "No_Texture.qzt");
    ComputeUseFlags();
    const uint8_t flipBefore = SurfaceLayers[0].FlipHor;
    const int32_t backgroundScale = params_.BackgroundScale;
    EditSecondWash();
    SyncWashLinks();

    // The wash under edit is the source: wash 1 follows wash 2.
    EXPECT_EQ(params_.WashScale1, 150);
    EXPECT_EQ(params_.WashAngle1, 270);
    EXPECT_EQ(WashLayers[0].Angle, 270) << "one quarter back, not three forward";
    EXPECT_EQ(params_.SurfaceScale1, 150);
    EXPECT_EQ(SurfaceLayers[0].Scale, 150.0);
    // The check labelled horizontal writes FlipVer and acts by FlipLayerHor.
    EXPECT_EQ(params_.SurfaceFlipVer1, 1);
    EXPECT_EQ(params_.SurfaceFlipHor1, 0);
    EXPECT_NE(SurfaceLayers[0].FlipHor, flipBefore);
    EXPECT_EQ(SurfaceLayers[0].OffsetX, 3);
    EXPECT_EQ(params_.SurfaceOffsetY1, 2);
    EXPECT_EQ(SurfaceLayers[0].Angle, 270);
    EXPECT_EQ(SurfaceLayers[1].Scale, 0.0) << "no second surface: never filled, never reached";
    EXPECT_EQ(params_.BackgroundScale, backgroundScale) << "a background without texture is left alone";

    // A second sync of the same placement turns and flips nothing more.
    SyncWashLinks();
    EXPECT_EQ(SurfaceLayers[0].Angle, 270);
    EXPECT_NE(SurfaceLayers[0].FlipHor, flipBefore);
}

TEST_F(LinkSyncTest, UnlinkedSourceOrTargetsStay) {
    ViewWash = ViewCodeWashTwo;
    EditSecondWash();
    SyncWashLinks();
    EXPECT_EQ(params_.WashScale1, 0) << "the wash's own link is off";

    LinkWash = 1;
    SyncWashLinks();
    EXPECT_EQ(params_.WashScale1, 150);
    EXPECT_EQ(params_.SurfaceScale1, 0) << "the surface's link is off";
    EXPECT_EQ(params_.BackgroundAngle, 0);

    // The background as source turns the linked wash pair forward to its angle.
    LinkBackground = 1;
    params_.BackgroundAngle = 0;
    SyncBackgroundLinks();
    EXPECT_EQ(WashLayers[0].Angle, 0);
    EXPECT_EQ(WashLayers[1].Angle, 0);
    EXPECT_EQ(params_.WashFlipVer2, 0);
    EXPECT_EQ(params_.SurfaceAngle1, 0);
    params_.BackgroundAngle = 90;
    SyncBackgroundLinks();
    EXPECT_EQ(WashLayers[1].Angle, 90);
}
