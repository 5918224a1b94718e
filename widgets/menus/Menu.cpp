#include "widgets/menus/Menu.h"

#include "graphics/Font.h"
#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetManager.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/menus/MenuPanel.h"

#include <algorithm>

namespace OV::CFW::Widgets {

namespace {

using Graphics::Color;
using Point = BasicPoint<int>;
using Rect = BasicRect<int>;
using Shape = BasicPoint<double>;

// `start` moved as little as needed for `size` to lie within 0..limit; the start wins when it
// cannot.
int Fit(long long start, int size, int limit)
{
    return static_cast<int>(std::max(0LL, std::min(start, static_cast<long long>(limit) - size)));
}

void DrawCentred(Graphics::Painter& painter, Graphics::Image& image, const Rect& box)
{
    const Point size = image.size();
    painter.drawImage(image, {box.x + (box.width - size.x) / 2, box.y + (box.height - size.y) / 2}, {0, 0, size.x, size.y});
}

void FillTriangle(Graphics::Painter& painter, Color color, const Shape (&corners)[3])
{
    painter.fillPolygon(color, corners, 3, 1.0);
}

}  // namespace

Menu::Menu(GUI::Widget& parent, const Rect& rect, Graphics::Font* font, const Images& images, Graphics::Color arrowColor)
    : Widget(parent, rect), font(font), images(images), arrowColor(arrowColor)
{
    metrics.rowHeight = RowHeightFor(font);
    for (Graphics::Image* side : {images.mark, images.subArrow}) {
        if (side)
            metrics.gutter = std::max(metrics.gutter, side->size().x + 4);
    }
    if (images.upArrow || images.downArrow) {
        metrics.arrowHeight = 1;
        for (Graphics::Image* arrow : {images.upArrow, images.downArrow}) {
            if (arrow)
                metrics.arrowHeight = std::max(metrics.arrowHeight, arrow->size().y);
        }
    }
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.mouseMoved.connect([this](Widget*, const Point& p, int modifiers) { mouseMoved(p, modifiers); }));
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int, int) { mouseDown(p); }));
    keepConnection(events.mouseUp.connect([this](Widget*, const Point& p, int, int) { mouseUp(p); }));
    keepConnection(events.keyDown.connect([this](Widget*, Graphics::KeyboardButton::Code code, char, int) { keyDown(code); }));
    // Another widget taking the mouse or the keys ends the menu, as does the window losing them.
    keepConnection(mouseReleased.connect([this](Widget*) { close(); }));
    keepConnection(focusLost.connect([this](Widget*) { close(); }));
    keepConnection(getManager()->tick.connect([this](GUI::WidgetManager*) { tick(); }));
}

void Menu::setFrame(Graphics::Image* background, const Rect& middle)
{
    const Point size = background ? background->size() : Point{};
    const Rect inside = Intersect(middle, {0, 0, size.x, size.y});
    if (IsEmpty(inside)) {
        metrics.frameLeft = metrics.frameTop = metrics.frameRight = metrics.frameBottom = 0;
        return;
    }
    metrics.frameLeft = inside.x;
    metrics.frameTop = inside.y;
    metrics.frameRight = size.x - inside.x - inside.width;
    metrics.frameBottom = size.y - inside.y - inside.height;
}

Menu::~Menu()
{
    destroyPanels();
}

void Menu::setItems(std::vector<MenuItem> value)
{
    close();
    items = std::move(value);
}

void Menu::setTicked(int id, bool ticked)
{
    for (MenuItem* item : FindMenuItems(items, id))
        item->ticked = ticked;
    for (MenuPanel* panel : levels)
        panel->invalidate();
}

void Menu::setItemEnabled(int id, bool enabled)
{
    for (MenuItem* item : FindMenuItems(items, id))
        item->enabled = enabled;
    for (MenuPanel* panel : levels)
        panel->invalidate();
}

GUI::Widget::Point Menu::windowOrigin() const
{
    Point origin;
    for (const Widget* widget = this; widget; widget = widget->getParent()) {
        origin.x += widget->getRect().x;
        origin.y += widget->getRect().y;
    }
    return origin;
}

void Menu::popup(const Point& point)
{
    close();
    GUI::WidgetManager* const manager = getManager();
    if (items.empty() || !isEnabled() || !manager || !manager->getRoot())
        return;
    MenuPanel& panel = openLevel(items);
    const Point window = manager->getRoot()->getSize();
    const Point size = panel.getSize();
    panel.setPosition({Fit(static_cast<long long>(point.x) + metrics.offset.x, size.x, window.x),
                       Fit(static_cast<long long>(point.y) + metrics.offset.y, size.y, window.y)});
    armed = false;
    grabMouse();
    grabFocus();
}

void Menu::close()
{
    if (!isOpen())
        return;
    destroyPanels();
    releaseMouse();
    releaseFocus();
    closed(this);
}

