// The surface's buffers, its relief and its shade.
#include "effects/EffectLayer.h"
#include "effects/Surface.h"
#include "effects/SurfaceInternal.h"
#include "effects/Trig.h"
#include "state/WorkImages.h"
#include "state/DialogState.h"
#include "state/Parameters.h"
#include "effects/RenderDriver.h"
#include "state/ViewState.h"
#include "raster/Raster.h"

#include <algorithm>
#include <cmath>
#include <cstring>

uint8_t* ReliefMap = nullptr;
uint8_t* SurfaceImage = nullptr;

PageBlock ReliefBlock, SurfaceBlock;

bool ShowingSecondSurface() {
    return DialogOpen && gParams->SecondSurfaceExists && ActiveTab == TabSurface && ViewSurface == ViewCodeSurfaceTwo;
}

const EffectLayer& ShownSurface() { return ShowingSecondSurface() ? SurfaceLayers[1] : SurfaceLayers[0]; }

// The relief is sized when it is built, for the View it is built from: a View can change
// its size between two calls of AllocateReliefBuffers.
bool ReserveRelief(int32_t stride) {
    const bool ok = ReliefBlock.Reserve(size_t(ImageHeight) * size_t(std::max(stride, 0)));
    ReliefMap = static_cast<uint8_t*>(ReliefBlock.Data);
    return ok;
}

bool SurfaceImageReady() {
    if (DialogOpen) {
        SurfaceBlock.Reserve(size_t(ImageHeight) * size_t(WorkRowBytes));
        SurfaceImage = static_cast<uint8_t*>(SurfaceBlock.Data);
    } else {
        SurfaceImage = WorkImage;
    }
    return SurfaceImage != nullptr;
}

namespace {

// What the relief was last built from, besides what the controls mark with
// SurfaceShadeDirty (Views, depths, light, colours, the work area).
struct ReliefInputs {
    bool built = false, first = false, second = false;
    const EffectLayer* shown = nullptr;
};
ReliefInputs gLastRelief;

int32_t SurfaceDepthForLight() {
    const FilterParameters& p = *gParams;
    return p.SecondSurfaceExists ? std::max(p.SurfaceDepth1, p.SurfaceDepth2) : p.SurfaceDepth1;
}

struct ReliefSource {
    const uint8_t* samples = nullptr;
    int32_t stride = 0, width = 0, height = 0;
};

bool SourceOf(Raster* view, ReliefSource& s) {
    if (!view || !view->ImageOrigin()) return false;
    s = {view->ImageOrigin(), view->RowBytes(), std::min(view->Width(), ImageWidth),
         std::min(view->Height(), ImageHeight)};
    return true;
}

// Rows are written at the stride of the View built from and read by the pass at the shown
// surface's: room for both, so surface 2 alone over a wider or narrower View stays inside
// and the pass reads what it would have read in a buffer of the shown stride.
bool ReserveReliefFor(int32_t writtenStride) {
    const Raster* shown = ShownSurface().View;
    return ReserveRelief(std::max(writtenStride, shown ? shown->RowBytes() : 0));
}

void ScaleInto(const ReliefSource& s, float depth) {
    for (int32_t y = 0; y < s.height; ++y) {
        const uint8_t* from = s.samples + size_t(y) * s.stride;
        uint8_t* to = ReliefMap + size_t(y) * s.stride;
        for (int32_t x = 0; x < s.width; ++x) to[x] = uint8_t(int32_t(float(from[x]) * depth));
    }
}

} // namespace

void AllocateReliefBuffers() {
    gLastRelief = {};
    ReliefBlock.Free();
    ReliefMap = nullptr;
    SurfaceBlock.Free();
    SurfaceImageReady();
    SurfaceShadeDirty = 1;
}

void FreeReliefBuffers() {
    gLastRelief = {};
    ReliefBlock.Free();
    SurfaceBlock.Free();
    ReliefMap = nullptr;
    SurfaceImage = nullptr;
}

