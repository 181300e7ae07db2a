// Live Preview tiles: a small crop of the current image taken through the effect of the
// tile's texture, in plain loops over 112 x 84 pixels. The colour maths are the
// engine's own routines, so a tile matches the render.
#include "pickers/ThumbPasses.h"
#include "pickers/Thumbnails.h"

#include "effects/EffectLayer.h"
#include "effects/SurfaceColor.h"
#include "effects/Trig.h"
#include "state/Parameters.h"
#include "state/ViewState.h"
#include "state/WorkImages.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace {

constexpr size_t kPixels = size_t(ThumbWidth) * ThumbHeight;

bool PictureFits(const ThumbImage& picture) {
    return picture.width == ThumbWidth && picture.height == ThumbHeight && picture.stride == ThumbStride &&
           picture.bytes.size() == size_t(ThumbStride) * ThumbHeight;
}

// The underlay row that shows under bottom-up row y: underlays are stored top row first.
const uint8_t* UnderlayAt(const std::vector<uint8_t>& underlay, int32_t y, int32_t x) {
    if (underlay.size() < kPixels * 3) return nullptr;
    return underlay.data() + (size_t(ThumbHeight - 1 - y) * ThumbWidth + size_t(x)) * 3;
}

// Colour over what lies beneath by alpha, stored blue, green, red.
void Store(const float colour[3], int32_t alpha, const uint8_t* under, uint8_t* to) {
    float out[3] = {colour[0], colour[1], colour[2]};
    if (alpha < 255) {
        const float t = float(alpha) / 255.0f;
        for (int c = 0; c < 3; ++c) out[c] = under ? out[c] * t + float(under[c]) * (1.0f - t) : out[c] * t;
    }
    to[0] = uint8_t(int32_t(out[2]));
    to[1] = uint8_t(int32_t(out[1]));
    to[2] = uint8_t(int32_t(out[0]));
}

void WashPass() {
    const FilterParameters& p = *gParams;
    const bool second = ViewWash == ViewCodeWashTwo && p.SecondWashExists;
    const uint8_t type = second ? p.WashType2 : p.WashType1;
    const uint32_t stain = second ? p.WashStainColor2 : p.WashStainColor1;
    const int32_t tint[3] = {int32_t(stain & 0xFF), int32_t(stain >> 8 & 0xFF), int32_t(stain >> 16 & 0xFF)};
    const float brightness = float(tint[0] + tint[1] + tint[2]) / 765.0f;
    const std::vector<uint8_t>& underlay = ThumbUnderlay.empty() ? DocumentThumb : ThumbUnderlay;
    for (int32_t y = 0; y < ThumbHeight; ++y) {
        uint8_t* px = ThumbPixels.data() + size_t(y) * ThumbStride;
        const uint32_t* src = ThumbSource.data() + size_t(y) * ThumbWidth;
        for (int32_t x = 0; x < ThumbWidth; ++x, px += 3) {
            const float m = float(px[0]) / 255.0f;
            const int32_t rgb[3] = {int32_t(src[x] & 0xFF), int32_t(src[x] >> 8 & 0xFF), int32_t(src[x] >> 16 & 0xFF)};
            int32_t alpha = int32_t(src[x] >> 24);
            float colour[3] = {float(rgb[0]), float(rgb[1]), float(rgb[2])};
            if (type == 0) {
                alpha = int32_t(float(alpha) * m);
            } else if (type <= 3) {
                for (int c = 0; c < 3; ++c) {
                    const int32_t P = rgb[c], C = tint[c];
                    float q = 0.0f;
                    if (type == 1) q = float(P * C / 255);
                    else if (type == 2) q = float(uint8_t(~(((255 - P) * (255 - C)) >> 8)));
                    else q = float(int32_t(BoostMix(float(C), float(P), brightness)));
                    colour[c] = q * (1.0f - m) + float(P) * m;
                    if (type != 1) colour[c] = std::min(colour[c], 255.0f);
                }
            }
            Store(colour, alpha, UnderlayAt(underlay, y, x), px);
        }
    }
}

} // namespace

bool CropSourceInto(float scale, int32_t resolution, float& usedScale) {
    usedScale = scale;
    if (!(scale > 0.0f) || !SourceRGBA || SelectionWidth <= 0 || SelectionHeight <= 0) return false;
    try {
        ThumbSource.resize(kPixels);
    } catch (const std::bad_alloc&) {
        return false;
    }
    const int32_t width = SelectionWidth, height = SelectionHeight;
    const float r = float(resolution) / float(width);
    const float k = scale / (r > 0.0f ? r : 1.0f);
    const int32_t x0 = std::max(0, (width - int32_t(float(ThumbWidth) * k)) / 2);
    const int32_t y0 = std::max(0, (height - int32_t(float(ThumbHeight) * k)) / 2);
    // The proxy's rows run top-down, ThumbSource's bottom-up.
    for (int32_t j = 0; j < ThumbHeight; ++j) {
        const int32_t row = std::max(int32_t(float(height - 1) - (float(j) * k + float(y0))), 0);
        const uint8_t* from = SourceRGBA + size_t(row) * size_t(width) * 4;
        uint32_t* to = ThumbSource.data() + size_t(j) * ThumbWidth;
        for (int32_t i = 0; i < ThumbWidth; ++i) {
            const uint8_t* px = from + size_t(std::min(int32_t(float(i) * k + float(x0)), width - 1)) * 4;
            to[i] = uint32_t(px[0]) | uint32_t(px[1]) << 8 | uint32_t(px[2]) << 16 | uint32_t(px[3]) << 24;
        }
    }
    usedScale = k;
    return true;
}

