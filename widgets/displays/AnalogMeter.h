#pragma once

#include "graphics/Color.h"
#include "widgets/gui/Widget.h"

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A needle meter: a needle turns about its origin from the point of the lowest level to the
// point of the highest, clockwise on the screen unless counter-clockwise is asked for, its
// length going from the one point's distance to the other's. A shadow follows it at an offset
// that moves from the lowest level's to the highest's, and a cover picture lies over both.
// Window thread only.
class AnalogMeter : public GUI::Widget {
public:
    using Position = BasicPoint<double>;
    struct Needle {
        Position origin;
        Position minEnd;
        Position maxEnd;
        bool ccw = false;
        bool wedge = false; // wide at the origin, to a point at the end; else a line
        double thickness = 2.0;
        Position shadowMinOffset;
        Position shadowMaxOffset;
        Graphics::Color color = 0xFFE02020;
        Graphics::Color shadowColor = 0x60000000;
        // The part of the level the sweep spans.
        float minValue = 0.0f;
        float maxValue = 1.0f;
    };

    // The pictures are not owned, may be null, and must outlive the widget's painting.
    AnalogMeter(GUI::Widget& parent, const Rect& rect, Graphics::Image* background, Graphics::Image* cover, const Point& coverAt,
                const Needle& needle);

    // 0 to 1 over the meter's range, limited to it; NaN reads as the lowest. Repaints only when
    // the needle moves on the screen.
    void setLevel(float value);
    // The needle's end for the level shown, in widget coordinates.
    Position needleEnd() const { return endAt(shown); }

private:
    // Along the sweep, 0 to 1.
    Position endAt(double share) const;
    Position shadowAt(double share) const;
    Rect bounds(double share) const;
    void drawNeedle(Graphics::Painter& painter, const Position& offset, Graphics::Color color, double share) const;
    void paint(Graphics::Painter& painter, const Rect& clip);

    Graphics::Image* background;
    Graphics::Image* cover;
    Point coverAt;
    Needle needle;
    double startAngle;
    double sweep;
    double startRadius;
    double endRadius;
    double shown = 0.0;
};

}  // namespace OV::CFW::Widgets
