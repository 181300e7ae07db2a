// Drives a plug-in's dialog from a script, one command a line, on a second thread while
// the host's thread runs the dialog's modal loop (Windows build only):
//   tab N | click ID | click-at ID X Y | command ID [CODE] | page-command ID [CODE]
//   drawer-command ID [CODE]
//   type ID TEXT | key KEYS
//   drag X0 Y0 X1 Y1 [ctrl] | press X Y [ctrl] | move X Y | release X Y
//   answer yes|no|cancel|ok | expect KEY=VALUE | expect-enabled ID 0|1 | expect-text ID TEXT
//   expect-tip ID TEXT | expect-checked ID 0|1 | expect-shown ID 0|1
//   wait-render | preview FILE.png | expect-preview same|changed | shot FILE.png | shot-now FILE.png
//   size W H | maximize | send MSG [WPARAM [LPARAM]] | repaint | pause MS | ok | cancel (clicks: focus first)
//   box command ID [CODE] | box expect-text ID TEXT | box expect-client W H | box shot FILE.png
//   box key KEYS | box click ID | box expect-checked ID 0|1 | box expect-shown ID 0|1
//   box expect-enabled ID 0|1 | box type ID TEXT | box expect-title TEXT
//   select ID ROW | dblclick ID ROW | expect-rows ID N | expect-row ID ROW TEXT | timed LINE
//   picture ID | expect-picture ID same|changed
// Ids are sought in an open drawer (its tiles too), then the tab's page, then the dialog;
// select on a drop-down list tells its owner CBN_SELENDOK; shot-now does not wait for
// the dialog to settle (a drawer's slide); drag points are
// preview pixels. size ends as a user's sizing does; maximize sizes the window to the
// work area; send hands the dialog a raw message; repaint has the preview painted again;
// pause waits while the dialog's timers run.
// page-command goes to the shown page rather than the dialog, drawer-command to the open drawer; click-at clicks a
// point of the control's client area; expect-tip reads its tooltip; expect-checked reads a button's check and
// expect-shown whether a control is visible. box plays its line on the box that is up over the dialog (the About box, a
// message box whose text has id 65535, a name box); the dialog the driver waits for may also be an About box alone,
// from the host's About command. preview writes the host's output buffer and prints "preview FILE HASH"; expect-preview
// compares with the last one; picture and expect-picture do the same with a control as the screen
// shows it. KEYS is a key name (ESC, ENTER, TAB, F1, A, 0...) with
// CTRL+, SHIFT+ or ALT+ before it. select and dblclick set a list's row and tell its owner
// as a click does; timed runs its line and prints "timed MS LINE". Expected texts read
// \t, \n and \\ as a TAB, a new line and a backslash. Blank lines and lines starting with
// # are skipped. A failure names its line and ends the dialog with Cancel.
#pragma once

#include "hostsim/Pam.h"

#include <functional>
#include <string>

// What the driver asks of the host while the dialog is up; both run on the driver's thread
// while the dialog's thread is idle.
struct DriverHost {
    // One key of the live parameter block as KEY=VALUE prints it; "" for an unknown key.
    std::function<std::string(const std::string& key)> value;
    // The host's output buffer, the picture the preview shows, as RGB.
    std::function<bool(hostsim::PamImage& picture)> proxy;
};

// Starts the driver on `script`; it waits for a dialog of the calling thread.
void StartDialogDriver(const std::string& script, DriverHost host);
// Joins the driver; false (with the reason on stderr) when a line failed.
bool FinishDialogDriver();
