#pragma once

#include "graphics/Color.h"
#include "widgets/gui/Widget.h"

#include <map>
#include <vector>

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A plot area: a background, curves given in the units of its two scales, and a border. Each
// scale is linear or logarithmic over its range; the lowest value lies on the middle of the
// first column (the bottom row) and the highest on the middle of the last column (the top row),
// so that a line at either is drawn sharp. Window thread only.
class Graph : public GUI::Widget {
public:
    using Position = BasicPoint<double>;
    enum Scale { Linear, Logarithmic };

    // `background` is not owned, may be null, and must outlive the widget's painting. A border
    // colour of alpha 0 draws no border. The ranges start as 0 to 1 on a linear scale and 1 to 10
    // on a logarithmic one.
    Graph(GUI::Widget& parent, const Rect& rect, Graphics::Image* background, bool tiled, Graphics::Color borderColor,
          Scale scaleX, Scale scaleY);

    void setRangeX(double low, double high);
    void setRangeY(double low, double high);
    // Widget pixels for a point in units, and back. A value a scale cannot place (any on a range
    // of no width, or one not above 0 on a logarithmic scale) gives NaN.
    Position toPixels(const Position& units) const;
    Position toUnits(const Position& pixels) const;

    // Draws a polyline through `points` (in units), replacing the curve of that id; points that
    // cannot be placed break the line. Curves are drawn in the order of their ids.
    void setCurve(int id, std::vector<Position> points, Graphics::Color color, double width = 1.0);
    void removeCurve(int id);

private:
    struct Axis {
        Scale scale;
        double low;
        double high;
        // Whether the range changed.
        bool set(double newLow, double newHigh);
        // 0 at low, 1 at high.
        double share(double value) const;
        double value(double share) const;
    };
    struct Curve {
        std::vector<Position> points;
        Graphics::Color color;
        double width;
    };

    void paint(Graphics::Painter& painter, const Rect& clip);

    Graphics::Image* background;
    bool tiled;
    Graphics::Color borderColor;
    Axis x;
    Axis y;
    std::map<int, Curve> curves;
};

}  // namespace OV::CFW::Widgets
