#include "widgets/layout/ElementContext.h"

#include <algorithm>
#include <cstdlib>

#include <tinyxml.h>

namespace OV::CFW::Widgets {

BasicRect<int> LimitedRect(const BasicRect<int>& rect)
{
    const auto position = [](int v) { return std::clamp(v, -maxLayoutExtent, maxLayoutExtent); };
    const auto size = [](int v) { return std::clamp(v, 0, maxLayoutExtent); };
    return {position(rect.x), position(rect.y), size(rect.width), size(rect.height)};
}

bool ElementContext::has(const char* name) const
{
    return element().Attribute(name) != nullptr;
}

int ElementContext::integer(const char* name, int fallback) const
{
    const char* value = element().Attribute(name);
    return value != nullptr ? std::atoi(value) : fallback;
}

double ElementContext::real(const char* name, double fallback) const
{
    const char* value = element().Attribute(name);
    return value != nullptr ? std::atof(value) : fallback;
}

std::string ElementContext::text(const char* name, const std::string& fallback) const
{
    const char* value = element().Attribute(name);
    return value != nullptr ? std::string(value) : fallback;
}

Graphics::Color ElementContext::color(const std::string& stem) const
{
    const auto component = [&](const char* suffix) {
        return static_cast<Graphics::Color>(integer((stem + suffix).c_str(), 255)) & 0xffu;
    };
    return component("A") << 24 | component("R") << 16 | component("G") << 8 | component("B");
}

Graphics::Color ElementContext::color(const std::string& stem, Graphics::Color fallback) const
{
    for (const char* suffix : {"A", "R", "G", "B"}) {
        if (has((stem + suffix).c_str()))
            return color(stem);
    }
    return fallback;
}

BasicRect<int> ElementContext::rect() const
{
    return rect({0, 0});
}

BasicRect<int> ElementContext::rect(const BasicPoint<int>& defaultSize) const
{
    return LimitedRect({integer("PositionX"), integer("PositionY"), integer("SizeW", defaultSize.x), integer("SizeH", defaultSize.y)});
}

std::vector<std::string> ElementContext::series(const std::string& stem) const
{
    std::vector<std::string> values;
    for (int i = 0;; ++i) {
        const char* value = element().Attribute((stem + std::to_string(i)).c_str());
        if (value == nullptr)
            return values;
        values.emplace_back(value);
    }
}

}  // namespace OV::CFW::Widgets
