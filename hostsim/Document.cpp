#include "Document.h"

#include <algorithm>
#include <cstring>

namespace hostsim {
namespace {

uint32 ReadSample(const uint8* p, int bytes) {
    if (bytes == 1) return *p;
    uint16 v;
    std::memcpy(&v, p, 2);
    return v;
}

void WriteSample(uint8* p, int bytes, uint32 v) {
    if (bytes == 1) {
        *p = uint8(v);
        return;
    }
    const uint16 s = uint16(v);
    std::memcpy(p, &s, 2);
}

} // namespace

int ColourPlanesOf(int16 imageMode) {
    switch (imageMode) {
    case plugInModeRGBColor:
    case plugInModeRGB48:
    case plugInModeLabColor:
    case plugInModeLab48:
    case plugInModeHSLColor:
    case plugInModeHSBColor: return 3;
    case plugInModeCMYKColor:
    case plugInModeCMYK64: return 4;
    case plugInModeBitmap:
    case plugInModeGrayScale:
    case plugInModeIndexedColor:
    case plugInModeDuotone:
    case plugInModeGray16:
    case plugInModeDuotone16: return 1;
    default: return 0;
    }
}

std::string Document::Validate() const {
    if (width <= 0 || height <= 0) return "the document has no pixels";
    if (width > 2000000 || height > 2000000) return "the document is larger than 2000000 pixels a side";
    if (ColourPlanes() == 0) return "image mode " + std::to_string(imageMode) + " is not held by hostsim";
    if (depth != 8 && depth != 16) return "depth must be 8 or 16";
    const bool deep = imageMode >= plugInModeGray16 && imageMode <= plugInModeDuotone16;
    if (deep != (depth == 16))
        return "image mode " + std::to_string(imageMode) + " does not go with depth " + std::to_string(depth);
    if (layers.empty()) return "the document has no layer";
    if (targetLayer < 0 || size_t(targetLayer) >= layers.size()) return "the target layer does not exist";
    const size_t samples = PixelCount() * size_t(BytesPerSample());
    for (const Layer& layer : layers) {
        if (layer.pixels.size() != samples * size_t(ColourPlanes()))
            return "layer \"" + layer.name + "\" has the wrong number of colour samples";
        if (!layer.transparency.empty() && layer.transparency.size() != samples)
            return "layer \"" + layer.name + "\" has the wrong number of transparency samples";
        if (!layer.layerMask.empty() && layer.layerMask.size() != samples)
            return "layer \"" + layer.name + "\" has the wrong number of layer mask samples";
    }
    if (!selection.empty() && selection.size() != PixelCount()) return "the selection has the wrong size";
    if (filterRect) {
        const VRect& r = *filterRect;
        if (IsEmpty(r) || r.top < 0 || r.left < 0 || r.bottom > height || r.right > width)
            return "the filter rectangle is empty or leaves the image";
    }
    return "";
}

PlaneLayout Document::FullLayout(const Layer& layer) const {
    PlaneLayout layout;
    layout.colour = ColourPlanes();
    layout.transparency = !layer.transparency.empty();
    layout.layerMask = !layer.layerMask.empty();
    return layout;
}

PlaneRef Document::Plane(Layer& layer, const PlaneLayout& layout, int p) const {
    const size_t bps = size_t(BytesPerSample());
    PlaneRef ref;
    if (p >= 0 && p < layout.colour) {
        ref.base = layer.pixels.data() + size_t(p) * bps;
        ref.pixelStep = size_t(layout.colour) * bps;
    } else if (p == layout.TransparencyIndex()) {
        ref.base = layer.transparency.data();
        ref.pixelStep = bps;
    } else if (p == layout.LayerMaskIndex()) {
        ref.base = layer.layerMask.data();
        ref.pixelStep = bps;
    } else {
        return ref;
    }
    ref.rowStep = ref.pixelStep * size_t(width);
    return ref;
}

std::vector<uint8> Document::TargetInterleaved(bool withTransparency) const {
    const Layer& layer = Target();
    PlaneLayout layout;
    layout.colour = ColourPlanes();
    layout.transparency = withTransparency && !layer.transparency.empty();
    const int planes = layout.Total();
    const size_t bps = size_t(BytesPerSample());
    std::vector<uint8> out(PixelCount() * size_t(planes) * bps);
    for (int p = 0; p < planes; ++p) {
        const PlaneRef src = Plane(layer, layout, p);
        for (size_t i = 0; i < PixelCount(); ++i)
            std::memcpy(&out[(i * size_t(planes) + size_t(p)) * bps], src.base + i * src.pixelStep, bps);
    }
    return out;
}

VRect Document::SelectionBounds() const {
    VRect r = {height, width, 0, 0};
    if (selection.empty()) return {0, 0, height, width};
    for (int32 y = 0; y < height; ++y)
        for (int32 x = 0; x < width; ++x)
            if (selection[size_t(y) * size_t(width) + size_t(x)]) {
                r.top = std::min(r.top, y);
                r.left = std::min(r.left, x);
                r.bottom = std::max(r.bottom, y + 1);
                r.right = std::max(r.right, x + 1);
            }
    if (IsEmpty(r)) return {0, 0, 0, 0};
    return r;
}

bool Document::SelectionIsRectangle() const {
    if (selection.empty()) return true;
    const VRect r = SelectionBounds();
    for (int32 y = 0; y < height; ++y)
        for (int32 x = 0; x < width; ++x) {
            const bool inside = y >= r.top && y < r.bottom && x >= r.left && x < r.right;
            if (selection[size_t(y) * size_t(width) + size_t(x)] != (inside ? 255 : 0)) return false;
        }
    return true;
}

void Document::Merge(std::vector<uint8>& colour, std::vector<uint8>& transparency) const {
    const int bps = BytesPerSample();
    const int planes = ColourPlanes();
    const int64 full = depth == 16 ? 32768 : 255;
    const size_t n = PixelCount();
    colour.assign(n * size_t(planes) * size_t(bps), 0);
    transparency.assign(n * size_t(bps), 0);
    for (const Layer& layer : layers) {
        if (!layer.visible) continue;
        // An opaque layer hides all below it: its own colours, full coverage.
        if (layer.transparency.empty() && layer.layerMask.empty() && layer.pixels.size() == colour.size()) {
            colour = layer.pixels;
            for (size_t i = 0; i < n; ++i) WriteSample(&transparency[i * size_t(bps)], bps, uint32(full));
            continue;
        }
        for (size_t i = 0; i < n; ++i) {
            int64 a = layer.transparency.empty() ? full : ReadSample(&layer.transparency[i * size_t(bps)], bps);
            if (!layer.layerMask.empty()) a = a * ReadSample(&layer.layerMask[i * size_t(bps)], bps) / full;
            const int64 below = ReadSample(&transparency[i * size_t(bps)], bps);
            const int64 merged = a + below * (full - a) / full;
            for (int p = 0; p < planes; ++p) {
                const size_t at = (i * size_t(planes) + size_t(p)) * size_t(bps);
                const int64 c = ReadSample(&layer.pixels[at], bps);
                const int64 d = ReadSample(&colour[at], bps);
                const int64 v = merged == 0 ? 0 : (c * a * full + d * below * (full - a)) / (merged * full);
                WriteSample(&colour[at], bps, uint32(v));
            }
            WriteSample(&transparency[i * size_t(bps)], bps, uint32(merged));
        }
    }
}

Document MakeDocument(int32 width, int32 height, int16 imageMode, int32 depth, const std::vector<uint8>& interleaved,
                      int planes) {
    Document doc;
    doc.width = width;
    doc.height = height;
    doc.imageMode = imageMode;
    doc.depth = depth;
    const int colour = ColourPlanesOf(imageMode);
    const size_t bps = depth == 16 ? 2 : 1;
    const size_t n = size_t(std::max(width, 0)) * size_t(std::max(height, 0));
    Layer layer;
    const bool alpha = planes == colour + 1;
    layer.name = alpha ? "Layer 1" : "Background";
    if (colour == 0 || (planes != colour && !alpha) || interleaved.size() != n * size_t(planes) * bps) {
        doc.layers.push_back(layer); // Validate() reports the wrong sample count
        return doc;
    }
    layer.pixels.resize(n * size_t(colour) * bps);
    if (alpha) layer.transparency.resize(n * bps);
    for (size_t i = 0; i < n; ++i) {
        const uint8* src = &interleaved[i * size_t(planes) * bps];
        std::memcpy(&layer.pixels[i * size_t(colour) * bps], src, size_t(colour) * bps);
        if (alpha) std::memcpy(&layer.transparency[i * bps], src + size_t(colour) * bps, bps);
    }
    doc.layers.push_back(std::move(layer));
    return doc;
}

} // namespace hostsim
