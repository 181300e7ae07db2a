#include "effects/EffectLayer.h"

#include "effects/Background.h"
#include "effects/Surface.h"
#include "effects/WashMask.h"
#include "state/WorkImages.h"
#include "state/Parameters.h"
#include "state/DialogState.h"
#include "state/Progress.h"
#include "platform/PageMemory.h"
#include "state/ViewState.h"
#include "raster/Raster.h"
#include "effects/LayerTexture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

EffectLayer WashLayers[2];
EffectLayer SurfaceLayers[2];
EffectLayer BackgroundLayer;
int32_t SurfaceShadeDirty = 1;

const char* LayerFileName(const EffectLayer& layer) {
    if (&layer == &WashLayers[0]) return gParams->WashFileName1;
    if (&layer == &WashLayers[1]) return gParams->WashFileName2;
    if (&layer == &SurfaceLayers[0]) return gParams->SurfaceFileName1;
    if (&layer == &SurfaceLayers[1]) return gParams->SurfaceFileName2;
    return gParams->BackgroundFileName;
}

bool LayerHasTexture(const EffectLayer& layer) { return std::strcmp(LayerFileName(layer), kNoTextureName) != 0; }

void ConstructLayer(EffectLayer& layer) { layer = EffectLayer(); }

void DestroyLayer(EffectLayer& layer) {
    // View is Source itself after a full-size prepare; it is never freed twice.
    if (DialogOpen && layer.View != layer.Source) FreeRaster(layer.View);
    FreeRaster(layer.Source);
    for (Raster** owned : {&layer.SpareRaster1, &layer.CoverageNoise, &layer.CoverageMask, &layer.SpareRaster2,
                           &layer.EdgeSource, &layer.EdgeMask})
        FreeRaster(*owned);
    std::free(layer.EdgeMaskWork);
    FreePages(layer.Distances.Words, layer.Distances.WordCount * sizeof(uint32_t));
    ConstructLayer(layer);
}

