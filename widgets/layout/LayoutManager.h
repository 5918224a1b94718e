#pragma once

#include "widgets/gui/Widget.h"
#include "widgets/layout/ElementTable.h"

#include <array>
#include <exception>
#include <map>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include <boost/signals2/connection.hpp>

class TiXmlDocument;
class TiXmlElement;

namespace OV::CFW::Graphics {
class BitMask;
class Font;
class Image;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Res {
class ResourceSet;
}

namespace OV::CFW::Widgets {

class Scrollable;

// Turns a layout document (root "Layout") into widgets under a parent, finds them again by
// their "Name", and holds the pictures, fonts and masks acquired for them until it goes.
// Window thread only.
class LayoutManager {
public:
    class Error : public std::exception {
    public:
        explicit Error(std::string message) : message(std::move(message)) {}
        const char* what() const noexcept override { return message.c_str(); }

    private:
        std::string message;
    };
    class WidgetNotFound : public Error {
    public:
        using Error::Error;
    };
    class WrongWidgetClass : public Error {
    public:
        using Error::Error;
    };
    class StyleError : public Error {
    public:
        using Error::Error;
    };

    // Builds the document's widgets under `parent`, each element by the builder that `lookUp`
    // finds for its name. A document with another root builds nothing. StyleError leaves the
    // widgets made so far with the parent, and what they use acquired. Merges styles into the
    // document's elements.
    LayoutManager(TiXmlDocument& document, Res::ResourceSet& resources, GUI::Widget& parent, ElementLookup lookUp = FindElement);
    // Destroys the widgets of the top level and releases every resource at once.
    ~LayoutManager();
    LayoutManager(const LayoutManager&) = delete;
    LayoutManager& operator=(const LayoutManager&) = delete;

    // The widget named `name` as a T. "A.B" is B in the layout of the Builder named A, at any
    // depth. Throws WidgetNotFound (with `out` null when the last name is missing) or
    // WrongWidgetClass; the messages name the part of the path concerned.
    template <typename T>
    void getWidget(const std::string& name, T*& out) const;

private:
    class Context;

    // The widget of one element, without its children: null when the element makes none.
    GUI::Widget* create(TiXmlElement& element, GUI::Widget& under);
    void applyStyle(TiXmlElement& element);
    void addAuxResources(const TiXmlElement& element, GUI::Widget& widget);
    void applyCommonAttributes(const ElementContext& context, GUI::Widget& widget);
    void linkScrollBars();
    // The builder's widget and what it no longer names.
    void forget(GUI::Widget* widget);

    Graphics::Image* acquireImage(const std::string& name);
    Graphics::Font* acquireFont(const std::string& name);

    // The layout of the Builder named `name` in this one.
    const LayoutManager& builderLayout(const std::string& name) const;
    GUI::Widget* find(const std::string& name) const;
    [[noreturn]] static void throwNotFound(const std::string& name);
    [[noreturn]] static void throwWrongClass(const std::string& name, const GUI::Widget& widget, const std::type_info& wanted);

    Res::ResourceSet& resources;
    ElementLookup lookUp;
    std::vector<GUI::Widget*> widgets; // the top level
    std::map<std::string, GUI::Widget*> names;
    std::vector<std::pair<Scrollable*, std::array<std::string, 3>>> scrollLinks; // names: horizontal, vertical, corner
    std::vector<Graphics::Image*> images;
    std::vector<Graphics::Font*> fonts;
    std::vector<Graphics::BitMask*> masks;
    std::vector<boost::signals2::scoped_connection> connections; // to each widget's `destroyed`
};

template <typename T>
void LayoutManager::getWidget(const std::string& name, T*& out) const
{
    const std::size_t dot = name.find('.');
    if (dot != std::string::npos)
        return builderLayout(name.substr(0, dot)).getWidget(name.substr(dot + 1), out);
    GUI::Widget* const widget = find(name);
    if (widget == nullptr) {
        out = nullptr;
        throwNotFound(name);
    }
    T* const typed = dynamic_cast<T*>(widget);
    if (typed == nullptr)
        throwWrongClass(name, *widget, typeid(T));
    out = typed;
}

}  // namespace OV::CFW::Widgets
