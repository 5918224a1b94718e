#pragma once

#include "widgets/gui/Widget.h"

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A tuning display from two pictures of the whole scale, dark and lit: the value lights a spot
// of the lit picture at its place on the scale, fading out over `feather` pixels either side.
// Along the width, or up the height (lowest at the bottom) when taller than wide. Window thread
// only.
class Tuner : public GUI::Widget {
public:
    // The pictures are not owned and must outlive the widget's painting.
    Tuner(GUI::Widget& parent, const Rect& rect, Graphics::Image& off, Graphics::Image& on, float minValue, float maxValue,
          int feather);

    // In the range's units, limited to it; NaN (no pitch) lights nothing. Repaints only when the
    // spot moves.
    void setValue(float value);
    // The pixel along the scale at the spot's middle, or -1 when nothing is lit.
    int getSpot() const { return spot; }

private:
    bool vertical() const { return getSize().y > getSize().x; }
    // The lit columns (or rows) of `at`, in widget coordinates.
    Rect spotRect(int at) const;
    void paint(Graphics::Painter& painter, const Rect& clip);

    Graphics::Image& off;
    Graphics::Image& on;
    float minValue;
    float maxValue;
    int feather;
    int spot = -1;
};

}  // namespace OV::CFW::Widgets
