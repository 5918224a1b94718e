#pragma once

#include "docview/interfaces/Parameter.h"

#include <vector>

namespace OV::CFW::DocViewUtils {

// The changed rows of one exchange slot: one cell per document row, chained last in, first
// out from a head. A row is in the list at most once, with its latest value, so a burst of
// changes to one row costs one cell.
//
// Not thread-safe: the exchange ring hands the list to one side at a time. Put and Next do not
// allocate; only the constructor does.
class ChangeList {
public:
    explicit ChangeList(int rows);

    // Adds the row, or overwrites its value when it is already in the list. No bound check.
    void Put(int index, DocView::Parameter value);
    // Takes the most recently added row out; false when the list is empty.
    bool Next(int& index, DocView::Parameter& value);
    bool IsEmpty() const { return head == empty; }

private:
    static constexpr int absent = -2; // a cell's link when its row is not in the list
    static constexpr int empty = -1;  // the head of an empty list, and the link of its last cell

    struct Cell {
        DocView::Parameter value;
        int link = absent;
    };

    std::vector<Cell> cells;
    int head = empty;
};

}  // namespace OV::CFW::DocViewUtils
