// A data folder of the test's own beside an imagined module, for textures of known
// values that the whole plug-in or the engine loads by name.
#pragma once

#include "common/TempPaths.h"
#include "platform/ModulePath.h"
#include "raster/TextureTestFiles.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <vector>

namespace effectstest {

class TextureFolder {
public:
    explicit TextureFolder(const char* prefix) {
        static std::atomic<int> counter{0};
        root_ = ProcessTempDir() / (std::string(prefix) + "-" + std::to_string(counter++));
        std::filesystem::remove_all(root_);
        std::filesystem::create_directories(root_ / "Quenzit");
        SetModuleFilePathOverride((root_ / "Quenzit64.8bf").string());
    }
    ~TextureFolder() {
        SetModuleFilePathOverride("");
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    TextureFolder(const TextureFolder&) = delete;
    TextureFolder& operator=(const TextureFolder&) = delete;

    // A one-plane texture, samples row by row.
    void Texture(const char* name, int32_t w, int32_t h, const std::vector<uint8_t>& samples) const {
        rastertest::WriteTexture((root_ / "Quenzit" / name).string(), false, uint32_t(w), uint32_t(h), 1,
                                 rastertest::Compress(samples));
    }
    // The same with `value` everywhere.
    void Texture(const char* name, int32_t w, int32_t h, uint8_t value) const {
        Texture(name, w, h, std::vector<uint8_t>(size_t(w) * h, value));
    }

private:
    std::filesystem::path root_;
};

} // namespace effectstest
