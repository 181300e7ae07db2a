#include "state/Parameters.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace {

size_t FieldSize(const ParameterField& f) {
    switch (f.kind) {
    case FieldKind::Flag:
    case FieldKind::Byte: return 1;
    case FieldKind::Int16: return 2;
    case FieldKind::Name: return kNameLength;
    case FieldKind::Buffer: return 8;
    default: return 4;
    }
}

// A record full of a byte no default has, installed as gParams for the test.
struct PatternRecord {
    FilterParameters record;
    FilterParameters* saved = gParams;
    PatternRecord() {
        std::memset(&record, 0xCD, sizeof record);
        gParams = &record;
    }
    ~PatternRecord() { gParams = saved; }
};

std::set<std::string> ChangedFields(const FilterParameters& after) {
    FilterParameters before;
    std::memset(&before, 0xCD, sizeof before);
    const auto* a = reinterpret_cast<const uint8_t*>(&after);
    const auto* b = reinterpret_cast<const uint8_t*>(&before);
    std::vector<bool> covered(sizeof after, false);
    std::set<std::string> changed;
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const ParameterField& f = kParameterFields[i];
        if (std::memcmp(a + f.offset, b + f.offset, FieldSize(f)) != 0) changed.insert(f.name);
        for (size_t k = 0; k < FieldSize(f); ++k) covered[f.offset + k] = true;
    }
    for (size_t k = 0; k < sizeof after; ++k)
        if (!covered[k] && a[k] != b[k]) changed.insert("byte " + std::to_string(k));
    return changed;
}

} // namespace

TEST(Parameters, TableCoversTheRecordWithoutOverlap) {
    std::vector<int> owner(sizeof(FilterParameters), -1);
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const ParameterField& f = kParameterFields[i];
        ASSERT_LE(f.offset + FieldSize(f), sizeof(FilterParameters)) << f.name;
        for (size_t k = 0; k < FieldSize(f); ++k) {
            EXPECT_EQ(owner[f.offset + k], -1) << f.name << " overlaps " << kParameterFields[owner[f.offset + k]].name;
            owner[f.offset + k] = int(i);
        }
        if (f.key[0]) {
            EXPECT_EQ(FindParameterByKey(f.key), &f) << "key " << f.key << " is used twice";
        }
    }
    EXPECT_EQ(kParameterFieldCount, 113u) << "every field of the record has a row";
}

TEST(Parameters, FreshRecordHasTheDefaults) {
    PatternRecord r;
    InitParameters();
    const FilterParameters& p = r.record;
    EXPECT_EQ(p.UseWash, 1);
    EXPECT_EQ(p.UseBackground, 1);
    EXPECT_EQ(p.UseSurface, 1);
    EXPECT_EQ(p.SecondWashExists, 0);
    EXPECT_EQ(p.SecondSurfaceExists, 0);
    EXPECT_STREQ(p.WashFileName1, "Scratched.qzt");
    EXPECT_STREQ(p.WashFileName2, "General_Store.qzt");
    EXPECT_STREQ(p.BackgroundFileName, "Rusted.qzt");
    EXPECT_STREQ(p.SurfaceFileName1, "Battleship.qzt");
    EXPECT_STREQ(p.SurfaceFileName2, "Fiberglass.qzt");
    EXPECT_EQ(p.WashFileName1[kNameLength - 1], 0) << "names are zero-filled to the end";
    // The two halves of a pair start differently, and stay so.
    EXPECT_EQ(p.WashType1, 0);
    EXPECT_EQ(p.WashType2, 1);
    EXPECT_EQ(p.SurfaceType1, 1);
    EXPECT_EQ(p.SurfaceType2, 0);
    EXPECT_EQ(p.WashStainColor1, 0u);
    EXPECT_EQ(p.WashStainColor2, 0x00006464u);
    // The surface midtone starts at 50; every other tri-tone position at 100.
    EXPECT_EQ(p.SurfaceMidtone, 50);
    EXPECT_EQ(p.SurfaceHighlight, 100);
    EXPECT_EQ(p.SurfaceShadow, 100);
    EXPECT_EQ(p.BackgroundHighlight, 100);
    EXPECT_EQ(p.BackgroundMidtone, 100);
    EXPECT_EQ(p.BackgroundShadow, 100);
    EXPECT_EQ(p.BackgroundHighlightColor, 0x0000C8FFu);
    EXPECT_EQ(p.SurfaceShadowColor, 0x00003296u);
    EXPECT_EQ(p.SurfaceLightAlpha, 58.0f);
    EXPECT_EQ(p.SurfaceLightBeta, 35.0f);
    EXPECT_EQ(p.WashIntensity1, 100);
    EXPECT_EQ(p.WashCoverageScale2, 100);
    EXPECT_EQ(p.WashRandomize1, 123);
    EXPECT_EQ(p.WashInside2, 1);
    EXPECT_EQ(p.WindowLeft, 100);
    EXPECT_EQ(p.WindowTop, 100);
    EXPECT_EQ(p.WindowWidth, 828);
    EXPECT_EQ(p.WindowHeight, 602);
    EXPECT_EQ(p.Amount, 50);
    EXPECT_EQ(p.Disposition, 1);
    EXPECT_EQ(p.IgnoreSelection, 0);
    EXPECT_EQ(p.ApplySeries, 0);
    EXPECT_EQ(p.ApplyToAll, 0);
    EXPECT_EQ(p.ApplySeriesFirst, 1);
    EXPECT_EQ(p.WashMaskBuffer1, 0u);
    // Only the series flags, PresetApplied and the spare tail are left alone by a full reset.
    const std::set<std::string> untouched = {"PresetApplied"};
    const std::set<std::string> changed = ChangedFields(p);
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const char* name = kParameterFields[i].name;
        EXPECT_EQ(changed.count(name), 1 - untouched.count(name)) << name;
    }
}

