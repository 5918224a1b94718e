#include "widgets/gui/Widget.h"

#include "graphics/BitMask.h"
#include "widgets/gui/WidgetManager.h"

#include <algorithm>

namespace OV::CFW::GUI {

Widget::Widget(Widget& parent, const Rect& rect) : manager(parent.manager), signals(nullptr), parent(&parent), rect(rect)
{
    parent.children.push_back(this);
    attach();
}

Widget::Widget(WidgetManager& manager, const Rect& rect)
    : manager(&manager), signals(nullptr), rect(rect), enabledFlag(false), focusable(false)
{
    attach();
}

void Widget::attach()
{
    signals = manager->signalsOf(this);
    WidgetManager* const m = manager;
    const auto changed = [m](Widget* widget) { m->widgetChanged(widget); };
    managerConnections.emplace_back(rectChanged.connect(
        [m](Widget* widget, const Rect& oldRect, const Rect& newRect) { m->widgetRectChanged(widget, oldRect, newRect); }));
    managerConnections.emplace_back(raised.connect(changed));
    managerConnections.emplace_back(lowered.connect(changed));
    managerConnections.emplace_back(topMostChanged.connect([m](Widget* widget, bool) { m->widgetChanged(widget); }));
    managerConnections.emplace_back(shown.connect(changed));
    managerConnections.emplace_back(hidden.connect(changed));
    managerConnections.emplace_back(invalidated.connect([m](Widget* widget, const Rect& area) { m->widgetInvalidated(widget, area); }));
    managerConnections.emplace_back(destroyed.connect([m](Widget* widget) { m->widgetDestroyed(widget); }));
    invalidate();
}

Widget::~Widget()
{
    destroyed(this);
    leaveParent();
    const std::vector<Widget*> owned = std::move(children);
    children.clear();
    for (Widget* child : owned) {
        child->parent = nullptr;
        delete child;
    }
}

void Widget::detachManager()
{
    managerConnections.clear();
    manager = nullptr;
    signals = nullptr;
}

void Widget::keepConnection(boost::signals2::connection connection)
{
    connections.emplace_back(std::move(connection));
}

void Widget::destroy()
{
    invalidate();
    leaveParent();
    if (manager)
        manager->destroyLater(this);
}

void Widget::leaveParent()
{
    if (!parent)
        return;
    auto& siblings = parent->children;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
    parent = nullptr;
}

Widget* Widget::getRoot()
{
    Widget* widget = this;
    while (Widget* up = widget->getParent())
        widget = up;
    return widget;
}

bool Widget::isAncestorOf(const Widget* widget) const
{
    for (; widget; widget = widget->parent) {
        if (widget == this)
            return true;
    }
    return false;
}

void Widget::setParent(Widget* newParent)
{
    if (newParent && (isAncestorOf(newParent) || newParent->manager != manager))
        return;
    releaseFocus();
    releaseMouse();
    invalidate();
    leaveParent();
    if (newParent) {
        parent = newParent;
        newParent->children.push_back(this);
    }
    rect = {0, 0, rect.width + rect.x, rect.height + rect.y};
    invalidate();
}

void Widget::setRect(const Rect& value)
{
    if (value.x == rect.x && value.y == rect.y && value.width == rect.width && value.height == rect.height)
        return;
    const Rect oldRect = rect;
    rect = value;
    rectChanged(this, oldRect, rect);
}

void Widget::setPosition(const Point& point)
{
    Widget::setRect({point.x, point.y, rect.width, rect.height});
}

void Widget::setSize(const Point& size)
{
    Widget::setRect({rect.x, rect.y, size.x, size.y});
}

void Widget::raise()
{
    if (!parent)
        return;
    auto& siblings = parent->children;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
    siblings.push_back(this);
    raised(this);
}

void Widget::lower()
{
    if (!parent)
        return;
    auto& siblings = parent->children;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
    siblings.insert(siblings.begin(), this);
    lowered(this);
}

void Widget::setTopMost(bool value)
{
    if (topMost == value)
        return;
    topMost = value;
    topMostChanged(this, value);
}

Widget* Widget::pick(const Point& point, PickingFunctor& functor)
{
    for (const bool topMostPass : {true, false}) {
        for (auto it = children.rbegin(); it != children.rend(); ++it) {
            Widget* const child = *it;
            if (child->topMost != topMostPass || !child->rect.contains(point.x, point.y))
                continue;
            const Point local{point.x - child->rect.x, point.y - child->rect.y};
            if (!child->isPointInside(local) || !functor(*child))
                continue;
            Widget* const hit = child->pick(local, functor);
            return hit ? hit : child;
        }
    }
    return nullptr;
}

void Widget::show()
{
    if (visible)
        return;
    visible = true;
    shown(this);
}

void Widget::hide()
{
    if (!visible)
        return;
    visible = false;
    hidden(this);
}

void Widget::invalidate(const Rect& area)
{
    invalidated(this, Intersect(area, {0, 0, rect.width, rect.height}));
}

void Widget::invalidate()
{
    invalidated(this, {0, 0, rect.width, rect.height});
}

void Widget::enable()
{
    if (enabledFlag)
        return;
    enabledFlag = true;
    enabled(this);
}

void Widget::disable()
{
    if (!enabledFlag)
        return;
    enabledFlag = false;
    disabled(this);
}

void Widget::grabFocus()
{
    if (focusable && manager)
        manager->setFocus(this);
}

void Widget::releaseFocus()
{
    if (hasFocus())
        manager->setFocus(nullptr);
}

bool Widget::hasFocus() const
{
    return manager && manager->getFocusWidget() == this;
}

void Widget::setFocusable(bool value)
{
    if (!value)
        releaseFocus();
    focusable = value;
}

void Widget::grabMouse()
{
    if (manager && !hasMouse())
        manager->setMouseWidget(this);
}

void Widget::releaseMouse()
{
    if (hasMouse())
        manager->setMouseWidget(nullptr);
}

bool Widget::hasMouse() const
{
    return manager && manager->getMouseWidget() == this;
}

void Widget::setColor(Graphics::Color value)
{
    if (color == value)
        return;
    color = value;
    invalidate();
}

bool Widget::isPointInside(const Point& point) const
{
    if (!mask)
        return true;
    // A mask smaller than the widget leaves the rest outside.
    const Point size = mask->size();
    return point.x >= 0 && point.y >= 0 && point.x < size.x && point.y < size.y && mask->test(point);
}

}  // namespace OV::CFW::GUI
