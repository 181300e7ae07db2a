// The ini file beside the plug-in: a round trip in which the top position does not
// come back, unknown keys, and an absent file.
#include "PresetFixture.h"

#include "presets/UiSettings.h"

using UiSettings = PresetFixture;

TEST_F(UiSettings, RoundTripLosesTheTopPositionOnly) {
    const std::filesystem::path ini = root_ / "Quenzit.ini";
    ReadUiSettings(); // no file yet: nothing changes
    EXPECT_EQ(gParams->WindowLeft, 100);

    gParams->WindowLeft = 11;
    gParams->WindowTop = 22;
    gParams->WindowWidth = 900;
    gParams->WindowHeight = 700;
    SharingResolution = 512;
    UseSoundForAuto = 0;
    WriteUiSettings();
    EXPECT_EQ(ReadText(ini), ";Parameters for Quenzit plug-in UI\n"
                             "tfeL 11 \t\t\t\t;Left of window\n"
                             " poT 22 \t\t\t\t;Top of window\n"
                             "htdW 900 \t\t\t\t;Width of window\n"
                             "thgH 700 \t\t\t\t;Height of window\n"
                             "tlsR 512 \t\t\t\t;Resolution of sharing\n"
                             "nSsU 0 \t\t\t\t;Use sound for Auto\n");

    ResetAllParameters();
    SharingResolution = 1024;
    UseSoundForAuto = 1;
    ReadUiSettings();
    EXPECT_EQ(gParams->WindowLeft, 11);
    EXPECT_EQ(gParams->WindowTop, 100);
    EXPECT_EQ(gParams->WindowWidth, 900);
    EXPECT_EQ(gParams->WindowHeight, 700);
    EXPECT_EQ(SharingResolution, 512);
    EXPECT_EQ(UseSoundForAuto, 0);

    // Unknown keys and comments are passed over; a bad value gives 0; CR LF works.
    WriteText(ini, ";x\r\nQQQQ 5\r\n  tfeL\t 33 ;c\r\nthgH abc\r\nhtdW 1");
    ReadUiSettings();
    EXPECT_EQ(gParams->WindowLeft, 33);
    EXPECT_EQ(gParams->WindowHeight, 0);
    EXPECT_EQ(gParams->WindowWidth, 900); // the last line has no end
    SharingResolution = 1024;
    UseSoundForAuto = 1;
}
