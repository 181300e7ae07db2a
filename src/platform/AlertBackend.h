// Internal to the platform layer: the system half of ShowAlert.
#pragma once

#include "platform/Alert.h"

// Shows the alert for real; never hangs when there is no desktop.
AlertAnswer ShowSystemAlert(const AlertRecord& alert, void* ownerWindow) noexcept;

// The answer that declines a box: Cancel, or No for Yes/No, or Ok when that is
// the only button.
AlertAnswer DecliningAnswer(AlertButtons buttons) noexcept;
