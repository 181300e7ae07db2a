// gParams in and out of the host: the played or recorded script descriptor, and the
// host's settings registry under our key.
#pragma once

#include "host/abi/HostInterface.h"

inline constexpr const char* kSettingsKey = "d9543b0c-3c91-11d4-98bc-00b008042009";

OSErr ReadSavedSettings();
OSErr WriteSavedSettings();
// Overlays a played descriptor and says whether the dialog is wanted.
OSErr ReadScriptParameters(bool* dialogWanted);
OSErr WriteScriptParameters();
