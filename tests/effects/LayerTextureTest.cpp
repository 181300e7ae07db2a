// Texture loading: failures and their messages, the scale factor, placement and
// orientation, and the preview and full-size forms of View.
#include "raster/TextureTestFiles.h"
#include "common/TempPaths.h"

#include "effects/Engine.h"
#include "state/WorkImages.h"
#include "state/DialogState.h"
#include "state/PathTable.h"
#include "platform/Alert.h"
#include "platform/ModulePath.h"
#include "effects/LayerTexture.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace rastertest;

namespace {

class TextureLoading : public ::testing::Test {
protected:
    void SetUp() override {
        saved_ = PathTable.Data;
        PathTable.Data = ProcessTempDir().string();
        ReportTextureFailure = true;
        // A host run earlier in the same program leaves its rectangle's edges behind.
        FilterRectRight = FilterRectBottom = kFilterEdgeUnset;
    }
    void TearDown() override {
        DestroyLayer(a_);
        DestroyLayer(b_);
        DialogOpen = false;
        PreviewScale = 1.0;
        PreviewOriginX = PreviewOriginY = 0.0;
        FilterRectRight = kFilterEdgeUnset;
        ReportTextureFailure = true;
        for (const std::string& p : written_) std::filesystem::remove(p);
        PathTable.Data = saved_;
    }
    // A grey texture in the data folder whose sample (y, x) is (3x + 7y) & 255.
    std::string Texture(const char* name, uint32_t w, uint32_t h, bool cut = false) {
        std::vector<uint8_t> grey(size_t(w) * h);
        for (size_t i = 0; i < grey.size(); ++i) grey[i] = uint8_t(Original(int(i / w), int(i % w)));
        std::vector<uint8_t> stream = Compress(grey);
        if (cut) stream.resize(stream.size() / 2);
        written_.push_back(TexturePath(name));
        WriteTexture(written_.back(), false, w, h, 1, stream);
        return written_.back();
    }
    static int Original(int y, int x) { return (x * 3 + y * 7) & 255; }
    static int At(const Raster* r, int y, int x) { return r->ImageOriginIfAny()[y * r->RowBytes() + x]; }
    static bool White(Raster* r) {
        const std::vector<uint8_t> b = Bytes(*r);
        return std::all_of(b.begin(), b.end(), [](uint8_t v) { return v == 255; });
    }

    EffectLayer a_, b_;
    std::string saved_;
    std::vector<std::string> written_;
};

} // namespace

TEST_F(TextureLoading, FailuresGiveWhiteAndTellOnlyWhenAsked) {
    FilterWidth = 500;
    FilterHeight = 300;
    const std::string missing = TexturePath("qz_no_such_texture.qzt");
    EXPECT_EQ(missing, PathTable.Data + kPathSeparator + "qz_no_such_texture.qzt");
    AlertCapture capture;
    ASSERT_TRUE(LoadLayerTexture(a_, missing.c_str()));
    ASSERT_EQ(capture.Alerts().size(), 1u);
    EXPECT_EQ(capture.Alerts()[0].text, "The file " + missing + " is not presented or wrong");
    EXPECT_EQ(capture.Alerts()[0].title, "Plugins Alert");
    EXPECT_EQ(capture.Alerts()[0].icon, AlertIcon::Information);
    // 1000 by 1000, resampled like any texture: by max(300, 500) / 1000.
    EXPECT_EQ(a_.TextureWidth, 1000);
    EXPECT_EQ(a_.Source->Width(), 500);
    EXPECT_EQ(a_.Source->Height(), 500);
    EXPECT_TRUE(White(a_.Source));
    EXPECT_EQ(a_.View, a_.Source) << "full size: View is Source";

    // A corrupt 30 by 20 file: white 20 wide and 30 high (exchanged), scaled by 1.
    FilterWidth = 30;
    FilterHeight = 20;
    const std::string corrupt = Texture("qz_corrupt.qzt", 30, 20, true);
    ASSERT_TRUE(LoadLayerTexture(a_, corrupt.c_str()));
    ASSERT_EQ(capture.Alerts().size(), 2u);
    EXPECT_EQ(capture.Alerts()[1].text, "The file " + corrupt + " cannot to be rasterized");
    EXPECT_EQ(a_.Source->Width(), 20);
    EXPECT_EQ(a_.Source->Height(), 30);
    EXPECT_TRUE(White(a_.Source));

    // A layer that is switched off stays silent.
    ReportTextureFailure = false;
    ASSERT_TRUE(LoadLayerTexture(b_, missing.c_str()));
    EXPECT_EQ(capture.Alerts().size(), 2u);
    EXPECT_FALSE(LoadLayerTexture(b_, nullptr));
}

