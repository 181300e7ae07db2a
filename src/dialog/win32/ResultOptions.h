// The result options under the preview: a check box and a skinned label per tab, only the
// active tab's pair shown, none at all in a series. Box and label always agree.
#pragma once

#include "dialog/DialogLayout.h"

#include <windows.h>

// The four labels, made over the template's hidden statics of the same ids, beside box 1022.
void MakeOptionLabels(HWND dialog, float dpiScale);
// Boxes and labels from gParams.
void CheckResultOptions(HWND dialog);
// The boxes into gParams after a click on one of them.
void ReadResultOptions(HWND dialog);
// A click on label `id`: its option flips.
void ToggleResultOption(HWND dialog, int id);
// By the host's action suites and the document's planes.
void EnableResultOptions(HWND dialog);
// The active tab's pair, or none in a series.
void ShowResultOptions(HWND dialog, int tab);
void PlaceResultOptions(HWND dialog, const DialogLayout& layout);
// Whether `id` is one of the four boxes.
bool IsResultOptionBox(int id);
