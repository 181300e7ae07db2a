// Progress of a render: the mark the current stage started from, the points it may
// use, and the one function every stage reports through. Free of host types, so the
// engine can report too.
#pragma once

#include <cstdint>

extern int32_t ProgressPercent;
extern int32_t ProgressSpan;

// done and total are truncated; a negative done becomes 0. In a final run they go to
// the host; while the dialog is open, to whatever bar the dialog has installed.
void ReportProgress(float done, float total);

// Set by the dialog while it is open; receives (done, total) after truncation.
extern void (*DialogProgressBar)(int32_t done, int32_t total);
