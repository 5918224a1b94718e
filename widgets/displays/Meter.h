#pragma once

#include "widgets/gui/Widget.h"

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A bar of LEDs from two pictures of the whole meter, one with every LED off and one with every
// LED on: the level lights whole LEDs from the start of the bar (or halves, with half LEDs), and
// the lit part is copied from the second picture. The LEDs share the picture between the offsets
// from its edges evenly. Window thread only.
class Meter : public GUI::Widget {
public:
    enum Orientation { LeftToRight, RightToLeft, BottomToTop, TopToBottom };
    struct Settings {
        int leds = 0;
        bool halfLeds = false;
        Orientation orientation = LeftToRight;
        Point ledsOffset; // the margin at either end of the bar, and either side of it
        // The part of the level the LEDs span.
        float minValue = 0.0f;
        float maxValue = 1.0f;
    };

    // The pictures are not owned and must outlive the widget's painting.
    Meter(GUI::Widget& parent, const Rect& rect, Graphics::Image& off, Graphics::Image& on, const Settings& settings);

    // 0 to 1 over the meter's range; beyond it the bar is empty or full, and NaN empties it.
    // Repaints only when the number lit changes.
    void setLevel(float value);
    float getLevel() const { return level; }
    // LEDs lit, in halves with half LEDs.
    int getLitSteps() const { return lit; }

private:
    int stepsFor(float value) const;
    // Where `steps` light the bar, in widget coordinates.
    Rect litRect(int steps) const;
    void paint(Graphics::Painter& painter, const Rect& clip);

    Graphics::Image& off;
    Graphics::Image& on;
    Settings settings;
    int steps; // in the whole bar
    float level = 0.0f;
    int lit = 0;
};

}  // namespace OV::CFW::Widgets
