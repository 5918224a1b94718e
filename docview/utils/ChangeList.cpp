#include "docview/utils/ChangeList.h"

namespace OV::CFW::DocViewUtils {

ChangeList::ChangeList(int rows) : cells(static_cast<std::size_t>(rows > 0 ? rows : 0)) {}

void ChangeList::Put(int index, DocView::Parameter value)
{
    Cell& cell = cells[static_cast<std::size_t>(index)];
    cell.value = value;
    if (cell.link == absent) {
        cell.link = head;
        head = index;
    }
}

bool ChangeList::Next(int& index, DocView::Parameter& value)
{
    if (head == empty)
        return false;
    Cell& cell = cells[static_cast<std::size_t>(head)];
    index = head;
    value = cell.value;
    head = cell.link;
    cell.link = absent;
    return true;
}

}  // namespace OV::CFW::DocViewUtils
