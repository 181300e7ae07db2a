// The current image at thumbnail size, made once as the dialog opens: what a wash or a
// surface tile shows through where its effect takes the picture away.
#include "pickers/Thumbnails.h"

#include "raster/Raster.h"

#include <algorithm>

void BuildDocumentThumb(const Raster& source) {
    DocumentThumb.clear();
    const int32_t width = source.Width(), height = source.Height();
    const uint8_t* origin = source.ImageOriginIfAny();
    // Only 8-bit samples are read; a picture without them leaves no underlay.
    if (!origin || width <= 0 || height <= 0 || source.Planes == 0 || source.Desc.depth != 8) return;
    const size_t rowBytes = size_t(source.RowBytes()), planeBytes = source.PlaneBytes();
    const int32_t planes = source.Planes;
    const int32_t x0 = std::max(0, (width - ThumbWidth * 4) / 2);
    const int32_t y0 = std::max(0, (height - ThumbHeight * 4) / 2);
    DocumentThumb.resize(size_t(ThumbWidth) * ThumbHeight * 3);
    uint8_t* to = DocumentThumb.data();
    for (int32_t j = 0; j < ThumbHeight; ++j) {
        const int32_t row = std::min(j * 4 + y0, height - 1);
        for (int32_t i = 0; i < ThumbWidth; ++i, to += 3) {
            const int32_t column = std::min(i * 4 + x0, width - 1);
            const uint8_t* at = origin + size_t(row) * rowBytes + size_t(column);
            uint8_t value[3];
            for (int32_t c = 0; c < 3; ++c) value[c] = at[planeBytes * size_t(std::min(c, planes - 1))];
            if (planes < 4) {
                to[0] = value[0];
                to[1] = value[1];
                to[2] = value[2];
                continue;
            }
            // Transparency shows as a checkerboard of 8-pixel squares, 204 first.
            const float check = ((i / 8 + j / 8) & 1) ? 255.0f : 204.0f;
            const float a = float(at[planeBytes * 3]) / 255.0f;
            for (int32_t c = 0; c < 3; ++c) to[c] = uint8_t(int32_t(float(value[c]) * a + check * (1.0f - a)));
        }
    }
}
