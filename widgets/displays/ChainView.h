#pragma once

#include "graphics/Color.h"
#include "widgets/gui/Widget.h"

#include <string>
#include <vector>

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Font;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A chain of processing stages: boxes in reading order, as many to a row as the width takes,
// each joined to the next by a line (down and back to the start of the next row at a row's
// end), each with its name. A click on a box tells which. Window thread only.
class ChainView : public GUI::Widget {
public:
    boost::signals2::signal<void(ChainView*, int)> nodeClicked;

    // The font is not owned, may be null, and must outlive the widget.
    struct Look {
        Point nodeSize{40, 20};
        Point spacing{10, 10}; // between boxes
        Graphics::Font* font = nullptr;
        Graphics::Color color = 0xFFFFFFFF;
        Point textOffset; // of a name from its box's top-left corner
        int textWidth = 0; // 0: the box's
    };

    ChainView(GUI::Widget& parent, const Rect& rect, const Look& look);

    void setNodes(std::vector<std::string> names);
    int getNodeCount() const { return static_cast<int>(nodes.size()); }
    // In widget coordinates.
    Rect nodeRect(int index) const;
    // The box at `point`, or -1.
    int nodeAt(const Point& point) const;

private:
    int perRow() const;
    void paint(Graphics::Painter& painter, const Rect& clip);

    Look look;
    std::vector<std::string> nodes;
};

}  // namespace OV::CFW::Widgets
