// Writes what a top-level window shows as a PNG file, waiting for it to appear; for the scripts
// that take pictures of the editor.
//   v4_window_shot TITLE PNG [SECONDS, default 20]
#include "tests/support/XHostWindow.h"
#include "tests/support/XScreenshot.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include <X11/Xlib.h>

int main(int argc, char** argv)
{
    if (argc < 3 || argc > 4) {
        std::fprintf(stderr, "usage: v4_window_shot TITLE PNG [SECONDS]\n");
        return 2;
    }
    const double seconds = argc == 4 ? std::atof(argv[3]) : 20.0;
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::fprintf(stderr, "v4_window_shot: no X display\n");
        return 1;
    }
    int status = 0;
    const unsigned long window = OV::Testing::WaitForWindow(display, argv[1], seconds);
    if (window == 0) {
        std::fprintf(stderr, "v4_window_shot: no window \"%s\" came within %g s\n", argv[1], seconds);
        status = 1;
    } else if (std::this_thread::sleep_for(std::chrono::milliseconds(500)), // the first paints land
               !OV::Testing::WriteScreenshot(display, window, argv[2])) {
        std::fprintf(stderr, "v4_window_shot: cannot write %s\n", argv[2]);
        status = 1;
    }
    XCloseDisplay(display);
    return status;
}
