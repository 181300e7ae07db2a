#include "dialog/PreviewPicture.h"

#include <algorithm>
#include <new>

namespace {

uint8_t From16(uint16_t v) { return (v & 0xFF80) > 32640 ? 255 : uint8_t(v >> 7); }

uint8_t Over(uint8_t colour, float a, uint8_t under) { return uint8_t(float(colour) * a + float(under) * (1.0f - a)); }

} // namespace

PreviewPicture BuildPreviewPicture(const PreviewSource& source, const UnderImage* under, int32_t controlWidth,
                                   int32_t controlHeight) {
    PreviewPicture picture;
    if (!source.data) return picture;
    const int32_t width = std::min(controlWidth, source.columns) / 4 * 4;
    const int32_t height = std::min(controlHeight, source.rows);
    picture.drawX = std::max(0, (controlWidth - source.columns) / 2);
    picture.drawY = std::max(0, (controlHeight - source.rows) / 2);
    if (width <= 0 || height <= 0) return picture;
    try {
        picture.bgr.assign(size_t(width) * size_t(height) * 3, 0);
    } catch (const std::bad_alloc&) {
        return picture;
    }
    picture.width = width;
    picture.height = height;

    const int32_t planes = source.planes;
    const bool useUnder = under && under->Exists() && !(source.cmyk && planes < 5);
    const auto* base = static_cast<const uint8_t*>(source.data);
    for (int32_t y = 0; y < height; ++y) {
        uint8_t* d = picture.bgr.data() + size_t(height - 1 - y) * size_t(width) * 3;
        const uint8_t* row = base + ptrdiff_t(y) * source.rowBytes;
        for (int32_t x = 0; x < width; ++x, d += 3) {
            if (source.depth16) {
                const auto* p = reinterpret_cast<const uint16_t*>(row) + size_t(x) * planes;
                d[0] = From16(p[2]), d[1] = From16(p[1]), d[2] = From16(p[0]);
                continue;
            }
            if (planes < 3) continue;
            const uint8_t* p = row + size_t(x) * planes;
            if (planes == 3 || p[3] == 255) {
                d[0] = p[2], d[1] = p[1], d[2] = p[0];
                continue;
            }
            const float a = float(p[3]) / 255.0f;
            if (useUnder && x < under->width && y < under->height) {
                const uint8_t* u = under->pixels.data() + (size_t(y) * under->width + x) * 3;
                d[0] = Over(p[2], a, u[2]), d[1] = Over(p[1], a, u[1]), d[2] = Over(p[0], a, u[0]);
            } else {
                d[0] = uint8_t(float(p[2]) * a), d[1] = uint8_t(float(p[1]) * a), d[2] = uint8_t(float(p[0]) * a);
            }
        }
    }
    return picture;
}

uint8_t CheckerValue(int32_t x, int32_t y) { return ((x / 7) % 2 != (y / 7) % 2) ? 255 : 204; }

UnderImage BuildUnderImage(Raster& below, int32_t width, int32_t height, double originX, double originY, double scale) {
    UnderImage under;
    const uint8_t* origin = below.ImageOrigin();
    if (!origin || width <= 0 || height <= 0 || below.Width() <= 0 || below.Height() <= 0) return under;
    under.width = width;
    under.height = height;
    under.pixels.assign(size_t(width) * size_t(height) * 3, 0);
    const size_t plane = below.PlaneBytes();
    const int32_t planes = below.Planes;
    for (int32_t y = 0; y < height; ++y) {
        const int32_t sy = std::clamp(int32_t((originY + y) * scale), 0, below.Height() - 1);
        const uint8_t* src = origin + size_t(sy) * below.RowBytes();
        uint8_t* d = under.pixels.data() + size_t(y) * width * 3;
        for (int32_t x = 0; x < width; ++x, d += 3) {
            const uint8_t* s = src + std::clamp(int32_t((originX + x) * scale), 0, below.Width() - 1);
            for (int k = 0; k < 3; ++k) d[k] = s[size_t(planes >= 3 ? k : 0) * plane];
            if (planes < 4) continue;
            const float a = float(s[3 * plane]) / 255.0f;
            const uint8_t cell = CheckerValue(x, y);
            for (int k = 0; k < 3; ++k) d[k] = Over(d[k], a, cell);
        }
    }
    return under;
}
