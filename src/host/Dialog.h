// The modal dialogs as the shell sees them: the main dialog, true only when the user ended
// it with OK, and the About box of the host's About selector.
#pragma once

bool OpenDialog();

// The About box with no main dialog; `hostWindow` owns it and whatever it opens.
void ShowAboutBox(void* hostWindow);
// From the host's About selector: the box, with the sound switch read from the ini file
// and, when the user changed it there, written back with the file's other values.
void RunAboutSelector(void* hostWindow);

// When set, stands in for the dialog: the in-process tests play one without windows,
// inside the Start call, with the host's record live.
extern bool (*DialogStandIn)();
extern void (*AboutStandIn)(void* hostWindow);
