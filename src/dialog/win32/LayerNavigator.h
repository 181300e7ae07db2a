// The layer navigator: the row of text buttons on the band over the preview that picks
// the layer in view, adds and deletes the second wash and surface and resets a tab; and
// the rebuilds that follow every wholesale change of gParams (presets, resets, Auto).
#pragma once

#include "dialog/DialogLayout.h"

#include <windows.h>

#include <array>
#include <cstdint>

// A second layer's button stands in the row.
extern uint8_t SecondWashShown, SecondSurfaceShown;

// Makes the row's buttons, separators and delete buttons; at the dialog's opening.
void BuildNavigator(HWND dialog);
// The dialog is going: nothing reaches the row any more.
void ForgetNavigator();
// The four reset buttons' x and width, which follow the preview's right edge.
void PlaceNavigatorResets(const std::array<LayoutBox, 4>& resets);
// Whether `id` is one of the four separators, which the dialog colours.
bool IsNavigatorSeparator(int32_t id);
// Lays the row out for `tab` and its view, shows the tab's reset button and result pair.
void ShowNavigatorFor(int32_t tab);
// The commands 500 to 516 of the row.
void NavigatorCommand(HWND dialog, int32_t id);
// Enables or disables every button (drawer mode); turning on lays the row out again.
void EnableNavigator(bool on);
// Brings the row in line with SecondWashExists and SecondSurfaceExists after gParams
// changed wholesale.
void ReconcileNavigator();
// Frees the groups of layers whose keep flag is off and makes them anew from gParams.
void RebuildLayers();
