#pragma once

#include "graphics/Color.h"
#include "widgets/gui/Widget.h"

#include <cstddef>

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// The correlation of two channels, from -1 (opposite phase) at the left to +1 (mono) at the
// right, or from the bottom up when taller than wide: a line at the value over a shaded span
// between the lowest and the highest value lately seen. Those two hold for the persistence,
// then close in on the value by half the way each tick. Repaints only when a mark moves by a
// pixel. Window thread only.
class CorrelationMeter : public GUI::Widget {
public:
    struct Colors {
        Graphics::Color min = 0xFFE04040;
        Graphics::Color max = 0xFF40E040;
        Graphics::Color shadow = 0x40FFFFFF;
        Graphics::Color value = 0xFFFFFFFF;
    };

    // `background` is not owned, may be null, and must outlive the widget's painting.
    CorrelationMeter(GUI::Widget& parent, const Rect& rect, Graphics::Image* background, const Colors& colors,
                     int persistenceMs, double lineThickness);

    // Limited to -1..1; NaN is ignored.
    void setCorrelation(double value);
    // The correlation of a block: silence and samples that are not numbers change nothing.
    void addSamples(const float* left, const float* right, std::size_t count);
    double getCorrelation() const { return value; }
    double getMinimum() const { return minimum; }
    double getMaximum() const { return maximum; }

private:
    struct Marks {
        int value, minimum, maximum;
        bool operator==(const Marks& other) const
        {
            return value == other.value && minimum == other.minimum && maximum == other.maximum;
        }
    };

    bool vertical() const { return getSize().y > getSize().x; }
    // The pixel along the scale.
    int pixelFor(double correlation) const;
    Marks marks() const;
    void changed(const Marks& before);
    void tick();
    void paint(Graphics::Painter& painter, const Rect& clip);

    Graphics::Image* background;
    Colors colors;
    int holdTicks;
    double lineThickness;
    double value = 0.0;
    double minimum = 0.0;
    double maximum = 0.0;
    int minimumAge = 0; // ticks since the extreme was set
    int maximumAge = 0;
};

}  // namespace OV::CFW::Widgets
