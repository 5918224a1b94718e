#include "widgets/lists/MultiTextList.h"

namespace OV::CFW::Widgets {

int MultiTextList::addRow(const std::vector<std::string>& cells)
{
    const std::size_t index = getItems().size();
    insertItem(rootItem(), index, ItemOf(cells));
    itemsChanged();
    return static_cast<int>(index);
}

std::vector<std::string> MultiTextList::getRow(int index) const
{
    const ListItem* item = itemAt(index);
    return item ? item->getTexts() : std::vector<std::string>();
}

}  // namespace OV::CFW::Widgets
