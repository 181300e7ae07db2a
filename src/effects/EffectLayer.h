// The working record of one texture effect and the five that exist in a run: two
// washes, two surfaces and one background. Each carries the dirty flags that decide
// how much work the next render does; every builder clears its own flag.
#pragma once

#include "raster/Raster.h"

#include <array>
#include <cstddef>
#include <cstdint>

enum LayerKind : uint8_t { LayerWash = 0, LayerBackground = 1, LayerSurface = 2 };

// Squared distances to the edge, one word a pixel, in a page block (AllocatePages). When
// the edge is the ring around the whole edge raster (no selection, no transparency) the
// distances are the nearer side's and no words are kept.
struct DistanceMap {
    uint32_t* Words = nullptr;
    size_t WordCount = 0;
    int32_t LargestDistanceSquared = 0;
    bool Rectangle = false;
};

inline constexpr std::array<uint8_t, 256> IdentityCurve() {
    std::array<uint8_t, 256> curve = {};
    for (size_t i = 0; i < curve.size(); ++i) curve[i] = uint8_t(i);
    return curve;
}

struct EffectLayer {
    uint8_t Kind = LayerWash;
    char Path[1027] = {};
    int32_t TextureWidth = 0, TextureHeight = 0; // as the file says, before scaling
    int32_t OffsetX = 0, OffsetY = 0;            // where the filter rectangle lies in Source
    RasterRect FilterBounds;                     // 0, 0, FilterHeight, FilterWidth; washes only
    Raster* Source = nullptr;                    // owned: the texture scaled and oriented
    Raster* View = nullptr;                      // at work scale; owned in a preview, Source itself at full size
    Raster* SpareRaster1 = nullptr;              // owned, never filled
    Raster* CoverageNoise = nullptr;
    Raster* CoverageMask = nullptr;
    Raster* ActiveCoverage = nullptr; // not owned: always CoverageMask
    Raster* SpareRaster2 = nullptr;   // owned, never filled
    Raster* EdgeSource = nullptr;
    Raster* EdgeMask = nullptr;
    uint8_t* EdgeMaskWork = nullptr; // ImageWidth * ImageHeight bytes
    DistanceMap Distances;
    double ScaleFactor = 0.0; // resampling factor of Source
    double Scale = 0.0;       // the layer's Scale setting
    double CoverageFeature = 128.0;
    int32_t Coverage = 0;
    int32_t CoverageScale = 100;
    int32_t Intensity = 100;
    int32_t EdgeDistance = 0;
    int32_t EdgeThreshold = 0;
    int32_t EdgeSoftness = 0;
    int32_t EdgeBlur = 0;
    int32_t Depth = 0;
    uint8_t StainRed = 0, StainGreen = 0, StainBlue = 0, StainPad = 0; // one word, red lowest
    uint8_t WashType = 0;
    uint8_t SurfaceType = 0;
    uint8_t Perspective = 0;
    float LightAlpha = 0.0f, LightBeta = 0.0f;
    uint8_t Inside = 1;
    int32_t Seed = 123;
    std::array<uint8_t, 256> Curve = IdentityCurve();
    int32_t CurveParameter = 0;
    uint8_t InUse = 0;
    uint8_t Invert = 0, FlipVer = 0, FlipHor = 0;
    int32_t Angle = 0; // 0, 90, 180 or 270
    uint8_t BackgroundOn = 0, SurfaceOn = 0;
    int32_t GeometryDirty = 1;
    int32_t CoverageDirty = 1;
    int32_t EdgeDirty = 1;
    int32_t ToneDirty = 1;
    float ToneHighlight = 0.0f, ToneMidtone = 0.0f, ToneShadow = 0.0f;
    uint8_t HighlightRed = 0, HighlightGreen = 0, HighlightBlue = 0, HighlightPad = 0;
    uint8_t MidtoneRed = 0, MidtoneGreen = 0, MidtoneBlue = 0, MidtonePad = 0;
    uint8_t ShadowRed = 0, ShadowGreen = 0, ShadowBlue = 0, ShadowPad = 0;
};

extern EffectLayer WashLayers[2];
extern EffectLayer SurfaceLayers[2];
extern EffectLayer BackgroundLayer;

// The surface must be shaded again (a new View, depth or light).
extern int32_t SurfaceShadeDirty;

// The texture name gParams holds for one of the five layers.
const char* LayerFileName(const EffectLayer& layer);
// The no-texture rule: such a layer is skipped by every stage of a render.
bool LayerHasTexture(const EffectLayer& layer);

void ConstructLayer(EffectLayer& layer);
// Frees what the layer owns: Source; View only while the dialog is open (it is Source
// itself after a full-size prepare); the other rasters, EdgeMaskWork and the distance
// map. The layer is constructed anew.
void DestroyLayer(EffectLayer& layer);

// Groups of layers a rebuild leaves as they are (a preset of another kind was loaded).
extern bool KeepWashLayers, KeepBackgroundLayer, KeepSurfaceLayers;

// Copies the layer's settings from gParams and loads its texture; `second` picks the
// second layer of a pair. False when the texture could not get a raster.
bool FillLayer(EffectLayer& layer, uint8_t kind, bool second);
// Makes the five layers for a run (each group unless kept), then recomputes UseWash,
// UseSurface and UseBackground from their texture names and the view being shown.
void CreateEngine();
void DestroyEngine();
void ComputeUseFlags();

// Wash setters; on another kind they do nothing unless noted.
void SetLayerCoverageScale(EffectLayer& layer, int32_t value);
void SetLayerIntensity(EffectLayer& layer, int32_t value); // any kind
void SetLayerRandomize(EffectLayer& layer, int32_t value);
void SetLayerInside(EffectLayer& layer, uint8_t value);
// Any kind: the tone levels and colours (0x00BBGGRR).
void SetLayerTones(EffectLayer& layer, float highlight, float midtone, float shadow, uint32_t highlightColor,
                   uint32_t midtoneColor, uint32_t shadowColor);

void MarkAllLayersDirty();
void MarkWashesCoverageDirty();

// How far the preview's drag may slide the layer's texture.
struct OffsetRange {
    int32_t OffsetX = 0, OffsetY = 0;
    int32_t RoomX = 0, RoomY = 0;
    bool AnyRoom = false;
};
OffsetRange LayerOffsetRange(const EffectLayer& layer);

// Orientation of a layer's Source, each acting on it at once and then preparing the
// layer again: the flag flips (Invert, FlipHor, FlipVer) or the angle moves by a
// quarter turn.
void InvertLayer(EffectLayer& layer);
void FlipLayerHor(EffectLayer& layer);
void FlipLayerVer(EffectLayer& layer);
void RotateLayerCw(EffectLayer& layer);
void RotateLayerCcw(EffectLayer& layer);
