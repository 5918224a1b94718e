#include "widgets/lists/ListBuilders.h"

#include "graphics/res/ResourceSet.h"
#include "widgets/layout/AcquireResource.h"
#include "widgets/lists/FolderTree.h"
#include "widgets/lists/MultiTextList.h"
#include "widgets/lists/TextList.h"
#include "widgets/lists/TextTree.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include <tinyxml.h>

namespace OV::CFW::Widgets {

namespace {

using GUI::Widget;
using Rect = BasicRect<int>;

// Nested "Item" elements deeper than this are not read.
constexpr int maxItemDepth = 32;
// Colours a layout leaves out: text in black on nothing, icons as they are.
constexpr Graphics::Color opaqueBlack = 0xFF000000u;
constexpr Graphics::Color transparent = 0;
constexpr Graphics::Color noTint = 0xFFFFFFFFu;

// A child element of the list's element, read with the same helpers and resources. With
// `styled`, the child's own "Style" document gives the attributes it lacks, as for elements.
class ChildContext : public ElementContext {
public:
    ChildContext(ElementContext& outer, const TiXmlElement& node, bool styled) : outer(outer), node(&node)
    {
        if (styled)
            mergeStyle();
    }

    const TiXmlElement& element() const override { return merged ? *merged : *node; }
    Widget& parent() const override { return outer.parent(); }
    Graphics::Image* image(const std::string& name) override { return outer.image(name); }
    Graphics::Font* font(const std::string& name) override { return outer.font(name); }
    Res::ResourceSet* resources() const override { return outer.resources(); }

private:
    void mergeStyle()
    {
        const char* const name = node->Attribute("Style");
        Res::ResourceSet* const set = outer.resources();
        if (name == nullptr || set == nullptr)
            return;
        TiXmlDocument* const style = AcquireResource(set->getDocuments(), name);
        if (style == nullptr)
            return;
        const TiXmlElement* const root = style->RootElement();
        if (root != nullptr && root->ValueStr() == node->ValueStr()) {
            // The attributes only: the element's own win.
            merged.emplace(node->Value());
            for (const TiXmlAttribute* a = node->FirstAttribute(); a != nullptr; a = a->Next())
                merged->SetAttribute(a->Name(), a->Value());
            for (const TiXmlAttribute* a = root->FirstAttribute(); a != nullptr; a = a->Next()) {
                if (node->Attribute(a->Name()) == nullptr)
                    merged->SetAttribute(a->Name(), a->Value());
            }
        }
        set->getDocuments().release(style);
    }

