// What Prepare reads and what a final run leaves standing for the host.
#include "ShellFixture.h"

#include "common/TempPaths.h"
#include "state/Parameters.h"
#include "platform/ModulePath.h"
#include "presets/UiSettings.h"

#include <filesystem>
#include <fstream>

using namespace shelltest;

// A host reads whichever rectangles the plug-in said it uses; a final run must leave
// none of them standing, or the whole document is served (copied in and out) once more.
TEST(RunBoundaries, OneRequestPerFinalRunWithAndWithoutBigDocuments) {
    for (bool big : {true, false}) {
        hostsim::HostOptions options;
        options.bigDocumentData = big;
        auto host = MakeHost(RgbDocument(64, 48), options);
        ASSERT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), noErr);
        ASSERT_EQ(host->Requests().size(), 1u) << (big ? "32-bit" : "16-bit") << " rectangles";
        EXPECT_EQ(host->Requests()[0].used32Bit, big);
        EXPECT_EQ(host->Calls(filterSelectorContinue), 0);
        ASSERT_EQ(host->RepeatFilter(), noErr);
        EXPECT_EQ(host->Requests().size(), 2u) << "a repeat is one more request, no more";
        ExpectNoMisuse(*host);
    }
}

// Prepare finds the ini file beside the module and overlays the window place and the
// sound switch, also over a record it has just made.
TEST(RunBoundaries, PrepareReadsTheIniFile) {
    const std::filesystem::path dir = ProcessTempDir() / "ini-prepare";
    std::filesystem::create_directories(dir);
    std::ofstream(dir / kIniFileName, std::ios::binary)
        << ";Parameters for Quenzit plug-in UI\ntfeL 321 \t;\n poT 55 \t;\nhtdW 900 \t;\nnSsU 0 \t;\n";
    SetModuleFilePathOverride((dir / "Quenzit64.8bf").string());
    const int32_t savedSound = UseSoundForAuto;
    UseSoundForAuto = 1;

    auto host = MakeHost(RgbDocument(8, 8));
    const int16 result = host->Call(filterSelectorPrepare);
    const FilterParameters record = *reinterpret_cast<FilterParameters*>(*host->Parameters());
    const int32_t sound = UseSoundForAuto;
    UseSoundForAuto = savedSound;
    SetModuleFilePathOverride("");
    std::filesystem::remove_all(dir);

    ASSERT_EQ(result, noErr);
    EXPECT_EQ(record.WindowLeft, 321);
    EXPECT_EQ(record.WindowWidth, 900);
    EXPECT_EQ(record.WindowTop, 100) << "the top's key reads back as no key";
    EXPECT_EQ(record.WindowHeight, 602);
    EXPECT_EQ(sound, 0);
}
