// The About box (template 152): the product's picture, the version line and the switch of
// the Auto button's sound. F1 in it opens the web manual.
#pragma once

#include <windows.h>

// Modal over `parent` (the main dialog, or the host's window from the About selector),
// which also owns what the box opens. Returns the id that ended it.
INT_PTR ShowAbout(HWND parent);
