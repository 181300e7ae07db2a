#include "effects/RenderDriver.h"

#include "effects/Engine.h"
#include "state/WorkImages.h"
#include "state/Parameters.h"
#include "state/Progress.h"
#include "platform/PageMemory.h"
#include "raster/Raster.h"

#include <cstdlib>
#include <cstring>
#include <utility>

bool KeepWashArea = false;
uint8_t* WashAreaBuffer = nullptr;
bool WashToMaskRun = false;
bool BackgroundWithheld = false;
int32_t SurfacePassCode = 0;

namespace {

size_t WashAreaBytes = 0;

bool WashesWanted() { return gParams->UseWash || WashToMaskRun; }

void EnsureEdgeMaskWork(EffectLayer& layer) {
    if (!layer.EdgeMaskWork)
        layer.EdgeMaskWork = static_cast<uint8_t*>(std::calloc(size_t(ImageWidth) * ImageHeight, 1));
}

// Runs the stages the flags ask for; the last one composes on the picture or the mask.
template <typename Compose> void RenderWash(EffectLayer& layer, Compose compose) {
    if (!layer.Source || !LayerHasTexture(layer)) return;
    const int32_t span = ProgressSpan;
    const int32_t start = ProgressPercent;
    const int32_t parts = (layer.GeometryDirty ? 2 : 1) + (layer.CoverageDirty ? 3 : 0) + (layer.EdgeDirty ? 1 : 0);
    const int32_t unit = span / parts;
    if (layer.GeometryDirty) {
        ProgressSpan = unit;
        PrepareLayerTexture(layer);
        ProgressPercent += ProgressSpan;
    }
    if (layer.CoverageDirty) {
        ProgressSpan = span * 3 / parts;
        BuildCoverageNoise(layer);
        ProgressPercent += ProgressSpan;
    }
    if (layer.EdgeDirty) {
        ProgressSpan = unit;
        BuildWashEdge(layer);
        ProgressPercent += ProgressSpan;
    }
    ProgressSpan = unit;
    compose(layer);
    ProgressPercent = start;
}

} // namespace

void FreeWashAreaBuffer() {
    FreePages(WashAreaBuffer, WashAreaBytes);
    WashAreaBuffer = nullptr;
    WashAreaBytes = 0;
}

void AdoptWashAreaBuffer(uint8_t* buffer) {
    FreeWashAreaBuffer();
    WashAreaBuffer = buffer;
    WashAreaBytes = buffer ? size_t(ImageHeight) * WorkRowBytes : 0;
}

uint8_t* ReleaseWashAreaBuffer() {
    WashAreaBytes = 0;
    return std::exchange(WashAreaBuffer, nullptr);
}

void RenderWashLayer(EffectLayer& layer) { RenderWash(layer, CompositeWash); }
void RenderWashToMask(EffectLayer& layer, const HostPlanes& out) {
    RenderWash(layer, [&out](EffectLayer& l) { CompositeWashToMask(l, out); });
}

namespace {

// The edge mask of `layer` at filter scale, sampled into its EdgeMaskWork row y; the
// row step is wash 1's for both washes.
void SampleEdgeMask(EffectLayer& layer, int32_t y, int32_t rowStep) {
    Raster* mask = layer.EdgeMask;
    if (!mask || !layer.EdgeMaskWork || !mask->ImageOrigin()) return;
    const int32_t row = int32_t((PreviewOriginY + y) * PreviewScale);
    if (row < 0 || row >= mask->Height()) return;
    const uint8_t* from = mask->ImageOrigin() + ptrdiff_t(row) * rowStep;
    uint8_t* to = layer.EdgeMaskWork + size_t(y) * ImageWidth;
    for (int32_t x = 0; x < ImageWidth; ++x) {
        const int32_t column = int32_t((PreviewOriginX + x) * PreviewScale);
        if (column >= 0 && column < mask->Width()) to[x] = from[column];
    }
}

} // namespace

void ResetWorkImage() {
    EffectLayer& first = WashLayers[0];
    EffectLayer& second = WashLayers[1];
    const bool wash = WashesWanted() && first.Source;
    const bool both = wash && gParams->SecondWashExists && second.Source;
    const int32_t rowStep = first.EdgeMask ? first.EdgeMask->RowBytes() : 0;
    for (int32_t y = 0; y < ImageHeight; ++y) {
        std::memcpy(WorkImage + size_t(y) * WorkRowBytes, SourceImage + size_t(y) * WorkRowBytes,
                    size_t(ImageWidth) * 4);
        if (wash) SampleEdgeMask(first, y, rowStep);
        if (both) SampleEdgeMask(second, y, rowStep);
        ReportStageProgress(y, ImageHeight);
    }
}

