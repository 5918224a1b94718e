#pragma once

#include "widgets/gui/Widget.h"

#include <string>

namespace OV::CFW::Graphics {
class Font;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

class ElementContext;

// A line of text in the widget's colour, along the top of the widget, aligned left, centred or
// right (Graphics::Font::Alignment).
class StaticText : public GUI::Widget {
public:
    // `font` is not owned and must outlive the widget's painting.
    StaticText(GUI::Widget& parent, const Rect& rect, Graphics::Font& font, int alignment, std::string text);

    // Repaints on a change.
    void setText(const std::string& value);
    const std::string& getText() const { return text; }

    // "Font" (without it, no widget: nothing could be shown), colour "Color", "Alignment"
    // ("Center", "Right", anything else left), "Text".
    static GUI::Widget* build(ElementContext& context);

private:
    void paint(Graphics::Painter& painter);

    Graphics::Font& font;
    int alignment;
    std::string text;
};

}  // namespace OV::CFW::Widgets
