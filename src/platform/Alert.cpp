// ShowAlert and AlertCapture: the capture logic shared by both systems.
#include "platform/Alert.h"
#include "platform/AlertBackend.h"

#include <mutex>

namespace {

// Captures are process-wide so alerts raised on worker threads are recorded too.
std::mutex gCaptureMutex;
AlertCapture* gInnermostCapture = nullptr;

} // namespace

AlertCapture::AlertCapture(AlertAnswer answer) noexcept : answer_(answer) {
    std::lock_guard lock(gCaptureMutex);
    outer_ = gInnermostCapture;
    gInnermostCapture = this;
}

AlertCapture::~AlertCapture() {
    std::lock_guard lock(gCaptureMutex);
    gInnermostCapture = outer_;
}

AlertAnswer DecliningAnswer(AlertButtons buttons) noexcept {
    switch (buttons) {
    case AlertButtons::Ok: return AlertAnswer::Ok;
    case AlertButtons::YesNo: return AlertAnswer::No;
    case AlertButtons::OkCancel:
    case AlertButtons::YesNoCancel: break;
    }
    return AlertAnswer::Cancel;
}

AlertAnswer ShowAlert(const std::string& text, const std::string& title, AlertIcon icon, AlertButtons buttons,
                      void* ownerWindow) noexcept {
    try {
        AlertRecord alert{text, title, icon, buttons};
        {
            std::lock_guard lock(gCaptureMutex);
            if (gInnermostCapture) {
                gInnermostCapture->alerts_.push_back(std::move(alert));
                return gInnermostCapture->answer_;
            }
        }
        return ShowSystemAlert(alert, ownerWindow);
    } catch (...) {
        return DecliningAnswer(buttons);
    }
}
