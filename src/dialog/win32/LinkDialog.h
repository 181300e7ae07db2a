// The link dialog and the link buttons of the Wash, Surface and Background pages.
#pragma once

#include <windows.h>

#include <cstdint>

// Asks which tab's placement the linked tabs take, for the tab in LinkDialogKind: 1, 2 or
// 3 (kept in LinkDialogKind), or -1 for No.
int32_t RunLinkDialog(HWND owner);

// A press on the link button of `kind`'s page (1 Wash, 2 Surface, 3 Background), or, with
// `textureChosen`, the same run after a texture was chosen there: the dialog comes up
// whenever the tab has a partner, No unlinks, and no render is asked for.
void PressLink(HWND page, int32_t kind, bool textureChosen);
