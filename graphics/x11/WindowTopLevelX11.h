#pragma once

#include "graphics/x11/WindowX11.h"

#include <string>

namespace OV::CFW::Graphics {

// A free window of the editor's own, decorated by the window manager after `style`. The
// manager's close request ends it as if it were destroyed. While the keyboard is held, Control
// is a key of its own, and Control+C and Control+V reach the text widgets as 'C' and 'V'.
class WindowTopLevelX11 final : public WindowX11<WindowTopLevel> {
public:
    // Null when no X display can be opened or the screen is not one we can draw on. Null
    // `style`: a caption alone.
    static WindowTopLevelX11* create(Device& device, Window::Callback& callback, const BasicRect<int>& rect,
                                     const WindowStyle* style);
    ~WindowTopLevelX11() override;

    void setTitle(const std::string& text) override;
    const std::string& getTitle() const override { return title; }
    void setPosition(const BasicPoint<int>& point) override;
    BasicPoint<int> getPosition() override;

private:
    enum AtomIndex { Protocols, DeleteWindow, NetWmName, Utf8String, MotifHints, FrameExtents, AtomCount };

    WindowTopLevelX11(Device& device, Window::Callback& callback, const BasicRect<int>& rect, const WindowStyle& style);
    void prepare() override;
    void key(const _XEvent& event) override;
    void clientMessage(const _XEvent& event) override;
    // Losing the focus to another window ends a drag that hid the cursor.
    void deactivated() override { showCursor(); }

    WindowStyle style;
    std::string title;
    unsigned long atoms[AtomCount] = {};
    bool controlDown = false;
};

}  // namespace OV::CFW::Graphics