void FreeWashMaskWork() {
    for (EffectLayer& layer : WashLayers) {
        std::free(layer.EdgeMaskWork);
        layer.EdgeMaskWork = nullptr;
    }
}

void RenderLayers(int32_t view) {
    ReportProgress(10, 100);
    ProgressPercent = 10;

    const FilterParameters& p = *gParams;
    FreeWashAreaBuffer();
    KeepWashArea = WashesWanted() && p.UseSurface && p.SurfaceEntire && p.SurfaceIncludeWashArea && DocumentHasAlpha();
    if (KeepWashArea) {
        WashAreaBytes = size_t(ImageHeight) * WorkRowBytes;
        WashAreaBuffer = static_cast<uint8_t*>(AllocatePages(WashAreaBytes));
    }

    if (view == ViewCodeBackground) {
        std::memset(WorkImage, 0, size_t(ImageHeight) * WorkRowBytes);
    } else {
        if (WashesWanted()) {
            EnsureEdgeMaskWork(WashLayers[0]);
            if (p.SecondWashExists) EnsureEdgeMaskWork(WashLayers[1]);
            if (WashLayers[0].EdgeDirty) BuildWashEdge(WashLayers[0]);
            if (p.SecondWashExists && WashLayers[1].EdgeDirty) BuildWashEdge(WashLayers[1]);
        }

        const bool surfaceView = view == ViewCodeComposite || view == ViewCodeSurfaceOne || view == ViewCodeSurfaceTwo;
        if (p.UseSurface && surfaceView) {
            bool used1 = false, used2 = false;
            if ((view == ViewCodeComposite || view == ViewCodeSurfaceOne) && LayerHasTexture(SurfaceLayers[0])) {
                if (SurfaceLayers[0].GeometryDirty) PrepareLayerTexture(SurfaceLayers[0]);
                ProgressPercent = 20;
                ReportProgress(float(ProgressPercent), 100);
                used1 = true;
            }
            if (p.SecondSurfaceExists && (view == ViewCodeComposite || view == ViewCodeSurfaceTwo) &&
                LayerHasTexture(SurfaceLayers[1])) {
                if (SurfaceLayers[1].GeometryDirty) PrepareLayerTexture(SurfaceLayers[1]);
                used2 = true;
            }
            ProgressPercent = 30;
            ReportProgress(float(ProgressPercent), 100);
            if (used1 || used2) {
                BuildSurfaceRelief(used1, used2);
                SurfaceAlphaFromSource();
                ProgressSpan = 10;
                ShadeSurface();
                ProgressPercent = 40;
                ReportProgress(float(ProgressPercent), 100);
                MergeSurfaceResult();
            } else {
                ResetWorkImage();
            }
        } else {
            ProgressSpan = 50 - ProgressPercent;
            ResetWorkImage();
        }

        if (SurfacePassCode == 1 && p.SurfaceIncludeWashArea && p.SurfaceEntire) {
            ReportProgress(float(ProgressPercent), 100);
            return;
        }

        ProgressPercent = 50;
        ReportProgress(float(ProgressPercent), 100);
        if (p.UseWash) {
            if (view < ViewCodeWashTwo) {
                ProgressSpan = 60 - ProgressPercent;
                RenderWashLayer(WashLayers[0]);
                ProgressPercent = 60;
            }
            ReportProgress(float(ProgressPercent), 100);
            if (p.SecondWashExists && (view == ViewCodeComposite || view == ViewCodeWashTwo)) {
                ProgressSpan = 70 - ProgressPercent;
                RenderWashLayer(WashLayers[1]);
            }
        }
    }

    ProgressPercent = 70;
    ReportProgress(float(ProgressPercent), 100);
    if (SurfacePassCode == 1) {
        ReportProgress(float(ProgressPercent), 100);
        return;
    }

    if (p.UseBackground && LayerHasTexture(BackgroundLayer)) {
        if (BackgroundLayer.GeometryDirty) {
            ProgressSpan = 10;
            PrepareLayerTexture(BackgroundLayer);
            BackgroundLayer.GeometryDirty = 0;
            ProgressPercent = 80;
        }
        ReportProgress(float(ProgressPercent), 100);
        ProgressSpan = 90 - ProgressPercent;
        PlaceBackground(BackgroundLayer);
        ProgressPercent = 90;
        ReportProgress(float(ProgressPercent), 100);
        ProgressSpan = 100 - ProgressPercent;
        CompositeBackground();
    }
    ProgressPercent = 100;
    ReportProgress(float(ProgressPercent), 100);
}
