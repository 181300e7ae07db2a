// Alerts without a desktop: the message goes to stderr and the answer is yes.
#include "platform/AlertBackend.h"

#include <cstdio>

AlertAnswer ShowSystemAlert(const AlertRecord& alert, void* /*ownerWindow*/) noexcept {
    std::fprintf(stderr, "%s: %s\n", alert.title.c_str(), alert.text.c_str());
    switch (alert.buttons) {
    case AlertButtons::Ok:
    case AlertButtons::OkCancel: return AlertAnswer::Ok;
    case AlertButtons::YesNo:
    case AlertButtons::YesNoCancel: break;
    }
    return AlertAnswer::Yes;
}
