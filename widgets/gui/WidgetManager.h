#pragma once

#include "graphics/Window.h"
#include "widgets/gui/DirtyTileGrid.h"
#include "widgets/gui/WidgetSignals.h"

#include <map>
#include <memory>
#include <set>

#include <boost/core/noncopyable.hpp>
#include <boost/signals2/signal.hpp>

namespace OV::CFW::GUI {

class Widget;

// The one link between a widget tree and its window: turns the window's calls into widget
// signals, keeps focus, mouse grab and hover, collects what needs painting in tiles and paints
// it, and deletes destroyed widgets once the callback that destroyed them is over. The root
// owns it. Window thread only.
class WidgetManager : public Graphics::Window::Callback, private boost::noncopyable {
public:
    using Point = BasicPoint<int>;
    using Rect = BasicRect<int>;
    using Signal = boost::signals2::signal<void(WidgetManager*)>;

    Signal windowClosing;
    Signal tick; // every timer call of the window, 25 times a second
    Signal activeChanged;

    WidgetManager() = default;
    // Deletes the widgets still waiting for deletion.
    ~WidgetManager() override;

    // The control the user touched last.
    void setActiveWidget(Widget* widget);
    Widget* getActiveWidget() const { return activeWidget; }
    // The events of all widgets, emitted before each widget's own.
    WidgetSignals& getSignals() { return globalSignals; }
    Widget* getRoot() const { return root; }
    Widget* getFocusWidget() const { return focusWidget; }
    Widget* getMouseWidget() const { return mouseWidget; }
    Widget* getHoverWidget() const { return hoverWidget; }
    Graphics::Window* getWindow() const { return window; }

    void created(Graphics::Window& window) override;
    void closing(Graphics::Window& window) override;
    void paint(Graphics::Window& window, Graphics::Painter& painter, const Rect& rect) override;
    void mouseMoved(Graphics::Window& window, const Point& point, int modifiers) override;
    void mouseDown(Graphics::Window& window, const Point& point, int button, int modifiers) override;
    void mouseUp(Graphics::Window& window, const Point& point, int button, int modifiers) override;
    void mouseWheel(Graphics::Window& window, const Point& point, int steps, int modifiers) override;
    void doubleClick(Graphics::Window& window, const Point& point, int button, int modifiers) override;
    void keyDown(Graphics::Window& window, int code, char character, int modifiers) override;
    void keyUp(Graphics::Window& window, int code, char character, int modifiers) override;
    void timer(Graphics::Window& window) override;
    void keyboardLost(Graphics::Window& window) override;

private:
    friend class Widget;
    friend class Root;

    // From the root and the widgets.
    void setRoot(Widget& widget);
    WidgetSignals* signalsOf(Widget* widget);
    void setFocus(Widget* widget);
    void setMouseWidget(Widget* widget);
    void destroyLater(Widget* widget);
    void widgetInvalidated(Widget* widget, const Rect& area);
    void widgetRectChanged(Widget* widget, const Rect& oldRect, const Rect& newRect);
    void widgetChanged(Widget* widget);
    void widgetDestroyed(Widget* widget);

    // Tiles and window; `rect` in window coordinates.
    void markDirty(const Rect& rect);
    void paintWidget(Widget& widget, Graphics::Painter& painter, const Rect& clipRect, const Point& origin, int pass);
    // What the ManagerPickingFunctor finds at `point`, or the root; null without a root.
    Widget* pickAt(const Point& point);
    // Emits `which` on the global signals, then on the target's own.
    template <typename Event, typename... Args>
    void emit(Widget* target, Event WidgetSignals::*which, const Args&... args);
    void mouseButton(Widget* target, const Point& point, int button, int modifiers,
                     WidgetSignals::Signal<const Point&, int, int> WidgetSignals::*which);
    void key(int code, char character, int modifiers, WidgetSignals::Signal<Graphics::KeyboardButton::Code, char, int> WidgetSignals::*which);
    void deletePending();

    std::unique_ptr<DirtyTileGrid> dirtyTiles;
    Widget* root = nullptr;
    WidgetSignals globalSignals;
    std::map<Widget*, std::shared_ptr<WidgetSignals>> widgetSignals;
    std::set<Widget*> pendingDelete;
    Widget* focusWidget = nullptr;
    Widget* mouseWidget = nullptr; // the one that grabbed the mouse
    Widget* activeWidget = nullptr;
    Widget* hoverWidget = nullptr;
    Point lastMousePosition;
    int lastButton = 0;
    int lastModifiers = 0;
    Graphics::Window* window = nullptr;
    bool keyboardGrabbed = false;
};

}  // namespace OV::CFW::GUI
