// Surfaces and the background through the whole plug-in driven by hostsim, and the
// preview's single-surface views, with textures of known values.
#include "effects/EffectsFixture.h"
#include "effects/TextureFolder.h"
#include "ShellFixture.h"

#include "effects/Engine.h"
#include "state/ViewState.h"
#include "effects/Surface.h"
#include "platform/Alert.h"

using namespace shelltest;

namespace {

constexpr int32 kW = 24, kH = 16;

std::vector<uint8> Bumps(int32 w, int32 h, int seed) {
    std::vector<uint8> v(size_t(w) * h);
    for (size_t i = 0; i < v.size(); ++i) v[i] = uint8((i * 37 + size_t(seed) * 11 + (i / size_t(w)) * 53) % 256);
    return v;
}

// Only surface 1 is on, Colorize with the given texture.
hostsim::Descriptor SurfaceOnly(const char* texture) {
    hostsim::Descriptor d = AllEffectsOff();
    d.PutText(FourCC("SFN1"), texture);
    d.PutInteger(FourCC("STp1"), 0);
    d.PutInteger(FourCC("SDh1"), 80);
    return d;
}

class SurfaceHostTest : public ::testing::Test {
protected:
    effectstest::TextureFolder folder_{"surface"};
    AlertCapture alerts_;
};

} // namespace

TEST_F(SurfaceHostTest, ASoftSelectionBlendsTheSurfaceByTheMask) {
    folder_.Texture("Bumps.qzt", kW, kH, Bumps(kW, kH, 1));
    // A selection that is nowhere 0, so its bounds (the filter rectangle) are the image.
    auto selected = [](uint8 level) {
        hostsim::Document doc = OpaqueDocument(kW, kH);
        doc.selection.assign(size_t(kW) * kH, 0);
        for (int32 y = 0; y < kH; ++y)
            for (int32 x = 0; x < kW; ++x)
                doc.selection[size_t(y) * kW + x] = level ? level : uint8(1 + x * 254 / (kW - 1));
        return doc;
    };
    auto full = MakeHost(selected(255));
    const std::vector<uint8> source = full->Doc().TargetInterleaved();
    ASSERT_EQ(full->PlayAction(SurfaceOnly("Bumps.qzt"), plugInDialogDontDisplay), noErr);
    const std::vector<uint8> surfaced = full->Doc().TargetInterleaved();
    ASSERT_NE(surfaced, source);

    auto soft = MakeHost(selected(0));
    ASSERT_EQ(soft->PlayAction(SurfaceOnly("Bumps.qzt"), plugInDialogDontDisplay), noErr);
    const std::vector<uint8> blended = soft->Doc().TargetInterleaved();
    for (int32 y = 0; y < kH; ++y)
        for (int32 x = 0; x < kW; ++x) {
            const uint32 level = uint32(1 + x * 254 / (kW - 1));
            const float m = float(level) / 255.0f;
            for (int c = 0; c < 3; ++c) {
                const size_t i = (size_t(y) * kW + x) * 4 + c;
                // Ours by the mask, then the host's own blend through the selection.
                const uint32 ours = uint8(float(source[i]) * (1.0f - m) + float(surfaced[i]) * m);
                ASSERT_EQ(blended[i], (ours * level + source[i] * (255 - level) + 127) / 255)
                    << x << "," << y << " channel " << c;
            }
        }
    ExpectNoMisuse(*soft);
}

TEST_F(SurfaceHostTest, WashAndBackgroundWithEntireMakeATransparentDocumentOpaque) {
    folder_.Texture("Back.qzt", kW, kH, Bumps(kW, kH, 2));
    auto host = MakeHost(RgbDocument(kW, kH, 4)); // alpha from the test card, 0 in places
    hostsim::Descriptor d = AllEffectsOff();
    d.PutText(FourCC("WFN1"), "Missing_Here.qzt"); // white, inverted: erosion everywhere
    d.PutBoolean(FourCC("WIv1"), true);
    d.PutText(FourCC("BkFN"), "Back.qzt");
    d.PutBoolean(FourCC("BkEn"), true);
    ASSERT_EQ(host->PlayAction(d, plugInDialogDontDisplay), noErr);
    const std::vector<uint8> out = host->Doc().TargetInterleaved();
    for (size_t i = 3; i < out.size(); i += 4) ASSERT_EQ(out[i], 255) << i / 4;
    // Without Entire the holes of the document stay holes.
    d.PutBoolean(FourCC("BkEn"), false);
    auto plain = MakeHost(RgbDocument(kW, kH, 4));
    const std::vector<uint8> before = plain->Doc().TargetInterleaved();
    ASSERT_EQ(plain->PlayAction(d, plugInDialogDontDisplay), noErr);
    const std::vector<uint8> after = plain->Doc().TargetInterleaved();
    for (size_t i = 3; i < after.size(); i += 4) ASSERT_EQ(after[i], before[i]) << i / 4;
}