TEST(Parameters, EachResetWritesExactlyItsFields) {
    struct Case {
        const char* name;
        std::function<void()> reset;
        std::set<std::string> fields;
    };
    const std::vector<Case> cases = {
        {"ResetWash1",
         ResetWash1,
         {"WashType1", "WashStainColor1", "WashScale1", "WashIntensity1", "WashFlipHor1", "WashFlipVer1", "WashInvert1",
          "WashAngle1", "WashCoverage1", "WashCoverageScale1", "WashEdgeDistance1", "WashEdgeSoftness1", "WashInside1",
          "WashOffsetX1", "WashOffsetY1", "WashRandomize1"}},
        {"ResetWash2",
         ResetWash2,
         {"WashType2", "WashStainColor2", "WashScale2", "WashIntensity2", "WashFlipHor2", "WashFlipVer2", "WashInvert2",
          "WashAngle2", "WashCoverage2", "WashCoverageScale2", "WashEdgeDistance2", "WashEdgeSoftness2", "WashInside2",
          "WashOffsetX2", "WashOffsetY2", "WashRandomize2"}},
        {"ResetBackground",
         ResetBackground,
         {"UseBackground", "BackgroundOffsetX", "BackgroundOffsetY", "BackgroundEntire", "BackgroundScale",
          "BackgroundFlipHor", "BackgroundFlipVer", "BackgroundInvert", "BackgroundAngle", "BackgroundHighlight",
          "BackgroundMidtone", "BackgroundShadow", "BackgroundHue", "BackgroundEnhanced", "BackgroundHighlightColor",
          "BackgroundMidtoneColor", "BackgroundShadowColor"}},
        {"ResetSurface1",
         ResetSurface1,
         {"SurfaceType1", "SurfaceOffsetX1", "SurfaceOffsetY1", "SurfaceDepth1", "SurfaceScale1", "SurfaceInvert1",
          "SurfaceFlipHor1", "SurfaceFlipVer1", "SurfaceAngle1"}},
        {"ResetSurface2",
         ResetSurface2,
         {"SurfaceType2", "SurfaceAngle2", "SurfaceFlipHor2", "SurfaceFlipVer2", "SurfaceInvert2", "SurfaceScale2",
          "SurfaceDepth2", "SurfaceOffsetX2", "SurfaceOffsetY2"}},
        {"ResetSurfaceCommon",
         ResetSurfaceCommon,
         {"SurfaceEntire", "SurfaceIncludeWashArea", "SurfaceBrightness", "SurfaceContrast", "SurfaceHue",
          "SurfaceIntensity", "SurfaceShadow", "SurfaceMidtone", "SurfaceHighlight", "SurfacePerspectiveOn",
          "SurfaceHighlightColor", "SurfaceMidtoneColor", "SurfaceShadowColor", "SurfaceLightAlpha",
          "SurfaceLightBeta"}},
        {"ResetSurfaceColors",
         ResetSurfaceColors,
         {"SurfaceHighlightColor", "SurfaceMidtoneColor", "SurfaceShadowColor"}},
    };
    for (const Case& c : cases) {
        PatternRecord r;
        c.reset();
        EXPECT_EQ(ChangedFields(r.record), c.fields) << c.name;
    }

    // The labels of the loaded colour presets go back to "Custom" with their page.
    std::strcpy(SurfaceColorsName, "Rust");
    std::strcpy(BackgroundColorsName, "Moss");
    PatternRecord r;
    ResetSurface1();
    ResetBackground();
    EXPECT_STREQ(SurfaceColorsName, "Custom");
    EXPECT_STREQ(BackgroundColorsName, "Custom");
}
