// The dialog's picture taken from the full-resolution layer at the preview's scale.
#include "host/Acquisition.h"
#include "host/ChannelAccess.h"
#include "host/Session.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// A layer raster whose every sample tells its plane, row and column.
Raster* PatternLayer(int32_t width, int32_t height) {
    Raster* r = NewRaster(3, RasterRect{0, 0, height, width}, 4, 8, 0, 1);
    uint8_t* o = r->ImageOrigin();
    for (int p = 0; p < 4; ++p)
        for (int32_t y = 0; y < height; ++y)
            for (int32_t x = 0; x < width; ++x)
                o[size_t(p) * r->PlaneBytes() + size_t(y) * r->RowBytes() + x] = uint8_t(p * 60 + y * 7 + x);
    return r;
}

struct PreviewSetting {
    std::vector<uint8_t> source;
    FilterRecord record{};
    PreviewSetting(int32_t width, int32_t height, double scale) {
        record.planes = 4;
        gFilterRecord = &record;
        ImageWidth = width, ImageHeight = height, WorkRowBytes = width * 4;
        source.assign(size_t(height) * WorkRowBytes, 0xEE);
        SourceImage = source.data();
        PreviewScale = scale;
        PreviewOriginX = PreviewOriginY = 0;
    }
    ~PreviewSetting() {
        SourceImage = nullptr;
        gFilterRecord = nullptr;
        FreeRaster(LayerRaster);
        PreviewScale = 1.0;
    }
};

} // namespace

TEST(CopyOriginal, ScaleOneReproducesTheLayerAndWiderWindowsKeepTheirColumns) {
    PreviewSetting s(12, 4, 1.0); // three columns wider than the layer
    LayerRaster = PatternLayer(9, 4);
    CopyOriginalToOutput(false);
    for (int32_t y = 0; y < 4; ++y) {
        for (int32_t x = 0; x < 9; ++x)
            for (int p = 0; p < 4; ++p)
                EXPECT_EQ(s.source[size_t(y) * 48 + x * 4 + p], uint8_t(p * 60 + y * 7 + x)) << y << "," << x;
        for (int32_t x = 9; x < 12; ++x) EXPECT_EQ(s.source[size_t(y) * 48 + x * 4], 0xEE) << "column " << x;
    }
}

TEST(CopyOriginal, ScaledPreviewSamplesEveryOtherPixel) {
    PreviewSetting s(4, 2, 2.0);
    PreviewOriginX = 1; // work pixels: the first column shown is layer column 2
    LayerRaster = PatternLayer(10, 4);
    CopyOriginalToOutput(false);
    EXPECT_EQ(s.source[0], uint8_t(0 * 7 + 2));
    EXPECT_EQ(s.source[4 * 3], uint8_t(0 * 7 + 8)) << "work column 3 is layer column (1 + 3) * 2";
    EXPECT_EQ(s.source[16 + 1], uint8_t(60 + 2 * 7 + 2)) << "row 1 is layer row 2, plane 1";
}
