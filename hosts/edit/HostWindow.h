#pragma once

#include <string>

#include <X11/Xlib.h>

namespace OV::Hosts {

// The top-level X window that varnel4-edit gives the editor to live in, on a connection of its
// own, as a DAW would. Main thread only.
class HostWindow {
public:
    // Throws HostError when there is no X display or the window cannot be made.
    HostWindow(const std::string& title, int width, int height);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    ::Window Handle() const { return window; }
    // Waits up to `milliseconds` for the window's events and handles them; false once the user
    // asked to close the window, which stays until destroyed.
    bool Pump(int milliseconds);

private:
    Display* display;
    ::Window window;
    Atom deleteWindow;
    bool open = true;
};

}  // namespace OV::Hosts
