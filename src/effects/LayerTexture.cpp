// Texture loading: file to Source, Source to View.
#include "effects/LayerTexture.h"

#include "effects/EffectLayer.h"
#include "state/WorkImages.h"
#include "state/PathTable.h"
#include "state/Progress.h"
#include "state/DialogState.h"
#include "platform/Alert.h"
#include "platform/ModulePath.h"
#include "raster/AWashFile.h"
#include "raster/Geometry.h"
#include "raster/Raster.h"
#include "raster/Resample.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

bool ReportTextureFailure = true;
void* TextureAlertOwner = nullptr;

namespace {

constexpr uint8_t kTextureAllocKind = 1;

void Tell(const char* format, const char* path) {
    if (!ReportTextureFailure) return;
    const int length = std::snprintf(nullptr, 0, format, path);
    std::string text(size_t(std::max(length, 0)), '\0');
    std::snprintf(text.data(), text.size() + 1, format, path);
    ShowAlert(text, kAlertTitle, AlertIcon::Information, AlertButtons::Ok, TextureAlertOwner);
}

// Frees Source and puts `next` in its place; a View that was Source itself goes too.
void ReplaceSource(EffectLayer& layer, Raster* next) {
    if (layer.View == layer.Source) layer.View = nullptr;
    FreeRaster(layer.Source);
    layer.Source = next;
}

// Every stage reads plane 0 of a texture (a wash's colour texture included, and the
// orientation and cut keep plane 0 alone): the other planes of a colour texture are let go
// before scaling, which spares two thirds of the work and memory.
void KeepFirstPlane(Raster*& raster) {
    if (!raster || raster->Planes <= 1 || !raster->PixelsIfAny()) return;
    Raster* first = NewRaster(raster->Mode, raster->Bounds, 1, raster->Desc.depth, raster->Border, raster->AllocKind);
    if (!first || !first->Pixels() || first->PlaneBytes() > raster->PlaneBytes()) {
        FreeRaster(first);
        return;
    }
    std::memcpy(first->Pixels(), raster->Pixels(), first->PlaneBytes());
    FreeRaster(raster);
    raster = first;
}

void StorePath(EffectLayer& layer, const char* path, size_t length) {
    const size_t n = std::min(length, sizeof layer.Path - 1);
    std::memmove(layer.Path, path, n);
    layer.Path[n] = '\0';
}

} // namespace

const char* TexturePath(const char* name) {
    static std::string buffer;
    buffer = PathTable.Data;
    buffer += kPathSeparator;
    buffer += name ? name : "";
    return buffer.c_str();
}

void UpdateScaleFactor(EffectLayer& layer) {
    // A layer that never had a texture has no size to scale from.
    if (layer.TextureWidth <= 0 || layer.TextureHeight <= 0) return;
    const double fit = std::max(double(FilterHeight) / layer.TextureHeight, double(FilterWidth) / layer.TextureWidth);
    layer.ScaleFactor = (fit * 1.8 - fit) * layer.Scale / 200.0 + fit;
}

bool LoadLayerTexture(EffectLayer& layer, const char* path) {
    if (!path) return false;
    const size_t length = std::strlen(path);
    StorePath(layer, path, length);
    // A path longer than the record holds is not opened cut short: it counts as missing.
    const bool whole = length < sizeof layer.Path;

    AWashFile file;
    const bool opened = whole && file.InitWithFile(layer.Path);
    bool rasterized = false;
    if (opened) {
        ReplaceSource(layer, nullptr);
        layer.TextureWidth = int32_t(file.Width());
        layer.TextureHeight = int32_t(file.Height());
        Raster* made = nullptr;
        rasterized = file.Rasterize(made);
        KeepFirstPlane(made);
        layer.Source = made;
    }
    if (!rasterized) {
        RasterRect bounds;
        if (opened) {
            Tell("The file %s cannot to be rasterized", layer.Path);
            // Transposed on purpose: bottom is the width, right the height.
            bounds = RasterRect{0, 0, layer.TextureWidth, layer.TextureHeight};
        } else {
            Tell("The file %s is not presented or wrong", layer.Path);
            layer.TextureWidth = layer.TextureHeight = 1000;
            bounds = RasterRect{0, 0, 1000, 1000};
        }
        ReplaceSource(layer, NewRaster(1, bounds, 1, 8, 0, kTextureAllocKind));
        uint8_t* pixels = layer.Source ? layer.Source->Pixels() : nullptr;
        if (!pixels) {
            ReplaceSource(layer, nullptr);
            return false;
        }
        std::memset(pixels, 255, layer.Source->Storage.Bytes);
    }

    UpdateScaleFactor(layer);
    Raster* scaled = nullptr;
    if (ResampleRaster(scaled, layer.Source, layer.ScaleFactor, kTextureAllocKind)) ReplaceSource(layer, scaled);
    MoveLayer(layer, 0, 0);
    if (layer.Source) {
        if (layer.Invert) layer.Source->InvertRaster();
        if (layer.FlipVer) FlipRasterInPlaceVer(*layer.Source);
        if (layer.FlipHor) FlipRasterInPlaceHor(*layer.Source);
        // Quarter turns, rounded up: 45 is one, 91 two.
        if (layer.Angle > 0) {
            const int32_t turns = (layer.Angle - 1) / 90 + 1;
            for (int32_t i = 0; i < turns; ++i) {
                Raster* old = layer.Source;
                if (TurnRasterCw(layer.Source) && layer.View == old) layer.View = nullptr;
            }
        }
    }
    layer.GeometryDirty = 1;
    PrepareLayerTexture(layer);
    return layer.Source && layer.Source->PixelsIfAny();
}

