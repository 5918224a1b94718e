#include "widgets/gui/WidgetManager.h"

#include "graphics/Painter.h"
#include "widgets/gui/ManagerPickingFunctor.h"
#include "widgets/gui/Widget.h"

namespace OV::CFW::GUI {

namespace {

BasicPoint<int> AbsolutePosition(const Widget* widget)
{
    BasicPoint<int> position;
    for (; widget; widget = widget->getParent()) {
        position.x += widget->getRect().x;
        position.y += widget->getRect().y;
    }
    return position;
}

BasicPoint<int> Relative(const Widget* widget, const BasicPoint<int>& point)
{
    const BasicPoint<int> origin = AbsolutePosition(widget);
    return {point.x - origin.x, point.y - origin.y};
}

}  // namespace

WidgetManager::~WidgetManager()
{
    deletePending();
}

void WidgetManager::setRoot(Widget& widget)
{
    root = &widget;
    dirtyTiles = std::make_unique<DirtyTileGrid>(widget.getRect().width, widget.getRect().height);
}

WidgetSignals* WidgetManager::signalsOf(Widget* widget)
{
    std::shared_ptr<WidgetSignals>& entry = widgetSignals[widget];
    if (!entry)
        entry = std::make_shared<WidgetSignals>();
    return entry.get();
}

void WidgetManager::setActiveWidget(Widget* widget)
{
    if (activeWidget == widget)
        return;
    activeWidget = widget;
    activeChanged(this);
}

void WidgetManager::setFocus(Widget* widget)
{
    // Keys come from the window, so there is nothing to focus without one.
    if (widget == focusWidget || (widget && !window))
        return;
    Widget* const previous = focusWidget;
    focusWidget = widget;
    keyboardGrabbed = widget != nullptr;
    if (previous)
        previous->focusLost(previous);
    if (widget) {
        widget->focusGained(widget);
        window->grabKeyboard();
    } else if (window) {
        window->releaseKeyboard();
    }
}

void WidgetManager::setMouseWidget(Widget* widget)
{
    Widget* const previous = mouseWidget;
    mouseWidget = widget;
    if (previous)
        previous->mouseReleased(previous);
    if (widget)
        widget->mouseGrabbed(widget);
}

void WidgetManager::destroyLater(Widget* widget)
{
    if (activeWidget == widget)
        setActiveWidget(nullptr);
    pendingDelete.insert(widget);
}

void WidgetManager::deletePending()
{
    // One at a time: a destructor may delete another pending widget, which then leaves the set.
    while (!pendingDelete.empty()) {
        Widget* const widget = *pendingDelete.begin();
        pendingDelete.erase(pendingDelete.begin());
        delete widget;
    }
}

void WidgetManager::markDirty(const Rect& rect)
{
    if (IsEmpty(rect))
        return;
    if (dirtyTiles)
        dirtyTiles->mark(rect);
    if (window)
        window->invalidate(rect);
}

void WidgetManager::widgetInvalidated(Widget* widget, const Rect& area)
{
    markDirty(Moved(area, AbsolutePosition(widget)));
}

void WidgetManager::widgetRectChanged(Widget* widget, const Rect& oldRect, const Rect& newRect)
{
    // A new size of the root needs a new grid, dirty all over.
    if (widget == root)
        setRoot(*widget);
    const BasicPoint<int> origin = AbsolutePosition(widget->getParent());
    markDirty(Moved(oldRect, origin));
    markDirty(Moved(newRect, origin));
}

void WidgetManager::widgetChanged(Widget* widget)
{
    const Rect& rect = widget->getRect();
    markDirty(Moved({0, 0, rect.width, rect.height}, AbsolutePosition(widget)));
}

void WidgetManager::widgetDestroyed(Widget* widget)
{
    if (mouseWidget == widget)
        mouseWidget = nullptr;
    if (hoverWidget == widget)
        hoverWidget = nullptr;
    if (activeWidget == widget)
        setActiveWidget(nullptr);
    if (focusWidget == widget) {
        focusWidget = nullptr;
        keyboardGrabbed = false;
        if (window)
            window->releaseKeyboard();
    }
    pendingDelete.erase(widget);
    widgetSignals.erase(widget);
}

template <typename Event, typename... Args>
void WidgetManager::emit(Widget* target, Event WidgetSignals::*which, const Args&... args)
{
    (globalSignals.*which)(target, args...);
    // A copy, so that the signals outlive an emission that deletes their widget.
    const auto own = widgetSignals.find(target);
    if (own == widgetSignals.end())
        return;
    const std::shared_ptr<WidgetSignals> signals = own->second;
    ((*signals).*which)(target, args...);
}

Widget* WidgetManager::pickAt(const Point& point)
{
    if (!root)
        return nullptr;
    ManagerPickingFunctor functor;
    Widget* const picked = root->pick(Relative(root, point), functor);
    return picked ? picked : root;
}

void WidgetManager::created(Graphics::Window& newWindow)
{
    window = &newWindow;
    if (root)
        root->invalidate();
}

void WidgetManager::closing(Graphics::Window&)
{
    windowClosing(this);
    window = nullptr;
}

void WidgetManager::paint(Graphics::Window&, Graphics::Painter& painter, const Rect& rect)
{
    if (!root)
        return;
    for (const DirtyTileGrid::TileRect& tiles : dirtyTiles->collect(rect)) {
        const Rect area{tiles.x0, tiles.y0, tiles.x1 - tiles.x0, tiles.y1 - tiles.y0};
        // Each pass starts from the whole area: the tiles are clean now, so all of them is drawn.
        for (int pass = 0; pass < 2; ++pass) {
            painter.setDeviceClip(area);
            painter.setOrigin({0, 0});
            paintWidget(*root, painter, area, {0, 0}, pass);
        }
    }
}

// Pass 0 paints what is not top-most, pass 1 looks for top-most widgets and paints each with
// all its descendants (pass 2), above everything else.
void WidgetManager::paintWidget(Widget& widget, Graphics::Painter& painter, const Rect& clipRect, const Point& origin, int pass)
{
    if (pass == 2 || widget.topMost == (pass == 1)) {
        painter.setClipRect(clipRect);
        emit(&widget, &WidgetSignals::paint, &painter, clipRect);
    }
    // By index: a paint handler that adds or removes children cannot leave a dangling iterator.
    for (std::size_t i = 0; i < widget.children.size(); ++i) {
        Widget& child = *widget.children[i];
        if ((pass == 0 && child.topMost) || !child.visible)
            continue;
        const Rect visible = Intersect(child.rect, clipRect);
        if (IsEmpty(visible))
            continue;
        const Point childOrigin{origin.x + child.rect.x, origin.y + child.rect.y};
        painter.setDeviceClip(Moved(visible, origin));
        painter.setOrigin(childOrigin);
        paintWidget(child, painter, Moved(visible, {-child.rect.x, -child.rect.y}), childOrigin,
                    pass == 1 && child.topMost ? 2 : pass);
    }
}

void WidgetManager::mouseMoved(Graphics::Window&, const Point& point, int modifiers)
{
    lastMousePosition = point;
    lastModifiers = modifiers;
    if (Widget* const picked = pickAt(point)) {
        if (picked != hoverWidget) {
            if (hoverWidget)
                emit(hoverWidget, &WidgetSignals::mouseLeft);
            hoverWidget = picked;
            emit(picked, &WidgetSignals::mouseEntered);
        }
        Widget* const target = mouseWidget ? mouseWidget : picked;
        emit(target, &WidgetSignals::mouseMoved, Relative(target, point), modifiers);
    }
    deletePending();
}

void WidgetManager::mouseButton(Widget* target, const Point& point, int button, int modifiers,
                                WidgetSignals::Signal<const Point&, int, int> WidgetSignals::*which)
{
    lastButton = button;
    lastModifiers = modifiers;
    if (target)
        emit(target, which, Relative(target, point), button, modifiers);
    deletePending();
}

void WidgetManager::mouseDown(Graphics::Window&, const Point& point, int button, int modifiers)
{
    mouseButton(mouseWidget ? mouseWidget : pickAt(point), point, button, modifiers, &WidgetSignals::mouseDown);
}

void WidgetManager::mouseUp(Graphics::Window&, const Point& point, int button, int modifiers)
{
    mouseButton(mouseWidget ? mouseWidget : pickAt(point), point, button, modifiers, &WidgetSignals::mouseUp);
}

void WidgetManager::doubleClick(Graphics::Window&, const Point& point, int button, int modifiers)
{
    mouseButton(pickAt(point), point, button, modifiers, &WidgetSignals::doubleClick);
}

void WidgetManager::mouseWheel(Graphics::Window&, const Point& point, int steps, int modifiers)
{
    // Static pictures lie over controls: the wheel goes to the first ancestor that takes it.
    Widget* target = pickAt(point);
    while (target && !target->getWantsWheel())
        target = target->getParent();
    if (!target)
        target = root;
    if (target)
        emit(target, &WidgetSignals::mouseWheel, Relative(target, point), steps, modifiers);
    deletePending();
}

void WidgetManager::key(int code, char character, int modifiers,
                        WidgetSignals::Signal<Graphics::KeyboardButton::Code, char, int> WidgetSignals::*which)
{
    // Without focus the key is dropped, as is a code the window layer does not send.
    if (focusWidget && code >= Graphics::KeyboardButton::Character && code <= Graphics::KeyboardButton::Control)
        emit(focusWidget, which, static_cast<Graphics::KeyboardButton::Code>(code), character, modifiers);
    deletePending();
}

void WidgetManager::keyDown(Graphics::Window&, int code, char character, int modifiers)
{
    key(code, character, modifiers, &WidgetSignals::keyDown);
}

void WidgetManager::keyUp(Graphics::Window&, int code, char character, int modifiers)
{
    key(code, character, modifiers, &WidgetSignals::keyUp);
}

void WidgetManager::timer(Graphics::Window&)
{
    tick(this);
    deletePending();
}

void WidgetManager::keyboardLost(Graphics::Window&)
{
    Widget* const previous = focusWidget;
    focusWidget = nullptr;
    keyboardGrabbed = false;
    if (previous)
        previous->focusLost(previous);
    if (window)
        window->releaseKeyboard();
    deletePending();
}

}  // namespace OV::CFW::GUI