namespace {

// The preview's engine on a work area of the filter's size (scale 1), with every
// effect's texture in the folder.
class PreviewViewsTest : public effectstest::ParamsEngineTest {
protected:
    void SetUp() override {
        ParamsEngineTest::SetUp();
        folder_.Texture("Wash.qzt", kW, kH, 0);
        folder_.Texture("One.qzt", kW, kH, Bumps(kW, kH, 3));
        folder_.Texture("Two.qzt", kW, kH, Bumps(kW, kH, 4));
        folder_.Texture("Back.qzt", kW, kH, 90);
        Work(kW, kH);
        source_ = TestCard(kW, kH, 4);
        for (size_t i = 3; i < source_.size(); i += 4) source_[i] = 255;
        SourceImage = source_.data();
        DialogOpen = true;
        ActiveTab = TabSurface;
        std::strcpy(params_.WashFileName1, "Wash.qzt");
        std::strcpy(params_.SurfaceFileName1, "One.qzt");
        std::strcpy(params_.SurfaceFileName2, "Two.qzt");
        std::strcpy(params_.BackgroundFileName, "Back.qzt");
        params_.SecondSurfaceExists = 1;
        params_.SurfaceType1 = 0;
        params_.SurfaceType2 = 4;
    }
    void TearDown() override {
        DestroyEngine();
        DialogOpen = false;
        ActiveTab = TabBasic;
        ViewSurface = 0;
        SourceImage = nullptr;
        ParamsEngineTest::TearDown();
    }
    std::vector<uint8_t> Render(int32_t view) {
        ViewSurface = view;
        CreateEngine();
        RenderLayers(view);
        std::vector<uint8_t> out = work_;
        DestroyEngine();
        return out;
    }
    effectstest::TextureFolder folder_{"views"};
    std::vector<uint8_t> source_;
    AlertCapture alerts_;
};

} // namespace

TEST_F(PreviewViewsTest, SurfaceViewsRenderTheirSurfaceAlone) {
    const std::vector<uint8_t> one = Render(ViewCodeSurfaceOne);
    const std::vector<uint8_t> two = Render(ViewCodeSurfaceTwo);
    EXPECT_NE(one, two);
    // The same look with no wash and a single surface, composed in full.
    std::strcpy(params_.WashFileName1, "No_Texture.qzt");
    params_.SecondSurfaceExists = 0;
    EXPECT_EQ(Render(ViewCodeComposite), one) << "surface one, no wash";
    // Surface two alone has its own texture, type and depth; the light's depth is the
    // larger of the two, so the single-surface look takes both depths equal.
    EXPECT_EQ(params_.SurfaceDepth1, params_.SurfaceDepth2);
    std::strcpy(params_.SurfaceFileName1, "Two.qzt");
    params_.SurfaceType1 = 4;
    EXPECT_EQ(Render(ViewCodeComposite), two) << "surface two, no wash";
}

TEST_F(PreviewViewsTest, RendersAgainShadeOnlyWhatIsMarked) {
    params_.SecondSurfaceExists = 0;
    CreateEngine();
    RenderLayers(ViewCodeComposite);
    const std::vector<uint8_t> first = work_;
    // Nothing marked: the surface stands and the picture comes out the same.
    std::fill(work_.begin(), work_.end(), uint8_t(0));
    RenderLayers(ViewCodeComposite);
    EXPECT_EQ(work_, first);
    // A colour change the page has not marked yet is not seen; marked, it is.
    params_.SurfaceMidtoneColor = 0x00FF0000;
    RenderLayers(ViewCodeComposite);
    EXPECT_EQ(work_, first);
    SurfaceShadeDirty = 1;
    RenderLayers(ViewCodeComposite);
    EXPECT_NE(work_, first);
    // A wash edge rebuilt is followed by the surface pass, which samples it.
    // (SurfaceImage is wiped first: only a pass that runs again brings the picture back.)
    const std::vector<uint8_t> recoloured = work_;
    WashLayers[0].EdgeDirty = 1;
    std::fill(SurfaceImage, SurfaceImage + work_.size(), uint8_t(0));
    RenderLayers(ViewCodeComposite);
    EXPECT_EQ(work_, recoloured);
    DestroyEngine();
}
