// The four tab pages: one procedure for all of them, acting by control id alone. A page
// reads a control, writes gParams, calls the edited layer's setter and asks the main
// dialog for a render (command 1008); RefreshPage goes the other way.
#pragma once

#include "dialog/win32/MainDialog.h"

#include <windows.h>

extern uint8_t SpinTimerPending;

// Hides the shown page, then shows the active tab's page (made at its first showing) and
// refreshes it.
void SelectTab(HWND dialog, TabRecord& tabs);
// Places the shown pages in the tab's display area and stretches their lists.
void PlacePages(HWND dialog, TabRecord& tabs);
// Sets every control of the active tab's page from gParams and enables by the rules.
void RefreshPage();
// Only enables the active tab's page by the rules, its values as they stand.
void EnableCurrentPage();
// After a texture was chosen on the Wash, Surface or Background tab: its link is asked
// for again when it still has a partner, and cleared when it has none.
void LinkAfterTextureChosen(int32_t tab);
// Forgets the pages' controls (the dialog is going).
void ForgetPages();

INT_PTR CALLBACK PageProc(HWND page, UINT message, WPARAM wparam, LPARAM lparam);
