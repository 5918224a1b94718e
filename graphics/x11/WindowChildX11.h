#pragma once

#include "graphics/x11/WindowX11.h"

namespace OV::CFW::Graphics {

// The editor's window inside a window of the host, given by its X id. It has no Control key
// and sends no key releases: inside a host, copy and paste are the host's.
class WindowChildX11 final : public WindowX11<WindowChild> {
public:
    // Null when no X display can be opened, the parent does not exist, or the screen is not
    // one we can draw on.
    static WindowChildX11* create(Device& device, Window::Callback& callback, const BasicRect<int>& rect,
                                  unsigned long parentHandle, bool mouseEnabled, bool keyboardEnabled);
    ~WindowChildX11() override;

    bool mouseEnabled() const override { return mouse; }
    bool keyboardEnabled() const override { return keyboard; }
    // Only with keyboardEnabled.
    void grabKeyboard() override;

private:
    WindowChildX11(Device& device, Window::Callback& callback, const BasicRect<int>& rect, bool mouseEnabled,
                   bool keyboardEnabled);
    void key(const _XEvent& event) override;

    bool mouse;
    bool keyboard;
};

}  // namespace OV::CFW::Graphics
