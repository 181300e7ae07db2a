// Module path: where the module holding this code lives on disk, so the
// plug-in can find its data folder and ini file beside it.
#pragma once

#include <string>

#ifdef _WIN32
inline constexpr char kPathSeparator = '\\';
#else
inline constexpr char kPathSeparator = '/';
#endif

// Full, absolute path of the DLL or executable that contains this code, or the
// override while one is set. Empty if the system cannot tell.
std::string ModuleFilePath() noexcept;

// Lets an in-memory host or the command line say where the plug-in lives.
// An empty path clears the override.
void SetModuleFilePathOverride(const std::string& path) noexcept;
