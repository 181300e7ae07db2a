#include "pickers/StripThumb.h"

#include "pickers/Thumbnails.h"
#include "platform/ModulePath.h"
#include "presets/PresetFormat.h"
#include "presets/PresetLibrary.h"
#include "state/Parameters.h"
#include "state/PathTable.h"

#include <cctype>
#include <cstring>

std::vector<uint8_t> StripPixels;
const StripDibHeader StripHeader{};

namespace {

// No colour of a preset has bits above the 24th: a line that sets one is seen this way.
constexpr uint32_t kNoColour = 0xFFFFFFFFu;

bool IsNone(const std::string& name) {
    if (name.size() != 4) return false;
    for (size_t i = 0; i < 4; ++i)
        if (std::tolower(static_cast<unsigned char>(name[i])) != "none"[i]) return false;
    return true;
}

void Channels(uint32_t c, float out[3]) {
    out[0] = float(c & 0xFF);
    out[1] = float(c >> 8 & 0xFF);
    out[2] = float(c >> 16 & 0xFF);
}

// The grey placeholder: the stock grey brush and the crossed box of an empty tile.
void PaintNone() {
    std::vector<uint32_t> pixels(size_t(StripThumbWidth) * StripThumbHeight);
    const PixelView view{pixels.data(), StripThumbWidth, StripThumbHeight, StripThumbWidth};
    FillPixels(view, PixelRect{0, 0, StripThumbWidth, StripThumbHeight}, PixelOf(128, 128, 128));
    PaintPlaceholder(view, 0, 0, StripThumbWidth, StripThumbHeight);
    for (int32_t y = 0; y < StripThumbHeight; ++y) {
        uint8_t* row = StripPixels.data() + size_t(StripThumbHeight - 1 - y) * StripRowBytes;
        for (int32_t x = 0; x < StripThumbWidth; ++x) {
            const uint32_t c = view.At(x, y);
            row[x * 3] = uint8_t(c);
            row[x * 3 + 1] = uint8_t(c >> 8);
            row[x * 3 + 2] = uint8_t(c >> 16);
        }
    }
}

bool GreyIntoStripPixels(const char* textureName) {
    const std::string path = PathTable.Data + kPathSeparator + textureName;
    ThumbImage grey;
    if (!GreyThumbFromTexture(path.c_str(), 4.0f, StripThumbWidth, StripThumbHeight, grey)) return false;
    if (grey.width != StripThumbWidth || grey.height != StripThumbHeight || grey.stride < StripThumbWidth * 3 ||
        grey.bytes.size() < size_t(grey.stride) * StripThumbHeight)
        return false;
    for (int32_t y = 0; y < StripThumbHeight; ++y)
        std::memcpy(StripPixels.data() + size_t(y) * StripRowBytes, grey.bytes.data() + size_t(y) * grey.stride,
                    size_t(StripThumbWidth) * 3);
    return true;
}

} // namespace

void AllocateStripPixels() { StripPixels.assign(size_t(StripRowBytes) * StripThumbHeight, 0); }

void FreeStripPixels() { std::vector<uint8_t>().swap(StripPixels); }

bool ReadStripPreset(const std::string& name, bool asLoad) {
    PresetColorHi = PresetColorMid = PresetColorShadow = kNoColour;
    const bool read =
        asLoad ? LoadPreset(name, PresetPalette) : LoadPresetPath((StripFolder() + name + kPresetExtension).c_str());
    if (!read) return false;
    FilterParameters& p = *gParams;
    if (PresetColorHi != kNoColour) p.BackgroundHighlightColor = PresetColorHi;
    if (PresetColorMid != kNoColour) p.BackgroundMidtoneColor = PresetColorMid;
    if (PresetColorShadow != kNoColour) p.BackgroundShadowColor = PresetColorShadow;
    return true;
}

void TintStripPixels(const FilterParameters& p) {
    // Whole hundreds: an amount under 100 takes its colour's part out altogether.
    const int32_t h = p.BackgroundHighlight / 100, m = p.BackgroundMidtone / 100, s = p.BackgroundShadow / 100;
    const float hueOffset = float(p.BackgroundHue) * 1.275f;
    const float saturation = float(p.BackgroundMidtone) / 100.0f;
    float hi[3], mid[3], shadow[3];
    Channels(p.BackgroundHighlightColor, hi);
    Channels(p.BackgroundMidtoneColor, mid);
    Channels(p.BackgroundShadowColor, shadow);
    for (int32_t y = 0; y < StripThumbHeight; ++y) {
        uint8_t* px = StripPixels.data() + size_t(y) * StripRowBytes;
        for (int32_t x = 0; x < StripThumbWidth; ++x, px += 3) {
            float g = float(px[0]) / 255.0f;
            if (p.BackgroundInvert) g = 1.0f - g;
            float colour[3];
            if (g <= 0.65f) {
                const float t = (0.65f - g) * 1.5384616f;
                for (int c = 0; c < 3; ++c) colour[c] = shadow[c] * (t * float(s)) + mid[c] * ((1.0f - t) * float(m));
            } else {
                const float t = (g - 0.65f) * 2.857143f;
                for (int c = 0; c < 3; ++c) colour[c] = hi[c] * (t * float(h)) + mid[c] * ((1.0f - t) * float(m));
            }
            ShiftHueSaturation(colour, hueOffset, saturation, px);
        }
    }
}

bool MakeStripThumb(const std::vector<std::string>& names, int32_t index, ThumbImage& out) {
    out = ThumbImage{};
    if (index < 0 || size_t(index) >= names.size() || !gParams) return false;
    const std::string& name = names[size_t(index)];
    const bool none = IsNone(name);
    const std::string cache = StripFolder() + name + ".bmp";
    if (!none && ReadBmp(cache.c_str(), out) && out.width == StripThumbWidth && out.height == StripThumbHeight)
        return true;
    out = ThumbImage{};
    if (StripPixels.size() != size_t(StripRowBytes) * StripThumbHeight) AllocateStripPixels();

    // The preset reader also sets the link flags and the format version, which live
    // outside gParams; a picture must change none of them.
    const FilterParameters saved = *gParams;
    const uint8_t links[3] = {LinkWash, LinkSurface, LinkBackground};
    const int version = PresetVersion;
    bool made = false;
    if (none) {
        PaintNone();
        made = true;
    } else if (!name.empty() && ReadStripPreset(name, false) && GreyIntoStripPixels(gParams->BackgroundFileName)) {
        TintStripPixels(*gParams);
        made = true;
    }
    *gParams = saved;
    LinkWash = links[0], LinkSurface = links[1], LinkBackground = links[2];
    PresetVersion = version;
    if (!made) return false;

    out.width = StripThumbWidth;
    out.height = StripThumbHeight;
    out.stride = StripRowBytes;
    out.bytes = StripPixels;
    // A folder that cannot be written still shows its pictures.
    if (!none) WriteBmp(StripPixels.data(), StripThumbWidth, StripThumbHeight, StripRowBytes, cache.c_str());
    return true;
}
