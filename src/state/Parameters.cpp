#include "state/Parameters.h"

#include <cstring>

FilterParameters* gParams = nullptr;
uint8_t LinkWash = 0, LinkSurface = 0, LinkBackground = 0;
char SurfaceColorsName[kNameLength] = "Custom";
char BackgroundColorsName[kNameLength] = "Custom";

namespace {
constexpr double kNoDefault = 0;
constexpr int32_t kNoRange = 0;
} // namespace

#define QZ_FIELD(Field, Key, Kind, Default, Min, Max)                                                                  \
    { #Field, Key, FieldKind::Kind, offsetof(FilterParameters, Field), Default, nullptr, Min, Max }
#define QZ_NAME(Field, Key, Default)                                                                                   \
    { #Field, Key, FieldKind::Name, offsetof(FilterParameters, Field), kNoDefault, Default, kNoRange, kNoRange }
#define QZ_FLAG(Field, Key, Default) QZ_FIELD(Field, Key, Flag, Default, 0, 1)

// In the record's order. Ranges are what the dialog's edit fields clamp to; the
// record itself takes values from scripts and presets as they come.
const ParameterField kParameterFields[] = {
    QZ_FLAG(EffectInNewLayer, "NLBs", 0),
    QZ_FLAG(EffectOnMask, "NLWs", 0),
    QZ_FLAG(BackgroundInNewLayer, "NLBk", 0),
    QZ_FLAG(SurfaceInNewLayer, "NLSf", 0),
    QZ_FLAG(PendingNewLayerPass, "ILNL", 0),
    QZ_FLAG(UseWash, "WSOn", 1),
    QZ_FLAG(SecondWashExists, "W2Ex", 0),
    QZ_FLAG(PendingMaskPass, "ILNW", 0),
    QZ_NAME(WashFileName1, "WFN1", "Scratched.qzt"),
    QZ_NAME(WashFileName2, "WFN2", "General_Store.qzt"),
    QZ_FIELD(WashScale1, "WSc1", Int32, 0, 0, 200),
    QZ_FIELD(WashScale2, "WSc2", Int32, 0, 0, 200),
    QZ_FIELD(WashIntensity1, "WIt1", Int32, 100, 1, 200),
    QZ_FIELD(WashIntensity2, "WIt2", Int32, 100, 1, 200),
    QZ_FLAG(WashFlipHor1, "WFH1", 0),
    QZ_FLAG(WashFlipHor2, "WFH2", 0),
    QZ_FLAG(WashFlipVer1, "WFV1", 0),
    QZ_FLAG(WashFlipVer2, "WFV2", 0),
    QZ_FLAG(WashInvert1, "WIv1", 0),
    QZ_FLAG(WashInvert2, "WIv2", 0),
    QZ_FIELD(WashAngle1, "WAg1", Int32, 0, 0, 270),
    QZ_FIELD(WashAngle2, "WAg2", Int32, 0, 0, 270),
    QZ_FIELD(WashCoverage1, "Cov1", Int32, 0, -100, 100),
    QZ_FIELD(WashCoverage2, "Cov2", Int32, 0, -100, 100),
    QZ_FIELD(WashCoverageScale1, "CSc1", Int32, 100, 1, 200),
    QZ_FIELD(WashCoverageScale2, "CSc2", Int32, 100, 1, 200),
    QZ_FIELD(WashEdgeDistance1, "EDs1", Int32, 0, 0, 100),
    QZ_FIELD(WashEdgeDistance2, "EDs2", Int32, 0, 0, 100),
    QZ_FIELD(WashEdgeSoftness1, "ESf1", Int32, 0, 0, 200),
    QZ_FIELD(WashEdgeSoftness2, "ESf2", Int32, 0, 0, 200),
    QZ_FLAG(WashInside1, "Isd1", 1),
    QZ_FLAG(WashInside2, "Isd2", 1),
    QZ_FIELD(WashRandomize1, "Rnd1", Int32, 123, kNoRange, kNoRange),
    QZ_FIELD(WashRandomize2, "Rnd2", Int32, 123, kNoRange, kNoRange),
    QZ_FIELD(WashStainColor1, "WSt1", Color, 0x000000, kNoRange, kNoRange),
    QZ_FIELD(WashStainColor2, "WSt2", Color, 0x006464, kNoRange, kNoRange),
    QZ_FIELD(WashType1, "WTp1", Byte, 0, 0, 3),
    QZ_FIELD(WashType2, "WTp2", Byte, 1, 0, 3),
    QZ_FLAG(UseBackground, "BkOn", 1),
    QZ_FLAG(BackgroundEntire, "BkEn", 0),
    QZ_FLAG(PendingBackgroundPass, "ILNB", 0),
    QZ_FIELD(PendingSurfacePass, "ILNS", Int32, 0, kNoRange, kNoRange),
    QZ_NAME(BackgroundFileName, "BkFN", "Rusted.qzt"),
    QZ_FIELD(BackgroundScale, "BScl", Int32, 0, 0, 200),
    QZ_FLAG(BackgroundFlipHor, "BFpH", 0),
    QZ_FLAG(BackgroundFlipVer, "BFpV", 0),
    QZ_FLAG(BackgroundInvert, "BInv", 0),
    QZ_FIELD(BackgroundAngle, "BAng", Int32, 0, 0, 270),
    QZ_FIELD(BackgroundHighlight, "BHLt", Int32, 100, kNoRange, kNoRange),
    QZ_FIELD(BackgroundMidtone, "BMdt", Int32, 100, 0, 100),
    QZ_FIELD(BackgroundShadow, "BSdw", Int32, 100, kNoRange, kNoRange),
    QZ_FIELD(BackgroundHue, "BHue", Int32, 0, -100, 100),
    QZ_FIELD(BackgroundEnhanced, "BEnh", Int32, 0, 0, 1),
    QZ_FIELD(BackgroundHighlightColor, "BHCl", Color, 0x0000C8FF, kNoRange, kNoRange),
    QZ_FIELD(BackgroundMidtoneColor, "BMCl", Color, 0x0032329B, kNoRange, kNoRange),
    QZ_FIELD(BackgroundShadowColor, "BSCl", Color, 0x00001E64, kNoRange, kNoRange),
    QZ_FLAG(SurfaceFlipHor1, "SFH1", 0),
    QZ_FLAG(SurfaceFlipHor2, "SFH2", 0),
    QZ_FLAG(SurfaceFlipVer1, "SFV1", 0),
    QZ_FLAG(SurfaceFlipVer2, "SFV2", 0),
    QZ_FLAG(UseSurface, "SfOn", 1),
    QZ_FLAG(SurfaceEntire, "SfEn", 0),
    QZ_FLAG(SurfaceIncludeWashArea, "SInW", 0),
    QZ_FLAG(SecondSurfaceExists, "Sf2E", 0),
    QZ_NAME(SurfaceFileName1, "SFN1", "Battleship.qzt"),
    QZ_NAME(SurfaceFileName2, "SFN2", "Fiberglass.qzt"),
    QZ_FIELD(SurfaceDepth1, "SDh1", Int32, 50, 0, 100),
    QZ_FIELD(SurfaceDepth2, "SDh2", Int32, 50, 0, 100),
    QZ_FIELD(SurfaceScale1, "SSc1", Int32, 0, 0, 200),
    QZ_FIELD(SurfaceScale2, "SSc2", Int32, 0, 0, 200),
    QZ_FLAG(SurfaceInvert1, "SIn1", 0),
    QZ_FLAG(SurfaceInvert2, "SIn2", 0),
    QZ_FIELD(SurfaceBrightness, "SBRH", Int32, 100, 0, 200),
    QZ_FIELD(SurfaceContrast, "SfCn", Int32, 100, 0, 200),
    QZ_FIELD(SurfaceHue, "SHue", Int32, 0, -100, 100),
    QZ_FIELD(SurfaceIntensity, "SfIn", Int32, 100, kNoRange, kNoRange),
    QZ_FIELD(SurfaceType1, "STp1", Byte, 1, 0, 4),
    QZ_FIELD(SurfaceType2, "STp2", Byte, 0, 0, 4),
    QZ_FLAG(SurfacePerspectiveOn, "SPO1", 0),
    QZ_FIELD(SurfaceHighlight, "SHL1", Int32, 100, kNoRange, kNoRange),
    QZ_FIELD(SurfaceMidtone, "SMD1", Int32, 50, 0, 100),
    QZ_FIELD(SurfaceShadow, "SSw1", Int32, 100, kNoRange, kNoRange),
    QZ_FIELD(SurfaceLightAlpha, "SAp1", Float, 58.0, kNoRange, kNoRange),
    QZ_FIELD(SurfaceLightBeta, "SBt1", Float, 35.0, kNoRange, kNoRange),
    QZ_FIELD(SurfaceHighlightColor, "SHC1", Color, 0x00FFFFFF, kNoRange, kNoRange),
    QZ_FIELD(SurfaceMidtoneColor, "SMC1", Color, 0x0000C8C8, kNoRange, kNoRange),
    QZ_FIELD(SurfaceShadowColor, "SSC1", Color, 0x00003296, kNoRange, kNoRange),
    QZ_FIELD(SurfaceAngle1, "SAg1", Int32, 0, 0, 270),
    QZ_FIELD(SurfaceAngle2, "SAg2", Int32, 0, 0, 270),
    QZ_FIELD(WashOffsetX1, "OW1X", Int32, 0, kNoRange, kNoRange),
    QZ_FIELD(WashOffsetY1, "OW1Y", Int32, 0, kNoRange, kNoRange),
    QZ_FIELD(WashOffsetX2, "OW2X", Int32, 0, kNoRange, kNoRange),
    QZ_FIELD(WashOffsetY2, "OW2Y", Int32, 0, kNoRange, kNoRange),
    QZ_FIELD(BackgroundOffsetX, "OfBX", Int32, 0, kNoRange, kNoRange),
    QZ_FIELD(BackgroundOffsetY, "OfBY", Int32, 0, kNoRange, kNoRange),
    QZ_FIELD(SurfaceOffsetX1, "OS1X", Int32, 0, kNoRange, kNoRange),
    QZ_FIELD(SurfaceOffsetY1, "OS1Y", Int32, 0, kNoRange, kNoRange),
    QZ_FIELD(SurfaceOffsetX2, "OS2X", Int32, 0, kNoRange, kNoRange),
    QZ_FIELD(SurfaceOffsetY2, "OS2Y", Int32, 0, kNoRange, kNoRange),
    QZ_FLAG(PresetApplied, "", 0),
    QZ_FIELD(WashMaskBuffer1, "", Buffer, 0, kNoRange, kNoRange),
    QZ_FIELD(WashMaskBuffer2, "", Buffer, 0, kNoRange, kNoRange),
    QZ_FIELD(SurfaceWashAreaBuffer, "", Buffer, 0, kNoRange, kNoRange),
    QZ_FIELD(WindowLeft, "", Int32, 100, kNoRange, kNoRange),
    QZ_FIELD(WindowTop, "", Int32, 100, kNoRange, kNoRange),
    QZ_FIELD(WindowWidth, "", Int32, 828, kNoRange, kNoRange),
    QZ_FIELD(WindowHeight, "", Int32, 602, kNoRange, kNoRange),
    QZ_FIELD(Amount, "Amnt", Int16, 50, kNoRange, kNoRange),
    QZ_FIELD(Disposition, "disP", Int16, 1, 0, 3),
    QZ_FIELD(IgnoreSelection, "ignS", Byte, 0, kNoRange, kNoRange),
    QZ_FLAG(ApplyToAll, "", 0),
    QZ_FLAG(ApplySeriesFirst, "", 1),
    QZ_FLAG(ApplySeries, "", 0),
};
const size_t kParameterFieldCount = sizeof(kParameterFields) / sizeof(kParameterFields[0]);

#undef QZ_FLAG
#undef QZ_NAME
#undef QZ_FIELD

const ParameterField* FindParameterField(const char* name) {
    for (const ParameterField& f : kParameterFields)
        if (std::strcmp(f.name, name) == 0) return &f;
    return nullptr;
}

const ParameterField* FindParameterByKey(const char* key) {
    for (const ParameterField& f : kParameterFields)
        if (f.key[0] && std::strncmp(f.key, key, 4) == 0) return &f;
    return nullptr;
}

ValueWire WireOf(const ParameterField& f) {
    if (std::strcmp(f.key, "Amnt") == 0) return ValueWire::Percent;
    if (std::strcmp(f.key, "disP") == 0) return ValueWire::Disposition;
    if (std::strcmp(f.key, "ignS") == 0) return ValueWire::Bool;
    switch (f.kind) {
    case FieldKind::Flag: return ValueWire::Bool;
    case FieldKind::Float: return ValueWire::Float;
    case FieldKind::Name: return ValueWire::Text;
    default: return ValueWire::Integer;
    }
}

void ResetField(FilterParameters& record, const ParameterField& field) {
    char* at = reinterpret_cast<char*>(&record) + field.offset;
    const double v = field.defaultValue;
    switch (field.kind) {
    case FieldKind::Flag:
    case FieldKind::Byte: *reinterpret_cast<uint8_t*>(at) = uint8_t(v); break;
    case FieldKind::Int16: *reinterpret_cast<int16_t*>(at) = int16_t(v); break;
    case FieldKind::Int32: *reinterpret_cast<int32_t*>(at) = int32_t(v); break;
    case FieldKind::Color: *reinterpret_cast<uint32_t*>(at) = uint32_t(v); break;
    case FieldKind::Float: *reinterpret_cast<float*>(at) = float(v); break;
    case FieldKind::Buffer: *reinterpret_cast<uint64_t*>(at) = 0; break;
    case FieldKind::Name:
        std::memset(at, 0, kNameLength);
        std::strncpy(at, field.defaultName, kNameLength - 1);
        break;
    }
}

namespace {

void ResetFields(std::initializer_list<const char*> names) {
    for (const char* name : names) ResetField(*gParams, *FindParameterField(name));
}

void SetLabel(char (&label)[kNameLength], const char* text) {
    std::memset(label, 0, kNameLength);
    std::strncpy(label, text, kNameLength - 1);
}

} // namespace

void ResetWash1() {
    ResetFields({"WashType1", "WashStainColor1", "WashScale1", "WashIntensity1", "WashFlipHor1", "WashFlipVer1",
                 "WashInvert1", "WashAngle1", "WashCoverage1", "WashCoverageScale1", "WashEdgeDistance1",
                 "WashEdgeSoftness1", "WashInside1", "WashOffsetX1", "WashOffsetY1", "WashRandomize1"});
}

void ResetWash2() {
    ResetFields({"WashType2", "WashStainColor2", "WashScale2", "WashIntensity2", "WashFlipHor2", "WashFlipVer2",
                 "WashInvert2", "WashAngle2", "WashCoverage2", "WashCoverageScale2", "WashEdgeDistance2",
                 "WashEdgeSoftness2", "WashInside2", "WashOffsetX2", "WashOffsetY2", "WashRandomize2"});
}

void ResetBackground() {
    SetLabel(BackgroundColorsName, "Custom");
    ResetFields({"UseBackground", "BackgroundOffsetX", "BackgroundOffsetY", "BackgroundEntire", "BackgroundScale",
                 "BackgroundFlipHor", "BackgroundFlipVer", "BackgroundInvert", "BackgroundAngle", "BackgroundHighlight",
                 "BackgroundMidtone", "BackgroundShadow", "BackgroundHue", "BackgroundEnhanced",
                 "BackgroundHighlightColor", "BackgroundMidtoneColor", "BackgroundShadowColor"});
}

void ResetSurface1() {
    SetLabel(SurfaceColorsName, "Custom");
    ResetFields({"SurfaceType1", "SurfaceOffsetX1", "SurfaceOffsetY1", "SurfaceDepth1", "SurfaceScale1",
                 "SurfaceInvert1", "SurfaceFlipHor1", "SurfaceFlipVer1", "SurfaceAngle1"});
}

void ResetSurface2() {
    ResetFields({"SurfaceType2", "SurfaceAngle2", "SurfaceFlipHor2", "SurfaceFlipVer2", "SurfaceInvert2",
                 "SurfaceScale2", "SurfaceDepth2", "SurfaceOffsetX2", "SurfaceOffsetY2"});
}

void ResetSurfaceColors() { ResetFields({"SurfaceHighlightColor", "SurfaceMidtoneColor", "SurfaceShadowColor"}); }

void ResetSurfaceCommon() {
    ResetFields({"SurfaceEntire", "SurfaceIncludeWashArea", "SurfaceBrightness", "SurfaceContrast", "SurfaceHue",
                 "SurfaceIntensity", "SurfaceShadow", "SurfaceMidtone", "SurfaceHighlight", "SurfacePerspectiveOn",
                 "SurfaceLightAlpha", "SurfaceLightBeta"});
    ResetSurfaceColors();
}

void ResetAllParameters() {
    ResetFields({"WindowLeft", "WindowTop", "WindowWidth", "WindowHeight", "EffectInNewLayer", "EffectOnMask",
                 "BackgroundInNewLayer", "SurfaceInNewLayer", "PendingNewLayerPass", "UseWash", "SecondWashExists",
                 "PendingMaskPass", "UseSurface"});
    ResetWash1();
    ResetFields({"WashFileName1"});
    ResetWash2();
    ResetFields({"WashFileName2"});
    ResetBackground();
    ResetFields({"BackgroundFileName"});
    ResetSurface1();
    ResetFields({"SurfaceFileName1"});
    ResetSurface2();
    ResetFields({"SurfaceFileName2"});
    ResetSurfaceCommon();
    ResetFields({"SecondSurfaceExists", "PendingBackgroundPass", "PendingSurfacePass", "WashMaskBuffer1",
                 "WashMaskBuffer2", "SurfaceWashAreaBuffer", "Disposition", "IgnoreSelection", "Amount"});
}

void InitParameters() {
    ResetFields({"ApplySeries", "ApplyToAll", "ApplySeriesFirst"});
    ResetAllParameters();
}
