#include "widgets/lists/ListItem.h"

namespace OV::CFW::Widgets {

const std::string& ListItem::getText() const
{
    static const std::string none;
    return texts.empty() ? none : texts.front();
}

int ListItem::getDepth() const
{
    int depth = -1; // the root is above the top level
    for (const ListItem* item = parent; item != nullptr; item = item->parent)
        ++depth;
    return depth;
}

}  // namespace OV::CFW::Widgets