namespace {

bool IsNoTexture(const char* name) { return std::strcmp(name, kNoTextureName) == 0; }

// A pair is off when every layer of it in use has no texture; while the navigator shows
// one layer of a pair alone, the pair follows that layer.
uint8_t PairInUse(const char* first, const char* second, bool secondExists, bool alone, int32_t view,
                  int32_t firstView) {
    if (!secondExists) return !IsNoTexture(first);
    if (IsNoTexture(first) && IsNoTexture(second)) return 0;
    if (alone && view == firstView) return !IsNoTexture(first);
    if (alone && view == firstView + 1) return !IsNoTexture(second);
    return 1;
}

void SplitColor(uint32_t color, uint8_t& red, uint8_t& green, uint8_t& blue) {
    red = uint8_t(color);
    green = uint8_t(color >> 8);
    blue = uint8_t(color >> 16);
}

bool Load(EffectLayer& layer, const char* name, bool report) {
    ReportTextureFailure = report;
    const bool loaded = LoadLayerTexture(layer, TexturePath(name));
    ReportTextureFailure = true;
    return loaded;
}

void FillBackground(EffectLayer& layer) {
    const FilterParameters& p = *gParams;
    layer.BackgroundOn = p.UseBackground;
    layer.ToneHighlight = layer.ToneMidtone = layer.ToneShadow = 100.0f;
    SplitColor(p.BackgroundHighlightColor, layer.HighlightRed, layer.HighlightGreen, layer.HighlightBlue);
    SplitColor(p.BackgroundMidtoneColor, layer.MidtoneRed, layer.MidtoneGreen, layer.MidtoneBlue);
    SplitColor(p.BackgroundShadowColor, layer.ShadowRed, layer.ShadowGreen, layer.ShadowBlue);
    layer.Scale = p.BackgroundScale;
    layer.Angle = p.BackgroundAngle;
    layer.Invert = p.BackgroundInvert;
    layer.FlipVer = p.BackgroundFlipVer;
    layer.FlipHor = p.BackgroundFlipHor;
    layer.OffsetX = p.BackgroundOffsetX;
    layer.OffsetY = p.BackgroundOffsetY;
    layer.GeometryDirty = layer.CoverageDirty = layer.EdgeDirty = 1;
}

void FillSurface(EffectLayer& layer, bool second) {
    FilterParameters& p = *gParams;
    layer.SurfaceOn = p.UseSurface;
    layer.Depth = second ? p.SurfaceDepth2 : p.SurfaceDepth1;
    layer.Perspective = p.SurfacePerspectiveOn;
    layer.LightAlpha = p.SurfaceLightAlpha;
    layer.LightBeta = p.SurfaceLightBeta;
    layer.ToneHighlight = float(p.SurfaceHighlight);
    layer.ToneMidtone = float(p.SurfaceMidtone);
    layer.ToneShadow = float(p.SurfaceShadow);
    SplitColor(p.SurfaceHighlightColor, layer.HighlightRed, layer.HighlightGreen, layer.HighlightBlue);
    SplitColor(p.SurfaceMidtoneColor, layer.MidtoneRed, layer.MidtoneGreen, layer.MidtoneBlue);
    SplitColor(p.SurfaceShadowColor, layer.ShadowRed, layer.ShadowGreen, layer.ShadowBlue);
    layer.OffsetX = second ? p.SurfaceOffsetX2 : p.SurfaceOffsetX1;
    layer.OffsetY = second ? p.SurfaceOffsetY2 : p.SurfaceOffsetY1;
    layer.FlipHor = second ? p.SurfaceFlipHor2 : p.SurfaceFlipHor1;
    layer.FlipVer = second ? p.SurfaceFlipVer2 : p.SurfaceFlipVer1;
    layer.Scale = second ? p.SurfaceScale2 : p.SurfaceScale1;
    layer.Invert = second ? p.SurfaceInvert2 : p.SurfaceInvert1;
    layer.Angle = second ? p.SurfaceAngle2 : p.SurfaceAngle1;
    layer.GeometryDirty = layer.CoverageDirty = layer.EdgeDirty = 1;
    layer.SurfaceType = second ? p.SurfaceType2 : p.SurfaceType1;
    if (second && LinkSurface) std::memcpy(p.SurfaceFileName2, p.SurfaceFileName1, sizeof p.SurfaceFileName2);
}

void FillWash(EffectLayer& layer, bool second) {
    FilterParameters& p = *gParams;
    layer.InUse = p.UseWash;
    layer.WashType = second ? p.WashType2 : p.WashType1;
    SplitColor(second ? p.WashStainColor2 : p.WashStainColor1, layer.StainRed, layer.StainGreen, layer.StainBlue);
    layer.CoverageScale = second ? p.WashCoverageScale2 : p.WashCoverageScale1;
    layer.Coverage = second ? p.WashCoverage2 : p.WashCoverage1;
    layer.Seed = second ? p.WashRandomize2 : p.WashRandomize1;
    layer.Inside = second ? p.WashInside2 : p.WashInside1;
    layer.Scale = second ? p.WashScale2 : p.WashScale1;
    SetLayerIntensity(layer, second ? p.WashIntensity2 : p.WashIntensity1);
    layer.EdgeDistance = second ? p.WashEdgeDistance2 : p.WashEdgeDistance1;
    layer.Angle = second ? p.WashAngle2 : p.WashAngle1;
    layer.Invert = second ? p.WashInvert2 : p.WashInvert1;
    layer.FlipVer = second ? p.WashFlipVer2 : p.WashFlipVer1;
    layer.FlipHor = second ? p.WashFlipHor2 : p.WashFlipHor1;
    layer.EdgeSoftness = second ? p.WashEdgeSoftness2 : p.WashEdgeSoftness1;
    layer.OffsetX = second ? p.WashOffsetX2 : p.WashOffsetX1;
    layer.OffsetY = second ? p.WashOffsetY2 : p.WashOffsetY1;
    layer.GeometryDirty = layer.CoverageDirty = layer.EdgeDirty = 1;
    if (second && LinkWash) std::memcpy(p.WashFileName2, p.WashFileName1, sizeof p.WashFileName2);
}

} // namespace

bool KeepWashLayers = false, KeepBackgroundLayer = false, KeepSurfaceLayers = false;

bool FillLayer(EffectLayer& layer, uint8_t kind, bool second) {
    layer.Kind = kind;
    ProgressPercent = ProgressSpan = 0;
    std::free(layer.EdgeMaskWork);
    layer.EdgeMaskWork = nullptr;
    const FilterParameters& p = *gParams;
    if (kind == LayerBackground) {
        FillBackground(layer);
        return Load(layer, p.BackgroundFileName, p.UseBackground);
    }
    if (kind == LayerSurface) {
        FillSurface(layer, second);
        const bool report = layer.SurfaceOn && (!second || p.SecondSurfaceExists);
        return Load(layer, second ? p.SurfaceFileName2 : p.SurfaceFileName1, report);
    }
    FillWash(layer, second);
    const bool report = layer.InUse && (!second || p.SecondWashExists);
    const bool loaded = Load(layer, second ? p.WashFileName2 : p.WashFileName1, report);
    SetLayerCoverageScale(layer, layer.CoverageScale);
    layer.CoverageDirty = 1;
    ProgressPercent = ProgressSpan = 0;
    BuildCoverageNoise(layer);
    SetLayerEdgeSoftness(layer, layer.EdgeSoftness);
    SetLayerEdgeDistance(layer, layer.EdgeDistance);
    BuildEdgeSource(layer);
    // Both depend on the deepest point, which exists only now.
    SetLayerEdgeSoftness(layer, layer.EdgeSoftness);
    SetLayerEdgeDistance(layer, layer.EdgeDistance);
    return loaded;
}

