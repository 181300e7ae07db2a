// The modal dialog as the shell sees it: true only when the user ended it with OK.
#pragma once

bool OpenDialog();

// When set, stands in for the dialog: the in-process tests play one without windows,
// inside the Start call, with the host's record live.
extern bool (*DialogStandIn)();
