#include "graphics/x11/WindowChildX11.h"

#include <memory>
#include <new>

#include <X11/Xlib.h>

namespace OV::CFW::Graphics {

WindowChildX11* WindowChildX11::create(Device& device, Window::Callback& callback, const BasicRect<int>& rect,
                                       unsigned long parentHandle, bool mouseEnabled, bool keyboardEnabled)
{
    std::unique_ptr<WindowChildX11> window(new (std::nothrow) WindowChildX11(device, callback, rect, mouseEnabled, keyboardEnabled));
    // Without the mouse selected, the host's window gets every mouse event over ours.
    const long mouseEvents = mouseEnabled ? ButtonPressMask | ButtonReleaseMask | PointerMotionMask : NoEventMask;
    if (parentHandle == 0 || !window || !window->open(parentHandle, ExposureMask | StructureNotifyMask | FocusChangeMask | mouseEvents, KeyPressMask))
        return nullptr;
    return window.release();
}

WindowChildX11::WindowChildX11(Device& device, Window::Callback& callback, const BasicRect<int>& rect, bool mouseEnabled,
                               bool keyboardEnabled)
    : WindowX11(device, callback, rect), mouse(mouseEnabled), keyboard(keyboardEnabled)
{
}

WindowChildX11::~WindowChildX11()
{
    end(false);
}

void WindowChildX11::grabKeyboard()
{
    if (keyboard)
        WindowX11::grabKeyboard();
}

void WindowChildX11::key(const XEvent& event)
{
    if (event.type == KeyPress)
        pressed(event, true);
}

}  // namespace OV::CFW::Graphics
