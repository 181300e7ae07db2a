// hostsim's document: what a host owns and a filter works on. Layers are kept bottom first,
// each with interleaved colour samples and optional transparency and layer mask planes; the
// document may carry a selection and an explicit filter rectangle.
//
// Samples are one byte at depth 8 and one native-endian uint16 at depth 16 (the host's 16-bit
// range, 0-32768). Transparency and layer masks have the document's depth; the selection is
// always one byte a pixel, 255 = fully selected.
#pragma once

#include "host/abi/HostInterface.h"

#include <optional>
#include <string>
#include <vector>

namespace hostsim {

struct Layer {
    std::string name;
    bool visible = true;
    // Transparency the user locked: the filter then gets the colour planes only (the
    // "protected transparency" filter cases).
    bool transparencyLocked = false;
    std::vector<uint8> pixels;       // width * height * colour planes samples, interleaved
    std::vector<uint8> transparency; // empty, or width * height samples
    std::vector<uint8> layerMask;    // empty, or width * height samples
};

// Where one plane of a layer lives: the sample at (x, y) is at base + y * rowStep + x * pixelStep.
struct PlaneRef {
    uint8* base = nullptr;
    size_t pixelStep = 0;
    size_t rowStep = 0;
};

// The planes a filter sees for a layer, in order: colour, then transparency, then layer mask.
struct PlaneLayout {
    int colour = 0;
    bool transparency = false;
    bool layerMask = false;
    int Total() const { return colour + (transparency ? 1 : 0) + (layerMask ? 1 : 0); }
    int TransparencyIndex() const { return transparency ? colour : -1; }
    int LayerMaskIndex() const { return layerMask ? colour + (transparency ? 1 : 0) : -1; }
};

// Colour planes of an image mode: 3 for RGB, Lab, HSL, HSB (8 or 16 bits), 4 for CMYK,
// 1 for the grey, bitmap, indexed and duotone modes; 0 for modes hostsim does not hold.
int ColourPlanesOf(int16 imageMode);

class Document {
public:
    int32 width = 0;
    int32 height = 0;
    int16 imageMode = plugInModeRGBColor;
    int32 depth = 8;
    Fixed hResolution = 72 << 16;
    Fixed vResolution = 72 << 16;
    std::vector<Layer> layers; // bottom first
    int targetLayer = 0;
    std::vector<uint8> selection; // empty, or width * height bytes
    // The area to filter; unset means the selection's bounds, or the whole image.
    std::optional<VRect> filterRect;

    int ColourPlanes() const { return ColourPlanesOf(imageMode); }
    int BytesPerSample() const { return depth == 16 ? 2 : 1; }
    size_t PixelCount() const { return size_t(width) * size_t(height); }

    // "" when the document is consistent, else what is wrong with it.
    std::string Validate() const;

    const Layer& Target() const { return layers[size_t(targetLayer)]; }
    Layer& Target() { return layers[size_t(targetLayer)]; }

    // Plane p of a layer in the order a filter sees them (see PlaneLayout).
    PlaneRef Plane(Layer& layer, const PlaneLayout& layout, int p) const;
    PlaneRef Plane(const Layer& layer, const PlaneLayout& layout, int p) const {
        return Plane(const_cast<Layer&>(layer), layout, p);
    }
    // All planes the layer has: colour, transparency if any, layer mask if any.
    PlaneLayout FullLayout(const Layer& layer) const;

    // The target layer interleaved: colour samples, then its transparency when it has one and
    // withTransparency is set.
    std::vector<uint8> TargetInterleaved(bool withTransparency = true) const;

    // The smallest rectangle holding every selected pixel (empty when nothing is selected),
    // and whether the selection is exactly that rectangle at full strength.
    VRect SelectionBounds() const;
    bool SelectionIsRectangle() const;

    // The visible layers merged bottom first ("normal" blending through transparency and
    // layer mask) into colour samples, and the merged coverage.
    void Merge(std::vector<uint8>& colour, std::vector<uint8>& transparency) const;
};

// A one-layer document from an interleaved buffer of `planes` samples a pixel: the colour
// planes of `imageMode`, and, when there is one more plane, the layer's transparency (then the
// layer is "Layer 1"; without transparency it is the flat "Background").
Document MakeDocument(int32 width, int32 height, int16 imageMode, int32 depth, const std::vector<uint8>& interleaved,
                      int planes);

inline bool IsEmpty(const VRect& r) { return r.bottom <= r.top || r.right <= r.left; }

} // namespace hostsim
