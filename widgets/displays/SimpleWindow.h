#pragma once

#include "widgets/statics/StaticResizableImage.h"

namespace OV::CFW::Widgets {

// A panel that the user moves by its drag area (a title bar, say), kept within its parent. Its
// picture is fitted to its size by nine parts; a press anywhere on it brings it to the front of
// its siblings. Window thread only.
class SimpleWindow : public StaticResizableImage {
public:
    // `image` is not owned and must outlive the widget's painting; `dragArea` is in widget
    // coordinates.
    SimpleWindow(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, const Rect& middle, const Rect& dragArea);

private:
    void drag(const Point& point);

    Rect dragArea;
    Point grip; // where the pointer holds it, in widget coordinates
};

}  // namespace OV::CFW::Widgets
