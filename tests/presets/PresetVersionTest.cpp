// The version line of a preset file is a whole number: only 1 and 2 are versions.
#include "PresetFixture.h"

using PresetVersionLine = PresetFixture;

TEST_F(PresetVersionLine, OnlyWholeOneAndTwoAreTaken) {
    const std::string header = std::string(kPresetHeader) + "\n";
    ASSERT_TRUE(LoadText(header + "Version 10;\n"));
    EXPECT_EQ(PresetVersion, 2) << "10 is not version 1";
    ASSERT_TRUE(LoadText(header + "Version   1;\n"));
    EXPECT_EQ(PresetVersion, 1);
    ASSERT_TRUE(LoadText(header + "Version 21;\n"));
    EXPECT_EQ(PresetVersion, 1) << "an unknown version leaves the last one";
    ASSERT_TRUE(LoadText(header + "Version 2;\n"));
    EXPECT_EQ(PresetVersion, 2);
}
