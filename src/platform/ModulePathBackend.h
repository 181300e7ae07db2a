// Internal to the platform layer: the system half of ModuleFilePath.
#pragma once

#include "platform/ModulePath.h"

// The file of the module holding this code, asked of the system; empty on failure.
std::string SystemModulePath();
