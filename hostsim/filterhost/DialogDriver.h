// Drives a plug-in's dialog from a script, one command a line, on a second thread while
// the host's thread runs the dialog's modal loop (Windows build only):
//   tab N | click ID | command ID [CODE] | drag X0 Y0 X1 Y1 [ctrl] | expect-enabled ID 0|1
//   expect-text ID TEXT | wait-render | shot FILE.png | ok | cancel
// Ids are sought in the dialog and its child windows; drag points are preview pixels.
// Blank lines and lines starting with # are skipped. A failure names its line and ends
// the dialog with Cancel.
#pragma once

#include <string>

// Starts the driver on `script`; it waits for a dialog of the calling thread.
void StartDialogDriver(const std::string& script);
// Joins the driver; false (with the reason on stderr) when a line failed.
bool FinishDialogDriver();
