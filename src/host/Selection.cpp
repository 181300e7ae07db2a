#include "host/Selection.h"

#include "host/Acquisition.h"
#include "host/Rectangles.h"
#include "host/Session.h"

#include <cstdlib>

void BuildSelectionMask() {
    const VRect area = GetInRect();
    const int32_t w = RectWidth(area), h = RectHeight(area);
    // Only the last pair is ever read, so an earlier one is not kept alive.
    FreeSelectionMask();
    SelectionMask = static_cast<uint8_t*>(std::malloc(size_t(w) * h));
    SourceRGBA = static_cast<uint8_t*>(std::malloc(size_t(w) * h * 4));
    SelectionRowLength = SelectionWidth = w;
    SelectionHeight = h;
    if (!SelectionMask || !SourceRGBA) {
        FreeSelectionMask();
        return;
    }

    const int32_t planes = gFilterRecord->planes;
    const auto* in = static_cast<const uint8_t*>(gFilterRecord->inData);
    for (int32_t y = 0; y < h; ++y) {
        const uint8_t* p = in + ptrdiff_t(y) * gFilterRecord->inRowBytes;
        const uint8_t* m = HaveMask ? HostMaskData + ptrdiff_t(y) * HostMaskRowBytes : nullptr;
        uint8_t* mask = SelectionMask + size_t(y) * w;
        uint8_t* rgba = SourceRGBA + size_t(y) * w * 4;
        for (int32_t x = 0; x < w; ++x, p += planes, rgba += 4) {
            int32_t a = planes >= 4 ? p[3] : 255;
            if (m) a = m[x] * a / 255;
            rgba[0] = p[0], rgba[1] = p[1], rgba[2] = p[2], rgba[3] = uint8_t(a);
            mask[x] = uint8_t(a);
        }
    }
}

void BuildPreviewSelection() {
    if (!gFilterRecord->inData) return;
    HaveMask = gFilterRecord->haveMask != 0 && gFilterRecord->maskData;
    HostMaskRowBytes = gFilterRecord->maskRowBytes;
    HostMaskData = static_cast<const uint8_t*>(gFilterRecord->maskData);
    BuildSelectionMask();
}
