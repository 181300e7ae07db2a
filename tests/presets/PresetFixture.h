// A record of our own in gParams and a plug-in folder in a fresh temporary folder,
// with the path table pointing into it; both put back afterwards.
#pragma once

#include "state/Parameters.h"
#include "common/TempPaths.h"
#include "state/PathTable.h"
#include "platform/ModulePath.h"
#include "presets/PresetFormat.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

class PresetFixture : public ::testing::Test {
protected:
    void SetUp() override {
        static std::atomic<int> counter{0};
        root_ = ProcessTempDir() / ("presets-" + std::to_string(counter++));
        std::filesystem::remove_all(root_);
        std::filesystem::create_directories(root_ / "Quenzit" / "Presets");
        savedParams_ = gParams;
        savedPaths_ = PathTable;
        gParams = &record_;
        ResetAllParameters();
        SetModuleFilePathOverride((root_ / "Quenzit64.8bf").string());
        ComputePaths();
        PresetVersion = 2;
        LinkWash = LinkSurface = LinkBackground = 0;
        std::memcpy(savedSurfaceLabel_, SurfaceColorsName, kNameLength);
        std::memcpy(savedBackgroundLabel_, BackgroundColorsName, kNameLength);
    }
    void TearDown() override {
        LinkWash = LinkSurface = LinkBackground = 0;
        std::memcpy(SurfaceColorsName, savedSurfaceLabel_, kNameLength);
        std::memcpy(BackgroundColorsName, savedBackgroundLabel_, kNameLength);
        SetModuleFilePathOverride("");
        PathTable = savedPaths_;
        gParams = savedParams_;
        PresetVersion = 2;
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    std::filesystem::path Presets() const { return root_ / "Quenzit" / "Presets"; }

    static void WriteText(const std::filesystem::path& path, const std::string& text) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }
    static std::string ReadText(const std::filesystem::path& path) {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    // Reads `text` as a preset file (first line included).
    bool LoadText(const std::string& text) {
        const std::filesystem::path path = root_ / "load.qztpst";
        WriteText(path, text);
        return LoadPresetPath(path.string().c_str());
    }

    std::filesystem::path root_;
    FilterParameters record_{};

private:
    FilterParameters* savedParams_ = nullptr;
    PathTableRecord savedPaths_;
    char savedSurfaceLabel_[kNameLength];
    char savedBackgroundLabel_[kNameLength];
};
