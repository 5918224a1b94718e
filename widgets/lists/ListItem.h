#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace OV::CFW::Graphics {
class Image;
}

namespace OV::CFW::Widgets {

// What makes an item: its cells' texts (one per column), its own icon (else its style's), the
// index of its style in the list's look, whether it is a branch that may be opened even while
// empty (a folder), whether it starts open, and the items under it.
struct ItemContent {
    std::vector<std::string> texts;
    Graphics::Image* icon = nullptr;
    int style = 0;
    bool branch = false;
    bool open = false;
    std::vector<ItemContent> children;
};

// A plain item of those cells.
inline ItemContent ItemOf(std::vector<std::string> texts)
{
    ItemContent content;
    content.texts = std::move(texts);
    return content;
}

// One line of a list or one node of a tree, owned by its list. Read here; changed through the
// list, which repaints and tells.
class ListItem {
public:
    const std::vector<std::string>& getTexts() const { return texts; }
    // The first cell's text, or empty.
    const std::string& getText() const;
    Graphics::Image* getIcon() const { return icon; }
    int getStyle() const { return style; }
    bool isSelected() const { return selected; }
    bool isOpen() const { return open; }
    // Shown with an open or closed sign: it has children or may have them.
    bool isBranch() const { return branch || !children.empty(); }
    // Null for the list's invisible root.
    ListItem* getParent() const { return parent; }
    const std::vector<std::unique_ptr<ListItem>>& getChildren() const { return children; }
    // The visible row, or -1 while a closed ancestor hides it.
    int getRow() const { return row; }
    // 0 for an item at the top level.
    int getDepth() const;

private:
    friend class ItemList;

    std::vector<std::string> texts;
    Graphics::Image* icon = nullptr;
    int style = 0;
    bool branch = false;
    bool selected = false;
    bool open = false;
    int row = -1;
    ListItem* parent = nullptr;
    std::vector<std::unique_ptr<ListItem>> children;
};

}  // namespace OV::CFW::Widgets
