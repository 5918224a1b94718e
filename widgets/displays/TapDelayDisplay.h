#pragma once

#include "graphics/Color.h"
#include "widgets/gui/Widget.h"

#include <string>
#include <vector>

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Font;
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// The taps of a multi-tap delay, one to a row of the display area: a bar as long as the tap's
// delay is of the longest, with its label after it. The selected tap's bar has a colour of its
// own; a click on a row selects its tap, and the wheel scrolls when there are more taps than
// rows. Window thread only.
class TapDelayDisplay : public GUI::Widget {
public:
    boost::signals2::signal<void(TapDelayDisplay*, int)> tapSelected;

    // The picture and the font are not owned, may be null, and must outlive the widget.
    struct Look {
        Graphics::Image* background = nullptr;
        Rect displayArea; // an empty one is the whole widget
        int rows = 4;
        Graphics::Font* font = nullptr;
        Graphics::Color fontColor = 0xFFFFFFFF;
        Graphics::Color rowColor = 0xFF406080;
        Graphics::Color selectedRowColor = 0xFF60A0E0;
    };

    TapDelayDisplay(GUI::Widget& parent, const Rect& rect, const Look& look, int taps);

    int getTapCount() const { return static_cast<int>(taps.size()); }
    // `length` 0 to 1 of the area's width; a tap out of range is ignored.
    void setTap(int index, double length, const std::string& label);
    // -1 for none; scrolls the tap into view. Tells tapSelected only for a user's click.
    void setSelectedTap(int index);
    int getSelectedTap() const { return selected; }
    // The tap of the row at `point`, or -1.
    int tapAt(const Point& point) const;

private:
    struct Tap {
        double length = 0.0;
        std::string label;
    };

    Rect area() const;
    int rowHeight() const;
    void scrollTo(int first);
    void paint(Graphics::Painter& painter, const Rect& clip);

    Look look;
    std::vector<Tap> taps;
    int selected = -1;
    int firstRow = 0; // the tap in the top row
};

}  // namespace OV::CFW::Widgets
