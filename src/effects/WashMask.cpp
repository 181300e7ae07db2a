// Coverage mask, edge mask and intensity curve of a wash.
#include "effects/WashMask.h"

#include "effects/Noise.h"
#include "state/WorkImages.h"
#include "state/DialogState.h"
#include "state/Progress.h"
#include "platform/PageMemory.h"
#include "raster/Raster.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr uint32_t kCoverageBorder = 3;

bool IsWash(const EffectLayer& layer) { return layer.Kind == LayerWash; }

// The coverage rasters: the work area at most in a preview, Source's bounds otherwise.
RasterRect CoverageBounds(const EffectLayer& layer) {
    if (!DialogOpen) return layer.Source->Bounds;
    const double h = std::min(double(ImageHeight), layer.Source->Height() / PreviewScale);
    const double w = std::min(double(ImageWidth), layer.Source->Width() / PreviewScale);
    return RasterRect{0, 0, TruncToInt(h), TruncToInt(w)};
}

void FreeDistances(DistanceMap& map) {
    FreePages(map.Words, map.WordCount * sizeof(uint32_t));
    map.Words = nullptr;
    map.WordCount = 0;
    map.LargestDistanceSquared = 0;
    map.Rectangle = false;
}

// sqrt of the deepest point plus one, in f32: both edge settings are percentages of it.
float Depth(const EffectLayer& layer) { return std::sqrt(float(layer.Distances.LargestDistanceSquared)) + 1.0f; }

} // namespace

bool BuildCoverageNoise(EffectLayer& layer) {
    if (!IsWash(layer) || !layer.CoverageDirty) return false;
    // Taken whenever the field says 100 and noise exists, a real setting of 100 included.
    if (layer.Coverage == 100 && layer.CoverageNoise && layer.Source) {
        FreeRaster(layer.CoverageMask);
        layer.CoverageMask = NewRaster(1, CoverageBounds(layer), 1, 8, kCoverageBorder, 0);
        if (layer.CoverageMask && layer.CoverageMask->Pixels())
            std::memset(layer.CoverageMask->Pixels(), 255, layer.CoverageMask->Storage.Bytes);
        layer.ActiveCoverage = layer.CoverageMask;
        layer.CoverageDirty = 0;
        return true;
    }
    if (!layer.Source) {
        layer.CoverageDirty = 0;
        return false;
    }
    FreeRaster(layer.CoverageNoise);
    FreeRaster(layer.CoverageMask);
    layer.ActiveCoverage = nullptr;
    const RasterRect bounds = CoverageBounds(layer);
    layer.CoverageNoise = NewRaster(1, bounds, 1, 8, kCoverageBorder, 0);
    layer.CoverageMask = NewRaster(1, bounds, 1, 8, kCoverageBorder, 0);
    if (!layer.CoverageNoise || !layer.CoverageMask || !layer.CoverageNoise->Pixels() ||
        !layer.CoverageMask->Pixels()) {
        layer.CoverageDirty = 0;
        return false;
    }
    const bool ran =
        DialogOpen ? FillNoisePreview(layer.Source, layer.CoverageNoise, layer.Seed, kNoiseBlack, kNoiseWhite,
                                      layer.CoverageFeature / PreviewScale)
                   : FillNoiseFull(layer.CoverageNoise, layer.Seed, kNoiseBlack, kNoiseWhite, layer.CoverageFeature);
    if (ran) {
        // The bitwise complement always differs from the old value, so the setter cannot
        // take the call for a no-op and skip the new noise.
        const int32_t old = layer.Coverage;
        layer.Coverage = ~old;
        SetLayerCoverage(layer, old);
    }
    layer.CoverageDirty = 0;
    return true;
}

void SetLayerCoverage(EffectLayer& layer, int32_t c) {
    if (!IsWash(layer) || c == layer.Coverage) return;
    layer.Coverage = 100 - c;
    if (layer.Coverage == 100 || !layer.CoverageNoise) {
        layer.CoverageDirty = 1;
        BuildCoverageNoise(layer);
    }
    Raster* noise = layer.CoverageNoise;
    Raster* mask = layer.CoverageMask;
    if (noise && mask && noise->Pixels() && mask->Pixels()) {
        const float f = float(100 - c);
        const uint8_t* n = noise->Pixels();
        uint8_t* m = mask->Pixels();
        const size_t count = std::min(size_t(mask->PlaneBytes()), size_t(noise->PlaneBytes()));
        if (100 - c <= 100) {
            const int32_t t = TruncToInt(f * 2.55f);
            for (size_t i = 0; i < count; ++i) m[i] = n[i] > t ? 0 : 255;
        } else {
            const float a = f / 100.0f;
            const float b = (float(-50 - c) / -50.0f) * 255.0f;
            for (size_t i = 0; i < count; ++i) {
                const int32_t v = TruncToInt(float(128 - n[i]) * a + b + 127.0f);
                m[i] = uint8_t(std::clamp(v, 0, 255));
            }
        }
        ClearRasterBorder(*mask, 1);
        BoxBlurRaster(*mask, 2);
    }
    layer.Coverage = TruncToInt(float(c));
    layer.ActiveCoverage = layer.CoverageMask;
}

