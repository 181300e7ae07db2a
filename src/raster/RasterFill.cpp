// FillRaster: one colour in every byte of each plane, borders included.
#include "raster/Raster.h"

#include <algorithm>
#include <cstring>

bool DefaultRasterColorConverter(uint16_t mode, const uint16_t rgb[3], uint16_t out[4]) {
    out[0] = rgb[0];
    out[1] = rgb[1];
    out[2] = rgb[2];
    out[3] = 0;
    if (mode == 1) out[0] = uint16_t((299u * rgb[0] + 587u * rgb[1] + 114u * rgb[2] + 500u) / 1000u);
    return true;
}

RasterColorConverter RasterConvertColor = DefaultRasterColorConverter;

bool Raster::FillRaster(const uint16_t rgb[3]) {
    uint8_t* base = Pixels();
    if (!base) return false;
    uint16_t components[4] = {rgb[0], rgb[1], rgb[2], 0};
    // Multichannel and duotone take no conversion: the fill uses the RGB components.
    if (Mode != 7 && Mode != 8 && RasterConvertColor) RasterConvertColor(Mode, rgb, components);
    const size_t planeBytes = PlaneBytes();
    for (uint32_t p = 0; p < Planes; ++p) {
        const size_t start = size_t(p) * planeBytes;
        if (start >= Storage.Bytes) break;
        const uint8_t value = p < 4 ? uint8_t(components[p]) : 0;
        std::memset(base + start, value, std::min(planeBytes, Storage.Bytes - start));
    }
    return true;
}

bool Raster::FillBlack() {
    const uint16_t black[3] = {0, 0, 0};
    return FillRaster(black);
}
