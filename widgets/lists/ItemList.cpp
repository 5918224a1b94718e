#include "widgets/lists/ItemList.h"

#include "graphics/Painter.h"
#include "widgets/controls/ValueInput.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/lists/ScrollBar.h"

#include <algorithm>
#include <utility>

namespace OV::CFW::Widgets {

namespace {

constexpr int wheelRows = 3;

// Whether `item` is `top` or lies below it.
bool IsWithin(const ListItem* item, const ListItem& top)
{
    for (; item != nullptr; item = item->getParent()) {
        if (item == &top)
            return true;
    }
    return false;
}

int ClampToInt(long long value)
{
    return static_cast<int>(std::clamp<long long>(value, -(1 << 30), 1 << 30));
}

}  // namespace

SelectionPolicy SelectionPolicyNamed(const std::string& name)
{
    if (name == "NoSelection")
        return SelectionPolicy::NoSelection;
    if (name == "ExclusiveSelection")
        return SelectionPolicy::ExclusiveSelection;
    if (name == "MultiSelection")
        return SelectionPolicy::MultiSelection;
    return SelectionPolicy::SingleSelection;
}

ItemList::ItemList(GUI::Widget& parent, const Rect& rect, ListLook look, SelectionPolicy policy)
    : Widget(parent, rect), look(std::move(look)), policy(policy), pitch(this->look.pitch())
{
    root.open = true;
    setWantsWheel(true);
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int button, int modifiers) {
        if (button == Graphics::MouseButton::Left)
            mouseDown(p, modifiers);
    }));
    keepConnection(events.doubleClick.connect([this](Widget*, const Point& p, int button, int) {
        if (button == Graphics::MouseButton::Left)
            doubleClick(p);
    }));
    keepConnection(events.keyDown.connect([this](Widget*, Graphics::KeyboardButton::Code code, char, int modifiers) { keyDown(code, modifiers); }));
    keepConnection(events.mouseWheel.connect([this](Widget*, const Point&, int steps, int modifiers) {
        const long long by = static_cast<long long>(steps) * wheelRows * pitch;
        if (modifiers & ShiftKey)
            setScroll({ClampToInt(scroll.x - by), scroll.y});
        else
            setScroll({scroll.x, ClampToInt(scroll.y - by)});
    }));
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
    keepConnection(rectChanged.connect([this](Widget*, const Rect&, const Rect&) {
        limitScroll();
        syncBars();
    }));
}

template <typename Action>
void ItemList::forEachBelow(ListItem& top, Action&& action)
{
    std::vector<ListItem*> pending{&top};
    while (!pending.empty()) {
        ListItem* const item = pending.back();
        pending.pop_back();
        for (const auto& child : item->children) {
            action(*child);
            pending.push_back(child.get());
        }
    }
}

void ItemList::setItems(const std::vector<ItemContent>& items)
{
    bool hadSelection = false;
    forEachBelow(root, [&hadSelection](ListItem& item) { hadSelection |= item.selected; });
    current = anchor = nullptr;
    root.children.clear();
    // Level by level rather than by recursion: trees may come from files.
    std::vector<std::pair<ListItem*, const std::vector<ItemContent>*>> pending{{&root, &items}};
    while (!pending.empty()) {
        const auto [parent, contents] = pending.back();
        pending.pop_back();
        for (const ItemContent& content : *contents)
            pending.emplace_back(&insertItem(*parent, parent->children.size(), content), &content.children);
    }
    itemsChanged();
    if (hadSelection)
        selectionChanged(this);
}

ListItem& ItemList::insertItem(ListItem& parent, std::size_t index, const ItemContent& content)
{
    auto item = std::make_unique<ListItem>();
    item->texts = content.texts;
    item->icon = content.icon;
    item->style = content.style;
    item->branch = content.branch;
    item->open = content.open;
    item->parent = &parent;
    ListItem& added = *item;
    parent.children.insert(parent.children.begin() + static_cast<std::ptrdiff_t>(std::min(index, parent.children.size())), std::move(item));
    return added;
}

