#include "state/PathTable.h"

#include "platform/ModulePath.h"

#include <cstring>

PathTableRecord PathTable;

namespace {
std::string gDataOverride;
}

void SetDataFolderOverride(const std::string& folder) { gDataOverride = folder; }

void ComputePaths() {
    const std::string module = ModuleFilePath();
    const size_t cut = std::strlen("Quenzit64.8bf");
    const std::string sep(1, kPathSeparator);
    PathTable.Plugin = module.size() > cut ? module.substr(0, module.size() - cut) : std::string();
    PathTable.Data = gDataOverride.empty() ? PathTable.Plugin + "Quenzit" : gDataOverride;
    PathTable.Help = PathTable.Data + sep + "Help" + sep;
    PathTable.Presets = PathTable.Data + sep + "Presets" + sep;
    PathTable.Colors = PathTable.Presets + "Colors";
    PathTable.UpdateFile = PathTable.Data + sep + "Updatings.db";
}
