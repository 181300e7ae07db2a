// Linked placement: when a tab's link is on, its layer's scale, flips, angle and offset
// are carried to the layers in use of the other linked tabs, in a fixed order.
#pragma once

// Each runs only when the link of its own tab is on; the source is the tab's layer in
// view (the second of a pair when that one is being edited).
void SyncWashLinks();
void SyncSurfaceLinks();
void SyncBackgroundLinks();
