// ShellOpen and OpenCapture: the capture and the log shared by both systems.
#include "platform/ShellOpen.h"
#include "platform/ShellOpenBackend.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>

namespace {

// Opens run on a thread of their own, so the capture is guarded.
std::mutex gOpenMutex;
OpenCapture* gInnermostOpen = nullptr;

void AppendLine(const char* path, const char* what, const std::string& target) {
    std::lock_guard lock(gOpenMutex);
    if (std::FILE* f = std::fopen(path, "ab")) {
        std::fprintf(f, "%s %s\n", what, target.c_str());
        std::fclose(f);
    }
}

} // namespace

OpenCapture::OpenCapture() noexcept {
    std::lock_guard lock(gOpenMutex);
    outer_ = gInnermostOpen;
    gInnermostOpen = this;
}

OpenCapture::~OpenCapture() {
    std::lock_guard lock(gOpenMutex);
    gInnermostOpen = outer_;
}

std::vector<std::string> OpenCapture::Targets() const {
    std::lock_guard lock(gOpenMutex);
    return targets_;
}

bool ShellOpen(const std::string& target, void* ownerWindow) noexcept {
    try {
        {
            std::lock_guard lock(gOpenMutex);
            if (gInnermostOpen) {
                gInnermostOpen->targets_.push_back(target);
                return true;
            }
        }
        const char* log = std::getenv("QZ_OPEN_LOG");
        if (!log || !*log) return SystemShellOpen(target, ownerWindow);
        AppendLine(log, "open", target);
        if (const char* hold = std::getenv("QZ_OPEN_HOLD_MS")) {
            const long ms = std::strtol(hold, nullptr, 10);
            if (ms > 0) {
                std::this_thread::sleep_for(std::chrono::milliseconds(ms));
                AppendLine(log, "held", target);
            }
        }
        return true;
    } catch (...) {
        return false;
    }
}
