#pragma once

#include "widgets/gui/Widget.h"

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Font;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A number that a vertical drag rolls: each pixel up is one step, with Shift down a
// `slowModeFactor`th of one. A Control-click resets it to its default. It is written in the
// widget's colour, centred. Window thread only.
class ClickRoll : public GUI::Widget {
public:
    struct Settings {
        float minValue = 0.0f;
        float maxValue = 1.0f;
        float defaultValue = 0.0f;
        float stepValue = 0.0f;
        float slowModeFactor = 10.0f;
        int decimals = 0;     // shown after the point
        bool rounding = false; // moves in whole steps only
    };

    boost::signals2::signal<void(ClickRoll*, float)> valueChanged;

    // The font is not owned; without one nothing shows. The value starts at the default.
    ClickRoll(GUI::Widget& parent, const Rect& rect, Graphics::Font* font, const Settings& settings);

    // Within the range; emits and repaints on a change only.
    void setValue(float v);
    float getValue() const { return value; }

private:
    void mouseDown(const Point& point, int modifiers);
    void mouseMoved(const Point& point, int modifiers);
    void draw(Graphics::Painter& painter);

    Graphics::Font* font;
    Settings settings;
    float value;
    float dragStartValue = 0.0f;
    int lastY = 0;
    // Pixels moved up in this drag, with Shift down and without: whole numbers, so that the
    // value comes from the start and nothing drifts.
    int slowCount = 0;
    int normalCount = 0;
};

}  // namespace OV::CFW::Widgets
