#pragma once

#include "widgets/lists/ItemList.h"

#include <string>
#include <vector>

namespace OV::CFW::Widgets {

// A flat list of lines, each found by its index, which is also its row. Indices out of range
// are ignored. Window thread only.
class TextList : public ItemList {
public:
    using ItemList::ItemList;
    using ItemList::setItems;

    // Replaces all lines.
    void setItems(const std::vector<std::string>& texts);
    // At the end; gives the index.
    int addItem(const std::string& text);
    void removeItem(int index);
    void clearItems();
    int getItemCount() const { return static_cast<int>(getItems().size()); }
    // Empty out of range.
    const std::string& getItemText(int index) const;
    void setItemText(int index, const std::string& text);

    // As the policy allows (see ItemList::selectItem).
    void select(int index, bool selected = true);
    bool isSelected(int index) const;
    // Ascending.
    std::vector<int> getSelection() const;
    // The first selected, or -1.
    int getSelectedIndex() const;

protected:
    // The item of a valid index, else null.
    ListItem* itemAt(int index) const;
};

// The same list, laid out by item styles (see the builders).
class TextList2 : public TextList {
public:
    using TextList::TextList;
};

}  // namespace OV::CFW::Widgets
