// SmoothRaster3x3: the relief smoothing of a surface texture, in place on plane 0.
#include "raster/Raster.h"

#include "state/Progress.h"

void SmoothRaster3x3(Raster& raster) {
    const int32_t height = raster.Height();
    const int32_t width = raster.Width();
    if (height < 3) return;
    uint8_t* origin = raster.ImageOrigin();
    if (!origin) return;
    const int64_t stride = raster.RowBytes();
    for (int32_t y = 1; y < height - 1; ++y) {
        uint8_t* row = origin + y * stride;
        const uint8_t* up = row - stride;
        const uint8_t* down = row + stride;
        for (int32_t x = 1; x < width - 1; ++x) {
            // Integer neighbour sums are exact in f32; the weighting is f32 throughout.
            const int corners = up[x - 1] + up[x + 1] + down[x - 1] + down[x + 1];
            const int edges = up[x] + row[x - 1] + row[x + 1] + down[x];
            const float v = 0.05f * float(corners) + 0.1f * float(edges) + 0.4f * float(row[x]);
            const int32_t value = int32_t(v);
            row[x] = uint8_t(value > 255 ? 255 : value);
        }
        ReportStageProgress(y, height);
    }
}
