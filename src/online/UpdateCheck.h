// The daily update check, run before the dialog opens: at most once a day it asks the
// server for the latest version and the texture sets, keeps the answer in the update
// file, and sets NewVersionKnown, TextureSets and the user value "New version on server".
// A dead network costs a short wait and no message.
#pragma once

#include <cstdint>
#include <string>

inline constexpr const char* kNewVersionValue = "New version on server";

// With the update file of PathTable and the clock.
void RefreshUpdateInfo();

// The same with a given file and time.
void RefreshUpdateInfoAt(const std::string& updateFile, int64_t now);
