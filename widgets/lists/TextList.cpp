#include "widgets/lists/TextList.h"

namespace OV::CFW::Widgets {

void TextList::setItems(const std::vector<std::string>& texts)
{
    std::vector<ItemContent> items;
    for (const std::string& text : texts)
        items.push_back(ItemOf({text}));
    setItems(items);
}

int TextList::addItem(const std::string& text)
{
    const std::size_t index = getItems().size();
    insertItem(rootItem(), index, ItemOf({text}));
    itemsChanged();
    return static_cast<int>(index);
}

void TextList::removeItem(int index)
{
    if (ListItem* item = itemAt(index))
        ItemList::removeItem(*item);
}

void TextList::clearItems()
{
    setItems(std::vector<ItemContent>());
}

ListItem* TextList::itemAt(int index) const
{
    return index >= 0 && index < getItemCount() ? getItems()[static_cast<std::size_t>(index)].get() : nullptr;
}

const std::string& TextList::getItemText(int index) const
{
    static const std::string none;
    const ListItem* item = itemAt(index);
    return item ? item->getText() : none;
}

void TextList::setItemText(int index, const std::string& text)
{
    if (ListItem* item = itemAt(index))
        setItemTexts(*item, {text});
}

void TextList::select(int index, bool selected)
{
    if (ListItem* item = itemAt(index))
        selectItem(*item, selected);
}

bool TextList::isSelected(int index) const
{
    const ListItem* item = itemAt(index);
    return item && item->isSelected();
}

std::vector<int> TextList::getSelection() const
{
    std::vector<int> selection;
    for (int i = 0; i < getItemCount(); ++i) {
        if (isSelected(i))
            selection.push_back(i);
    }
    return selection;
}

int TextList::getSelectedIndex() const
{
    for (int i = 0; i < getItemCount(); ++i) {
        if (isSelected(i))
            return i;
    }
    return -1;
}

}  // namespace OV::CFW::Widgets
