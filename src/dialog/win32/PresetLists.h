// The preset lists of the four pages: filled at a page's making, drawn by their page, a
// click loads a row, a double click walks folders, Save asks for a name and Delete removes
// the selected file at once.
#pragma once

#include <windows.h>

#include <cstdint>

// Fills the lists of `tab`'s page, sizes their rows and turns their Delete buttons off.
void SetUpPresetLists(HWND page, int32_t tab);
// A page's WM_MEASUREITEM and WM_DRAWITEM; false when the item is none of the lists.
bool MeasurePresetRow(MEASUREITEMSTRUCT* item);
bool DrawPresetRow(const DRAWITEMSTRUCT* item);
// A command from a list, its Save or its Delete button; false for any other control.
bool PresetListCommand(HWND page, int32_t id, int32_t code);
// Frees the folder pictures (the dialog is going).
void ForgetPresetLists();
