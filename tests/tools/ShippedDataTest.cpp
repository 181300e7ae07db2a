// The data folder the build generates: every shipped preset loads and names textures
// that are shipped beside it.
#include "state/Parameters.h"
#include "presets/PresetFormat.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

TEST(ShippedData, EveryPresetLoadsAndNamesShippedTextures) {
    const fs::path data = QZ_DATA_DIR;
    if (!fs::exists(data / "Presets")) GTEST_SKIP() << "this build does not generate the data folder";
    int presets = 0;
    for (const auto& entry : fs::recursive_directory_iterator(data / "Presets")) {
        if (entry.path().extension() != ".qztpst") continue;
        ++presets;
        FilterParameters record{};
        gParams = &record;
        InitParameters();
        EXPECT_TRUE(LoadPresetPath(entry.path().string().c_str())) << entry.path();
        for (const char* name : {record.WashFileName1, record.WashFileName2, record.BackgroundFileName,
                                 record.SurfaceFileName1, record.SurfaceFileName2})
            EXPECT_TRUE(fs::exists(data / name)) << entry.path().filename() << " names " << name;
        gParams = nullptr;
    }
    EXPECT_GE(presets, 15 + 10 + 10 + 10 + 24 + 15);
}