void ItemList::removeItem(ListItem& item)
{
    if (&item == &root)
        return;
    bool wasSelected = item.selected;
    forEachBelow(item, [&wasSelected](ListItem& below) { wasSelected |= below.selected; });
    forget(item);
    auto& siblings = item.parent->children;
    siblings.erase(std::find_if(siblings.begin(), siblings.end(), [&item](const auto& child) { return child.get() == &item; }));
    itemsChanged();
    if (wasSelected)
        selectionChanged(this);
}

void ItemList::setItemTexts(ListItem& item, std::vector<std::string> texts)
{
    item.texts = std::move(texts);
    itemsChanged();
}

void ItemList::setItemStyle(ListItem& item, int style)
{
    item.style = style;
    itemsChanged();
}

void ItemList::setColumns(std::vector<int> widths)
{
    look.columns = std::move(widths);
    itemsChanged();
}

void ItemList::itemsChanged()
{
    rows.clear();
    contentWidth = 0;
    // Depth first in order; an item is shown when every ancestor is open.
    std::vector<std::pair<ListItem*, bool>> pending;
    const auto push = [&pending](ListItem& parent, bool shown) {
        for (auto child = parent.children.rbegin(); child != parent.children.rend(); ++child)
            pending.emplace_back(child->get(), shown);
    };
    push(root, true);
    while (!pending.empty()) {
        const auto [item, shown] = pending.back();
        pending.pop_back();
        item->row = shown ? static_cast<int>(rows.size()) : -1;
        if (shown) {
            rows.push_back(item);
            contentWidth = std::max(contentWidth, look.contentWidth(*item));
        }
        push(*item, shown && item->open);
    }
    limitScroll();
    syncBars();
    invalidate();
}

void ItemList::forget(const ListItem& item)
{
    if (IsWithin(current, item))
        current = nullptr;
    if (IsWithin(anchor, item))
        anchor = nullptr;
}

int ItemList::rowAt(const Point& point) const
{
    if (point.x < 0 || point.y < 0 || point.x >= getSize().x || point.y >= getSize().y)
        return -1;
    const int row = (point.y + scroll.y) / pitch;
    return row < getRowCount() ? row : -1;
}

void ItemList::setSelectionPolicy(SelectionPolicy value)
{
    policy = value;
    const std::vector<ListItem*> selected = getSelectedItems();
    bool changed = false;
    if (policy == SelectionPolicy::NoSelection)
        changed = deselectAll();
    else if (policy != SelectionPolicy::MultiSelection && selected.size() > 1)
        changed = selectAlone(*selected.front());
    if (changed)
        selectionChanged(this);
}

bool ItemList::setSelected(ListItem& item, bool selected)
{
    if (item.selected == selected)
        return false;
    item.selected = selected;
    invalidate();
    return true;
}

bool ItemList::selectAlone(ListItem& item)
{
    bool changed = false;
    forEachBelow(root, [&](ListItem& other) { changed |= setSelected(other, &other == &item); });
    return changed;
}

bool ItemList::deselectAll()
{
    bool changed = false;
    forEachBelow(root, [&](ListItem& other) { changed |= setSelected(other, false); });
    return changed;
}

bool ItemList::selectRange(int from, int to, bool keepOthers)
{
    const int low = std::min(from, to);
    const int high = std::max(from, to);
    bool changed = false;
    forEachBelow(root, [&](ListItem& other) {
        const bool inside = other.row >= low && other.row <= high;
        if (inside || !keepOthers)
            changed |= setSelected(other, inside);
    });
    return changed;
}

void ItemList::selectItem(ListItem& item, bool selected)
{
    bool changed = false;
    switch (policy) {
    case SelectionPolicy::NoSelection: return;
    case SelectionPolicy::MultiSelection: changed = setSelected(item, selected); break;
    default: changed = selected ? selectAlone(item) : setSelected(item, false); break;
    }
    if (selected)
        current = anchor = &item;
    if (changed)
        selectionChanged(this);
}

void ItemList::clearSelection()
{
    if (deselectAll())
        selectionChanged(this);
}

std::vector<ListItem*> ItemList::getSelectedItems() const
{
    std::vector<ListItem*> selected;
    // In tree order: depth first, children in order.
    std::vector<const ListItem*> pending{&root};
    while (!pending.empty()) {
        const ListItem* const item = pending.back();
        pending.pop_back();
        for (auto child = item->children.rbegin(); child != item->children.rend(); ++child)
            pending.push_back(child->get());
        if (item->selected)
            selected.push_back(const_cast<ListItem*>(item));
    }
    return selected;
}

