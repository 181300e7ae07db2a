// What the screen shows, as a picture: the screenshots of the dialog driver, the dialog's
// tests and the control gallery. Win32 builds only.
#pragma once

#include "hostsim/Pam.h"

#include <windows.h>

namespace hostsim {

// The screen's pixels inside `box` (screen coordinates) as an RGB picture; false when the
// box is empty or GDI refuses.
bool CaptureScreen(const RECT& box, PamImage& image);

} // namespace hostsim
