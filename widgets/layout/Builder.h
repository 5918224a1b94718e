#pragma once

#include "widgets/gui/Widget.h"

#include <memory>
#include <string>

namespace OV::CFW::Res {
class ResourceSet;
}

namespace OV::CFW::Widgets {

class ElementContext;
class LayoutManager;

// A widget that shows another layout document, sized by that document's root "SizeW" and
// "SizeH". The layout that made it reaches its widgets by paths such as "builder.name".
class Builder : public GUI::Widget {
public:
    // Stays empty without the document, or within a builder that already shows it, since a
    // layout that embeds itself would never end.
    Builder(GUI::Widget& parent, const Point& position, Res::ResourceSet& resources, const std::string& file);
    ~Builder() override;

    // Null while empty.
    LayoutManager* getLayout() const { return layout.get(); }
    const std::string& getLayoutFile() const { return file; }

    // "Layout" (without it, no widget), "PositionX", "PositionY".
    static GUI::Widget* build(ElementContext& context);

private:
    std::string file;
    std::unique_ptr<LayoutManager> layout;
};

// Builds the layout document `file` under `host` and gives `host` its size. Null when no path
// holds the file, it cannot be read, or a Builder or DynamicBuilder above `host` shows it.
std::unique_ptr<LayoutManager> EmbedLayout(GUI::Widget& host, Res::ResourceSet& resources, const std::string& file);

}  // namespace OV::CFW::Widgets
