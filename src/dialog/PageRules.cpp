#include "dialog/PageRules.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

constexpr const char* kNoTexture = "No_Texture.qzt";

bool Same(const char* a, const char* b) { return std::strcmp(a, b) == 0; }
bool Named(const char* name) { return !Same(name, kNoTexture); }

} // namespace

float ParseFieldNumber(const char* text, float low, float high) {
    const float value = text ? float(std::atof(text)) : 0.0f;
    if (std::isnan(value)) return low;
    return std::clamp(value, low, high);
}

int32_t SeedOf(int32_t value) { return value % 1000; }

const char* DisplayTextureName(const char* name) {
    static char shown[128];
    std::strncpy(shown, name ? name : "", sizeof shown - 1);
    shown[sizeof shown - 1] = 0;
    const size_t length = std::strlen(shown);
    if (length >= 5 && Same(shown + length - 4, ".qzt")) shown[length - 4] = 0;
    return shown;
}

OffsetMove PadOffsetMove(float px, float py, int32_t rangeX, int32_t rangeY, int32_t currentX, int32_t currentY,
                         double previewScale) {
    const double scale = previewScale > 0 ? previewScale : 1.0;
    // The pad's right edge is the texture's left: x runs against the offset.
    const double x = (100.0 - px) * rangeX / 200.0 - currentX;
    const double y = (py + 100.0) * rangeY / 200.0 - currentY;
    return {int32_t(x / scale), int32_t(y / scale)};
}

int32_t EditOffsetMove(int32_t value, int32_t range, int32_t current, double previewScale) {
    const double scale = previewScale > 0 ? previewScale : 1.0;
    value = std::max(value, 0);
    const int32_t target = value >= range ? range - 1 : value;
    return int32_t((target - current) / scale);
}

int32_t OffsetKnob(int32_t offset, int32_t range) {
    const int32_t half = range / 2;
    if (half == 0) return 100;
    return (offset - half) * -100 / half;
}

WashEnabling EnableWash(const PageState& s) {
    WashEnabling e;
    const bool shown = s.view != 6;
    e.controls = s.inUse && shown && (!s.secondExists || s.view == 1 || s.view == 2);
    e.link = s.linkable && shown && s.inUse;
    e.swatch = e.controls && s.washType != 0;
    e.orientation = e.controls && !s.solid;
    e.offset = e.orientation && s.hasRange;
    return e;
}

SurfaceEnabling EnableSurface(const PageState& s) {
    SurfaceEnabling e;
    e.shading = s.inUse && s.view != 6;
    e.layer = s.inUse && (!s.secondExists || s.view == 4 || s.view == 5);
    e.link = s.linkable && e.shading;
    e.orientation = e.layer && !s.solid;
    e.fillCanvas = e.shading && s.transparent;
    e.fillWash = e.fillCanvas && s.useWash && s.surfaceEntire;
    return e;
}

BackgroundEnabling EnableBackground(const PageState& s) {
    BackgroundEnabling e;
    e.controls = s.inUse;
    e.orientation = s.inUse && !s.solid;
    e.link = s.linkable && s.inUse;
    e.fillCanvas = s.inUse && s.transparent;
    return e;
}

bool HasTransparency(int32_t planes, bool cmyk) { return cmyk ? planes > 4 : planes >= 4; }

LinkMatches MatchLinks(const char* wash1, const char* wash2, bool secondWash, bool useWash, const char* surface1,
                       const char* surface2, bool secondSurface, bool useSurface, const char* background,
                       bool useBackground) {
    LinkMatches m;
    m.washPair = useWash && secondWash && Same(wash1, wash2);
    m.surfacePair = useSurface && secondSurface && Same(surface1, surface2);
    const bool wash = useWash && (!secondWash || m.washPair) && Named(wash1);
    const bool surface = useSurface && (!secondSurface || m.surfacePair) && Named(surface1);
    m.washSurface = wash && surface && Same(wash1, surface1);
    m.washBackground = wash && useBackground && Same(wash1, background);
    m.surfaceBackground = surface && useBackground && Same(background, surface1);
    return m;
}

int32_t PageHeight(int32_t clientHeight, int32_t tabWidth, int32_t pageWidth, int32_t smallCaption) {
    return clientHeight - 90 - (tabWidth - pageWidth) - smallCaption;
}

UserGroupBoxes StretchUserGroup(int32_t pageHeight, const UserGroupBoxes& now) {
    UserGroupBoxes b = now;
    const int32_t groupBottom = pageHeight - 9;
    b.group.height = std::max(0, groupBottom - b.group.y);
    b.save.y = groupBottom - 6 - b.save.height;
    b.remove.y = groupBottom - 6 - b.remove.height;
    b.list.height = std::max(0, std::min(b.save.y, b.remove.y) - 5 - b.list.y);
    return b;
}
