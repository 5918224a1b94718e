#include "tests/support/XScreenshot.h"

#include "tests/support/Png.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace OV::Testing {

Screenshot TakeScreenshot(Display* display, unsigned long window)
{
    Screenshot shot;
    XWindowAttributes attributes;
    if (!XGetWindowAttributes(display, window, &attributes))
        return shot;
    XImage* image = XGetImage(display, window, 0, 0, static_cast<unsigned>(attributes.width), static_cast<unsigned>(attributes.height),
                              AllPlanes, ZPixmap);
    if (!image)
        return shot;
    shot.width = attributes.width;
    shot.height = attributes.height;
    shot.pixels.reserve(static_cast<std::size_t>(shot.width) * static_cast<std::size_t>(shot.height));
    for (int y = 0; y < shot.height; ++y)
        for (int x = 0; x < shot.width; ++x)
            shot.pixels.push_back(0xff000000u | static_cast<std::uint32_t>(XGetPixel(image, x, y) & 0xffffff));
    XDestroyImage(image);
    return shot;
}

bool WriteScreenshot(Display* display, unsigned long window, const std::string& path)
{
    const Screenshot shot = TakeScreenshot(display, window);
    return !shot.pixels.empty() && WritePng(path, shot.pixels.data(), shot.width, shot.height);
}

}  // namespace OV::Testing
