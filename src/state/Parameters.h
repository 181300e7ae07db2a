// The effect parameter record that lives in the host's parameter handle, the one
// table that describes every field (key, kind, default, range), and the reset
// operations. While a selector runs, gParams points at the locked block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

constexpr int kNameLength = 128; // texture file names, bare, zero-terminated
// The reserved texture name: a layer that names it has no texture.
inline constexpr const char* kNoTextureName = "No_Texture.qzt";

// Laid out with natural alignment and padded to the 976 bytes the host keeps.
struct FilterParameters {
    uint8_t EffectInNewLayer, EffectOnMask, BackgroundInNewLayer, SurfaceInNewLayer;
    uint8_t PendingNewLayerPass, UseWash, SecondWashExists, PendingMaskPass;
    char WashFileName1[kNameLength], WashFileName2[kNameLength];
    int32_t WashScale1, WashScale2, WashIntensity1, WashIntensity2;
    uint8_t WashFlipHor1, WashFlipHor2, WashFlipVer1, WashFlipVer2, WashInvert1, WashInvert2;
    int32_t WashAngle1, WashAngle2, WashCoverage1, WashCoverage2;
    int32_t WashCoverageScale1, WashCoverageScale2, WashEdgeDistance1, WashEdgeDistance2;
    int32_t WashEdgeSoftness1, WashEdgeSoftness2;
    uint8_t WashInside1, WashInside2;
    int32_t WashRandomize1, WashRandomize2;
    uint32_t WashStainColor1, WashStainColor2;
    uint8_t WashType1, WashType2;
    uint8_t UseBackground, BackgroundEntire, PendingBackgroundPass;
    int32_t PendingSurfacePass;
    char BackgroundFileName[kNameLength];
    int32_t BackgroundScale;
    uint8_t BackgroundFlipHor, BackgroundFlipVer, BackgroundInvert;
    int32_t BackgroundAngle, BackgroundHighlight, BackgroundMidtone, BackgroundShadow;
    int32_t BackgroundHue, BackgroundEnhanced;
    uint32_t BackgroundHighlightColor, BackgroundMidtoneColor, BackgroundShadowColor;
    uint8_t SurfaceFlipHor1, SurfaceFlipHor2, SurfaceFlipVer1, SurfaceFlipVer2;
    uint8_t UseSurface, SurfaceEntire, SurfaceIncludeWashArea, SecondSurfaceExists;
    char SurfaceFileName1[kNameLength], SurfaceFileName2[kNameLength];
    int32_t SurfaceDepth1, SurfaceDepth2, SurfaceScale1, SurfaceScale2;
    uint8_t SurfaceInvert1, SurfaceInvert2;
    int32_t SurfaceBrightness, SurfaceContrast, SurfaceHue, SurfaceIntensity;
    uint8_t SurfaceType1, SurfaceType2, SurfacePerspectiveOn;
    int32_t SurfaceHighlight, SurfaceMidtone, SurfaceShadow;
    float SurfaceLightAlpha, SurfaceLightBeta;
    uint32_t SurfaceHighlightColor, SurfaceMidtoneColor, SurfaceShadowColor;
    int32_t SurfaceAngle1, SurfaceAngle2;
    int32_t WashOffsetX1, WashOffsetY1, WashOffsetX2, WashOffsetY2;
    int32_t BackgroundOffsetX, BackgroundOffsetY;
    int32_t SurfaceOffsetX1, SurfaceOffsetY1, SurfaceOffsetX2, SurfaceOffsetY2;
    uint8_t PresetApplied;
    uint64_t WashMaskBuffer1, WashMaskBuffer2, SurfaceWashAreaBuffer;
    int32_t WindowLeft, WindowTop, WindowWidth, WindowHeight;
    int16_t Amount, Disposition;
    uint8_t IgnoreSelection, ApplyToAll, ApplySeriesFirst, ApplySeries;
    uint8_t Reserved[8];
};
static_assert(sizeof(FilterParameters) == 976, "the host keeps a 976-byte parameter block");

extern FilterParameters* gParams;

// How a field is stored; the kind decides how presets, scripts and the command line
// read and write it.
enum class FieldKind : uint8_t { Flag, Byte, Int16, Int32, Color, Float, Name, Buffer };

struct ParameterField {
    const char* name; // the field's name
    char key[5];      // four-character code of presets, scripts and the registry; "" if none
    FieldKind kind;
    size_t offset;
    double defaultValue;      // numbers
    const char* defaultName;  // names
    int32_t minimum, maximum; // what the dialog clamps to; equal when there is no range
};

extern const ParameterField kParameterFields[];
extern const size_t kParameterFieldCount;

const ParameterField* FindParameterField(const char* name);
const ParameterField* FindParameterByKey(const char* key);

// How a field's value travels in scripts, the registry and the command line: by its
// kind, except the host's own three keys (Amnt a percentage, disP an enumeration, ignS
// a byte that travels as a boolean).
enum class ValueWire : uint8_t { Bool, Integer, Float, Text, Percent, Disposition };
ValueWire WireOf(const ParameterField& field);

// Writes the table's default into one field of `record`.
void ResetField(FilterParameters& record, const ParameterField& field);

// The reset operations write gParams and nothing else.
void ResetAllParameters();
void ResetWash1();
void ResetWash2();
void ResetBackground();
void ResetSurface1();
void ResetSurface2();
void ResetSurfaceCommon();
void ResetSurfaceColors();
// The three default background colours into the background layer, not into gParams
// (defined with the layers).
void ResetBackgroundColors();
// Parameter set-up: the series flags once, then everything.
void InitParameters();

// Which layer groups move together; they travel with the parameters in scripts and
// presets but are not part of the record.
extern uint8_t LinkWash, LinkSurface, LinkBackground;

// The labels of the colour preset that is loaded on the Surface and Background pages.
extern char SurfaceColorsName[kNameLength];
extern char BackgroundColorsName[kNameLength];
