#include "effects/EffectLayer.h"

#include "host/Parameters.h"
#include "host/Session.h"
#include "platform/PageMemory.h"
#include "raster/Raster.h"

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

bool LayerHasTexture(const EffectLayer& layer) {
    return std::strcmp(LayerFileName(layer), kNoTextureName) != 0;
}

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

// A pair is on unless every layer of it that is in use has no texture.
uint8_t PairInUse(const char* first, const char* second, bool secondExists) {
    if (!secondExists) return !IsNoTexture(first);
    return !(IsNoTexture(first) && IsNoTexture(second));
}

} // namespace

void CreateEngine() {
    // Layers are made anew: whatever a previous run left in them is freed first.
    for (EffectLayer* layer : {&WashLayers[0], &WashLayers[1]}) {
        DestroyLayer(*layer);
        layer->Kind = LayerWash;
    }
    DestroyLayer(BackgroundLayer);
    BackgroundLayer.Kind = LayerBackground;
    for (EffectLayer* layer : {&SurfaceLayers[0], &SurfaceLayers[1]}) {
        DestroyLayer(*layer);
        layer->Kind = LayerSurface;
    }
    gParams->UseWash =
        PairInUse(gParams->WashFileName1, gParams->WashFileName2, gParams->SecondWashExists);
    gParams->UseSurface =
        PairInUse(gParams->SurfaceFileName1, gParams->SurfaceFileName2, gParams->SecondSurfaceExists);
    gParams->UseBackground = !IsNoTexture(gParams->BackgroundFileName);
}

void DestroyEngine() {
    for (EffectLayer* layer :
         {&WashLayers[0], &WashLayers[1], &BackgroundLayer, &SurfaceLayers[0], &SurfaceLayers[1]})
        DestroyLayer(*layer);
}
