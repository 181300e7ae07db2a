#include "host/Progress.h"

#include "host/Session.h"

int32_t ProgressPercent = 0;
int32_t ProgressSpan = 0;
void (*DialogProgressBar)(int32_t done, int32_t total) = nullptr;

void ReportProgress(float done, float total) {
    int32_t d = int32_t(done);
    const int32_t t = int32_t(total);
    if (d < 0) d = 0;
    if (!DialogOpen) {
        if (gFilterRecord && gFilterRecord->progressProc) gFilterRecord->progressProc(d, t);
    } else if (DialogProgressBar) {
        DialogProgressBar(d, t);
    }
}