void ItemList::click(int row, int modifiers)
{
    const bool control = (modifiers & ControlKey) != 0;
    const bool shift = (modifiers & ShiftKey) != 0;
    bool changed = false;
    if (row < 0) {
        // Beside the rows: a plain click clears, unless one must stay selected.
        const bool clears = policy == SelectionPolicy::SingleSelection || policy == SelectionPolicy::MultiSelection;
        if (clears && !control && !shift)
            changed = deselectAll();
    } else {
        ListItem& item = *rows[static_cast<std::size_t>(row)];
        current = &item;
        switch (policy) {
        case SelectionPolicy::NoSelection: break;
        case SelectionPolicy::SingleSelection: changed = control && item.selected ? setSelected(item, false) : selectAlone(item); break;
        case SelectionPolicy::ExclusiveSelection: changed = selectAlone(item); break;
        case SelectionPolicy::MultiSelection:
            if (shift && anchor != nullptr && anchor->row >= 0)
                return moveRange(row, control);
            changed = control ? setSelected(item, !item.selected) : selectAlone(item);
            break;
        }
        anchor = &item;
    }
    if (changed)
        selectionChanged(this);
}

void ItemList::moveRange(int row, bool keepOthers)
{
    current = rows[static_cast<std::size_t>(row)];
    if (selectRange(anchor->row, row, keepOthers))
        selectionChanged(this);
}

void ItemList::moveTo(int row, int modifiers)
{
    if (policy == SelectionPolicy::MultiSelection && (modifiers & ShiftKey) != 0 && anchor != nullptr && anchor->row >= 0) {
        moveRange(row, false);
    } else {
        ListItem& item = *rows[static_cast<std::size_t>(row)];
        current = anchor = &item;
        if (policy != SelectionPolicy::NoSelection && selectAlone(item))
            selectionChanged(this);
    }
    scrollToRow(row);
}

void ItemList::activate(int row)
{
    ListItem& item = *rows[static_cast<std::size_t>(row)];
    if (item.isBranch())
        setOpen(item, !item.open);
    else
        itemActivated(this, row);
}

void ItemList::keyDown(int code, int modifiers)
{
    namespace Key = Graphics::KeyboardButton;
    const int count = getRowCount();
    const int at = getCurrentRow();
    if (count == 0)
        return;
    switch (code) {
    case Key::Up: moveTo(at < 0 ? 0 : std::max(at - 1, 0), modifiers); break;
    case Key::Down: moveTo(at < 0 ? 0 : std::min(at + 1, count - 1), modifiers); break;
    case Key::Home: moveTo(0, modifiers); break;
    case Key::End: moveTo(count - 1, modifiers); break;
    case Key::Return:
        if (at >= 0)
            activate(at);
        break;
    case Key::Left:
        if (at < 0)
            break;
        if (current->isBranch() && current->open)
            setOpen(*current, false);
        else if (current->parent != &root)
            moveTo(current->parent->row, 0);
        break;
    case Key::Right:
        if (at < 0 || !current->isBranch())
            break;
        if (!current->open)
            setOpen(*current, true);
        else if (!current->children.empty())
            moveTo(at + 1, 0);
        break;
    default: break;
    }
}

void ItemList::mouseDown(const Point& point, int modifiers)
{
    grabFocus();
    const int row = rowAt(point);
    if (row >= 0 && look.onSign(*rows[static_cast<std::size_t>(row)], point.x + scroll.x))
        toggle(*rows[static_cast<std::size_t>(row)]);
    else
        click(row, modifiers);
}

void ItemList::doubleClick(const Point& point)
{
    const int row = rowAt(point);
    if (row < 0)
        return;
    if (look.onSign(*rows[static_cast<std::size_t>(row)], point.x + scroll.x))
        toggle(*rows[static_cast<std::size_t>(row)]);
    else
        activate(row);
}

void ItemList::toggle(ListItem& item)
{
    setOpen(item, !item.open);
}

