#pragma once

#include "widgets/lists/ItemList.h"

#include <string>

namespace OV::CFW::Widgets {

// A tree of lines: items under items, each branch opened and closed by its sign, a double
// click, Return or the Left and Right keys. Items are found by reference, which stays good
// until the item is removed. Window thread only.
class TextTree : public ItemList {
public:
    using ItemList::ItemList;
    using ItemList::removeItem;

    // At the end of `parent`'s children, or of the top level for null.
    ListItem& addItem(const std::string& text, ListItem* parent = nullptr);
    void clearItems();
};

// The same tree, laid out by item styles (see the builders).
class TextTree2 : public TextTree {
public:
    using TextTree::TextTree;
};

}  // namespace OV::CFW::Widgets
