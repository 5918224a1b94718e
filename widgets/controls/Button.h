#pragma once

#include "widgets/gui/Widget.h"

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// The base of the clickable buttons. Only the left button counts. A press grabs the mouse and
// shows the button pressed; leaving it while held lets it go up (`released`) and coming back
// presses it again (`pressed`). A release over the button clicks it: `released`, `clicked`, then
// the class's own action. Window thread only.
class Button : public GUI::Widget {
public:
    boost::signals2::signal<void(Button*, const Point&)> clicked;
    boost::signals2::signal<void(Button*)> pressed;
    boost::signals2::signal<void(Button*)> released;

protected:
    Button(GUI::Widget& parent, const Rect& rect);

    // What a click does after its signals.
    virtual void clickAction() {}
    virtual void draw(Graphics::Painter& painter, const Rect& clip) = 0;
    bool isDown() const { return isPressed; }
    // The part `clip` of `image` at its place; nothing for null.
    static void drawPart(Graphics::Painter& painter, Graphics::Image* image, const Rect& clip);

private:
    void mouseUp(const Point& point);

    bool isPressed = false;
};

}  // namespace OV::CFW::Widgets
