// Opening a file or a web address with the user's own program (the shell's "open"), and
// the captures that record it instead, so that no test ever starts a browser.
#pragma once

#include <string>
#include <vector>

// Hands `target` to the system's "open", owned by `ownerWindow` (an HWND on Windows); POSIX
// opens nothing. False when it could not be handed on.
// While an OpenCapture exists the target is only recorded there. Otherwise, when the
// environment names a file in QZ_OPEN_LOG, the line "open TARGET" is appended to it instead
// of opening; with QZ_OPEN_HOLD_MS as well the call then waits that long and appends
// "held TARGET". A program under test so shows what it would open, and can be caught in
// the middle of an open.
bool ShellOpen(const std::string& target, void* ownerWindow) noexcept;

// While alive, every open of the process is recorded here and none is made. Captures
// nest: the innermost one records.
class OpenCapture {
public:
    OpenCapture() noexcept;
    ~OpenCapture();
    OpenCapture(const OpenCapture&) = delete;
    OpenCapture& operator=(const OpenCapture&) = delete;

    // A copy: opens come from other threads.
    std::vector<std::string> Targets() const;

private:
    friend bool ShellOpen(const std::string&, void*) noexcept;

    std::vector<std::string> targets_;
    OpenCapture* outer_;
};
