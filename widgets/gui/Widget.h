#pragma once

#include "graphics/Color.h"
#include "graphics/Geometry.h"

#include <vector>

#include <boost/core/noncopyable.hpp>
#include <boost/signals2/connection.hpp>
#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class BitMask;
}

namespace OV::CFW::GUI {

class WidgetManager;
struct WidgetSignals;

// A node of the widget tree. The rect is relative to the parent's top-left corner; the parent
// owns its children, and their order is the paint order (the last is on top). Its events
// arrive through getSignals(); the signals below tell the manager what changed. Window thread
// only.
class Widget : private boost::noncopyable {
public:
    using Rect = BasicRect<int>;
    using Point = BasicPoint<int>;
    template <typename... Args>
    using Signal = boost::signals2::signal<void(Widget*, Args...)>;

    // Decides which widgets a pick may return and descend into.
    class PickingFunctor {
    public:
        virtual ~PickingFunctor() = default;
        virtual bool operator()(Widget& widget) = 0;
    };

    Signal<> destroyed;
    Signal<const Rect&, const Rect&> rectChanged; // old, new
    Signal<> raised;
    Signal<> lowered;
    Signal<bool> topMostChanged;
    Signal<> shown;
    Signal<> hidden;
    Signal<const Rect&> invalidated; // in widget coordinates
    Signal<> enabled;
    Signal<> disabled;
    Signal<> focusGained;
    Signal<> focusLost;
    Signal<> mouseGrabbed;
    Signal<> mouseReleased;

    // Joins `parent` as its last child and asks for its area to be painted.
    Widget(Widget& parent, const Rect& rect);

    // Leaves the parent now and is deleted when the manager's current callback ends, so that a
    // handler may destroy the widget that is emitting.
    virtual void destroy();
    virtual Widget* getParent() const { return parent; }
    virtual Widget* getRoot();
    virtual std::vector<Widget*>& getChildren() { return children; }
    // Moves to the end of `newParent`'s children, at (0, 0), with the old position added to
    // the size; a caller that wants a position sets it afterwards. Null takes the widget out of
    // the tree, and the caller then owns it. A move below itself or into another tree is
    // ignored.
    virtual void setParent(Widget* newParent);
    virtual void setPosition(const Point& point);
    virtual Point getPosition() const { return {rect.x, rect.y}; }
    virtual void setSize(const Point& size);
    virtual Point getSize() const { return {rect.width, rect.height}; }
    virtual void setRect(const Rect& value);
    virtual const Rect& getRect() const { return rect; }
    virtual Point getClientOrigin() const { return {}; }
    virtual void raise();
    virtual void lower();
    virtual void setTopMost(bool value);
    virtual bool isTopMost() const { return topMost; }
    // The deepest widget at `point` (relative to this one) that passes `functor` with all its
    // ancestors below this one: top-most children first, then the others, the last first.
    // Never this widget itself; null when nothing is hit.
    virtual Widget* pick(const Point& point, PickingFunctor& functor);
    virtual void show();
    virtual void hide();
    virtual bool isVisible() const { return visible; }
    virtual void invalidate(const Rect& area);
    virtual void invalidate();
    virtual void enable();
    virtual void disable();
    virtual bool isEnabled() const { return enabledFlag; }
    virtual void grabFocus();
    virtual void releaseFocus();
    virtual bool hasFocus() const;
    virtual void setFocusable(bool value);
    virtual bool isFocusable() const { return focusable; }
    virtual void grabMouse();
    virtual void releaseMouse();
    virtual bool hasMouse() const;
    virtual bool getWantsWheel() const { return wantsWheel; }
    // 0xFFFFFFFF is no tint.
    virtual void setColor(Graphics::Color value);
    virtual Graphics::Color getColor() const { return color; }
    // Not owned. Points beyond the mask's size miss the widget.
    virtual void setMask(Graphics::BitMask* value) { mask = value; }
    virtual Graphics::BitMask* getMask() const { return mask; }
    // Emits `destroyed`, then deletes the children.
    virtual ~Widget();
    // Whether `point` (in widget coordinates) hits the widget's shape.
    virtual bool isPointInside(const Point& point) const;

    WidgetManager* getManager() const { return manager; }
    WidgetSignals* getSignals() const { return signals; }

protected:
    // The root's base: the manager is given, and only `visible` is set.
    Widget(WidgetManager& manager, const Rect& rect);

    void setWantsWheel(bool value) { wantsWheel = value; }
    // Ends the connection with the widget.
    void keepConnection(boost::signals2::connection connection);
    // Stops telling the manager anything, before it goes.
    void detachManager();

private:
    friend class WidgetManager;

    void attach();
    void leaveParent();
    bool isAncestorOf(const Widget* widget) const;

    WidgetManager* manager;
    WidgetSignals* signals;
    Widget* parent = nullptr;
    std::vector<Widget*> children;
    Rect rect;
    bool topMost = false;
    bool visible = true;
    bool enabledFlag = true;
    bool focusable = true;
    bool wantsWheel = false;
    Graphics::Color color = 0xFFFFFFFF;
    Graphics::BitMask* mask = nullptr;
    std::vector<boost::signals2::scoped_connection> managerConnections; // own signals to the manager
    std::vector<boost::signals2::scoped_connection> connections;        // what the widget connected
};

}  // namespace OV::CFW::GUI
