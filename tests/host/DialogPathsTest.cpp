// Paths the shell takes only while the dialog is open, driven without a window: the
// Original view and the CMYK picture the preview shows as RGB, and the CMYK preview's
// acquisition from the full-resolution layer.
#include "hostsim/ColorSpace.h"
#include "effects/EffectLayer.h"
#include "host/Acquisition.h"
#include "host/ChannelAccess.h"
#include "host/RunFilter.h"
#include "host/Session.h"
#include "state/DialogState.h"
#include "state/Parameters.h"
#include "state/Progress.h"
#include "state/ViewState.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <utility>
#include <vector>

namespace {

// A host that offers the colour space suite alone, answered by hostsim's conversions.
SPErr QZ_HOSTCALL AcquireSuite(const char* name, int32, const void** suite) {
    if (std::strcmp(name, kPSColorSpaceSuite) != 0) return kSPSuiteNotFoundError;
    *suite = hostsim::ColorSpaceSuite();
    return kSPNoError;
}
SPErr QZ_HOSTCALL ReleaseSuite(const char*, int32) { return kSPNoError; }
SPBasicSuite gBasic{AcquireSuite, ReleaseSuite, nullptr, nullptr, nullptr, nullptr, nullptr};

// The preview's request as the dialog leaves it: the whole proxy in and out, with the
// dialog open and the Basic tab showing `view`.
struct OpenDialogRun {
    FilterRecord record{};
    FilterParameters params{};
    std::vector<uint8> in, out;
    OpenDialogRun(int32 width, int32 height, int planes, int16 mode, int32 view) {
        in.resize(size_t(width) * height * planes);
        for (size_t i = 0; i < in.size(); ++i) in[i] = uint8(i * 37 + 11);
        out.assign(in.size(), 0xEE);
        record.planes = int16(planes);
        record.imageMode = mode;
        record.depth = 8;
        record.inData = in.data();
        record.outData = out.data();
        record.inRowBytes = record.outRowBytes = width * planes;
        record.filterRect = record.inRect = record.outRect = Rect{0, 0, int16(height), int16(width)};
        record.sSPBasic = &gBasic;
        gSelector = filterSelectorStart;
        gFilterRecord = &record;
        gParams = &params;
        InitParameters();
        DialogOpen = true;
        ActiveTab = TabBasic;
        ViewBasic = view;
    }
    ~OpenDialogRun() {
        FreeWorkImages();
        FreeRaster(LayerRaster);
        DialogOpen = false;
        ViewBasic = ViewCodeComposite;
        PreviewScale = 1.0;
        gParams = nullptr;
        gFilterRecord = nullptr;
        gSelector = filterSelectorAbout;
    }
};

// The RGB of a CMYK pixel, as the colour services give it.
std::array<uint8, 3> ToRgb(const uint8* cmyk) {
    Color8 c = {cmyk[0], cmyk[1], cmyk[2], cmyk[3]};
    hostsim::Convert8(2, 0, &c, 1);
    return {c[1], c[2], c[3]};
}

} // namespace

TEST(DialogPaths, OriginalViewShowsTheProxyAndCmykAsRgb) {
    {
        OpenDialogRun run(7, 3, 4, plugInModeRGBColor, ViewCodeOriginal);
        RunFilter();
        EXPECT_EQ(run.out, run.in) << "without a layer the proxy passes through";
    }
    for (int planes : {4, 5}) {
        OpenDialogRun run(7, 3, planes, plugInModeCMYKColor, ViewCodeOriginal);
        RunFilter();
        for (size_t i = 0; i < run.in.size(); i += size_t(planes)) {
            EXPECT_EQ(0, std::memcmp(&run.out[i], ToRgb(&run.in[i]).data(), 3)) << "pixel " << i / planes;
            EXPECT_EQ(run.out[i + 3], 0xEE) << "the fourth plane is left alone";
            if (planes == 5) {
                EXPECT_EQ(run.out[i + 4], run.in[i + 4]) << "transparency kept";
            }
        }
    }
}

TEST(DialogPaths, CmykPreviewTakesTheLayerAtThePreviewScale) {
    OpenDialogRun run(3, 2, 5, plugInModeCMYKColor, ViewCodeComposite);
    // A full-resolution layer twice the proxy's size; every sample tells its plane and place.
    Raster* layer = NewRaster(3, RasterRect{0, 0, 4, 6}, 4, 8, 0, 1);
    for (int p = 0; p < 4; ++p)
        for (int32_t y = 0; y < 4; ++y)
            for (int32_t x = 0; x < 6; ++x)
                layer->ImageOrigin()[size_t(p) * layer->PlaneBytes() + size_t(y) * layer->RowBytes() + x] =
                    uint8(p * 50 + y * 9 + x * 3 + 20);
    LayerRaster = layer;
    PreviewScale = 2.0;
    PreviewOriginX = PreviewOriginY = 0.0;
    AcquireSource();
    ASSERT_NE(SourceImage, nullptr);
    for (int32_t y = 0; y < 2; ++y)
        for (int32_t x = 0; x < 3; ++x) {
            uint8 cmyk[4];
            for (int p = 0; p < 4; ++p) cmyk[p] = uint8(p * 50 + (2 * y) * 9 + (2 * x) * 3 + 20);
            const uint8* s = SourceImage + size_t(y) * WorkRowBytes + size_t(x) * 4;
            EXPECT_EQ(0, std::memcmp(s, ToRgb(cmyk).data(), 3)) << x << "," << y;
            EXPECT_EQ(s[3], run.in[(size_t(y) * 3 + x) * 5 + 4]) << "alpha from the proxy's fifth plane";
        }
}

namespace {
std::vector<std::pair<int32_t, int32_t>> gBarCalls;
void RecordBar(int32_t done, int32_t total) { gBarCalls.emplace_back(done, total); }
} // namespace

// A drawer's thumbnails render in two passes on one bar: the first takes its lower half
// and leaves it standing, the second its upper half and then empties it.
TEST(DialogPaths, ThumbnailBatchSharesTheBar) {
    OpenDialogRun run(6, 4, 3, plugInModeRGBColor, ViewCodeComposite);
    for (char* name : {run.params.WashFileName1, run.params.SurfaceFileName1, run.params.BackgroundFileName})
        std::strcpy(name, "No_Texture.qzt");
    PreviewScale = 1.0;
    PreviewOriginX = PreviewOriginY = 0.0;
    AcquireSource();
    CreateEngine();
    DialogProgressBar = RecordBar;
    for (int32_t batch : {0, 1, 2}) {
        gBarCalls.clear();
        ThumbnailBatch = batch;
        RunFilter();
        ASSERT_FALSE(gBarCalls.empty());
        const std::pair<int32_t, int32_t> last = gBarCalls.back();
        EXPECT_EQ(last.second == 0, batch != 1) << batch;
        for (size_t i = 0; i + 1 < gBarCalls.size(); ++i) {
            const auto [done, total] = gBarCalls[i];
            EXPECT_EQ(total, batch ? 200 : 100) << batch;
            EXPECT_GE(done, batch == 2 ? 100 : 0) << batch;
            EXPECT_LE(done, batch == 1 ? 100 : total) << batch;
        }
    }
    ThumbnailBatch = 0;
    DialogProgressBar = nullptr;
    DestroyEngine();
}
