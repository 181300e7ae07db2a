// Zoom and pan of the preview over hostsim, in-process and without a window: a stand-in
// for the dialog runs inside the Start call of a run from the menu, with the host's record
// live, and plays the zoom commands and drags as the dialog's code does.
#include "state/Parameters.h"
#include "state/ViewState.h"
#include "state/WorkImages.h"
#include "effects/TextureFolder.h"
#include "ShellFixture.h"

#include "dialog/PreviewPicture.h"
#include "effects/EffectLayer.h"
#include "host/Dialog.h"
#include "host/PreviewGeometry.h"
#include "host/Session.h"
#include "platform/Alert.h"

#include <array>
#include <cstring>
#include <functional>

using namespace shelltest;

namespace {

class PreviewGeometryTest : public ::testing::Test {
protected:
    void TearDown() override {
        DialogStandIn = nullptr;
        Play() = nullptr;
        ActiveTab = TabBasic;
        ViewWash = ViewCodeComposite;
    }
    static std::function<void()>& Play() {
        static std::function<void()> play;
        return play;
    }
    // Runs `play` as the dialog of a menu run over a w by h picture, then cancels.
    void WithDialog(int32 w, int32 h, std::function<void()> play) {
        Play() = std::move(play);
        DialogStandIn = [] {
            DialogOpen = true;
            Play()();
            DestroyEngine();
            FreeWorkImages();
            DialogOpen = false;
            return false;
        };
        host_ = MakeHost(RgbDocument(w, h));
        EXPECT_EQ(host_->RunFilter(), userCanceledErr);
        ExpectNoMisuse(*host_);
    }
    const hostsim::Host::Request& LastRequest() const { return host_->Requests().back(); }
    std::unique_ptr<hostsim::Host> host_;
};

// Top, left, bottom, right as one comparable value.
std::array<int32, 4> Sides(int32 top, int32 left, int32 bottom, int32 right) { return {top, left, bottom, right}; }
std::array<int32, 4> Sides(const VRect& r) { return {r.top, r.left, r.bottom, r.right}; }

} // namespace

TEST_F(PreviewGeometryTest, OpensAtFullSizeInTheTopLeftThenZoomsKeepingTheCentre) {
    // 1000 by 600 in a 200 by 150 preview: 5 source pixels a preview pixel fit.
    WithDialog(1000, 600, [this] {
        PreviewPan pan{200, 150};
        ZoomButtons buttons{true, true};
        OpenPreviewGeometry(pan, buttons);
        EXPECT_EQ(PreviewFitScale, 5.0f);
        EXPECT_EQ(ZoomStep, 4.0f);
        EXPECT_EQ(PreviewScale, 1.0);
        EXPECT_EQ(PreviewPercent(), 100);
        EXPECT_FALSE(buttons.up);
        EXPECT_TRUE(buttons.down);
        EXPECT_EQ(Sides(LastRequest().inRect), Sides(0, 0, 150, 200));
        EXPECT_EQ(Sides(LastRequest().outRect), Sides(0, 0, 150, 200));
        EXPECT_EQ(LastRequest().inputRate, 0x10000);
        EXPECT_EQ(LastRequest().inHiPlane, 2);

        // A plain drag 300 left and 200 up: nothing asked of the host until release.
        const size_t requests = host_->Requests().size();
        pan.dragMovedX = -300, pan.dragMovedY = -200;
        EXPECT_EQ(host_->Requests().size(), requests);
        EXPECT_TRUE(ReleasePan(pan));
        ApplyPan(pan);
        EXPECT_EQ(Sides(LastRequest().inRect), Sides(200, 300, 350, 500));
        EXPECT_EQ(PreviewOriginX, 300.0);

        // Scale 2: the image is 500 by 300 at that scale, the origin moves by half the
        // change of size, (300 - 250, 200 - 150).
        ZoomDown(pan, buttons);
        EXPECT_EQ(PreviewScale, 2.0);
        EXPECT_EQ(PreviewPercent(), 50);
        EXPECT_TRUE(buttons.up);
        EXPECT_TRUE(buttons.down);
        EXPECT_EQ(Sides(LastRequest().inRect), Sides(50, 50, 200, 250));
        EXPECT_EQ(LastRequest().inputRate, 2 * 0x10000);
        EXPECT_EQ(LastRequest().maskRate, 2 * 0x10000);
        // Back to 1: (50 + 250, 50 + 150), the same view as before.
        ZoomUp(pan, buttons);
        EXPECT_EQ(Sides(LastRequest().inRect), Sides(200, 300, 350, 500));
        EXPECT_FALSE(buttons.up);

        // Down to the bottom step, clamped against the far edge on the way.
        for (int i = 0; i < 6; ++i) ZoomDown(pan, buttons);
        EXPECT_EQ(ZoomStep, 0.0f);
        EXPECT_EQ(PreviewScale, 5.0);
        EXPECT_FALSE(buttons.down);
        EXPECT_EQ(PreviewPercent(), 20);
        EXPECT_EQ(Sides(LastRequest().inRect), Sides(0, 0, 120, 200));
    });
}

