// The frame's buttons and tips: the skinned header buttons (help, all presets, Auto,
// About), the two zoom buttons with their own pictures for normal, disabled and hover,
// and the tooltips of the frame's controls.
#pragma once

#include <windows.h>

// Help, all presets and Auto: their places and face pictures.
void PlaceHeaderButtons(HWND dialog);
// About, with the pictures of a known new version when there is one.
void PlaceAboutButton(HWND dialog, bool newVersionKnown);

// Loads the zoom pictures and skins both buttons; their state then follows EnableWindow.
void SkinZoomButtons(HWND dialog, HINSTANCE module);
void ShowZoomButtons(HWND dialog, bool up, bool down);
// Frees the pictures, at the dialog's end.
void ReleaseZoomButtons();

void SetFrameTooltips(HWND dialog);
