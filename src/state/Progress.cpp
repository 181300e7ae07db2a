#include "state/Progress.h"

#include "state/DialogState.h"

int32_t ProgressPercent = 0;
int32_t ProgressSpan = 0;
int32_t ThumbnailBatch = 0;
void (*HostProgressBar)(int32_t done, int32_t total) = nullptr;
void (*DialogProgressBar)(int32_t done, int32_t total) = nullptr;

void ReportProgress(float done, float total) {
    int32_t d = int32_t(done);
    const int32_t t = int32_t(total);
    if (d < 0) d = 0;
    if (!DialogOpen) {
        if (HostProgressBar) HostProgressBar(d, t);
    } else if (DialogProgressBar) {
        if (ThumbnailBatch > 0) DialogProgressBar((ThumbnailBatch - 1) * t + d, 2 * t);
        else DialogProgressBar(d, t);
    }
}

void ReportStageProgress(int64_t done, int64_t total) {
    ReportProgress(float(ProgressPercent + int32_t(int64_t(ProgressSpan) * done / total)), 100);
}
