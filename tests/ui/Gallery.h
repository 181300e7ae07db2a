// The gallery's workbench: a plain window that keeps the commands its controls tell it,
// real input through SendInput, stand-in pictures, the host's colour services played by
// hostsim, screenshots, and a count of live GDI objects.
#pragma once

#include "hostsim/ColorSpace.h"

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace gallery {

struct Command {
    int id = 0;
    int code = 0;
    LPARAM lParam = 0;
    bool posted = false; // came through the queue, not by SendMessage
};

// A plain window of width by height at `dpi` (the parent of the controls, which keeps the
// commands they send or post) filling the gallery's one top-level window, the toolkit's
// fonts made for `dpi`.
class Window {
public:
    Window(int dpi, int width, int height);
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    HWND Handle() const { return window_; }
    HWND Top() const { return GetAncestor(window_, GA_ROOT); }
    int Dpi() const { return dpi_; }
    // A hand-placed size at this dpi.
    int S(int size) const;
    std::vector<Command> commands;

private:
    HWND window_ = nullptr;
    int dpi_ = 96;
};

// Registers the family once for the test program.
void RegisterFamily();

// Dispatches what is queued, for at least `ms` milliseconds.
void Pump(int ms = 0);
// Pumps until `done` holds or `ms` pass; whether it held.
bool PumpUntil(const std::function<bool()>& done, int ms = 2000);

// Real input, in client coordinates of `window`. MouseTo arrives in two moves, so that a
// control that holds the mouse lets go and the one under the point hears of it.
void MouseTo(HWND window, int x, int y);
void MouseButton(bool left, bool down);
void Key(WORD vk);

// A picture width by height: `back` with `mark` written on it.
HBITMAP StandIn(int width, int height, COLORREF back, const char* mark);
// Bitmap `id` of the module's art when the module carries it, else a stand-in.
HBITMAP Art(int id, int width, int height, COLORREF back, const char* mark);
// A band with a faint gradient from grey `base`: dark behind the labels, light behind a link.
HBITMAP Band(int width, int height, uint8_t base);

// Writes what the screen shows of `window`'s client area (and `margin` pixels around) as
// NAME.pam into the folder named by QZ_UI_SHOTS; false when there is none.
bool Shot(HWND window, const std::string& name, int margin = 0);

// GDI objects alive in the process.
size_t LiveGdiObjects();

// The host: a FilterRecord whose colour services are hostsim's, and what they saw.
struct Host {
    Host();
    ~Host();
    hostsim::ColorServicesSetup setup;
    std::vector<std::string> prompts;
    std::vector<ColorServicesInfo> requests;
};

// Finds the colour dialog of this thread once it is up and ends it with OK after typing `rgb`
// into its red, green and blue fields. Runs from a timer, inside the dialog's own loop; a
// dialog not yet shown gets a second before `seen` hears of it, with whether it was shown at
// the first look.
void AnswerSystemPicker(COLORREF rgb, std::function<void(HWND dialog, bool shownAtOnce)> seen);
// How many colour dialogs AnswerSystemPicker has answered.
int SystemPickersAnswered();

} // namespace gallery
