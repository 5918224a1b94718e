#pragma once

#include "graphics/Color.h"
#include "widgets/gui/Widget.h"

#include <cstddef>
#include <deque>
#include <vector>

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A goniometer: each pair of samples is a point, the mid signal (L + R) up and the side signal
// (R - L) across, full scale at the edges of the largest centred square, so that mono stands
// upright and opposite phase lies flat. The points that come in between two ticks of the
// manager appear at the next tick as dots or as a line through them, and fade out over the
// persistence. Window thread only.
class PhaseScope : public GUI::Widget {
public:
    enum Mode { Lines, Dots };

    // `background` is not owned, may be null (black then), and must outlive the widget's
    // painting. A persistence of 0 shows each tick's points until the next.
    PhaseScope(GUI::Widget& parent, const Rect& rect, Graphics::Image* background, Graphics::Color color, Mode mode,
               int persistenceMs);

    // Pairs with a sample that is not a number are left out, samples beyond full scale are
    // limited to it; a tick takes at most a few thousand points, the first.
    void addSamples(const float* left, const float* right, std::size_t count);
    void clear();
    // Where a pair is drawn, in widget coordinates.
    BasicPoint<double> pointFor(float left, float right) const;

private:
    struct Frame {
        std::vector<BasicPoint<double>> points;
        int age = 0; // in ticks
    };

    void tick();
    void paint(Graphics::Painter& painter, const Rect& clip);

    Graphics::Image* background;
    Graphics::Color color;
    Mode mode;
    int maxAge; // in ticks
    std::vector<BasicPoint<double>> pending;
    std::deque<Frame> frames; // the oldest first
};

}  // namespace OV::CFW::Widgets
