// The two drawers as the main dialog sees them: made at its start, opened from the pages'
// Choose buttons, answered when they report, rebuilt when the dialog is resized.
#pragma once

#include "presets/RandomEffects.h"

#include <windows.h>

// Makes 1177 (textures) and 1178 (tones), hidden, over the dialog's working area.
void CreateDrawers(HWND dialog);
// The pages' Choose buttons: 1077, 1000, 1076 (textures), 1402, 1200 (tones).
void OpenDrawerFor(HWND dialog, int32_t button);
// WM_COMMAND 1177 or 1178 from a drawer, with its notification.
void DrawerCommand(HWND dialog, int32_t id, int32_t notification);
// After a resize: both drawers at (0, 80, width, height), their background anew.
void PlaceDrawers(HWND dialog, int32_t width, int32_t height);
// Enter or leave drawer mode: OK, Cancel, the navigator, the tabs, the page, the header.
void SetDrawerOpen(HWND dialog, bool open);
// Auto's picks: the drawers' shown rows (with every filter as the user left it), from which
// RandomEntry takes one as a drawer does.
RandomSources DrawerRandomSources();
void DestroyDrawers();
