// Where the plug-in's files are: everything is found from the module's own path.
#pragma once

#include <string>

struct PathTableRecord {
    std::string Plugin; // the plug-in folder, with its trailing separator
    std::string Data;   // textures stand directly in it; no trailing separator
    std::string Help;
    std::string Presets;
    std::string Colors;
    std::string UpdateFile;
};

extern PathTableRecord PathTable;

// Cuts as many characters off the module's path as "Quenzit64.8bf" has, whatever the
// file is really called, and builds the other folders from what remains.
void ComputePaths();

// A data folder of any name and place, for hosts without a module beside it (the command
// line); empty goes back to the "Quenzit" folder beside the module.
void SetDataFolderOverride(const std::string& folder);
