// The preset lists without windows: where a row draws, the sub-folder walk, which layers a
// preset of each kind leaves alone, and what the rows do to gParams and to the "Last Used
// Settings" through the same steps the dialog takes.
#include "presets/PresetFixture.h"

#include "dialog/PresetRows.h"
#include "effects/EffectLayer.h"
#include "platform/FolderList.h"
#include "presets/PresetLibrary.h"
#include "resources/ArtIds.h"
#include "state/ViewState.h"

#include <gtest/gtest.h>

#include <cstring>

using PresetRows = PresetFixture;

namespace {

const std::string kHeader = "Quenzit Press Preset;\nVersion 2;\n";

bool SameRecord(const FilterParameters& a, const FilterParameters& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

int BusyCalls = 0;
void CountBusy(bool) { ++BusyCalls; }

} // namespace

TEST(PresetRowLook, FolderRowsCarryTheirPictureAndShiftTheText) {
    const PresetRowLook file = LayOutPresetRow("Dusk", 10, 40);
    EXPECT_EQ(file.text, "Dusk");
    EXPECT_EQ(file.textX, 13);
    EXPECT_EQ(file.bitmap, 0);

    const PresetRowLook folder = LayOutPresetRow("\tOld", 10, 40);
    EXPECT_EQ(folder.text, "Old");
    EXPECT_EQ(folder.textX, 33);
    EXPECT_EQ(folder.bitmap, art::kFolderRow);
    EXPECT_EQ(folder.bitmapX, 12);
    EXPECT_EQ(folder.bitmapY, 41);
    EXPECT_EQ(LayOutPresetRow("\t..", 0, 0).bitmap, art::kParentFolderRow);
    // A name that merely contains a TAB later on is a preset.
    EXPECT_EQ(LayOutPresetRow("a\tb", 0, 0).bitmap, 0);

    // Small fonts still leave room for the 14-pixel picture one pixel down.
    EXPECT_GE(PresetRowHeight(8), 1 + kFolderRowHeight);
    EXPECT_EQ(PresetRowHeight(20), 22);
}

TEST(PresetRowLook, ControlsFindTheirKind) {
    ASSERT_NE(PresetListByControl(1013), nullptr);
    EXPECT_EQ(PresetListByControl(1013)->kind, PresetUser);
    EXPECT_EQ(PresetListByControl(1300)->kind, PresetUser); // the Basic page's Save is the User kind's
    EXPECT_EQ(PresetListByControl(1046)->kind, PresetBackground);
    EXPECT_EQ(PresetListByControl(1084)->save, 0);
    EXPECT_EQ(PresetListByControl(0), nullptr);
    EXPECT_EQ(PresetListByControl(1008), nullptr);
    int32_t count = 0;
    const PresetListIds* basic = PresetListsOfTab(TabBasic, count);
    ASSERT_EQ(count, 2);
    EXPECT_EQ(basic[0].list, 1084);
    EXPECT_EQ(basic[1].list, 1013);
    for (int32_t tab : {TabWash, TabSurface, TabBackground}) {
        const PresetListIds* l = PresetListsOfTab(tab, count);
        ASSERT_EQ(count, 1);
        EXPECT_EQ(l->kind, tab == TabWash ? PresetWash : tab == TabSurface ? PresetSurface : PresetBackground);
    }
    EXPECT_EQ(PresetListsOfTab(4, count), nullptr);
    EXPECT_EQ(count, 0);
}

TEST(PresetRowLook, SubFolderWalk) {
    std::string& sub = PresetSubFolder[PresetWash];
    sub = "a\\b\\";
    EnterPresetFolder(PresetWash, "\t..");
    EXPECT_EQ(sub, "a\\");
    EnterPresetFolder(PresetWash, "\t..");
    EXPECT_EQ(sub, "");
    EnterPresetFolder(PresetWash, "\t..");
    EXPECT_EQ(sub, "");
    EnterPresetFolder(PresetWash, "\tOld");
    EnterPresetFolder(PresetWash, "\tDeep");
    EXPECT_EQ(sub, std::string("Old") + kPathSeparator + "Deep" + kPathSeparator);
    EnterPresetFolder(PresetWash, "Deep"); // a file row walks nowhere
    EnterPresetFolder(PresetWash, "\t..");
    EXPECT_EQ(sub, std::string("Old") + kPathSeparator);
    sub.clear();
}

TEST(PresetRowLook, KeepFlagsByKindAndUse) {
    // All in use: a Wash or Basic preset rebuilds everything, the others spare the rest.
    EXPECT_EQ(KeepFlagsFor(PresetBasic, true, true, true), (KeepFlags{false, false, false}));
    EXPECT_EQ(KeepFlagsFor(PresetWash, true, true, true), (KeepFlags{false, false, false}));
    EXPECT_EQ(KeepFlagsFor(PresetUser, true, true, true), (KeepFlags{false, false, false}));
    EXPECT_EQ(KeepFlagsFor(PresetSurface, true, true, true), (KeepFlags{true, false, true}));
    EXPECT_EQ(KeepFlagsFor(PresetBackground, true, true, true), (KeepFlags{true, true, false}));
    // A group not in use is never rebuilt, whatever the kind.
    for (int32_t kind = PresetBasic; kind <= PresetUser; ++kind)
        EXPECT_EQ(KeepFlagsFor(kind, false, false, false), (KeepFlags{true, true, true})) << kind;
}

TEST_F(PresetRows, LastUsedSettingsSurviveSeveralLoads) {
    WriteText(Presets() / "Wash" / "A.qztpst", kHeader + "1cSW 70\n");
    WriteText(Presets() / "Wash" / "B.qztpst", kHeader + "1cSW 120\n1tIW 90\n");
    FilterParameters& p = *gParams;
    FilterParameters lastUsed = p;

    // A change by hand renews the copy.
    p.WashScale1 = 33;
    NoteParamsChanged(p, lastUsed);
    const FilterParameters beforeA = p;
    EXPECT_TRUE(SameRecord(lastUsed, beforeA));

    BusyCalls = 0;
    PresetClick click = ApplyPresetRow(PresetWash, 0, "A", lastUsed, CountBusy);
    EXPECT_TRUE(click.applied && click.deleteEnabled && !click.reconcile);
    EXPECT_EQ(BusyCalls, 2);
    EXPECT_EQ(p.WashScale1, 70);
    NoteParamsChanged(p, lastUsed);
    EXPECT_EQ(p.PresetApplied, 0);
    ASSERT_TRUE(ApplyPresetRow(PresetWash, 1, "B", lastUsed, nullptr).applied);
    NoteParamsChanged(p, lastUsed);
    EXPECT_EQ(p.WashIntensity1, 90);
    EXPECT_TRUE(SameRecord(lastUsed, beforeA));

    click = ApplyPresetRow(PresetBasic, 1, "Last Used Settings", lastUsed, nullptr);
    EXPECT_TRUE(click.applied && click.reconcile && !click.deleteEnabled);
    NoteParamsChanged(p, lastUsed);
    EXPECT_TRUE(SameRecord(p, beforeA));
    EXPECT_TRUE(SameRecord(lastUsed, beforeA));

    // Reset All asks nothing, turns every texture off and, as a preset row, spares the copy.
    click = ApplyPresetRow(PresetBasic, 0, "Reset All", lastUsed, nullptr);
    EXPECT_TRUE(click.applied && click.reconcile);
    EXPECT_STREQ(p.WashFileName1, kNoTextureName);
    EXPECT_STREQ(p.SurfaceFileName1, kNoTextureName);
    EXPECT_STREQ(p.BackgroundFileName, kNoTextureName);
    EXPECT_EQ(p.WashScale1, 0);
    NoteParamsChanged(p, lastUsed);
    EXPECT_TRUE(SameRecord(lastUsed, beforeA));
}

TEST_F(PresetRows, RowsThatLoadNothingLeaveTheParameters) {
    WriteText(Presets() / "Background" / "Bad.qztpst", "Quenzit Preset;\nlcSB 5\n");
    WriteText(Presets() / "Background" / "Dusk.qztpst", kHeader + "lcSB 77\n");
    FilterParameters& p = *gParams;
    const FilterParameters lastUsed = p;
    p.PresetApplied = 1;
    p.EffectOnMask = 1;
    p.BackgroundInNewLayer = 0;
    const FilterParameters before = p;

    EXPECT_EQ(ApplyPresetRow(PresetBackground, -1, "", lastUsed, nullptr).deleteEnabled, false);
    PresetClick click = ApplyPresetRow(PresetBackground, 0, "\tOld", lastUsed, nullptr);
    EXPECT_FALSE(click.applied || click.deleteEnabled);
    // A click on any row but a fixed one ends the mark of an earlier preset.
    EXPECT_EQ(p.PresetApplied, 0);
    p.PresetApplied = 1;
    click = ApplyPresetRow(PresetBackground, 0, "Bad", lastUsed, nullptr);
    EXPECT_TRUE(click.deleteEnabled);
    EXPECT_FALSE(click.applied);
    p.PresetApplied = 1;
    EXPECT_TRUE(SameRecord(p, before));

    // A good one: the mask forces the background into a layer of its own, and a background
    // preset spares the washes and surfaces.
    ActiveTab = TabBackground;
    ASSERT_TRUE(ApplyPresetRow(PresetBackground, 1, "Dusk", lastUsed, nullptr).applied);
    EXPECT_EQ(p.BackgroundScale, 77);
    EXPECT_EQ(p.BackgroundInNewLayer, 1);
    EXPECT_TRUE(KeepWashLayers);
    EXPECT_TRUE(KeepSurfaceLayers);
    EXPECT_EQ(KeepBackgroundLayer, !p.UseBackground);
    KeepWashLayers = KeepSurfaceLayers = KeepBackgroundLayer = false;
    ActiveTab = TabBasic;
}