TEST_F(PreviewGeometryTest, FitCannotBePannedAndFullSizeLeavesTheGlobalsOrigin) {
    WithDialog(1000, 600, [this] {
        PreviewPan pan{200, 150};
        ZoomButtons buttons;
        OpenPreviewGeometry(pan, buttons);
        pan.dragMovedX = -40, pan.dragMovedY = -30;
        ReleasePan(pan);
        ApplyPan(pan);
        EXPECT_EQ(PreviewOriginX, 40.0);

        ZoomToFit(pan, buttons);
        EXPECT_EQ(PreviewScale, 5.0);
        EXPECT_EQ(PreviewOriginX, 0.0);
        EXPECT_FALSE(buttons.down);
        EXPECT_TRUE(buttons.up);
        // ZoomStep 0 always pans to the origin.
        pan.dragMovedX = -30, pan.dragMovedY = -10;
        EXPECT_TRUE(ReleasePan(pan));
        ApplyPan(pan);
        EXPECT_EQ(pan.originX, 0);
        EXPECT_EQ(pan.originY, 0);
        EXPECT_EQ(Sides(LastRequest().inRect), Sides(0, 0, 120, 200));

        // Ctrl + 1: full size; the globals keep the fit's origin while the pan clamps anew.
        PreviewOriginX = 7.0;
        ZoomToActual(pan, buttons);
        EXPECT_EQ(PreviewScale, 1.0);
        EXPECT_EQ(PreviewOriginX, 7.0);
        EXPECT_FALSE(buttons.up);
        EXPECT_TRUE(buttons.down);

        // A larger preview: the geometry follows once, and only on a real change.
        pan.width = 400, pan.height = 300;
        EXPECT_TRUE(ResizePreview(pan, buttons));
        EXPECT_EQ(PreviewFitScale, 3.0f); // 1000 / 400 rounded up
        EXPECT_FALSE(ResizePreview(pan, buttons));
    });
}

TEST_F(PreviewGeometryTest, SmallImageIsCentredWithBothZoomButtonsOff) {
    WithDialog(120, 90, [this] {
        PreviewPan pan{200, 150};
        ZoomButtons buttons{true, true};
        OpenPreviewGeometry(pan, buttons);
        EXPECT_EQ(PreviewFitScale, 1.0f);
        EXPECT_FALSE(buttons.up);
        EXPECT_FALSE(buttons.down);
        EXPECT_EQ(Sides(LastRequest().outRect), Sides(0, 0, 90, 120));
        // A plain drag changes nothing once released.
        pan.dragMovedX = 25, pan.dragMovedY = -15;
        ReleasePan(pan);
        ApplyPan(pan);
        EXPECT_EQ(Sides(LastRequest().outRect), Sides(0, 0, 90, 120));
        // The picture stands in the middle of the control.
        AcquirePreviewSource();
        const FilterRecord& r = host_->Record();
        const PreviewSource source{r.outData, r.outRowBytes, r.planes, 120, 90, false, false};
        const PreviewPicture picture = BuildPreviewPicture(source, nullptr, pan.width, pan.height);
        EXPECT_EQ(picture.drawX, 40);
        EXPECT_EQ(picture.drawY, 30);
        EXPECT_EQ(picture.width, 120);
    });
}

TEST_F(PreviewGeometryTest, CtrlDragMovesTheTabsLayerByTheScale) {
    effectstest::TextureFolder folder{"drag"};
    folder.Texture("Wash.qzt", 400, 400, 120);
    AlertCapture alerts;
    // 800 by 600 in 200 by 150: fit is 4.
    WithDialog(800, 600, [] {
        PreviewPan pan{200, 150};
        ZoomButtons buttons;
        OpenPreviewGeometry(pan, buttons);
        ZoomToFit(pan, buttons);
        ASSERT_EQ(PreviewScale, 4.0);
        AcquirePreviewSource();
        FilterParameters& p = *gParams;
        std::strcpy(p.WashFileName1, "Wash.qzt");
        for (char* name : {p.WashFileName2, p.SurfaceFileName1, p.SurfaceFileName2, p.BackgroundFileName})
            std::strcpy(name, "No_Texture.qzt");
        p.WashScale1 = 100; // room to slide both ways
        p.WashOffsetX1 = p.WashOffsetY1 = 0;
        CreateEngine();

        // Nothing on the Basic tab, nor in the Original view.
        ActiveTab = TabBasic;
        EXPECT_FALSE(MoveActiveLayer(5, 5));
        ActiveTab = TabWash;
        ViewWash = ViewCodeOriginal;
        EXPECT_FALSE(MoveActiveLayer(5, 5));
        EXPECT_EQ(p.WashOffsetX1, 0);

        ViewWash = ViewCodeWashOne;
        WashLayers[0].GeometryDirty = 0;
        EXPECT_TRUE(MoveActiveLayer(5, 5));
        EXPECT_TRUE(MoveActiveLayer(3, -2));
        EXPECT_EQ(p.WashOffsetX1, 32); // 4 source pixels a preview pixel
        EXPECT_EQ(p.WashOffsetY1, 12);
        EXPECT_EQ(WashLayers[0].OffsetX, 32);
        EXPECT_EQ(WashLayers[0].GeometryDirty, 1);
        // Clamped at the texture's top left.
        EXPECT_TRUE(MoveActiveLayer(-100, -100));
        EXPECT_EQ(p.WashOffsetX1, 0);
        EXPECT_EQ(p.WashOffsetY1, 0);

        // A Ctrl drag's distance still goes into the pan, and the dialog is not told.
        pan.ctrlDrag = true;
        pan.dragMovedX = -8;
        EXPECT_FALSE(ReleasePan(pan));
        EXPECT_EQ(pan.originX, 8);
        EXPECT_FALSE(pan.ctrlDrag);
    });
}
