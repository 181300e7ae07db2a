// Linked placement: when a tab's link is on, its layer's scale, flips, angle and offset
// are carried to the layers in use of the other linked tabs, in a fixed order.
#pragma once

#include <cstdint>

// Each runs only when the link of its own tab is on; the source is the tab's layer in
// view (the second of a pair when that one is being edited). Targets, in order, skipping
// those whose tab is unlinked or not in use:
//   wash:       the other wash (if it exists), surface 1, surface 2 (if it exists), background
//   surface:    the other surface (if it exists), wash 1, wash 2 (if it exists), background
//   background: surface 1, surface 2 (if it exists), wash 1, wash 2 (if it exists)
// Each target takes the scale, then the flips, offsets and angle where they differ, in
// gParams and in the layer.
void SyncWashLinks();
void SyncSurfaceLinks();
void SyncBackgroundLinks();

// Quarter turns that bring an angle `difference` degrees away (either way) level with the
// source: a part of a quarter counts as a whole one.
int32_t QuarterTurns(int32_t difference);
