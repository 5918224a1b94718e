#pragma once

#include "widgets/lists/TextList.h"

#include <string>
#include <vector>

namespace OV::CFW::Widgets {

// A list of lines in columns of given widths; each line holds a text per column, the first
// also being its text as a TextList. Window thread only.
class MultiTextList : public TextList {
public:
    using TextList::TextList;
    using ItemList::setColumns;

    const std::vector<int>& getColumns() const { return getLook().columns; }
    // At the end; gives the index.
    int addRow(const std::vector<std::string>& cells);
    // Empty out of range.
    std::vector<std::string> getRow(int index) const;
};

// The same list, laid out by item styles (see the builders).
class MultiTextList2 : public MultiTextList {
public:
    using MultiTextList::MultiTextList;
};

}  // namespace OV::CFW::Widgets
