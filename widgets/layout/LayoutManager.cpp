#include "widgets/layout/LayoutManager.h"

#include "graphics/BitMask.h"
#include "graphics/Font.h"
#include "graphics/Image.h"
#include "graphics/res/ResourceSet.h"
#include "widgets/layout/AcquireResource.h"
#include "widgets/layout/Builder.h"
#include "widgets/layout/LayoutInterfaces.h"

#include <algorithm>

#include <boost/core/demangle.hpp>
#include <tinyxml.h>

namespace OV::CFW::Widgets {

namespace {

// The class's name as written in code: demangled, without its namespaces.
std::string ClassName(const std::type_info& type)
{
    const std::string name = boost::core::demangle(type.name());
    const std::size_t scope = name.rfind("::", name.find('<'));
    return scope == std::string::npos ? name : name.substr(scope + 2);
}

bool EndsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

}  // namespace

class LayoutManager::Context : public ElementContext {
public:
    Context(LayoutManager& layout, const TiXmlElement& element, GUI::Widget& parent) : layout(layout), node(element), under(parent) {}

    const TiXmlElement& element() const override { return node; }
    GUI::Widget& parent() const override { return under; }
    Graphics::Image* image(const std::string& name) override { return layout.acquireImage(name); }
    Graphics::Font* font(const std::string& name) override { return layout.acquireFont(name); }
    Res::ResourceSet* resources() const override { return &layout.resources; }

private:
    LayoutManager& layout;
    const TiXmlElement& node;
    GUI::Widget& under;
};

LayoutManager::LayoutManager(TiXmlDocument& document, Res::ResourceSet& resources, GUI::Widget& parent, ElementLookup lookUp)
    : resources(resources), lookUp(lookUp)
{
    TiXmlElement* const root = document.RootElement();
    if (root == nullptr || root->ValueStr() != "Layout")
        return;
    // Depth first in document order, with a list rather than recursion: layouts may nest as
    // deep as the parser allows, and the window's thread may be a host's with a small stack.
    struct Pending {
        TiXmlElement* element;
        GUI::Widget* parent;
    };
    std::vector<Pending> pending{{root->FirstChildElement(), &parent}};
    while (!pending.empty()) {
        const Pending next = pending.back();
        pending.pop_back();
        if (next.element == nullptr)
            continue;
        pending.push_back({next.element->NextSiblingElement(), next.parent});
        GUI::Widget* const widget = create(*next.element, *next.parent);
        if (widget == nullptr)
            continue;
        if (next.parent == &parent)
            widgets.push_back(widget);
        pending.push_back({next.element->FirstChildElement(), widget});
    }
    linkScrollBars();
}

LayoutManager::~LayoutManager()
{
    connections.clear(); // the widgets are on their way out; they need not report it
    for (GUI::Widget* widget : widgets)
        widget->destroy();
    for (Graphics::Image* image : images)
        resources.getImages().release(image);
    for (Graphics::Font* font : fonts) {
        if (font->isBitmap())
            resources.getFonts().release(font);
        else if (font->isOutline())
            resources.getFontsFT().release(font);
    }
    for (Graphics::BitMask* mask : masks)
        resources.getBitMasks().release(mask);
}

GUI::Widget* LayoutManager::create(TiXmlElement& element, GUI::Widget& under)
{
    if (element.Attribute("Style") != nullptr)
        applyStyle(element);
    const BuildFunction build = lookUp(element.ValueStr());
    if (build == nullptr)
        return nullptr;
    Context context(*this, element, under);
    GUI::Widget* const widget = build(context);
    if (widget == nullptr)
        return nullptr;
    connections.emplace_back(widget->destroyed.connect([this](GUI::Widget* gone) { forget(gone); }));
    addAuxResources(element, *widget);
    applyCommonAttributes(context, *widget);
    if (auto* scrollable = dynamic_cast<Scrollable*>(widget))
        scrollLinks.push_back({scrollable, {context.text("HScrollBar"), context.text("VScrollBar"), context.text("Corner")}});
    return widget;
}

// Styles do not chain: the element has "Style", so a style's own "Style" is never merged.
void LayoutManager::applyStyle(TiXmlElement& element)
{
    const std::string name = element.Attribute("Style");
    if (name.empty())
        throw StyleError("Empty Style attribute");
    const TiXmlDocument* const style = AcquireResource(resources.getDocuments(), name);
    if (style == nullptr)
        throw StyleError("Style not found: " + name);
    // Kept acquired: an element of a layout built again finds it loaded.
    const TiXmlElement* const root = style->RootElement();
    if (root == nullptr || root->ValueStr() != element.ValueStr())
        throw StyleError("Style for <" + element.ValueStr() + "> is of a different widget type in: " + name);
    for (const TiXmlAttribute* attribute = root->FirstAttribute(); attribute != nullptr; attribute = attribute->Next()) {
        if (element.Attribute(attribute->Name()) == nullptr)
            element.SetAttribute(attribute->Name(), attribute->Value());
    }
}

void LayoutManager::addAuxResources(const TiXmlElement& element, GUI::Widget& widget)
{
    auto* const user = dynamic_cast<AuxResourceUser*>(&widget);
    if (user == nullptr)
        return;
    for (const TiXmlElement* aux = element.FirstChildElement(); aux != nullptr; aux = aux->NextSiblingElement()) {
        const bool isImage = aux->ValueStr() == "AuxImage";
        const char* const name = aux->Attribute("Name");
        if ((!isImage && aux->ValueStr() != "AuxFont") || name == nullptr || *name == '\0')
            continue;
        const char* const file = aux->Attribute(isImage ? "Image" : "Font");
        if (file == nullptr)
            continue;
        if (isImage) {
            if (Graphics::Image* image = acquireImage(file))
                user->addAuxImage(name, *image);
        } else if (Graphics::Font* font = acquireFont(file)) {
            user->addAuxFont(name, *font);
        }
    }
}

void LayoutManager::applyCommonAttributes(const ElementContext& context, GUI::Widget& widget)
{
    if (context.has("Visible") && context.integer("Visible") == 0)
        widget.hide();
    if (context.has("Enabled") && context.integer("Enabled") == 0)
        widget.disable();
    if (context.has("TopMost") && context.integer("TopMost") == 1)
        widget.setTopMost(true);
    if (context.has("ColorA") || context.has("ColorR") || context.has("ColorG") || context.has("ColorB"))
        widget.setColor(context.color("Color"));
    if (Graphics::BitMask* mask = AcquireResource(resources.getBitMasks(), context.text("MaskImage"))) {
        masks.push_back(mask);
        const int threshold = context.integer("MaskThreshold", 128);
        mask->build(threshold >= 0 && threshold <= 255 ? threshold : 128);
        widget.setMask(mask);
    }
    const std::string name = context.text("Name");
    if (!name.empty())
        names[name] = &widget;
}

void LayoutManager::linkScrollBars()
{
    for (const auto& [scrollable, barNames] : scrollLinks) {
        std::array<GUI::Widget*, 3> bars{};
        for (std::size_t i = 0; i < bars.size(); ++i) {
            if (barNames[i].empty())
                continue;
            try {
                getWidget(barNames[i], bars[i]);
            } catch (const Error&) {
            }
        }
        scrollable->setScrollBars(bars[0], bars[1], bars[2]);
    }
}

void LayoutManager::forget(GUI::Widget* widget)
{
    widgets.erase(std::remove(widgets.begin(), widgets.end(), widget), widgets.end());
    for (auto entry = names.begin(); entry != names.end();)
        entry = entry->second == widget ? names.erase(entry) : std::next(entry);
}

Graphics::Image* LayoutManager::acquireImage(const std::string& name)
{
    Graphics::Image* const image = AcquireResource(resources.getImages(), name);
    if (image != nullptr)
        images.push_back(image);
    return image;
}

Graphics::Font* LayoutManager::acquireFont(const std::string& name)
{
    Graphics::Font* const font = AcquireResource(EndsWith(name, ".xml") ? resources.getFontsFT() : resources.getFonts(), name);
    if (font != nullptr)
        fonts.push_back(font);
    return font;
}

const LayoutManager& LayoutManager::builderLayout(const std::string& name) const
{
    GUI::Widget* const widget = find(name);
    if (widget == nullptr)
        throwNotFound(name);
    const auto* const builder = dynamic_cast<const Builder*>(widget);
    if (builder == nullptr)
        throwWrongClass(name, *widget, typeid(Builder));
    if (builder->getLayout() == nullptr)
        throw WidgetNotFound("The Builder " + name + " has no layout");
    return *builder->getLayout();
}

GUI::Widget* LayoutManager::find(const std::string& name) const
{
    const auto found = names.find(name);
    return found != names.end() ? found->second : nullptr;
}

void LayoutManager::throwNotFound(const std::string& name)
{
    throw WidgetNotFound("Widget " + name + " not found");
}

void LayoutManager::throwWrongClass(const std::string& name, const GUI::Widget& widget, const std::type_info& wanted)
{
    throw WrongWidgetClass("The widget " + name + " is of class " + ClassName(typeid(widget)) + ", not " + ClassName(wanted));
}

}  // namespace OV::CFW::Widgets
