#pragma once

#include "widgets/gui/Widget.h"

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

class ElementContext;

// Two pictures cross-faded on the manager's tick: B comes in over A and goes again, `frequency`
// times a second, with a cosine ease. It repaints at most `fps` times a second (the tick's 25 at
// most), and only when the mix changed.
class BlendImages : public GUI::Widget {
public:
    // The images are not owned and must outlive the widget's painting. A frequency that is not a
    // positive number shows A alone.
    BlendImages(GUI::Widget& parent, const Rect& rect, Graphics::Image& a, Graphics::Image& b, double frequency, int fps);

    // How much of B shows, 0 to 255.
    int getBlend() const { return blend; }

    // "ImageA", "ImageB" (without either, no widget), "Frequency" in Hz, "FPS" (25 when
    // missing); the size defaults to A's.
    static GUI::Widget* build(ElementContext& context);

private:
    void tick();
    void paint(Graphics::Painter& painter, const Rect& clip);

    Graphics::Image& a;
    Graphics::Image& b;
    double frequency;
    int ticksPerFrame;
    long long ticks = 0;
    int blend = 0;
};

}  // namespace OV::CFW::Widgets
