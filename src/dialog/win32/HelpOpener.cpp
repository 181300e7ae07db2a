#include "dialog/win32/HelpOpener.h"

#include "dialog/HelpPages.h"
#include "platform/ShellOpen.h"

#include <cstdio>

namespace {

HWND HelpOwner = nullptr;
// Shared with the opener without a lock: the UI thread writes them only while it is idle.
int32_t HelpPageNumber = 0;
char OpenerPath[2048] = {};
HWND OpenerOwner = nullptr;
volatile LONG OpenerBusy = 0;
HANDLE OpenerThread = nullptr;

DWORD WINAPI Opener(void*) {
    ShellOpen(OpenerPath, OpenerOwner);
    InterlockedExchange(&OpenerBusy, 0);
    return 0;
}

void Start(const char* target, HWND owner) {
    // Busy from here rather than from the thread's first step, so that a second request
    // that comes before the thread runs is dropped too.
    if (InterlockedCompareExchange(&OpenerBusy, 1, 0) != 0) return;
    if (OpenerThread) CloseHandle(OpenerThread);
    std::snprintf(OpenerPath, sizeof OpenerPath, "%s", target);
    OpenerOwner = owner;
    OpenerThread = CreateThread(nullptr, 0, Opener, nullptr, 0, nullptr);
    if (!OpenerThread) InterlockedExchange(&OpenerBusy, 0);
}

} // namespace

void SetHelpOwner(HWND mainDialog) { HelpOwner = mainDialog; }

void OpenHelpPage(int32_t number) {
    if (OpenerBusy) return;
    HelpPageNumber = number;
    Start(HelpPagePath(HelpPageNumber).c_str(), HelpOwner);
}

void OpenLink(const char* address, HWND window) {
    if (!address) return;
    Start(address, window ? window : HelpOwner);
}

void EndHelpOpener() {
    if (!OpenerThread) return;
    if (WaitForSingleObject(OpenerThread, 0) == WAIT_TIMEOUT) TerminateThread(OpenerThread, 0);
    CloseHandle(OpenerThread);
    OpenerThread = nullptr;
    InterlockedExchange(&OpenerBusy, 0);
}
