// What a drawer prepares once as it opens: the background under wash tiles, and the
// grey base that a colour drawer's tiles are coloured over by each preset's tones.
#include "pickers/ThumbPasses.h"
#include "pickers/Thumbnails.h"

#include "effects/EffectLayer.h"
#include "platform/ModulePath.h"
#include "presets/PresetFormat.h"
#include "state/Parameters.h"
#include "state/PathTable.h"
#include "state/ViewState.h"
#include "state/WorkImages.h"

#include <memory>
#include <string>

namespace {

// A bottom-up 24-bit picture as red, green, blue, top row first.
void ToTopDownRgb(const ThumbImage& picture, std::vector<uint8_t>& out) {
    out.resize(size_t(ThumbWidth) * ThumbHeight * 3);
    uint8_t* to = out.data();
    for (int32_t y = 0; y < ThumbHeight; ++y) {
        const uint8_t* from = picture.bytes.data() + size_t(ThumbHeight - 1 - y) * size_t(picture.stride);
        for (int32_t x = 0; x < ThumbWidth; ++x, from += 3, to += 3) {
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
        }
    }
}

// The grey thumbnail of a texture by name: from its cache when that is of our size, else
// made (and cached when made at the cache's own scale).
bool NamedThumb(const char* folder, const char* name, float scale, ThumbImage& out) {
    const std::string path = std::string(folder) + "/" + name;
    if (scale == 4.0f && ReadBmp((path + ".bmp").c_str(), out) && out.width == ThumbWidth && out.height == ThumbHeight)
        return true;
    if (!GreyThumbFromTexture(path.c_str(), scale, ThumbWidth, ThumbHeight, out)) return false;
    if (scale == 4.0f) WriteBmp(out.bytes.data(), out.width, out.height, out.stride, (path + ".bmp").c_str());
    return true;
}

// The three colours of a colour preset, and nothing else of it: whatever other lines the
// file holds, gParams comes back as it was.
bool ReadPresetColours(const char* presetName, uint32_t& high, uint32_t& mid, uint32_t& shadow) {
    if (!gParams || !presetName) return false;
    const auto kept = std::make_unique<FilterParameters>(*gParams);
    const int version = PresetVersion;
    PresetColorHi = PresetColorMid = PresetColorShadow = 0;
    const bool read = LoadPresetPath((PathTable.Colors + kPathSeparator + presetName).c_str());
    *gParams = *kept;
    PresetVersion = version;
    high = PresetColorHi;
    mid = PresetColorMid;
    shadow = PresetColorShadow;
    return read;
}

struct LayerColours {
    uint8_t high[3], mid[3], shadow[3];
};

LayerColours ColoursOf(const EffectLayer& l) {
    return {{l.HighlightRed, l.HighlightGreen, l.HighlightBlue},
            {l.MidtoneRed, l.MidtoneGreen, l.MidtoneBlue},
            {l.ShadowRed, l.ShadowGreen, l.ShadowBlue}};
}

// Colours as records keep them: red in the low byte.
LayerColours FromColorRefs(uint32_t high, uint32_t mid, uint32_t shadow) {
    auto split = [](uint32_t c, uint8_t(&to)[3]) {
        for (int i = 0; i < 3; ++i) to[i] = uint8_t(c >> (8 * i));
    };
    LayerColours c;
    split(high, c.high);
    split(mid, c.mid);
    split(shadow, c.shadow);
    return c;
}

void SetColours(EffectLayer& l, const LayerColours& c) {
    l.HighlightRed = c.high[0], l.HighlightGreen = c.high[1], l.HighlightBlue = c.high[2];
    l.MidtoneRed = c.mid[0], l.MidtoneGreen = c.mid[1], l.MidtoneBlue = c.mid[2];
    l.ShadowRed = c.shadow[0], l.ShadowGreen = c.shadow[1], l.ShadowBlue = c.shadow[2];
}

} // namespace

void PrepareUnderlay(float scale, int32_t /*resolution*/, const char* folder) {
    ThumbUnderlay.clear();
    ThumbImage background;
    if (gParams && gParams->UseBackground && folder &&
        NamedThumb(folder, gParams->BackgroundFileName, scale, background)) {
        // Wash tiles show the wash over the background effect.
        BackgroundPass(background.bytes.data(), background.stride, BackgroundLayer);
        ToTopDownRgb(background, ThumbUnderlay);
    } else if (!DocumentThumb.empty()) {
        ThumbUnderlay = DocumentThumb;
    }
}

bool PrepareColourBase(ThumbImage& colourBase, uint8_t targetKind, const char* folder) {
    colourBase = ThumbImage{};
    if (!gParams || !folder) return false;
    const FilterParameters& p = *gParams;
    if (targetKind == kBackgroundTarget)
        return GreyThumbFromTexture((std::string(folder) + "/" + p.BackgroundFileName).c_str(), 4.0f, ThumbWidth,
                                    ThumbHeight, colourBase);
    if (targetKind != kSurfaceTarget) return false;
    const bool second = ViewSurface == ViewCodeSurfaceTwo && p.SecondSurfaceExists;
    const char* name = second ? p.SurfaceFileName2 : p.SurfaceFileName1;
    if (!GreyThumbFromTexture((std::string(folder) + "/" + name).c_str(), 4.0f, ThumbWidth, ThumbHeight, colourBase))
        return false;
    // One light map serves every tile of this opening.
    ThumbPixels = colourBase.bytes;
    float used = 4.0f;
    if (SourceRGBA) CropSourceInto(4.0f, 2048, used);
    BuildLightMap(used);
    return true;
}

bool RenderColourThumb(const ThumbImage& colourBase, uint8_t targetKind, const char* presetName, ThumbImage& out) {
    out = ThumbImage{};
    if (colourBase.width != ThumbWidth || colourBase.height != ThumbHeight || colourBase.stride != ThumbStride ||
        colourBase.bytes.size() != size_t(ThumbStride) * ThumbHeight)
        return false;
    uint32_t high = 0, mid = 0, shadow = 0;
    if (!ReadPresetColours(presetName, high, mid, shadow)) return false;
    if (targetKind == kBackgroundTarget) {
        const LayerColours kept = ColoursOf(BackgroundLayer);
        SetColours(BackgroundLayer, FromColorRefs(high, mid, shadow));
        out = colourBase;
        BackgroundPass(out.bytes.data(), out.stride, BackgroundLayer);
        SetColours(BackgroundLayer, kept);
        return true;
    }
    if (targetKind != kSurfaceTarget) return false;
    FilterParameters& p = *gParams;
    const uint32_t keptHigh = p.SurfaceHighlightColor, keptMid = p.SurfaceMidtoneColor,
                   keptShadow = p.SurfaceShadowColor;
    p.SurfaceHighlightColor = high;
    p.SurfaceMidtoneColor = mid;
    p.SurfaceShadowColor = shadow;
    // The light map of this opening is already built; without a source the base stays grey.
    ThumbPixels = colourBase.bytes;
    SurfacePass();
    p.SurfaceHighlightColor = keptHigh;
    p.SurfaceMidtoneColor = keptMid;
    p.SurfaceShadowColor = keptShadow;
    out = colourBase;
    out.bytes = ThumbPixels;
    return true;
}
