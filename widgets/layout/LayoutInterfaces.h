#pragma once

#include <string>

namespace OV::CFW::Graphics {
class Font;
class Image;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::GUI {
class Widget;
}

namespace OV::CFW::Widgets {

// What a widget implements for the layout builder to give it more than its builder reads.

// A widget with scroll bars: the layout names them in "HScrollBar", "VScrollBar" and "Corner",
// and links them once the whole layout is built, so that they may stand anywhere in it.
class Scrollable {
public:
    virtual ~Scrollable() = default;
    // Each null when its name is empty or names no widget of the layout.
    virtual void setScrollBars(GUI::Widget* horizontal, GUI::Widget* vertical, GUI::Widget* corner) = 0;
};

// A widget that takes extra pictures and fonts by name, from child elements "AuxImage" (with
// "Name" and "Image") and "AuxFont" (with "Name" and "Font"). The layout owns them.
class AuxResourceUser {
public:
    virtual ~AuxResourceUser() = default;
    virtual void addAuxImage(const std::string& name, Graphics::Image& image) = 0;
    virtual void addAuxFont(const std::string& name, Graphics::Font& font) = 0;
};

}  // namespace OV::CFW::Widgets