void SetLayerScale(EffectLayer& layer, double scale) {
    if (layer.Scale == scale) return;
    layer.Scale = scale;
    const double before = layer.ScaleFactor;
    UpdateScaleFactor(layer);
    if (layer.ScaleFactor != before) LoadLayerTexture(layer, layer.Path);
}

void MoveLayer(EffectLayer& layer, int32_t dx, int32_t dy) {
    int64_t x = int64_t(layer.OffsetX) + dx;
    int64_t y = int64_t(layer.OffsetY) + dy;
    if (layer.Source) {
        const RasterRect& b = layer.Source->Bounds;
        // The far limit is the filter rectangle's right and bottom edges, not its size:
        // they differ when the rectangle does not start at 0, 0, and offsets stored in
        // looks were clamped this way.
        const int64_t right = FilterRightEdge();
        const int64_t bottom = FilterBottomEdge();
        x = std::min<int64_t>(std::max<int64_t>(x, b.left), int64_t(b.right) - right);
        y = std::min<int64_t>(std::max<int64_t>(y, b.top), int64_t(b.bottom) - bottom);
    }
    layer.OffsetX = int32_t(std::clamp<int64_t>(x, INT32_MIN, INT32_MAX));
    layer.OffsetY = int32_t(std::clamp<int64_t>(y, INT32_MIN, INT32_MAX));
    layer.GeometryDirty = 1;
}

namespace {

void PreparePreview(EffectLayer& layer) {
    if (layer.View != layer.Source) FreeRaster(layer.View);
    layer.View = nullptr;
    const int32_t span = ProgressSpan;
    ProgressSpan = span / 3;
    Raster* crop = nullptr;
    FitRasterToScreen(layer, crop, *layer.Source);
    const float scale = float(PreviewScale);
    if (scale != 0.0f) ResampleRaster(layer.View, crop ? crop : layer.Source, 1.0 / double(scale), kTextureAllocKind);
    FreeRaster(crop);
    if (layer.Kind == LayerSurface && layer.View) {
        // The crop and the scaling have had their thirds; the smoothing reports in the last.
        const int32_t percent = ProgressPercent;
        ProgressPercent += 2 * ProgressSpan;
        SmoothRaster3x3(*layer.View);
        ProgressPercent = percent;
    }
    layer.GeometryDirty = 0;
    layer.ToneDirty = 1;
    SurfaceShadeDirty = 1;
    ProgressSpan = span;
}

void PrepareFullSize(EffectLayer& layer) {
    if (layer.View != layer.Source) FreeRaster(layer.View);
    layer.View = layer.Source;
    if (layer.Kind == LayerSurface) {
        ProgressSpan = 10;
        SmoothRaster3x3(*layer.View);
    }
    layer.GeometryDirty = 0;
    layer.ToneDirty = 1;
    SurfaceShadeDirty = 1;
    if (layer.OffsetY > 0 || layer.OffsetX >= 1) {
        RasterRect bounds = layer.Source->Bounds;
        bounds.top = layer.OffsetY;
        bounds.left = layer.OffsetX;
        Raster* cut = NewRaster(1, bounds, 1, 8, 0, layer.Source->AllocKind);
        if (cut && CenterPasteRaster(*cut, *layer.Source, bounds)) {
            FreeRaster(layer.Source);
            layer.Source = layer.View = cut;
        } else {
            FreeRaster(cut);
        }
    }
}

} // namespace

void PrepareLayerTexture(EffectLayer& layer) {
    if (!layer.GeometryDirty || !layer.Source) return;
    if (DialogOpen) PreparePreview(layer);
    else PrepareFullSize(layer);
}
