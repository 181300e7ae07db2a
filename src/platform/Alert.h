// Alerts: the "Plugins Alert" message box, and a capture that lets tests and
// batch runs record alerts instead of showing them.
#pragma once

#include <string>
#include <vector>

enum class AlertIcon { None, Information, Warning, Error, Question };
enum class AlertButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class AlertAnswer { Ok, Cancel, Yes, No };

struct AlertRecord {
    std::string text;
    std::string title;
    AlertIcon icon;
    AlertButtons buttons;
};

inline constexpr const char* kAlertTitle = "Plugins Alert";

// Shows a modal message box (owned by `ownerWindow`, an HWND on Windows) and
// returns the user's answer. Without a desktop the answer is the declining one
// (Cancel or No; Ok for a box with only Ok). POSIX writes "title: text" to
// stderr and answers Ok or Yes. While an AlertCapture exists nothing is shown.
AlertAnswer ShowAlert(const std::string& text, const std::string& title = kAlertTitle,
                      AlertIcon icon = AlertIcon::Warning, AlertButtons buttons = AlertButtons::Ok,
                      void* ownerWindow = nullptr) noexcept;

// While alive, every alert of the process is recorded here and answered with
// `answer`. Captures nest: the innermost one records.
class AlertCapture {
public:
    explicit AlertCapture(AlertAnswer answer = AlertAnswer::Ok) noexcept;
    ~AlertCapture();
    AlertCapture(const AlertCapture&) = delete;
    AlertCapture& operator=(const AlertCapture&) = delete;

    const std::vector<AlertRecord>& Alerts() const noexcept { return alerts_; }

private:
    friend AlertAnswer ShowAlert(const std::string&, const std::string&, AlertIcon, AlertButtons, void*) noexcept;

    AlertAnswer answer_;
    std::vector<AlertRecord> alerts_;
    AlertCapture* outer_;
};
