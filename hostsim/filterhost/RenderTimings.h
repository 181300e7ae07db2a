// --timings: how long the dialog takes, logged on stderr and never judged. Watches the
// messages the host's thread serves: the dialog's opening (its first render included) to
// the first painted preview, each command and sizing that renders, and each paint of
// the preview (the blit). Windows build only.
#pragma once

// Starts watching the calling thread; the clock of the opening starts here.
void StartRenderTimings();
void StopRenderTimings();
