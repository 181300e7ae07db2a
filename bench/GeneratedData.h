// The benchmarks' textures and presets: the data folder the build generated, found by
// the plug-in as it finds its own beside its module.
#pragma once

#include "state/PathTable.h"
#include "platform/ModulePath.h"

#include <benchmark/benchmark.h>

#include <filesystem>

// False, with the benchmark marked skipped, when the folder has not been generated.
inline bool UseGeneratedData(benchmark::State& state) {
    const std::filesystem::path data = QZ_DATA_DIR;
    if (!std::filesystem::exists(data / "Battleship.qzt")) {
        state.SkipWithError("the generated data folder is missing");
        return false;
    }
    SetModuleFilePathOverride((data.parent_path() / "Quenzit64.8bf").string());
    ComputePaths();
    return true;
}
