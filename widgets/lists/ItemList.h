#pragma once

#include "widgets/gui/Widget.h"
#include "widgets/layout/LayoutInterfaces.h"
#include "widgets/lists/ListItem.h"
#include "widgets/lists/ListLook.h"

#include <string>
#include <vector>

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Painter;
}

namespace OV::CFW::Widgets {

class ScrollBar;

// Who may be selected: nobody; at most one (a Control-click takes it back); always one once
// the user chose (a click only moves it); or any number (Control toggles a row, Shift takes the
// rows from the last one clicked, with Control added to the rest).
enum class SelectionPolicy { NoSelection, SingleSelection, ExclusiveSelection, MultiSelection };

// The policy of its name in a layout; SingleSelection for any other.
SelectionPolicy SelectionPolicyNamed(const std::string& name);

// The items of a list or a tree in rows of one height, drawn by its look: the common part of
// all lists. A click selects by the policy, a click on a branch's sign opens or closes it, a
// double click or Return activates a row (or opens and closes a branch); Up, Down, Home and End
// move the selection when the list has the focus (Shift extends it under MultiSelection), and
// Left and Right close, open and move along a tree. The wheel scrolls three rows (with Shift,
// sideways), and the scroll bars follow the view and move it. Closing a branch deselects what
// it hides and selects the branch instead. Window thread only.
class ItemList : public GUI::Widget, public Scrollable {
public:
    // After each change of the selection, by the user or a call, once per change.
    boost::signals2::signal<void(ItemList*)> selectionChanged;
    // The row that was double-clicked or had Return.
    boost::signals2::signal<void(ItemList*, int)> itemActivated;

    ItemList(GUI::Widget& parent, const Rect& rect, ListLook look, SelectionPolicy policy);

    // All items, replacing those there were.
    void setItems(const std::vector<ItemContent>& items);
    const std::vector<std::unique_ptr<ListItem>>& getItems() const { return root.getChildren(); }

    const ListLook& getLook() const { return look; }

    // The rows: items whose ancestors are all open, top to bottom.
    int getRowCount() const { return static_cast<int>(rows.size()); }
    ListItem& getRowItem(int row) const { return *rows.at(static_cast<std::size_t>(row)); }
    // The row at a point of the widget, or -1.
    int rowAt(const Point& point) const;
    // The height of a row with its separator.
    int getRowPitch() const { return pitch; }

    void setSelectionPolicy(SelectionPolicy value);
    SelectionPolicy getSelectionPolicy() const { return policy; }
    // As the policy allows: SingleSelection and ExclusiveSelection select the item alone.
    void selectItem(ListItem& item, bool selected = true);
    void clearSelection();
    // In tree order.
    std::vector<ListItem*> getSelectedItems() const;
    // The row that keys move from, or -1.
    int getCurrentRow() const { return current ? current->getRow() : -1; }

    // Opening an item shows its children; closing hides them (see above).
    void setOpen(ListItem& item, bool open);

    // In pixels, within 0 and the content's size less the view's.
    void setScroll(const Point& scroll);
    Point getScroll() const { return scroll; }
    Point getContentSize() const { return {contentWidth, getRowCount() * pitch}; }
    // Scrolls just enough for the whole row to show.
    void scrollToRow(int row);
    // Otherwise a bar hides while everything fits.
    void setScrollBarsAlwaysVisible(bool horizontal, bool vertical);
    // Non-bars are ignored; the corner shows while both bars do.
    void setScrollBars(GUI::Widget* horizontal, GUI::Widget* vertical, GUI::Widget* corner) override;

protected:
    ListItem& rootItem() { return root; }
    // Adds without telling; itemsChanged() then does it once for all.
    ListItem& insertItem(ListItem& parent, std::size_t index, const ItemContent& content);
    // Tells and repaints.
    void removeItem(ListItem& item);
    void setItemTexts(ListItem& item, std::vector<std::string> texts);
    void setItemStyle(ListItem& item, int style);
    void setColumns(std::vector<int> widths);
    // After items were added, removed or opened: rows, width, scroll, bars and paint.
    void itemsChanged();

private:
    struct Bar {
        ScrollBar* bar = nullptr;
        bool alwaysVisible = false;
    };

    // Every item below `top`, at any depth, without recursion.
    template <typename Action>
    static void forEachBelow(ListItem& top, Action&& action);
    // Selection by the user and by calls; each gives whether anything changed.
    bool setSelected(ListItem& item, bool selected);
    bool selectAlone(ListItem& item);
    bool deselectAll();
    // Rows from..to selected; the others deselected unless kept.
    bool selectRange(int from, int to, bool keepOthers);
    void click(int row, int modifiers);
    // Moves the current row by the keys, selecting as the policy says.
    void moveTo(int row, int modifiers);
    // Moves the current row, selecting from the anchor to it.
    void moveRange(int row, bool keepOthers);
    void activate(int row);
    void keyDown(int code, int modifiers);
    void mouseDown(const Point& point, int modifiers);
    void doubleClick(const Point& point);
    void toggle(ListItem& item);
    // Forgets what points into a subtree that goes.
    void forget(const ListItem& item);
    void syncBars();
    void limitScroll();
    void paint(Graphics::Painter& painter, const Rect& clip);

    ListItem root;
    ListLook look;
    SelectionPolicy policy;
    int pitch;
    std::vector<ListItem*> rows;
    int contentWidth = 0;
    Point scroll;
    ListItem* current = nullptr; // keys move from here
    ListItem* anchor = nullptr;  // Shift selects from here
    Bar bars[2];                 // horizontal, vertical
    GUI::Widget* corner = nullptr;
    bool syncing = false; // the list is setting its bars
    std::vector<boost::signals2::scoped_connection> barConnections;
};

}  // namespace OV::CFW::Widgets
