// Reads the names of the DLLs a PE32+ module imports, straight from its file.
#pragma once

#include <string>
#include <vector>

// False, with a reason, when the file is not a readable PE32+ image.
bool ReadImportedDlls(const std::string& path, std::vector<std::string>& dlls, std::string& error);