void BuildEdgeSource(EffectLayer& layer) {
    if (!IsWash(layer)) return;
    layer.FilterBounds = RasterRect{0, 0, FilterHeight, FilterWidth};
    FreeRaster(layer.EdgeSource);
    FreeDistances(layer.Distances);
    layer.EdgeSource = NewRaster(1, layer.FilterBounds, 1, 8, 1, 0);
    Raster* edge = layer.EdgeSource;
    if (edge && edge->Pixels()) {
        if ((!HaveMask && !DocumentHasAlpha()) || !SelectionMask) {
            std::memset(edge->Pixels(), 255, edge->Storage.Bytes);
        } else {
            uint8_t* origin = edge->ImageOrigin();
            const int32_t rows = std::min(edge->Height(), SelectionHeight);
            const int32_t columns = std::min(edge->Width(), SelectionWidth);
            for (int32_t y = 0; y < rows; ++y)
                std::memcpy(origin + size_t(y) * edge->RowBytes(), SelectionMask + size_t(y) * SelectionRowLength,
                            size_t(std::max(columns, 0)));
        }
        const bool whole = (!HaveMask && !DocumentHasAlpha()) || !SelectionMask;
        ClearRasterBorder(*edge, 1);
        if (whole) {
            // The whole filter rectangle: the map is known without being transformed.
            DistanceMap& map = layer.Distances;
            map.Rectangle = true;
            const int32_t deepest = (std::min(edge->Columns(), edge->Rows()) - 1) / 2;
            map.LargestDistanceSquared = deepest > 0 ? deepest * deepest : 0;
        } else if (edge->Planes == 1) {
            const size_t count = size_t(edge->Columns()) * edge->Rows();
            auto* words = static_cast<uint32_t*>(AllocatePages(count * sizeof(uint32_t)));
            if (words) {
                const uint8_t* bytes = edge->Pixels();
                for (size_t i = 0; i < count; ++i) words[i] = bytes[i];
                layer.Distances.Words = words;
                layer.Distances.WordCount = count;
                layer.Distances.LargestDistanceSquared = DistanceTransform(words, edge->Columns(), edge->Rows());
            }
        }
    }
    layer.EdgeDirty = 1;
    BuildWashEdge(layer);
}

void SetLayerEdgeDistance(EffectLayer& layer, int32_t d) {
    layer.EdgeDistance = d;
    layer.EdgeDirty = 1;
    const int32_t t = TruncToInt(double(float(Depth(layer) * float(d))) / 100.0);
    layer.EdgeThreshold = int32_t(int64_t(t) * t);
}

void SetLayerEdgeSoftness(EffectLayer& layer, int32_t s) {
    if (!IsWash(layer)) return;
    s = std::clamp(s, 0, 200);
    layer.EdgeSoftness = s;
    layer.EdgeBlur = layer.EdgeSource ? TruncToInt(Depth(layer) * float(s) / 200.0f) / 2 : s;
    layer.EdgeDirty = 1;
}

void BuildWashEdge(EffectLayer& layer) {
    if (!IsWash(layer) || !layer.Source || !layer.EdgeDirty) return;
    layer.EdgeDirty = 0;
    // The surface pass samples the edge mask for the washes: it must run again.
    SurfaceShadeDirty = 1;
    FreeRaster(layer.EdgeMask);
    layer.EdgeMask = NewRaster(1, layer.FilterBounds, 1, 8, 1, 0);
    Raster* mask = layer.EdgeMask;
    if (!mask || !mask->Pixels()) return;
    uint8_t* m = mask->Pixels();
    const DistanceMap& map = layer.Distances;
    if (map.Rectangle) {
        // Inside the ring, what lies at least the threshold from every side: per row one
        // run of 255 between two runs of 0. The ring itself is the edge source's 0.
        // The mask has the edge source's bounds and border.
        const int32_t columns = mask->Columns(), rows = mask->Rows();
        const int64_t threshold = layer.EdgeThreshold;
        int32_t depth = int32_t(std::sqrt(double(std::max<int64_t>(threshold, 0))));
        while (int64_t(depth) * depth < threshold) ++depth;
        while (depth > 0 && int64_t(depth - 1) * (depth - 1) >= threshold) --depth;
        const int32_t first = std::max(depth, 1), last = columns - 1 - first; // the run of 255
        for (int32_t y = 0; y < rows; ++y) {
            uint8_t* row = m + size_t(y) * columns;
            std::memset(row, 0, size_t(columns));
            const int32_t dy = std::min(y, rows - 1 - y);
            if (dy >= 1 && int64_t(dy) * dy >= threshold && first <= last)
                std::memset(row + first, 255, size_t(last - first + 1));
        }
    } else if (!map.Words) {
        std::memset(m, 255, mask->Storage.Bytes);
    } else {
        const uint8_t* source = layer.EdgeSource ? layer.EdgeSource->Pixels() : nullptr;
        size_t count = std::min(size_t(mask->PlaneBytes()), map.WordCount);
        if (source) count = std::min(count, size_t(layer.EdgeSource->PlaneBytes()));
        for (size_t i = 0; i < count; ++i)
            m[i] = int64_t(map.Words[i]) < layer.EdgeThreshold || !source || source[i] == 0 ? 0 : 255;
    }
    if (layer.EdgeBlur != 0) BoxBlurRaster(*mask, TruncToInt(float(layer.EdgeBlur) / std::sqrt(PreviewScale)));
}

void SetCurve(EffectLayer& layer, int32_t intensity) {
    layer.CurveParameter = intensity;
    if (intensity < 100) {
        const int32_t k = 100 - intensity;
        for (int32_t i = 0; i < 256; ++i) layer.Curve[size_t(i)] = uint8_t(i + (255 - i) * k / 100);
        return;
    }
    layer.CurveParameter = intensity - 100;
    const int32_t k = layer.CurveParameter;
    for (int32_t i = 127; i < 256; ++i) layer.Curve[size_t(i)] = uint8_t((i + (255 - i) * k / 100) & 255);
    for (int32_t i = 0; i < 127; ++i) layer.Curve[size_t(i)] = uint8_t((i - i * k / 100) & 255);
}