void BuildSurfaceRelief(bool first, bool second) {
    // The preview renders again and again: while nothing the surface depends on has
    // changed, the relief and last render's SurfaceImage stand, as the shading pass would
    // make them the same. A kept wash area is made anew each render, so it always shades.
    if (DialogOpen && !SurfaceShadeDirty && !KeepWashArea && gLastRelief.built && gLastRelief.first == first &&
        gLastRelief.second == second && gLastRelief.shown == &ShownSurface())
        return;
    gLastRelief = {true, first, second, &ShownSurface()};
    SurfaceShadeDirty = 1;
    const FilterParameters& p = *gParams;
    const float d1 = float(p.SurfaceDepth1) / 100.0f;
    const float d2 = float(p.SurfaceDepth2) / 100.0f;
    ReliefSource s1, s2;
    const bool have2 = SourceOf(SurfaceLayers[1].View, s2);
    if (!first) {
        if (!have2 || !ReserveReliefFor(s2.stride)) return;
        if (!second) {
            for (int32_t y = 0; y < s2.height; ++y) std::memset(ReliefMap + size_t(y) * s2.stride, 0, size_t(s2.width));
            return;
        }
        ScaleInto(s2, d2);
        return;
    }
    if (!SourceOf(SurfaceLayers[0].View, s1) || !ReserveReliefFor(s1.stride)) return;
    ScaleInto(s1, d1);
    if (!second || !have2) return;
    // The depth-weighted average of the two textures over the area both cover.
    const float divisor = d1 + d2 == 0.0f ? 1.0f : d1 + d2;
    const int32_t h = std::min(s1.height, s2.height), w = std::min(s1.width, s2.width);
    for (int32_t y = 0; y < h; ++y) {
        const uint8_t* a = s1.samples + size_t(y) * s1.stride;
        const uint8_t* b = s2.samples + size_t(y) * s2.stride;
        uint8_t* to = ReliefMap + size_t(y) * s1.stride;
        for (int32_t x = 0; x < w; ++x)
            to[x] = uint8_t(int32_t(std::min(255.0f, (float(b[x]) * d2 + float(a[x]) * d1) / divisor)));
    }
}

float SlopeGain(double divisor) {
    // Double for the arithmetic, f32 for the result: the shade stores its factors the same
    // way, and the bytes of a look depend on both widths.
    return float(std::sqrt(double(SurfaceDepthForLight()) / 100.0) * 150.0 / PreviewScale / divisor);
}

ShadeLight SurfaceShadeLight() {
    const FilterParameters& p = *gParams;
    // 3.141592 as the light has always been computed; the angles go through double.
    const double a = double(float(3.141592 - double(p.SurfaceLightAlpha) * 3.141592 / 180.0));
    const double b = double(float(3.141592 - double(p.SurfaceLightBeta) * 3.141592 / 180.0));
    ShadeLight l;
    l.z = float(PortableSin(b));
    l.x = float(PortableCos(a) * PortableCos(b));
    l.y = float(PortableSin(a) * PortableCos(b));
    const float n = std::sqrt(l.x * l.x + l.y * l.y + l.z * l.z);
    if (n != 0.0f && n != 1.0f) {
        l.x /= n;
        l.y /= n;
        l.z /= n;
    }
    l.gain = SlopeGain(5000.0);
    return l;
}

void BuildShadeRow(const ShadeLight& l, int32_t y, int32_t width, int32_t height, int32_t reliefStride, float* out) {
    const int32_t w = std::min(width, ImageWidth), h = std::min(height, ImageHeight);
    const uint8_t* row = ReliefMap + size_t(y) * reliefStride;
    // The last row and column extrapolate, so the edge has no rim.
    const uint8_t* below = y + 1 < h ? row + reliefStride : nullptr;
    const uint8_t* above = y > 0 ? row - reliefStride : nullptr;
    for (int32_t x = 0; x < w; ++x) {
        const int32_t v = row[x];
        const int32_t down = below ? below[x] : above ? 2 * v - above[x] : v;
        const int32_t right = x + 1 < w ? row[x + 1] : x > 0 ? 2 * v - row[x - 1] : v;
        out[x] = (float(down - v) * l.y + float(right - v) * l.x) * l.gain + l.z;
    }
}

void BuildShadeRow(int32_t y, int32_t width, int32_t height, int32_t reliefStride, float* out) {
    const int32_t w = std::min(width, ImageWidth), h = std::min(height, ImageHeight);
    if (y < 0 || y >= h || w <= 0 || !ReliefMap) return;
    if (ReliefBlock.Bytes < size_t(h - 1) * size_t(reliefStride) + size_t(w)) return;
    BuildShadeRow(SurfaceShadeLight(), y, width, height, reliefStride, out);
}
