#pragma once

#include "graphics/Color.h"
#include "graphics/Geometry.h"

#include <string>
#include <vector>

class TiXmlElement;

namespace OV::CFW::Graphics {
class Font;
class Image;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::GUI {
class Widget;
}

namespace OV::CFW::Res {
class ResourceSet;
}

namespace OV::CFW::Widgets {

// The largest position or size a layout gives a widget, either way: sums of positions down the
// deepest tree (the XML parser's nesting limit) stay far from overflow.
constexpr int maxLayoutExtent = 1 << 16;

// Positions within ±maxLayoutExtent, sizes within 0..maxLayoutExtent.
BasicRect<int> LimitedRect(const BasicRect<int>& rect);

// What the builder of one element of a layout gets: the element (a style's defaults merged in),
// the parent to build under, and the layout's resources, which the layout keeps and releases
// when it goes. Window thread only.
class ElementContext {
public:
    virtual ~ElementContext() = default;

    virtual const TiXmlElement& element() const = 0;
    virtual GUI::Widget& parent() const = 0;
    // Null when the name is empty, no path holds it, or it cannot be read.
    virtual Graphics::Image* image(const std::string& name) = 0;
    // A name ending in ".xml" is an outline font's description, any other a bitmap font's strip;
    // null when it cannot be had.
    virtual Graphics::Font* font(const std::string& name) = 0;
    // For builders that read further documents (embedded layouts); null where there are none.
    virtual Res::ResourceSet* resources() const { return nullptr; }

    bool has(const char* name) const;
    // Whole numbers by the C library's text-to-integer rule, reals as doubles; a missing
    // attribute gives the fallback.
    int integer(const char* name, int fallback = 0) const;
    double real(const char* name, double fallback = 0.0) const;
    // real() as a float, for the controls' values.
    float realFloat(const char* name, double fallback = 0.0) const { return static_cast<float>(real(name, fallback)); }
    std::string text(const char* name, const std::string& fallback = std::string()) const;
    // The four attributes stem + "A", "R", "G", "B", each missing component 255.
    Graphics::Color color(const std::string& stem) const;
    // The same, or `fallback` when none of the four is there.
    Graphics::Color color(const std::string& stem, Graphics::Color fallback) const;
    // "PositionX", "PositionY", "SizeW", "SizeH", limited by LimitedRect.
    BasicRect<int> rect() const;
    // The same, a missing "SizeW" or "SizeH" taken from `defaultSize` (a picture's, say).
    BasicRect<int> rect(const BasicPoint<int>& defaultSize) const;
    // The values of stem + "0", stem + "1", ... up to the first number missing.
    std::vector<std::string> series(const std::string& stem) const;
};

// Builds the widget of one element under context.parent(); null when it cannot, as when a
// required image is missing.
using BuildFunction = GUI::Widget* (*)(ElementContext& context);

}  // namespace OV::CFW::Widgets
