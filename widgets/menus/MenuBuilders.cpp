#include "widgets/menus/MenuBuilders.h"

#include "widgets/menus/OVMenu2.h"
#include "widgets/menus/OldMenu.h"

#include <algorithm>
#include <cstdlib>

#include <tinyxml.h>

namespace OV::CFW::Widgets {

namespace {

using GUI::Widget;
using Rect = BasicRect<int>;

std::vector<MenuItem> ReadItems(const TiXmlElement& element)
{
    std::vector<MenuItem> items;
    for (const TiXmlElement* child = element.FirstChildElement("Item"); child; child = child->NextSiblingElement("Item")) {
        MenuItem item;
        const char* const text = child->Attribute("Text");
        const char* const id = child->Attribute("ID");
        const char* const separator = child->Attribute("Separator");
        item.text = text ? text : "";
        item.id = id ? std::atoi(id) : 0;
        item.separator = separator && std::atoi(separator) != 0;
        item.submenu = ReadItems(*child);
        items.push_back(std::move(item));
    }
    return items;
}

// Offsets and insets within what a layout may place.
int Extent(const ElementContext& context, const char* name)
{
    return std::clamp(context.integer(name), -maxLayoutExtent, maxLayoutExtent);
}

Rect RectOf(const ElementContext& context, const std::string& stem)
{
    return LimitedRect({context.integer((stem + "X").c_str()), context.integer((stem + "Y").c_str()),
                        context.integer((stem + "W").c_str()), context.integer((stem + "H").c_str())});
}

Menu::Images ReadImages(ElementContext& context)
{
    Menu::Images images;
    images.mark = context.image(context.text("Mark"));
    images.subArrow = context.image(context.text("SubArrow"));
    images.upArrow = context.image(context.text("UpArrow"));
    images.downArrow = context.image(context.text("DownArrow"));
    return images;
}

OVMenu::Look ReadOVLook(ElementContext& context)
{
    OVMenu::Look look;
    look.font = context.font(context.text("Font"));
    look.fontHighlight = context.font(context.text("FontHighlight"));
    look.image = context.image(context.text("Image"));
    look.itemRect = RectOf(context, "ItemRect");
    look.images = ReadImages(context);
    look.textColor = context.color("TextColor", look.textColor);
    look.textColorHi = context.color("TextColorHi", look.textColorHi);
    look.sepColor = context.color("SepColor", look.sepColor);
    look.sepColorStrong = context.color("SepColorStrong", look.sepColorStrong);
    look.sepLeft = Extent(context, "SepLeft");
    look.sepRight = Extent(context, "SepRight");
    look.overlap = Extent(context, "Overlap");
    return look;
}

Widget* WithItems(const ElementContext& context, Menu* menu)
{
    menu->setItems(ReadItems(context.element()));
    return menu;
}

}  // namespace

Widget* BuildOVMenu(ElementContext& context)
{
    return WithItems(context, new OVMenu(context.parent(), context.rect(), ReadOVLook(context)));
}

Widget* BuildOVMenu2(ElementContext& context)
{
    OVMenu2::Extras extras;
    extras.offset = {Extent(context, "OffsetPositionX"), Extent(context, "OffsetPositionY")};
    extras.textColorInactive = context.color("TextColorInactive", extras.textColorInactive);
    extras.columns = context.integer("NumberOfColumns", extras.columns);
    extras.columnSpacing = Extent(context, "ColumnSpacing");
    extras.icons = context.image(context.text("Icon"));
    return WithItems(context, new OVMenu2(context.parent(), context.rect(), ReadOVLook(context), extras));
}

Widget* BuildOldMenu(ElementContext& context)
{
    OldMenu::Look look;
    look.font = context.font(context.text("Font"));
    look.background = context.image(context.text("Background"));
    look.backgroundRect = RectOf(context, "BackgroundRect");
    look.separator = context.image(context.text("Separator"));
    look.separatorRect = RectOf(context, "SeparatorRect");
    look.images = ReadImages(context);
    look.textColor = context.color("TextColor", look.textColor);
    look.highlightedTextColor = context.color("HighlightedTextColor", look.highlightedTextColor);
    look.highlightedColor = context.color("HighlightedColor", look.highlightedColor);
    return WithItems(context, new OldMenu(context.parent(), context.rect(), look));
}

}  // namespace OV::CFW::Widgets
