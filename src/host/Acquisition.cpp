#include "host/Acquisition.h"

#include "host/ChannelAccess.h"
#include "host/HostSuite.h"
#include "state/Progress.h"
#include "host/Rectangles.h"
#include "host/Session.h"
#include "platform/PageMemory.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

size_t WorkImageBytes() { return size_t(ImageHeight) * size_t(WorkRowBytes); }

// The source pixel of work pixel (x, y) at the preview's scale, clamped to the raster.
int32_t SourceRow(int32_t y, int32_t rows) {
    return std::clamp(int32_t((PreviewOriginY + y) * PreviewScale), 0, rows - 1);
}
int32_t SourceColumn(int32_t x, int32_t columns) {
    return std::clamp(int32_t((PreviewOriginX + x) * PreviewScale), 0, columns - 1);
}

// CMYK goes through the host's colour services, a row at a time; without the suite the
// work image stays as allocated (zero).
void AcquireCmyk(int32_t planes) {
    ColorSpaceSuite colors(kPSColorSpaceSuite, kPSColorSpaceSuiteVersion1);
    if (!colors) return;
    const int32_t n = ImageWidth;
    std::vector<Color8> buffer(size_t(std::max(n, 1)));
    const auto* in = static_cast<const uint8_t*>(gFilterRecord->inData);
    for (int32_t y = 0; y < ImageHeight; ++y) {
        const uint8_t* row = in + ptrdiff_t(y) * gFilterRecord->inRowBytes;
        uint8_t* s = SourceImage + size_t(y) * WorkRowBytes;
        for (int32_t x = 0; x < n; ++x) {
            const uint8_t* p = row + size_t(x) * planes;
            std::memcpy(buffer[x], p, 4);
            s[size_t(x) * 4 + 3] = planes < 5 ? 255 : p[4];
        }
        ConvertColorRuns(colors, 2, 0, buffer.data(), n);
        for (int32_t x = 0; x < n; ++x) std::memcpy(s + size_t(x) * 4, &buffer[x][1], 3);
    }
}

// The dialog's CMYK preview samples the full-resolution layer instead of the proxy.
void AcquireCmykFromLayer(int32_t planes) {
    ColorSpaceSuite colors(kPSColorSpaceSuite, kPSColorSpaceSuiteVersion1);
    if (!colors) return;
    const int32_t n = ImageWidth;
    std::vector<Color8> buffer(size_t(std::max(n, 1)));
    Raster& layer = *LayerRaster;
    const int32_t rows = std::min(ImageHeight, layer.Height());
    const int32_t cols = std::min(ImageWidth, layer.Width());
    const uint8_t* origin = layer.ImageOrigin();
    if (!origin) return;
    const auto* in = static_cast<const uint8_t*>(gFilterRecord->inData);
    for (int32_t y = 0; y < rows; ++y) {
        const uint8_t* src = origin + size_t(SourceRow(y, layer.Height())) * layer.RowBytes();
        for (int32_t x = 0; x < cols; ++x) {
            const int32_t xs = SourceColumn(x, layer.Width());
            for (int k = 0; k < 4; ++k) buffer[x][k] = src[size_t(k) * layer.PlaneBytes() + xs];
        }
        ConvertColorRuns(colors, 2, 0, buffer.data(), n);
        uint8_t* s = SourceImage + size_t(y) * WorkRowBytes;
        const uint8_t* p = in + ptrdiff_t(y) * gFilterRecord->inRowBytes;
        for (int32_t x = 0; x < cols; ++x) {
            std::memcpy(s + size_t(x) * 4, &buffer[x][1], 3);
            s[size_t(x) * 4 + 3] = planes < 5 ? 255 : p[size_t(x) * planes + 4];
        }
    }
}

} // namespace

void CopyOriginalToOutput(bool toHost) {
    if (!LayerRaster) return;
    Raster& layer = *LayerRaster;
    const uint8_t* origin = layer.ImageOrigin();
    uint8_t* dest = toHost ? static_cast<uint8_t*>(gFilterRecord->outData) : SourceImage;
    if (!origin || !dest) return;
    const int32_t planes = gFilterRecord->planes;
    const int32_t pixelBytes = toHost ? planes : 4;
    const int32_t rowBytes = toHost ? gFilterRecord->outRowBytes : WorkRowBytes;
    const int32_t rows = std::min(ImageHeight, layer.Height());
    const int32_t cols = std::min(ImageWidth, layer.Width());
    const size_t planeBytes = layer.PlaneBytes();
    const bool alpha = planes >= 4 && layer.Planes >= 4;
    for (int32_t y = 0; y < rows; ++y) {
        const uint8_t* src = origin + size_t(SourceRow(y, layer.Height())) * layer.RowBytes();
        uint8_t* d = dest + ptrdiff_t(y) * rowBytes;
        for (int32_t x = 0; x < cols; ++x, d += pixelBytes) {
            const uint8_t* s = src + SourceColumn(x, layer.Width());
            d[0] = s[0], d[1] = s[planeBytes], d[2] = s[2 * planeBytes];
            if (alpha) d[3] = s[3 * planeBytes];
            else if (!toHost) d[3] = 255;
        }
    }
}

void AcquireSource() {
    ProgressPercent = 0;
    ReportProgress(0, 100);

    FreeWorkImages();
    const VRect out = GetOutRect();
    ImageWidth = RectWidth(out);
    ImageHeight = RectHeight(out);
    WorkPixelBytes = 4;
    WorkRowBytes = ImageWidth * 4;
    ModeIsCMYK = gFilterRecord->imageMode == plugInModeCMYKColor;
    Depth16 = gFilterRecord->depth == 16;
    const VRect filter = GetFilterRect();
    FilterWidth = RectWidth(filter);
    FilterHeight = RectHeight(filter);
    FilterRectRight = filter.right;
    FilterRectBottom = filter.bottom;

    SourceImage = static_cast<uint8_t*>(AllocatePages(WorkImageBytes()));
    WorkImage = static_cast<uint8_t*>(AllocatePages(WorkImageBytes()));

    const int32_t planes = gFilterRecord->planes;
    const bool fromLayer = DialogOpen && LayerRaster;
    if (ModeIsCMYK && SourceImage) {
        fromLayer ? AcquireCmykFromLayer(planes) : AcquireCmyk(planes);
    } else if (fromLayer) {
        CopyOriginalToOutput(false);
    } else if (SourceImage) {
        const auto* in = static_cast<const uint8_t*>(gFilterRecord->inData);
        const int32_t rowBytes = gFilterRecord->inRowBytes;
        for (int32_t y = 0; y < ImageHeight; ++y) {
            const uint8_t* p = in + size_t(y) * rowBytes;
            uint8_t* s = SourceImage + size_t(y) * WorkRowBytes;
            for (int32_t x = 0; x < ImageWidth; ++x, p += planes, s += 4) {
                s[0] = p[0];
                s[1] = p[1];
                s[2] = p[2];
                s[3] = planes >= 4 ? p[3] : 255;
            }
        }
    }

    ReportProgress(5, 100);
    HaveMask = gFilterRecord->haveMask != 0 && gFilterRecord->maskData;
    if (HaveMask) {
        HostMaskRowBytes = gFilterRecord->maskRowBytes;
        HostMaskData = static_cast<const uint8_t*>(gFilterRecord->maskData);
    }
    ReportProgress(10, 100);
    ProgressPercent = 10;
}
