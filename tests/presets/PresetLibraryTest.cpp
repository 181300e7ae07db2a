// The preset folders: list rows, walking into sub-folders, saving with its overwrite
// rule, deleting, loading by name, and the strip's names.
#include "PresetFixture.h"

#include "platform/Alert.h"
#include "presets/PresetLibrary.h"

#include <algorithm>
#include <iterator>
#include <vector>
#include <cstring>

using PresetLibrary = PresetFixture;

namespace {
const std::string kHeader = "Quenzit Press Preset;\nVersion 2;\n";
}

TEST_F(PresetLibrary, ListsWalksSavesAndDeletes) {
    WriteText(Presets() / "Wash" / "b.qztpst", kHeader);
    WriteText(Presets() / "Wash" / "A.qztpst", kHeader);
    WriteText(Presets() / "Wash" / "notes.txt", "x");
    WriteText(Presets() / "Wash" / "Old" / "c.qztpst", kHeader);
    PresetSubFolder[PresetWash].clear();

    EXPECT_EQ(FillPresetList(PresetWash), (std::vector<std::string>{"\tOld", "A", "b"}));
    const std::vector<std::string> basic = FillPresetList(PresetBasic);
    EXPECT_EQ(basic, (std::vector<std::string>{"Reset All", "Last Used Settings"}));

    EnterPresetFolder(PresetWash, "\tOld");
    EXPECT_EQ(FillPresetList(PresetWash), (std::vector<std::string>{"\t..", "c"}));

    // The path counts: "A" in the sub-folder is a new file, then an existing one.
    EXPECT_EQ(SavePreset(PresetWash, "A.qztpst", false), SaveResult::Created);
    EXPECT_EQ(SavePreset(PresetWash, "A", false), SaveResult::Exists);
    EXPECT_EQ(SavePreset(PresetWash, "A", true), SaveResult::Overwritten);
    EXPECT_EQ(SavePreset(PresetWash, "", false), SaveResult::EmptyName);
    EXPECT_TRUE(std::filesystem::exists(Presets() / "Wash" / "Old" / "A.qztpst"));
    EXPECT_EQ(ReadText(Presets() / "Wash" / "A.qztpst"), kHeader);

    EXPECT_FALSE(DeletePresetFile("\t..", PresetWash));
    EXPECT_TRUE(DeletePresetFile("c", PresetWash));
    EXPECT_FALSE(DeletePresetFile("c", PresetWash));
    EXPECT_EQ(FillPresetList(PresetWash), (std::vector<std::string>{"\t..", "A"}));

    EnterPresetFolder(PresetWash, "\t..");
    EXPECT_EQ(PresetSubFolder[PresetWash], "");

    // A folder that cannot take the file tells the user.
    AlertCapture alerts;
    EXPECT_EQ(SavePreset(PresetBackground, "x", false), SaveResult::CannotCreate);
    ASSERT_EQ(alerts.Alerts().size(), 1u);
    EXPECT_EQ(alerts.Alerts()[0].text, "Cannot Save File!");
}

TEST_F(PresetLibrary, LoadsByNameAndNamesTheStrip) {
    WriteText(Presets() / "Background" / "Dusk.qztpst", kHeader + "lcSB 77\n");
    WriteText(Presets() / "Background" / "Bad.qztpst", "Quenzit Preset;\nlcSB 5\n");
    std::strcpy(BackgroundColorsName, "Sepia");
    std::strcpy(SurfaceColorsName, "Moss");

    EXPECT_FALSE(LoadPreset("Bad", PresetBackground));
    EXPECT_FALSE(LoadPreset("Missing", PresetBackground));
    EXPECT_EQ(gParams->BackgroundScale, 0);
    ASSERT_TRUE(LoadPreset("Dusk", PresetBackground));
    EXPECT_EQ(gParams->BackgroundScale, 77);
    EXPECT_EQ(std::string(BackgroundColorsName), "Custom");
    EXPECT_EQ(std::string(SurfaceColorsName), "Moss"); // a background preset keeps the surface's

    WriteText(Presets() / "BackPalette" / "none.qztpst", kHeader);
    WriteText(Presets() / "BackPalette" / "Ochre.qztpst", kHeader);
    WriteText(Presets() / "BackPalette" / "Ash.qztpst", kHeader);
    std::vector<std::string> names = ListPresetNames(PresetPalette);
    ASSERT_EQ(names.size(), 3u);
    EXPECT_EQ(names[0], "none");
    std::sort(names.begin() + 1, names.end()); // directory order is the system's
    EXPECT_EQ(names[1], "Ash");
    EXPECT_EQ(names[2], "Ochre");
}

TEST_F(PresetLibrary, NamesThatLeadElsewhereAreRefused) {
    EXPECT_EQ(PresetSaveName("Dusk.qztpst"), "Dusk");
    EXPECT_EQ(PresetSaveName("a.qztpst"), "a");               // 8 characters
    EXPECT_EQ(PresetSaveName(".qztpst"), ".qztpst");          // 7: the name itself
    EXPECT_EQ(PresetSaveName("a.qztpst.qztpst"), "a.qztpst"); // once
    EXPECT_EQ(PresetSaveName("Dusk"), "Dusk");

    std::filesystem::create_directories(Presets() / "Wash" / "Sub");
    const auto tree = [&] {
        std::vector<std::string> files;
        for (const auto& e : std::filesystem::recursive_directory_iterator(root_)) files.push_back(e.path().string());
        std::sort(files.begin(), files.end());
        return files;
    };
    const std::vector<std::string> before = tree();
    AlertCapture alerts;
    const std::string refused[] = {"..\\Evil",
                                   "../Evil",
                                   "Sub/x",
                                   "Sub\\x",
                                   "c:x",
                                   "a*b",
                                   "q?",
                                   "CON",
                                   "nul.txt",
                                   "Com1",
                                   "LPT9 ",
                                   "tab\tin",
                                   std::string(249, 'n')};
    for (const std::string& name : refused)
        EXPECT_EQ(SavePreset(PresetWash, name, true), SaveResult::CannotCreate) << name;
    EXPECT_EQ(alerts.Alerts().size(), std::size(refused));
    EXPECT_EQ(alerts.Alerts().back().text, "Cannot Save File!");
    EXPECT_EQ(tree(), before);

    // A whole path of 259 characters is the longest; names that only look odd still save.
    const size_t room = 259 - PresetFilePath("", PresetWash).size();
    EXPECT_EQ(SavePreset(PresetWash, std::string(room + 1, 'm'), false), SaveResult::CannotCreate);
    EXPECT_EQ(SavePreset(PresetWash, std::string(room, 'm'), false), SaveResult::Created);
    EXPECT_EQ(SavePreset(PresetWash, "Console", false), SaveResult::Created);
    EXPECT_EQ(SavePreset(PresetWash, "COM10", false), SaveResult::Created);
}
