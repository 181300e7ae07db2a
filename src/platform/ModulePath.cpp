#include "platform/ModulePathBackend.h"

namespace {
std::string gOverride;
} // namespace

std::string ModuleFilePath() noexcept {
    try {
        return gOverride.empty() ? SystemModulePath() : gOverride;
    } catch (...) {
        return {};
    }
}

void SetModuleFilePathOverride(const std::string& path) noexcept {
    try {
        gOverride = path;
    } catch (...) {
        // Out of memory: keep the previous override rather than half of one.
    }
}
