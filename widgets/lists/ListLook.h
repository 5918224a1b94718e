#pragma once

#include "graphics/Color.h"
#include "graphics/Geometry.h"

#include <vector>

namespace OV::CFW::Graphics {
class Font;
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

class ListItem;

struct Padding {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

// How a row draws in one state, unselected or selected. A row is, from the left: its depth's
// indent, the open/closed sign of a tree, the icon area and the text cells. The row's back is
// `emptyBack`, under the icon area `iconBack`, under the cells `textBack` (or `alternateBack`
// on odd rows when the style alternates).
struct CellStyle {
    Graphics::Image* icon = nullptr; // for items without their own
    Graphics::Font* font = nullptr;  // none: no text
    Graphics::Color textColor = 0xFF000000u;
    Graphics::Color textBack = 0;
    Graphics::Color alternateBack = 0;
    Graphics::Color iconColor = 0xFFFFFFFFu; // modulates the icon; this value draws it as it is
    Graphics::Color iconBack = 0;
    Graphics::Color emptyBack = 0;
    Padding iconPadding;
    Padding textPadding;
};

struct RowStyle {
    CellStyle states[2]; // unselected, selected
    Graphics::Image* openIcon = nullptr;
    Graphics::Image* closedIcon = nullptr;
    bool alternate = false;
};

// Where a row goes, in widget coordinates.
struct RowPlace {
    int left = 0;         // the content's left edge: minus the horizontal scroll
    int top = 0;
    int width = 0;        // of the view
    int contentWidth = 0; // where the cells end, from `left`
    int index = 0;        // the row, for alternation
};

// The look of a list: its row styles (items pick one by index; others take the first), the
// lines between rows and columns, the columns and, for trees, the indent and signs. All rows
// have one height, the tallest any style needs, so that rows can be found by arithmetic.
struct ListLook {
    std::vector<RowStyle> styles = std::vector<RowStyle>(1);
    int separator = 0; // the line under each row, in pixels
    Graphics::Color separatorColor = 0;
    // At each column's right edge, from the row's top; empty for none.
    BasicRect<int> columnSeparator;
    // Widths; none gives one cell from the icon to the content's end.
    std::vector<int> columns;
    Graphics::Color background[2] = {0, 0}; // stripes of row height under the last row
    int indent = 0;                          // per level of depth
    Padding signPadding;                     // around the open/closed signs
    bool tintSigns = false;                  // the signs take the icon colour

    const RowStyle& styleOf(const ListItem& item) const;
    int rowHeight() const;
    // A row and the line under it.
    int pitch() const { return rowHeight() + separator; }
    // The room of the open/closed signs, at each row's indent; 0 when no style has signs.
    int signWidth() const;
    // Whether content x (from the content's left) hits the item's open/closed sign.
    bool onSign(const ListItem& item, int x) const;
    // Where the item's content ends: its widest text with its paddings, or the columns' end.
    int contentWidth(const ListItem& item) const;
    void paintRow(Graphics::Painter& painter, const ListItem& item, bool selected, const RowPlace& place,
                  const BasicRect<int>& clip) const;

private:
    int iconAreaWidth(const ListItem& item) const;
};

}  // namespace OV::CFW::Widgets