float CropSource(float scale, int32_t resolution) {
    float used = scale;
    CropSourceInto(scale, resolution, used);
    return used;
}

void BuildLightMap(float k) {
    if (ThumbPixels.size() < size_t(ThumbStride) * ThumbHeight) return;
    const FilterParameters& p = *gParams;
    // The sines and cosines in double, kept as floats, as the render's light is.
    const double pi = 3.141592;
    const double tilt = double(float(pi - double(p.SurfaceLightBeta) * pi / 180.0));
    const double turn = double(float(double(p.SurfaceLightAlpha) * pi / 180.0 + pi));
    float ly = float(PortableSin(tilt));
    float lx = float(PortableCos(turn) * PortableCos(tilt));
    float lz = float(PortableSin(turn) * PortableCos(tilt));
    const float length = std::sqrt(lx * lx + ly * ly + lz * lz);
    if (length != 0.0f && length != 1.0f) {
        lx /= length;
        ly /= length;
        lz /= length;
    }
    int32_t depth = p.SurfaceDepth1;
    if (p.SecondSurfaceExists) depth = std::max(depth, p.SurfaceDepth2);
    const float gain = float(std::sqrt(double(std::max(depth, 0)) / 100.0) * 150.0 / double(k) / 5000.0);

    ThumbRelief.resize(kPixels);
    ThumbLighting.resize(kPixels);
    const bool invert = ThumbSurfaceLayer && ThumbSurfaceLayer->Invert;
    float* relief = ThumbRelief.data();
    for (int32_t y = 0; y < ThumbHeight; ++y)
        for (int32_t x = 0; x < ThumbWidth; ++x) {
            const int32_t v = ThumbPixels[size_t(y) * ThumbStride + size_t(x) * 3];
            relief[size_t(y) * ThumbWidth + x] = ThumbDepthScale * float(invert ? 255 - v : v);
        }
    // Rows in buffer order: "below" is the next row of the buffer. In place, so the left
    // and upper neighbours are already smoothed.
    const int32_t w = ThumbWidth;
    for (int32_t y = 1; y < ThumbHeight - 1; ++y)
        for (int32_t x = 1; x < w - 1; ++x) {
            float* c = relief + size_t(y) * w + x;
            *c = (c[-1] + c[0] + c[1] + c[-w] + c[w]) / 5.0f;
        }
    for (int32_t y = 0; y < ThumbHeight; ++y)
        for (int32_t x = 0; x < w; ++x) {
            const float* c = relief + size_t(y) * w + x;
            // The last column and row extrapolate, so the edge has no rim.
            const float right = x + 1 < w ? c[1] : 2.0f * c[0] - c[-1];
            const float below = y + 1 < ThumbHeight ? c[w] : 2.0f * c[0] - c[-w];
            ThumbLighting[size_t(y) * w + x] = ((below - c[0]) * lz + (right - c[0]) * lx) * gain + ly;
        }
}

void SurfacePass() {
    if (ThumbSource.size() < kPixels || ThumbLighting.size() < kPixels ||
        ThumbPixels.size() < size_t(ThumbStride) * ThumbHeight)
        return;
    const FilterParameters& p = *gParams;
    const bool second = ViewSurface == ViewCodeSurfaceTwo && p.SecondSurfaceExists;
    const int32_t type = second ? p.SurfaceType2 : p.SurfaceType1;
    const SurfaceColorSettings settings = ReadSurfaceColorSettings();
    for (int32_t y = 0; y < ThumbHeight; ++y) {
        uint8_t* px = ThumbPixels.data() + size_t(y) * ThumbStride;
        for (int32_t x = 0; x < ThumbWidth; ++x, px += 3) {
            const uint32_t s = ThumbSource[size_t(y) * ThumbWidth + x];
            const int32_t picture[3] = {int32_t(s & 0xFF), int32_t(s >> 8 & 0xFF), int32_t(s >> 16 & 0xFF)};
            int32_t alpha = int32_t(s >> 24);
            const float shade = std::clamp(ThumbLighting[size_t(y) * ThumbWidth + x], 0.0f, 1.0f);
            float out[3];
            int32_t tone[3];
            SurfaceColor(settings, picture, shade, out, tone, type);
            float colour[3] = {out[0], out[1], out[2]};
            if (p.SurfaceEntire) {
                // The surface covers transparent parts too, fading from its plain tone.
                const float t = float(alpha) / 255.0f;
                for (int c = 0; c < 3; ++c) colour[c] = float(tone[c]) * (1.0f - t) + out[c] * t;
                alpha = std::max({alpha, tone[0], tone[1], tone[2]});
            }
            for (float& c : colour) c = std::clamp(c, 0.0f, 255.0f);
            Store(colour, alpha, UnderlayAt(DocumentThumb, y, x), px);
        }
    }
}

float RenderLive(ThumbImage& picture, uint8_t targetKind, float scale, int32_t resolution) {
    if (!PictureFits(picture)) return scale;
    ThumbPixels = picture.bytes;
    float used = scale;
    if (targetKind == kWashTarget) {
        if (!CropSourceInto(scale, resolution, used)) return used;
        WashPass();
    } else if (targetKind == kBackgroundTarget) {
        BackgroundPass(ThumbPixels.data(), ThumbStride, BackgroundLayer);
    } else if (targetKind == kSurfaceTarget) {
        if (!CropSourceInto(scale, resolution, used)) return used;
        BuildLightMap(used);
        SurfacePass();
    } else {
        return scale;
    }
    picture.bytes = ThumbPixels;
    return used;
}