void ItemList::setOpen(ListItem& item, bool open)
{
    if (item.open == open || &item == &root)
        return;
    item.open = open;
    bool hidSelection = false;
    if (!open) {
        forEachBelow(item, [&hidSelection](ListItem& below) {
            hidSelection |= below.selected;
            below.selected = false;
        });
        if (hidSelection && policy != SelectionPolicy::NoSelection)
            setSelected(item, true);
        if (current != &item && IsWithin(current, item))
            current = &item;
        if (anchor != &item && IsWithin(anchor, item))
            anchor = &item;
    }
    itemsChanged();
    if (hidSelection)
        selectionChanged(this);
}

void ItemList::setScroll(const Point& value)
{
    const Point before = scroll;
    scroll = value;
    limitScroll();
    if (scroll.x == before.x && scroll.y == before.y)
        return;
    invalidate();
    syncBars();
}

void ItemList::limitScroll()
{
    const Point content = getContentSize();
    scroll.x = std::clamp(scroll.x, 0, std::max(content.x - getSize().x, 0));
    scroll.y = std::clamp(scroll.y, 0, std::max(content.y - getSize().y, 0));
}

void ItemList::scrollToRow(int row)
{
    if (row < 0 || row >= getRowCount())
        return;
    const int top = row * pitch;
    int y = scroll.y;
    if (top < y)
        y = top;
    else if (top + pitch > y + getSize().y)
        y = top + pitch - getSize().y;
    setScroll({scroll.x, y});
}

void ItemList::setScrollBarsAlwaysVisible(bool horizontal, bool vertical)
{
    bars[0].alwaysVisible = horizontal;
    bars[1].alwaysVisible = vertical;
    syncBars();
}

void ItemList::setScrollBars(GUI::Widget* horizontal, GUI::Widget* vertical, GUI::Widget* cornerWidget)
{
    barConnections.clear();
    corner = cornerWidget;
    if (corner)
        barConnections.emplace_back(corner->destroyed.connect([this](Widget*) { corner = nullptr; }));
    GUI::Widget* const given[2] = {horizontal, vertical};
    for (int axis = 0; axis < 2; ++axis) {
        ScrollBar* const bar = dynamic_cast<ScrollBar*>(given[axis]);
        bars[axis].bar = bar;
        if (bar == nullptr)
            continue;
        barConnections.emplace_back(bar->destroyed.connect([this, axis](Widget*) { bars[axis].bar = nullptr; }));
        barConnections.emplace_back(bar->positionChanged.connect([this, axis](ScrollBar*, int position) {
            if (!syncing)
                setScroll(axis == 0 ? Point{position, scroll.y} : Point{scroll.x, position});
        }));
    }
    syncBars();
}

void ItemList::syncBars()
{
    // The bars move while they are set; what they tell then is this list's own doing.
    syncing = true;
    const Point content = getContentSize();
    const Point view = getSize();
    const int contents[2] = {content.x, content.y};
    const int views[2] = {view.x, view.y};
    const int positions[2] = {scroll.x, scroll.y};
    for (int axis = 0; axis < 2; ++axis) {
        ScrollBar* const bar = bars[axis].bar;
        if (bar == nullptr)
            continue;
        bar->setRange(contents[axis], views[axis]);
        bar->setStep(pitch);
        bar->setScrollPosition(positions[axis]);
        if (bars[axis].alwaysVisible || !bar->fits())
            bar->show();
        else
            bar->hide();
    }
    syncing = false;
    if (corner) {
        const bool both = bars[0].bar && bars[1].bar && bars[0].bar->isVisible() && bars[1].bar->isVisible();
        if (both)
            corner->show();
        else
            corner->hide();
    }
}

void ItemList::paint(Graphics::Painter& painter, const Rect& clip)
{
    const int width = getSize().x;
    const int first = std::max(clip.y + scroll.y, 0) / pitch;
    const int last = (clip.y + clip.height - 1 + scroll.y) / pitch;
    const int count = getRowCount();
    for (int row = first; row <= last; ++row) {
        const int top = row * pitch - scroll.y;
        if (row < count) {
            look.paintRow(painter, *rows[static_cast<std::size_t>(row)], rows[static_cast<std::size_t>(row)]->selected,
                          {-scroll.x, top, width, contentWidth, row}, clip);
        } else if (const Graphics::Color stripe = look.background[row % 2]; Graphics::AlphaOf(stripe) != 0) {
            painter.fillRect(stripe, {0, top, width, pitch});
        }
    }
}

}  // namespace OV::CFW::Widgets
