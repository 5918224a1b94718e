#pragma once

#include "widgets/gui/Widget.h"

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A row of step cells for sequencers, each drawn with the image of a step that is off, side by
// side from the left. Window thread only.
class SliderStepArray : public GUI::Widget {
public:
    // The image is not owned; a negative count is none.
    SliderStepArray(GUI::Widget& parent, const Rect& rect, Graphics::Image& stepOff, int count);

private:
    void draw(Graphics::Painter& painter, const Rect& clip);

    Graphics::Image& stepOff;
    int count;
};

}  // namespace OV::CFW::Widgets
