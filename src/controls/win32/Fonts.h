// The toolkit's fonts, made by the dialog for the screen's dpi and deleted with it.
#pragma once

#include "controls/ControlLooks.h"
#include "controls/FontTable.h"

#include <windows.h>

extern int32_t ScreenDpi; // LOGPIXELSY of the dialog's screen; 96 until fonts are made
extern HFONT SmallFont, ThumbFont, LinkFont, LinkUnderFont, LabelFont, HeavyFont, TabFont, ListFont;

// Makes every font for `dpi` (deleting any made before) and keeps the dpi in ScreenDpi.
// False when a font could not be made; the others are kept.
bool MakeToolkitFonts(int32_t dpi);
// The About box's link fonts: LinkFont and LinkUnderFont anew at height 14.
bool MakeAboutLinkFonts();
void DeleteToolkitFonts();

// The font a label or link draws with; `own` is the record's font.
HFONT FontOf(TextFont choice, HFONT own);
