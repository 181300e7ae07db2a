// Filling the layers from the record: the second wash, the link of the pair and the Use
// flags.
#include "EffectsFixture.h"

#include "state/ViewState.h"

using namespace effectstest;

namespace {

class EffectLayerTest : public ParamsEngineTest {
protected:
    void SetUp() override {
        ParamsEngineTest::SetUp();
        Work(8, 6);
        ActiveTab = TabBasic;
    }
    void TearDown() override {
        DestroyEngine();
        LinkWash = 0;
        ActiveTab = TabBasic;
        ViewWash = 0;
        ParamsEngineTest::TearDown();
    }
};

} // namespace

TEST_F(EffectLayerTest, SecondWashLinkAndUseFlags) {
    CreateEngine();
    EXPECT_TRUE(WashLayers[0].Source) << "a missing file still gives a white stand-in";
    EXPECT_FALSE(WashLayers[1].Source) << "no second wash: constructed, never filled";
    EXPECT_EQ(WashLayers[0].CoverageDirty, 0);
    ASSERT_TRUE(WashLayers[0].ActiveCoverage);

    params_.SecondWashExists = 1;
    std::strcpy(params_.WashFileName2, "No_Texture.qzt");
    ActiveTab = TabWash;
    ViewWash = ViewCodeWashTwo;
    CreateEngine();
    EXPECT_TRUE(WashLayers[1].Source);
    EXPECT_EQ(params_.UseWash, 0) << "the wash shown alone has no texture";
    ViewWash = ViewCodeComposite;
    CreateEngine();
    EXPECT_EQ(params_.UseWash, 1);

    LinkWash = 1;
    CreateEngine();
    EXPECT_STREQ(params_.WashFileName2, params_.WashFileName1) << "the link copies the name at fill time";
}
