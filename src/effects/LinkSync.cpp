#include "effects/LinkSync.h"

#include "effects/EffectLayer.h"
#include "effects/LayerTexture.h"
#include "state/Parameters.h"
#include "state/ViewState.h"

#include <cstdlib>

namespace {

// The gParams fields a layer's placement lives in. flipVer is the field the "Flip
// Horizontal" check writes (and FlipLayerHor acts for); flipHor the reverse.
struct Placement {
    int32_t* scale;
    uint8_t* flipHor;
    uint8_t* flipVer;
    int32_t* angle;
    int32_t* offsetX;
    int32_t* offsetY;
};

Placement PlacementOf(const EffectLayer& layer) {
    FilterParameters& p = *gParams;
    if (&layer == &WashLayers[0])
        return {&p.WashScale1, &p.WashFlipHor1, &p.WashFlipVer1, &p.WashAngle1, &p.WashOffsetX1, &p.WashOffsetY1};
    if (&layer == &WashLayers[1])
        return {&p.WashScale2, &p.WashFlipHor2, &p.WashFlipVer2, &p.WashAngle2, &p.WashOffsetX2, &p.WashOffsetY2};
    if (&layer == &SurfaceLayers[0])
        return {&p.SurfaceScale1, &p.SurfaceFlipHor1, &p.SurfaceFlipVer1,
                &p.SurfaceAngle1, &p.SurfaceOffsetX1, &p.SurfaceOffsetY1};
    if (&layer == &SurfaceLayers[1])
        return {&p.SurfaceScale2, &p.SurfaceFlipHor2, &p.SurfaceFlipVer2,
                &p.SurfaceAngle2, &p.SurfaceOffsetX2, &p.SurfaceOffsetY2};
    return {&p.BackgroundScale, &p.BackgroundFlipHor, &p.BackgroundFlipVer,
            &p.BackgroundAngle, &p.BackgroundOffsetX, &p.BackgroundOffsetY};
}

void SyncLayer(const EffectLayer& source, EffectLayer& target) {
    if (&source == &target) return;
    // The preview keeps a surface's shading between renders unless told.
    if (&target == &SurfaceLayers[0] || &target == &SurfaceLayers[1]) SurfaceShadeDirty = 1;
    const Placement from = PlacementOf(source), to = PlacementOf(target);
    *to.scale = *from.scale;
    SetLayerScale(target, *from.scale);
    if (*to.flipVer != *from.flipVer) {
        *to.flipVer = *from.flipVer;
        FlipLayerHor(target);
    }
    if (*to.flipHor != *from.flipHor) {
        *to.flipHor = *from.flipHor;
        FlipLayerVer(target);
    }
    if (*to.offsetX != *from.offsetX || *to.offsetY != *from.offsetY) {
        *to.offsetX = target.OffsetX = *from.offsetX;
        *to.offsetY = target.OffsetY = *from.offsetY;
        target.GeometryDirty = 1;
    }
    if (*to.angle != *from.angle) {
        const int32_t difference = *to.angle - *from.angle;
        const int32_t turns = QuarterTurns(difference);
        for (int32_t i = 0; i < turns; ++i) {
            if (difference > 0) RotateLayerCcw(target);
            else RotateLayerCw(target);
        }
        *to.angle = *from.angle;
        target.GeometryDirty = 1;
        PrepareLayerTexture(target);
    }
}

struct Group {
    EffectLayer* first;
    EffectLayer* second; // null when the pair has no second layer
    bool linked;
};

Group Washes() {
    const FilterParameters& p = *gParams;
    return {&WashLayers[0], p.SecondWashExists ? &WashLayers[1] : nullptr, LinkWash && p.UseWash};
}
Group Surfaces() {
    const FilterParameters& p = *gParams;
    return {&SurfaceLayers[0], p.SecondSurfaceExists ? &SurfaceLayers[1] : nullptr, LinkSurface && p.UseSurface};
}
Group Background() { return {&BackgroundLayer, nullptr, LinkBackground && gParams->UseBackground}; }

void SyncGroup(const EffectLayer& source, const Group& group) {
    if (!group.linked) return;
    SyncLayer(source, *group.first);
    if (group.second) SyncLayer(source, *group.second);
}

} // namespace

int32_t QuarterTurns(int32_t difference) { return (std::abs(difference) - 1) / 90 + 1; }

void SyncWashLinks() {
    if (!gParams || !LinkWash) return;
    const bool second = ViewWash == ViewCodeWashTwo && gParams->SecondWashExists;
    const EffectLayer& source = WashLayers[second ? 1 : 0];
    SyncGroup(source, Washes());
    SyncGroup(source, Surfaces());
    SyncGroup(source, Background());
}

void SyncSurfaceLinks() {
    if (!gParams || !LinkSurface) return;
    const bool second = ViewSurface == ViewCodeSurfaceTwo && gParams->SecondSurfaceExists;
    const EffectLayer& source = SurfaceLayers[second ? 1 : 0];
    SyncGroup(source, Surfaces());
    SyncGroup(source, Washes());
    SyncGroup(source, Background());
}

void SyncBackgroundLinks() {
    if (!gParams || !LinkBackground) return;
    SyncGroup(BackgroundLayer, Surfaces());
    SyncGroup(BackgroundLayer, Washes());
}
