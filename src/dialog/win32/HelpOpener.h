// The opener: a short-lived thread that hands a manual page or a web address to the
// shell, so that a slow browser start never holds up the dialog. One at a time: a request
// while one runs is dropped.
#pragma once

#include <windows.h>

#include <cstdint>

// The main dialog while it is up: the owner of what is opened; null after it.
void SetHelpOwner(HWND mainDialog);

// Opens page `number` of the manual (777 to 780 the tabs, 877 a drawer, else the index).
void OpenHelpPage(int32_t number);
// Opens a web address, owned by `window`, or by the main dialog when it is null.
void OpenLink(const char* address, HWND window);

// At the dialog's end: an opener still running is ended.
void EndHelpOpener();
