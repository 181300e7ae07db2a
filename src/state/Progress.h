// Progress of a render: the mark the current stage started from, the points it may
// use, and the calls every stage reports through. Free of host types, so the engine
// reports the same way in a final run and in the dialog's preview.
#pragma once

#include <cstdint>

extern int32_t ProgressPercent;
extern int32_t ProgressSpan;

// Renders of a drawer's live thumbnails running as one batch: 0 for none, else which of
// its two passes (1 or 2) is under way. The drawer's bar then shows both passes as one.
extern int32_t ThumbnailBatch;

// done and total are truncated; a negative done becomes 0. In a final run they go to
// HostProgressBar; while the dialog is open, to whatever bar the dialog has installed,
// during a thumbnail batch as ((ThumbnailBatch - 1) * total + done) of 2 * total.
void ReportProgress(float done, float total);

// The current stage's part: ProgressPercent + ProgressSpan * done / total, of 100.
// total must be positive.
void ReportStageProgress(int64_t done, int64_t total);

// Set by the shell for the host's call it is in; receives (done, total) after truncation.
extern void (*HostProgressBar)(int32_t done, int32_t total);
// Set by the dialog while it is open.
extern void (*DialogProgressBar)(int32_t done, int32_t total);
