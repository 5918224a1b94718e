#pragma once

#include "widgets/gui/Widget.h"
#include "widgets/menus/MenuItem.h"

#include <vector>

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Font;
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

class MenuPanel;

// A pop-up menu: its items, how they look, and what the user does with them. The widget itself
// is never seen nor hit; popup() shows the items in a top-most panel under the root, over
// everything, and each submenu in a panel of its own beside its item. While open the menu holds
// the mouse and the keyboard focus: the pointer highlights, a click on an item chooses it, a
// submenu opens when its item is highlighted, on the side where it fits. Up, Down, Right, Left,
// Return and Escape work on the innermost level. A click outside, or Escape on the menu itself,
// closes it with nothing chosen. A level taller than the window scrolls by the wheel, by arrows
// at its ends (while the pointer rests on them) and with the highlight. Window thread only.
// Subclasses give the look; the behaviour is all here.
class Menu : public GUI::Widget {
public:
    // The pictures all menus have; any may be null, and a shape is drawn instead.
    struct Images {
        Graphics::Image* mark = nullptr; // the tick
        Graphics::Image* subArrow = nullptr;
        Graphics::Image* upArrow = nullptr;
        Graphics::Image* downArrow = nullptr;
    };

    // Once closed; the id of the item chosen.
    boost::signals2::signal<void(Menu*, int)> itemChosen;
    // Whenever it closes, chosen or not, before itemChosen.
    boost::signals2::signal<void(Menu*)> closed;

    ~Menu() override;

    // Closes an open menu first.
    void setItems(std::vector<MenuItem> value);
    const std::vector<MenuItem>& getItems() const { return items; }
    // For every item of `id` at any depth; an open menu shows the change at once.
    void setTicked(int id, bool ticked);
    void setItemEnabled(int id, bool enabled);

    // Opens the menu with its top-left corner at `point`, in window coordinates, moved as
    // little as needed to lie in the window. Nothing happens without items or outside a tree.
    void popup(const Point& point);
    // Closes with nothing chosen.
    void close();
    bool isOpen() const { return !levels.empty(); }
    // The menu is level 0, its open submenu 1, and so on.
    std::size_t openLevels() const { return levels.size(); }
    // In window coordinates; empty for a level that is not open.
    Rect levelRect(std::size_t level) const;

    // Hidden or disabled, it closes.
    void hide() override;
    void disable() override;
    // The pointer passes through the widget to what lies below.
    bool isPointInside(const Point& point) const override;

    // The panel's geometry, in pixels.
    struct Metrics {
        int rowHeight = 16;
        int separatorHeight = 7;
        int arrowHeight = 12; // each scroll arrow's band
        int gutter = 16;      // either side of the text: the tick left, the submenu's arrow right
        int frameLeft = 2, frameTop = 2, frameRight = 2, frameBottom = 2;
        int columns = 1;
        int columnSpacing = 0;
        int overlap = 0;    // of a submenu over its parent
        Point offset;       // added to the point of popup()
    };

    // `font` and the images are not owned and must outlive the widget; `font` may be null.
    // The rows fit the font, the gutters and arrow bands the pictures; the subclass does the
    // rest.
    Menu(GUI::Widget& parent, const Rect& rect, Graphics::Font* font, const Images& images, Graphics::Color arrowColor);

    // The frame is the border of `background` around `middle`, where the rows go; none
    // without a picture or when `middle` misses it.
    void setFrame(Graphics::Image* background, const Rect& middle);

    // The width an item needs, gutters included.
    virtual int itemWidth(const MenuItem& item) const;
    virtual void drawBackground(Graphics::Painter& painter, const Rect& area, const Rect& clip) const = 0;
    virtual void drawItem(Graphics::Painter& painter, const MenuItem& item, const Rect& row, bool highlighted) const = 0;
    virtual void drawSeparator(Graphics::Painter& painter, const Rect& row) const = 0;

    // The tick, the text in `font` from `indent` past the left gutter, the submenu's arrow.
    void drawEntry(Graphics::Painter& painter, const MenuItem& item, const Rect& row, Graphics::Font* textFont,
                   Graphics::Color color, int indent = 0) const;
    // The row height for `font`: its line with some air, or the default without a font.
    static int RowHeightFor(const Graphics::Font* textFont);
    static int TextWidth(const Graphics::Font* textFont, const std::string& text);
    // Half as opaque.
    static Graphics::Color Faded(Graphics::Color color);

    Metrics metrics;
    Graphics::Font* font;
    Images images;

private:
    friend class MenuPanel;

    void drawScrollArrow(Graphics::Painter& painter, const Rect& band, bool up, bool active) const;

    Point windowOrigin() const;
    // A new innermost level at (0, 0), for the caller to place.
    MenuPanel& openLevel(std::vector<MenuItem>& levelItems);
    void openSubmenu(std::size_t level, int index);
    void closeAbove(std::size_t level);
    void destroyPanels();
    // From a panel's destructor.
    void forgetPanel(MenuPanel* panel);
    // The deepest open level holding the window point, or -1.
    int levelAt(const Point& point) const;
    void choose(const MenuItem& item);

    void mouseMoved(const Point& point, int modifiers);
    void mouseDown(const Point& point);
    void mouseUp(const Point& point);
    void keyDown(int code);
    // Highlights what lies at `point` (window coordinates) and opens or closes submenus to
    // match; the level under it, or -1.
    int pointAt(const Point& point);
    void tick();

    std::vector<MenuItem> items;
    std::vector<MenuPanel*> levels;
    Graphics::Color arrowColor;
    bool armed = false;       // a press, or a drag over items, since it opened: a release chooses
    int scrollingLevel = -1;  // the level whose arrow the pointer rests on
    int scrollingStep = 0;    // -1 up, 1 down
};

}  // namespace OV::CFW::Widgets
