// Internal to the platform layer: the system half of ShellOpen.
#pragma once

#include <string>

bool SystemShellOpen(const std::string& target, void* ownerWindow) noexcept;