GUI::Widget::Rect Menu::levelRect(std::size_t level) const
{
    return level < levels.size() ? levels[level]->getRect() : Rect{};
}

void Menu::hide()
{
    close();
    Widget::hide();
}

void Menu::disable()
{
    close();
    Widget::disable();
}

bool Menu::isPointInside(const Point&) const
{
    return false;
}

MenuPanel& Menu::openLevel(std::vector<MenuItem>& levelItems)
{
    Widget& root = *getManager()->getRoot();
    auto* const panel = new MenuPanel(root, *this, levelItems, root.getSize());
    panel->setTopMost(true);
    levels.push_back(panel);
    return *panel;
}

// Beside its item, on the right when it fits there and on the left otherwise, its first row
// level with the item.
void Menu::openSubmenu(std::size_t level, int index)
{
    MenuPanel& parent = *levels[level];
    std::vector<MenuItem>& submenu = parent.getItems()[static_cast<std::size_t>(index)].submenu;
    if (levels.size() > level + 1 && &levels[level + 1]->getItems() == &submenu)
        return;
    closeAbove(level);
    MenuPanel& panel = openLevel(submenu);
    const Point window = getManager()->getRoot()->getSize();
    const Rect from = parent.getRect();
    const Point size = panel.getSize();
    long long x = static_cast<long long>(from.x) + from.width - metrics.overlap;
    if (x + size.x > window.x)
        x = static_cast<long long>(from.x) - size.x + metrics.overlap;
    const long long y = static_cast<long long>(from.y) + parent.itemRect(index).y - metrics.frameTop;
    panel.setPosition({Fit(x, size.x, window.x), Fit(y, size.y, window.y)});
}

void Menu::closeAbove(std::size_t level)
{
    while (levels.size() > level + 1) {
        MenuPanel* const panel = levels.back();
        levels.pop_back();
        panel->detach();
    }
    if (scrollingLevel > static_cast<int>(level))
        scrollingLevel = -1;
}

void Menu::destroyPanels()
{
    const std::vector<MenuPanel*> open = std::move(levels);
    levels.clear();
    for (MenuPanel* panel : open)
        panel->detach();
    scrollingLevel = -1;
}

// A panel deleted with the tree: the levels above hang from it and go too.
void Menu::forgetPanel(MenuPanel* panel)
{
    const auto found = std::find(levels.begin(), levels.end(), panel);
    if (found == levels.end())
        return;
    const std::vector<MenuPanel*> above(found + 1, levels.end());
    levels.erase(found, levels.end());
    for (MenuPanel* level : above)
        level->detach();
    if (levels.empty()) {
        scrollingLevel = -1;
        releaseMouse();
        releaseFocus();
    }
}

int Menu::levelAt(const Point& point) const
{
    for (int level = static_cast<int>(levels.size()) - 1; level >= 0; --level) {
        if (levels[static_cast<std::size_t>(level)]->getRect().contains(point.x, point.y))
            return level;
    }
    return -1;
}

int Menu::pointAt(const Point& point)
{
    scrollingLevel = -1;
    const int level = levelAt(point);
    if (level < 0) {
        // The parents keep the items whose submenus are open.
        levels.back()->setHover(-1);
        return level;
    }
    const auto index = static_cast<std::size_t>(level);
    MenuPanel& panel = *levels[index];
    const Rect at = panel.getRect();
    const int hit = panel.hitTest({point.x - at.x, point.y - at.y});
    if (hit == MenuPanel::upArrow || hit == MenuPanel::downArrow) {
        scrollingLevel = level;
        scrollingStep = hit == MenuPanel::upArrow ? -1 : 1;
    } else if (hit >= 0 && panel.getItems()[static_cast<std::size_t>(hit)].selectable()) {
        panel.setHover(hit);
        if (panel.getItems()[static_cast<std::size_t>(hit)].hasSubmenu())
            openSubmenu(index, hit);
        else
            closeAbove(index);
    } else if (index + 1 == levels.size()) {
        panel.setHover(-1);
    }
    return level;
}

void Menu::choose(const MenuItem& item)
{
    const int id = item.id;
    close();
    itemChosen(this, id);
}

void Menu::mouseMoved(const Point& point, int modifiers)
{
    if (!isOpen())
        return;
    const Point origin = windowOrigin();
    // Dragged onto the menu with the button held since it opened: the release chooses.
    if (pointAt({point.x + origin.x, point.y + origin.y}) >= 0 && (modifiers & Graphics::MouseButton::Left))
        armed = true;
}

void Menu::mouseDown(const Point& point)
{
    if (!isOpen())
        return;
    const Point origin = windowOrigin();
    const int level = pointAt({point.x + origin.x, point.y + origin.y});
    if (level < 0) {
        close();
        return;
    }
    armed = true;
    if (scrollingLevel == level) {
        closeAbove(static_cast<std::size_t>(level));
        levels[static_cast<std::size_t>(level)]->scrollBy(scrollingStep * metrics.rowHeight);
    }
}

