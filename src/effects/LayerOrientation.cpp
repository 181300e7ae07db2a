// The orientation setters: each changes the layer's Source at once (the orientation
// is baked into it) and prepares the layer again; none goes back to the file.
#include "effects/Engine.h"
#include "raster/Geometry.h"
#include "raster/Raster.h"

namespace {

// A turn replaces Source; a View that was Source itself must not outlive it.
void Turn(EffectLayer& layer, bool (*turn)(Raster*&)) {
    Raster* old = layer.Source;
    if (turn(layer.Source) && layer.View == old) layer.View = nullptr;
}

void Reprepare(EffectLayer& layer) {
    layer.GeometryDirty = 1;
    PrepareLayerTexture(layer);
}

} // namespace

void InvertLayer(EffectLayer& layer) {
    layer.Invert = !layer.Invert;
    if (layer.Source) layer.Source->InvertRaster();
    Reprepare(layer);
}

void FlipLayerHor(EffectLayer& layer) {
    layer.FlipHor = !layer.FlipHor;
    if (layer.Source) FlipRasterInPlaceHor(*layer.Source);
    Reprepare(layer);
}

void FlipLayerVer(EffectLayer& layer) {
    layer.FlipVer = !layer.FlipVer;
    if (layer.Source) FlipRasterInPlaceVer(*layer.Source);
    Reprepare(layer);
}

void RotateLayerCw(EffectLayer& layer) {
    layer.Angle = (layer.Angle + 90) % 360;
    Turn(layer, TurnRasterCw);
    Reprepare(layer);
}

void RotateLayerCcw(EffectLayer& layer) {
    int32_t angle = layer.Angle - 90;
    if (angle < 0) angle += 360;
    layer.Angle = angle % 360;
    Turn(layer, TurnRasterCcw);
    Reprepare(layer);
}
