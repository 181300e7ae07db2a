// The render driver's stage order and percent marks.
#include "effects/RenderDriver.h"
#include "platform/Alert.h"
#include "state/DialogState.h"
#include "state/Parameters.h"
#include "state/Progress.h"
#include "state/WorkImages.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

std::vector<int32_t> gMarks;
void RecordProgress(int32_t done, int32_t) { gMarks.push_back(done); }

// A small final-run setting: an RGB document, the layers and two work images of 4 rows.
class RenderDriverTest : public ::testing::Test {
protected:
    void SetUp() override {
        HostProgressBar = RecordProgress;
        DocumentPlanes = 3;
        std::memset(&params_, 0, sizeof params_);
        gParams = &params_;
        InitParameters();
        DialogOpen = false;
        ImageWidth = 5;
        ImageHeight = 4;
        WorkRowBytes = ImageWidth * 4;
        source_.assign(size_t(ImageHeight) * WorkRowBytes, 77);
        work_.assign(source_.size(), 0);
        SourceImage = source_.data();
        WorkImage = work_.data();
    }
    void TearDown() override {
        DestroyEngine();
        FreeWashAreaBuffer();
        SourceImage = WorkImage = nullptr;
        gParams = nullptr;
        HostProgressBar = nullptr;
        DocumentPlanes = 0;
    }
    std::vector<int32_t> Render(int32_t view) {
        CreateEngine();
        ProgressPercent = ProgressSpan = 0;
        gMarks.clear();
        RenderLayers(view);
        return gMarks;
    }
    void NoTextures() {
        for (char* name : {params_.WashFileName1, params_.WashFileName2, params_.SurfaceFileName1,
                           params_.SurfaceFileName2, params_.BackgroundFileName})
            std::strcpy(name, "No_Texture.qzt");
    }

    FilterParameters params_;
    std::vector<uint8_t> source_, work_;
    AlertCapture alerts_; // the textures are missing here
};

using Marks = std::vector<int32_t>;

} // namespace

TEST_F(RenderDriverTest, AllEffectsOffCopiesThePicture) {
    NoTextures();
    // ResetWorkImage reports a mark per row between 10 and 50.
    EXPECT_EQ(Render(ViewCodeComposite), (Marks{10, 10, 20, 30, 40, 50, 70, 100}));
    EXPECT_EQ(work_, source_);
}

TEST_F(RenderDriverTest, SurfaceWithoutTexturesKeepsItsSpan) {
    NoTextures();
    params_.UseSurface = 1;
    // CreateEngine recomputes UseSurface from the names; the driver sees it on again here.
    CreateEngine();
    params_.UseSurface = 1;
    ProgressPercent = ProgressSpan = 0;
    gMarks.clear();
    RenderLayers(ViewCodeComposite);
    EXPECT_EQ(gMarks, (Marks{10, 30, 30, 30, 30, 30, 50, 70, 100}));
    EXPECT_EQ(work_, source_);
}

TEST_F(RenderDriverTest, DefaultsPassEveryMark) {
    // Textures named but missing: white stand-ins. The surface shades its 4 rows from the
    // bottom up between 30 and 40; wash 1 composes its rows between 50 and 60; the fill
    // has prepared the background already, so there is no 80 mark before its rows.
    EXPECT_EQ(Render(ViewCodeComposite),
              (Marks{10, 20, 30, 37, 35, 32, 30, 40, 50, 50, 52, 55, 57, 60, 70, 70, 70, 75, 80, 85, 90, 100}));
}

TEST_F(RenderDriverTest, BackgroundViewClearsTheWorkImage) {
    params_.UseBackground = 0;
    std::strcpy(params_.BackgroundFileName, "No_Texture.qzt");
    EXPECT_EQ(Render(ViewCodeBackground), (Marks{10, 70, 100}));
    EXPECT_EQ(work_, std::vector<uint8_t>(work_.size(), 0)) << "alpha too is 0";
}

TEST_F(RenderDriverTest, SingleLayerViews) {
    params_.SecondWashExists = 1;
    params_.SecondSurfaceExists = 1;
    // Wash views skip the surface; the background still runs.
    EXPECT_EQ(Render(ViewCodeWashOne),
              (Marks{10, 10, 20, 30, 40, 50, 50, 52, 55, 57, 60, 70, 70, 70, 75, 80, 85, 90, 100}));
    EXPECT_EQ(Render(ViewCodeWashTwo),
              (Marks{10, 10, 20, 30, 40, 50, 50, 50, 55, 60, 65, 70, 70, 70, 75, 80, 85, 90, 100}));
    // Surface views draw no wash, though the wash stage still reports where it stands;
    // only surface one has the 20 mark.
    EXPECT_EQ(Render(ViewCodeSurfaceOne),
              (Marks{10, 20, 30, 37, 35, 32, 30, 40, 50, 50, 70, 70, 70, 75, 80, 85, 90, 100}));
    EXPECT_EQ(Render(ViewCodeSurfaceTwo), (Marks{10, 30, 37, 35, 32, 30, 40, 50, 50, 70, 70, 70, 75, 80, 85, 90, 100}));
}

TEST_F(RenderDriverTest, SurfacePassEndsBeforeTheBackground) {
    SurfacePassCode = 1;
    EXPECT_EQ(Render(ViewCodeComposite), (Marks{10, 20, 30, 37, 35, 32, 30, 40, 50, 50, 52, 55, 57, 60, 70, 70}));
    params_.SurfaceEntire = params_.SurfaceIncludeWashArea = 1;
    EXPECT_EQ(Render(ViewCodeComposite), (Marks{10, 20, 30, 37, 35, 32, 30, 40, 40}));
    SurfacePassCode = 0;
}