void ComputeUseFlags() {
    FilterParameters& p = *gParams;
    p.UseWash = PairInUse(p.WashFileName1, p.WashFileName2, p.SecondWashExists, ActiveTab == TabWash, ViewWash, 1);
    p.UseSurface = PairInUse(p.SurfaceFileName1, p.SurfaceFileName2, p.SecondSurfaceExists, ActiveTab == TabSurface,
                             ViewSurface, 4);
    p.UseBackground = !IsNoTexture(p.BackgroundFileName);
}

void CreateEngine() {
    const FilterParameters& p = *gParams;
    if (!KeepWashLayers) {
        DestroyLayer(WashLayers[0]);
        DestroyLayer(WashLayers[1]);
        FillLayer(WashLayers[0], LayerWash, false);
        if (p.SecondWashExists) FillLayer(WashLayers[1], LayerWash, true);
    }
    if (!KeepBackgroundLayer) {
        DestroyLayer(BackgroundLayer);
        FillLayer(BackgroundLayer, LayerBackground, false);
        AllocateBackgroundImage();
    }
    if (!KeepSurfaceLayers) {
        DestroyLayer(SurfaceLayers[0]);
        DestroyLayer(SurfaceLayers[1]);
        SurfaceLayers[0].Kind = SurfaceLayers[1].Kind = LayerSurface;
        FillLayer(SurfaceLayers[0], LayerSurface, false);
        if (p.SecondSurfaceExists) FillLayer(SurfaceLayers[1], LayerSurface, true);
        AllocateReliefBuffers();
    }
    ComputeUseFlags();
}

void DestroyEngine() {
    for (EffectLayer* layer : {&WashLayers[0], &WashLayers[1], &BackgroundLayer, &SurfaceLayers[0], &SurfaceLayers[1]})
        DestroyLayer(*layer);
    FreeBackgroundImage();
    FreeReliefBuffers();
}

void SetLayerCoverageScale(EffectLayer& layer, int32_t value) {
    if (layer.Kind != LayerWash) return;
    layer.CoverageScale = value;
    layer.CoverageFeature = 256.0 * value / 200.0;
    layer.CoverageDirty = 1;
}

void SetLayerIntensity(EffectLayer& layer, int32_t value) {
    layer.Intensity = value;
    SetCurve(layer, value);
    layer.GeometryDirty = 1;
}

void SetLayerRandomize(EffectLayer& layer, int32_t value) {
    if (layer.Kind != LayerWash) return;
    if (layer.Seed == value && layer.CoverageNoise) return;
    layer.Seed = value;
    layer.CoverageDirty = 1;
}

void SetLayerInside(EffectLayer& layer, uint8_t value) {
    if (layer.Kind != LayerWash) return;
    layer.Inside = value;
}

void SetLayerTones(EffectLayer& layer, float highlight, float midtone, float shadow, uint32_t highlightColor,
                   uint32_t midtoneColor, uint32_t shadowColor) {
    layer.ToneHighlight = highlight;
    layer.ToneMidtone = midtone;
    layer.ToneShadow = shadow;
    SplitColor(highlightColor, layer.HighlightRed, layer.HighlightGreen, layer.HighlightBlue);
    SplitColor(midtoneColor, layer.MidtoneRed, layer.MidtoneGreen, layer.MidtoneBlue);
    SplitColor(shadowColor, layer.ShadowRed, layer.ShadowGreen, layer.ShadowBlue);
    layer.ToneDirty = 1;
}

void ResetBackgroundColors() {
    const auto color = [](const char* name) { return uint32_t(FindParameterField(name)->defaultValue); };
    EffectLayer& layer = BackgroundLayer;
    SplitColor(color("BackgroundHighlightColor"), layer.HighlightRed, layer.HighlightGreen, layer.HighlightBlue);
    SplitColor(color("BackgroundMidtoneColor"), layer.MidtoneRed, layer.MidtoneGreen, layer.MidtoneBlue);
    SplitColor(color("BackgroundShadowColor"), layer.ShadowRed, layer.ShadowGreen, layer.ShadowBlue);
    layer.ToneDirty = 1;
}

void MarkAllLayersDirty() {
    for (EffectLayer* layer : {&WashLayers[0], &WashLayers[1], &BackgroundLayer, &SurfaceLayers[0], &SurfaceLayers[1]})
        layer->GeometryDirty = 1;
}

void MarkWashesCoverageDirty() { WashLayers[0].CoverageDirty = WashLayers[1].CoverageDirty = 1; }

OffsetRange LayerOffsetRange(const EffectLayer& layer) {
    OffsetRange range;
    range.OffsetX = layer.OffsetX;
    range.OffsetY = layer.OffsetY;
    if (!layer.Source) return range;
    range.RoomX = layer.Source->Bounds.right - FilterRightEdge();
    range.RoomY = layer.Source->Bounds.bottom - FilterBottomEdge();
    range.AnyRoom = range.RoomX > 0 || range.RoomY > 0;
    return range;
}
