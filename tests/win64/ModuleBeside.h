// The module under test stands beside the test program.
#pragma once

#include <windows.h>

#include <string>

inline std::string ModuleFolder() {
    char exe[MAX_PATH];
    const DWORD n = GetModuleFileNameA(nullptr, exe, MAX_PATH);
    const std::string path(exe, n);
    return path.substr(0, path.find_last_of("\\/") + 1);
}

inline std::string ModulePath() { return ModuleFolder() + "Quenzit64.8bf"; }