TEST_F(TextureLoading, ScaleFactorCoversAndReloadsOnlyWhenItMoves) {
    const std::string small = Texture("qz_small.qzt", 200, 100);
    FilterWidth = 600;
    FilterHeight = 400;
    AlertCapture capture;
    ASSERT_TRUE(LoadLayerTexture(a_, small.c_str()));
    EXPECT_DOUBLE_EQ(a_.ScaleFactor, 4.0) << "the height is the tighter direction";
    EXPECT_EQ(a_.Source->Width(), 800);
    EXPECT_EQ(a_.Source->Height(), 400);
    b_.Scale = 200;
    ASSERT_TRUE(LoadLayerTexture(b_, small.c_str()));
    EXPECT_DOUBLE_EQ(b_.ScaleFactor, 7.2);
    EXPECT_EQ(b_.Source->Width(), 1440);
    FilterWidth = 100; // now larger than the filter rectangle: reduced by max(0.4, 0.5)
    FilterHeight = 40;
    ASSERT_TRUE(LoadLayerTexture(a_, small.c_str()));
    EXPECT_EQ(a_.Source->Width(), 100);
    EXPECT_EQ(a_.Source->Height(), 50);

    // At a factor of 1, Scale 1e-30 and 2e-30 change nothing; 100 reloads (and the file
    // is gone by then, so the reload says so).
    FilterWidth = 200;
    FilterHeight = 100;
    ASSERT_TRUE(LoadLayerTexture(a_, small.c_str()));
    const Raster* loaded = a_.Source;
    std::filesystem::remove(small);
    SetLayerScale(a_, 1e-30);
    SetLayerScale(a_, 2e-30);
    EXPECT_EQ(a_.Scale, 2e-30);
    EXPECT_EQ(a_.Source, loaded);
    EXPECT_TRUE(capture.Alerts().empty());
    SetLayerScale(a_, 100);
    EXPECT_EQ(capture.Alerts().size(), 1u) << "reloaded";
}

TEST_F(TextureLoading, PlacementAndOrientation) {
    FilterWidth = FilterHeight = 20;
    const std::string path = Texture("qz_place.qzt", 20, 20);
    a_.Scale = b_.Scale = 200; // 36 by 36: room of 16 each way
    a_.OffsetX = 5;
    a_.OffsetY = 3;
    ASSERT_TRUE(LoadLayerTexture(a_, path.c_str()));
    ASSERT_TRUE(LoadLayerTexture(b_, path.c_str()));
    // At full size the offsets shorten the raster: View starts at the offset.
    ASSERT_EQ(a_.View->Width(), 31);
    ASSERT_EQ(a_.View->Height(), 33);
    for (int y = 0; y < 33; ++y)
        for (int x = 0; x < 31; ++x) ASSERT_EQ(At(a_.View, y, x), At(b_.Source, y + 3, x + 5));
    MoveLayer(b_, -100, 100);
    EXPECT_EQ(b_.OffsetX, 0);
    EXPECT_EQ(b_.OffsetY, 16);
    FilterRectRight = 25; // the far limit is the rectangle's right edge, not its width
    MoveLayer(b_, 100, 0);
    EXPECT_EQ(b_.OffsetX, 11);

    // Angles in quarter turns rounded up: 45 is one, 91 two.
    FilterWidth = FilterHeight = 6;
    const std::string square = Texture("qz_square.qzt", 6, 6);
    DestroyLayer(a_);
    DestroyLayer(b_);
    a_.Angle = 45;
    b_.Angle = 91;
    ASSERT_TRUE(LoadLayerTexture(a_, square.c_str()));
    ASSERT_TRUE(LoadLayerTexture(b_, square.c_str()));
    for (int r = 0; r < 6; ++r)
        for (int c = 0; c < 6; ++c) {
            ASSERT_EQ(At(a_.Source, r, c), Original(5 - c, r));
            ASSERT_EQ(At(b_.Source, r, c), Original(5 - r, 5 - c));
        }
    // The layer operations act on Source at once; counter-clockwise from 0 is 270.
    a_.Angle = 0;
    RotateLayerCcw(a_);
    EXPECT_EQ(a_.Angle, 270);
    EXPECT_EQ(At(a_.Source, 2, 4), Original(2, 4)) << "turned back";
    InvertLayer(a_);
    FlipLayerHor(a_);
    FlipLayerVer(a_);
    EXPECT_EQ(At(a_.Source, 0, 0), 255 - Original(5, 5));
    EXPECT_EQ(a_.View, a_.Source);
    EXPECT_EQ(a_.GeometryDirty, 0) << "prepared again";
}

TEST_F(TextureLoading, PreviewScalesOnlyTheVisibleWindow) {
    FilterWidth = FilterHeight = 100;
    const std::string path = Texture("qz_preview.qzt", 100, 100);
    DialogOpen = true;
    PreviewScale = 2.0;
    ImageWidth = 20;
    ImageHeight = 15;
    PreviewOriginX = 10;
    PreviewOriginY = 5;
    SurfaceShadeDirty = 0;
    ASSERT_TRUE(LoadLayerTexture(a_, path.c_str()));
    // The window is 40 by 30 filter pixels from (20, 10), halved: 2 by 2 means inside.
    ASSERT_EQ(a_.View->Width(), 20);
    ASSERT_EQ(a_.View->Height(), 15);
    auto mean = [&](int y, int x) {
        return (Original(y, x) + Original(y, x + 1) + Original(y + 1, x) + Original(y + 1, x + 1)) / 4;
    };
    for (int j = 0; j < 14; ++j)
        for (int i = 0; i < 19; ++i) ASSERT_EQ(At(a_.View, j, i), mean(10 + 2 * j, 20 + 2 * i)) << j << "," << i;
    EXPECT_EQ(a_.ToneDirty, 1);
    EXPECT_EQ(SurfaceShadeDirty, 1);
}
