#include "widgets/lists/TextTree.h"

namespace OV::CFW::Widgets {

ListItem& TextTree::addItem(const std::string& text, ListItem* parent)
{
    ListItem& under = parent ? *parent : rootItem();
    ListItem& item = insertItem(under, under.getChildren().size(), ItemOf({text}));
    itemsChanged();
    return item;
}

void TextTree::clearItems()
{
    setItems({});
}

}  // namespace OV::CFW::Widgets