    ElementContext& outer;
    const TiXmlElement* node;
    std::optional<TiXmlElement> merged;
};

template <typename Action>
void ForEachChild(const ElementContext& context, const char* name, Action&& action)
{
    for (const TiXmlElement* child = context.element().FirstChildElement(name); child != nullptr; child = child->NextSiblingElement(name))
        action(*child);
}

Padding ReadPadding(const ElementContext& context, const std::string& stem, const std::string& suffix = std::string())
{
    const auto side = [&](const char* name) { return std::max(context.integer((stem + name + suffix).c_str()), 0); };
    return {side("Left"), side("Top"), side("Right"), side("Bottom")};
}

// The "Item" children: their cells, and with `own` their "Icon" and "StyleIndex"; with
// `nested`, the items under them.
std::vector<ItemContent> ReadItems(ElementContext& context, bool own, bool nested, int depth = 0)
{
    std::vector<ItemContent> items;
    ForEachChild(context, "Item", [&](const TiXmlElement& element) {
        ChildContext item(context, element, false);
        ItemContent content;
        content.texts = item.series("Text");
        if (content.texts.empty())
            content.texts = {item.text("Text")};
        if (own) {
            content.icon = item.image(item.text("Icon"));
            content.style = item.integer("StyleIndex");
        }
        if (nested && depth < maxItemDepth)
            content.children = ReadItems(item, own, nested, depth + 1);
        items.push_back(std::move(content));
    });
    return items;
}

enum Parts { Plain = 0, Icons = 1, Tree = 2 };

// The first family: one style from "Unselected…" and "Selected…" attributes; the selected
// font and icon default to the unselected ones.
ListLook ClassicLook(ElementContext& context, int parts)
{
    ListLook look;
    RowStyle& style = look.styles.front();
    const char* const states[2] = {"Unselected", "Selected"};
    for (int i = 0; i < 2; ++i) {
        CellStyle& cell = style.states[i];
        const std::string state = states[i];
        cell.font = context.font(context.text((state + "Font").c_str()));
        cell.textColor = context.color(state + "TextColor", opaqueBlack);
        cell.textBack = cell.alternateBack = cell.iconBack = cell.emptyBack = context.color(state + "BackColor", transparent);
        cell.iconPadding = ReadPadding(context, "IconPadding");
        cell.textPadding = ReadPadding(context, "TextPadding");
        if (parts & Icons)
            cell.icon = context.image(context.text((state + "Icon").c_str()));
    }
    CellStyle& selected = style.states[1];
    selected.font = selected.font ? selected.font : style.states[0].font;
    selected.icon = selected.icon ? selected.icon : style.states[0].icon;
    look.separator = context.integer("ShowSeparator") != 0 ? 1 : 0;
    look.separatorColor = context.color("SeparatorColor", opaqueBlack);
    look.background[0] = look.background[1] = style.states[0].emptyBack;
    if (parts & Tree) {
        style.openIcon = context.image(context.text("OpenIcon"));
        style.closedIcon = context.image(context.text("ClosedIcon"));
        look.signPadding = ReadPadding(context, "OpenClosedIconPadding");
        look.indent = std::max(context.integer("DepthOffset"), 0);
    }
    return look;
}

// The "2" family: a style per "ListItemStyle" child, N for unselected and S for selected.
ListLook StyledLook(ElementContext& context, bool tree)
{
    ListLook look;
    look.styles.clear();
    ForEachChild(context, "ListItemStyle", [&](const TiXmlElement& element) {
        ChildContext child(context, element, true);
        RowStyle style;
        const char* const states[2] = {"N", "S"};
        for (int i = 0; i < 2; ++i) {
            CellStyle& cell = style.states[i];
            const std::string s = states[i];
            cell.icon = child.image(child.text(("Icon" + s).c_str()));
            cell.font = child.font(child.text(("Font" + s).c_str()));
            cell.iconBack = child.color("IconBackColor" + s, transparent);
            cell.iconColor = child.color("IconColor" + s, noTint);
            cell.textBack = child.color("TextBackColor" + s, transparent);
            cell.textColor = child.color("TextColor" + s, opaqueBlack);
            cell.emptyBack = child.color("EmptyBackColor" + s, transparent);
            cell.alternateBack = child.color("AlternateElementColor" + s, cell.textBack);
            cell.iconPadding = ReadPadding(child, "IconPadding" + s);
            cell.textPadding = ReadPadding(child, "TextPadding" + s);
        }
        CellStyle& selected = style.states[1];
        selected.font = selected.font ? selected.font : style.states[0].font;
        selected.icon = selected.icon ? selected.icon : style.states[0].icon;
        style.alternate = child.integer("AlternateElements") != 0;
        look.styles.push_back(style);
    });
    if (look.styles.empty())
        look.styles.emplace_back();
    look.separator = std::max(context.integer("Separator"), 0);
    look.separatorColor = context.color("SeparatorColor", opaqueBlack);
    look.background[0] = context.color("BackColor1", transparent);
    look.background[1] = context.color("BackColor2", look.background[0]);
    if (tree) {
        Graphics::Image* const open = context.image(context.text("OpenIcon"));
        Graphics::Image* const closed = context.image(context.text("ClosedIcon"));
        for (RowStyle& style : look.styles) {
            style.openIcon = open;
            style.closedIcon = closed;
        }
        look.indent = std::max(context.integer("IndentOffset"), 0);
        look.tintSigns = context.integer("IconBlending") != 0;
    }
    return look;
}

bool HasFont(const ListLook& look)
{
    return std::any_of(look.styles.begin(), look.styles.end(), [](const RowStyle& style) { return style.states[0].font != nullptr; });
}

// The list of class L with the attributes all lists share, and its items; null without a font.
template <typename L, typename... Extra>
L* MakeList(ElementContext& context, const ListLook& look, const std::vector<ItemContent>& items, Extra&&... extra)
{
    if (!HasFont(look))
        return nullptr;
    L* const list = new L(context.parent(), context.rect(), look, SelectionPolicyNamed(context.text("SelectionPolicy")),
                          std::forward<Extra>(extra)...);
    list->setScrollBarsAlwaysVisible(context.integer("HScrollBarAlwaysVisible") != 0, context.integer("VScrollBarAlwaysVisible") != 0);
    list->setItems(items);
    return list;
}

// Widths from "Column" children's "Width".
std::vector<int> ColumnWidths(const ElementContext& context)
{
    std::vector<int> widths;
    ForEachChild(context, "Column", [&widths](const TiXmlElement& element) {
        int width = 0;
        element.QueryIntAttribute("Width", &width);
        widths.push_back(std::clamp(width, 0, maxLayoutExtent));
    });
    return widths;
}

// Widths from a list such as "120, 60,80".
std::vector<int> ColumnSizes(const std::string& list)
{
    std::vector<int> widths;
    for (const char* at = list.c_str(); *at != '\0';) {
        char* end = nullptr;
        const long width = std::strtol(at, &end, 10);
        if (end == at) {
            ++at;
            continue;
        }
        widths.push_back(static_cast<int>(std::clamp<long>(width, 0, maxLayoutExtent)));
        at = end;
    }
    return widths;
}

}  // namespace

GUI::Widget* BuildTextList(ElementContext& context)
{
    return MakeList<TextList>(context, ClassicLook(context, Icons), ReadItems(context, false, false));
}

GUI::Widget* BuildMultiTextList(ElementContext& context)
{
    ListLook look = ClassicLook(context, Plain);
    look.columns = ColumnWidths(context);
    if (look.separator > 0)
        look.columnSeparator = {-1, 0, 1, look.rowHeight()};
    return MakeList<MultiTextList>(context, look, ReadItems(context, false, false));
}

GUI::Widget* BuildTextTree(ElementContext& context)
{
    return MakeList<TextTree>(context, ClassicLook(context, Icons | Tree), ReadItems(context, false, true));
}

// Folder rows in "FileFoldersFont" without the file icon; the current file with
// "SelectedFileIcon", the folders above it with "SelectedFileOpenIcon" and
// "SelectedFileClosedIcon". "Path" is read with "ExtensionFilter" and "FilenameFilter"; "File"
// is the current file.
GUI::Widget* BuildFolderTree(ElementContext& context)
{
    ListLook look = ClassicLook(context, Icons | Tree);
    RowStyle folder = look.styles.front();
    RowStyle currentFile = look.styles.front();
    if (Graphics::Font* font = context.font(context.text("FileFoldersFont")))
        folder.states[0].font = folder.states[1].font = font;
    folder.states[0].icon = folder.states[1].icon = nullptr;
    if (Graphics::Image* icon = context.image(context.text("SelectedFileIcon")))
        currentFile.states[0].icon = currentFile.states[1].icon = icon;
    RowStyle currentFolder = folder;
    if (Graphics::Image* open = context.image(context.text("SelectedFileOpenIcon")))
        currentFolder.openIcon = open;
    if (Graphics::Image* closed = context.image(context.text("SelectedFileClosedIcon")))
        currentFolder.closedIcon = closed;
    look.styles = {look.styles.front(), folder, currentFile, currentFolder};
    FolderTree* const tree = MakeList<FolderTree>(context, look, {}, FileFilter(context.text("ExtensionFilter"), context.text("FilenameFilter")));
    if (tree) {
        tree->setPath(context.text("Path"));
        tree->setCurrentFile(context.text("File"));
    }
    return tree;
}

GUI::Widget* BuildTextList2(ElementContext& context)
{
    return MakeList<TextList2>(context, StyledLook(context, false), ReadItems(context, true, false));
}

// "ColumnSize" lists the widths; "SeparatorRect" is the line at each column's right edge,
// from the row's top, in "SeparatorColor".
GUI::Widget* BuildMultiTextList2(ElementContext& context)
{
    ListLook look = StyledLook(context, false);
    look.columns = ColumnSizes(context.text("ColumnSize"));
    look.columnSeparator = {context.integer("SeparatorRectX"), context.integer("SeparatorRectY"), context.integer("SeparatorRectW"),
                            context.integer("SeparatorRectH")};
    return MakeList<MultiTextList2>(context, look, ReadItems(context, true, false));
}

GUI::Widget* BuildTextTree2(ElementContext& context)
{
    return MakeList<TextTree2>(context, StyledLook(context, true), ReadItems(context, true, true));
}

}  // namespace OV::CFW::Widgets