void Menu::mouseUp(const Point& point)
{
    if (!isOpen() || !armed)
        return;
    const Point origin = windowOrigin();
    const Point at{point.x + origin.x, point.y + origin.y};
    const int level = levelAt(at);
    if (level < 0)
        return;
    MenuPanel& panel = *levels[static_cast<std::size_t>(level)];
    const int hit = panel.hitTest({at.x - panel.getRect().x, at.y - panel.getRect().y});
    if (hit < 0)
        return;
    const MenuItem& item = panel.getItems()[static_cast<std::size_t>(hit)];
    if (item.selectable() && !item.hasSubmenu())
        choose(item);
}

void Menu::keyDown(int code)
{
    if (!isOpen())
        return;
    namespace Key = Graphics::KeyboardButton;
    MenuPanel& panel = *levels.back();
    const int hover = panel.getHover();
    const MenuItem* const item = hover >= 0 ? &panel.getItems()[static_cast<std::size_t>(hover)] : nullptr;
    switch (code) {
    case Key::Up:
        panel.moveHover(-1);
        break;
    case Key::Down:
        panel.moveHover(1);
        break;
    case Key::Right:
    case Key::Return:
        if (item && item->hasSubmenu()) {
            openSubmenu(levels.size() - 1, hover);
            levels.back()->moveHover(1);
        } else if (item && code == Key::Return && item->selectable()) {
            choose(*item);
        }
        break;
    case Key::Left:
    case Key::Escape:
        if (levels.size() > 1)
            closeAbove(levels.size() - 2);
        else if (code == Key::Escape)
            close();
        break;
    default:
        break;
    }
}

// While the pointer rests on a scroll arrow, a row a tick.
void Menu::tick()
{
    if (scrollingLevel < 0 || scrollingLevel >= static_cast<int>(levels.size()))
        return;
    const auto level = static_cast<std::size_t>(scrollingLevel);
    closeAbove(level);
    levels[level]->scrollBy(scrollingStep * metrics.rowHeight);
}

int Menu::itemWidth(const MenuItem& item) const
{
    return 2 * metrics.gutter + TextWidth(font, item.text) + 4;
}

int Menu::RowHeightFor(const Graphics::Font* textFont)
{
    return textFont ? std::max(1, textFont->getHeight() + 4) : 16;
}

int Menu::TextWidth(const Graphics::Font* textFont, const std::string& text)
{
    if (!textFont || text.empty())
        return 0;
    return textFont->measure(text, 0, static_cast<int>(text.size()), {0, 0}).width;
}

Graphics::Color Menu::Faded(Graphics::Color color)
{
    return (color & 0xFFFFFFu) | (color >> 25) << 24;
}

void Menu::drawEntry(Graphics::Painter& painter, const MenuItem& item, const Rect& row, Graphics::Font* textFont,
                     Graphics::Color color, int indent) const
{
    const int gutter = metrics.gutter;
    const double middle = row.y + row.height / 2.0;
    if (item.ticked) {
        const Rect box{row.x, row.y, gutter, row.height};
        if (images.mark) {
            DrawCentred(painter, *images.mark, box);
        } else {
            const double x = row.x + gutter / 2.0;
            const Shape check[3] = {{x - 4, middle}, {x - 1, middle + 3}, {x + 4, middle - 4}};
            painter.drawPolyline(color, check, 3, 2.0);
        }
    }
    if (textFont) {
        const int height = textFont->getHeight();
        painter.drawTextAligned(*textFont, color, item.text,
                                {row.x + gutter + indent, row.y + (row.height - height) / 2, row.width - 2 * gutter - indent, height},
                                Graphics::Font::AlignLeft);
    }
    if (item.hasSubmenu()) {
        const Rect box{row.x + row.width - gutter, row.y, gutter, row.height};
        if (images.subArrow) {
            DrawCentred(painter, *images.subArrow, box);
        } else {
            const double x = box.x + gutter / 2.0;
            FillTriangle(painter, color, {{x - 2, middle - 4}, {x + 2, middle}, {x - 2, middle + 4}});
        }
    }
}

void Menu::drawScrollArrow(Graphics::Painter& painter, const Rect& band, bool up, bool active) const
{
    if (Graphics::Image* const image = up ? images.upArrow : images.downArrow) {
        DrawCentred(painter, *image, band);
        return;
    }
    const double x = band.x + band.width / 2.0;
    const double y = band.y + band.height / 2.0;
    const double tip = up ? -3.0 : 3.0;
    FillTriangle(painter, active ? arrowColor : Faded(arrowColor), {{x - 4, y - tip}, {x + 4, y - tip}, {x, y + tip}});
}

}  // namespace OV::CFW::Widgets
