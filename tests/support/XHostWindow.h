#pragma once

#include "graphics/Geometry.h"

#include <string>
#include <vector>

// Xlib's headers stay out: their macros (KeyPress, None, Status) take names that the host
// header and GoogleTest use.
struct _XDisplay;

namespace OV::Testing {

// A host's top-level window of 400 x 300 on a connection of the test's own, for editors to be
// opened in. Throws std::runtime_error when there is no X display.
class XHostWindow {
public:
    XHostWindow();
    ~XHostWindow();
    XHostWindow(const XHostWindow&) = delete;
    XHostWindow& operator=(const XHostWindow&) = delete;

    unsigned long Handle() const { return window; }
    _XDisplay* Connection() const { return display; }
    // The rects of the window's children, as the server has them once it has done all asked.
    std::vector<CFW::BasicRect<int>> Children();
    // Destroys the window, as a host closing its editor's frame does.
    void Destroy();

private:
    _XDisplay* display;
    unsigned long window;
};

// The top-level window of `display` titled `title`, once it is mapped, waiting up to
// `seconds` for it; 0 when none came.
unsigned long WaitForWindow(_XDisplay* display, const std::string& title, double seconds);

// Asks `window` to close as a window manager does when its close button is pressed.
void RequestClose(_XDisplay* display, unsigned long window);

}  // namespace OV::Testing
