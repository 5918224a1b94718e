#include "widgets/lists/ScrollBar.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetManager.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/layout/ElementContext.h"
#include "widgets/statics/Tiling.h"

#include <algorithm>

namespace OV::CFW::Widgets {

namespace {

// The shortest handle, so that it can still be taken at any range.
constexpr int minimumHandle = 8;
// The tick from which a held arrow or track repeats, once a tick.
constexpr int repeatDelay = 8;
constexpr int wheelSteps = 3;
// A handle without a picture.
constexpr Graphics::Color plainHandle = 0xFF909090u;

// num / den to the nearest whole number, halves away from zero; den > 0.
long long RoundedRatio(long long num, long long den)
{
    return num >= 0 ? (2 * num + den) / (2 * den) : -((-2 * num + den) / (2 * den));
}

int Clamp(long long value, int low, int high)
{
    return static_cast<int>(std::clamp<long long>(value, low, high));
}

}  // namespace

ScrollBar::ScrollBar(GUI::Widget& parent, const Rect& rect, const Pictures& pictures, bool vertical, bool adjacentButtons)
    : Widget(parent, rect), pictures(pictures), vertical(vertical), adjacentButtons(adjacentButtons)
{
    setWantsWheel(true);
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int button, int) {
        if (button == Graphics::MouseButton::Left)
            mouseDown(p);
    }));
    keepConnection(events.mouseMoved.connect([this](Widget*, const Point& p, int) {
        if (hasMouse())
            mouseMoved(p);
    }));
    keepConnection(events.mouseUp.connect([this](Widget*, const Point&, int, int) { release(); }));
    keepConnection(mouseReleased.connect([this](Widget*) { release(); }));
    keepConnection(events.mouseWheel.connect([this](Widget*, const Point&, int steps, int) {
        if (!fits())
            setScrollPosition(Clamp(position - static_cast<long long>(steps) * wheelSteps * step, 0, maxPosition()));
    }));
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { draw(*painter, clip); }));
    if (getManager() != nullptr)
        keepConnection(getManager()->tick.connect([this](GUI::WidgetManager*) { repeat(); }));
}

void ScrollBar::setRange(int newRange, int newPage)
{
    newRange = std::max(newRange, 0);
    newPage = std::max(newPage, 0);
    if (newRange == range && newPage == page)
        return;
    range = newRange;
    page = newPage;
    invalidate();
    setScrollPosition(position);
}

void ScrollBar::setStep(int pixels)
{
    step = std::max(pixels, 1);
}

void ScrollBar::setScrollPosition(int value)
{
    const int limited = std::clamp(value, 0, maxPosition());
    if (limited == position)
        return;
    position = limited;
    invalidate();
    positionChanged(this, position);
}

ScrollBar::Geometry ScrollBar::geometry() const
{
    const auto lengthOf = [this](Graphics::Image* a, Graphics::Image* b) {
        const auto one = [this](Graphics::Image* image) { return image ? (vertical ? image->size().y : image->size().x) : 0; };
        return std::max(one(a), one(b));
    };
    const int length = std::max(vertical ? getSize().y : getSize().x, 0);
    const int back = lengthOf(pictures.releasedBack, pictures.pressedBack);
    const int forward = lengthOf(pictures.releasedForward, pictures.pressedForward);
    const int track = std::max(length - back - forward, 0);
    Geometry g;
    g.forward = {length - forward, forward};
    g.back = adjacentButtons ? Span{length - forward - back, back} : Span{0, back};
    g.track = {adjacentButtons ? 0 : back, track};
    g.handle = {g.track.start, 0};
    if (fits())
        return g;
    // The handle's fixed ends must show whole.
    int ends = 0;
    if (pictures.handle) {
        const Point size = pictures.handle->size();
        const Rect middle = Intersect(pictures.handleMiddle, {0, 0, size.x, size.y});
        if (!IsEmpty(middle))
            ends = vertical ? size.y - middle.height : size.x - middle.width;
    }
    const long long share = static_cast<long long>(track) * page / range;
    const int handle = std::min(static_cast<int>(std::max<long long>(share, std::max(minimumHandle, ends))), track);
    const long long travel = track - handle;
    g.handle = {g.track.start + static_cast<int>(travel * position / maxPosition()), handle};
    return g;
}

GUI::Widget::Rect ScrollBar::spanRect(const Span& span) const
{
    return vertical ? Rect{0, span.start, getSize().x, span.length} : Rect{span.start, 0, span.length, getSize().y};
}

GUI::Widget::Rect ScrollBar::handleRect() const
{
    return fits() ? Rect{} : spanRect(geometry().handle);
}

ScrollBar::Part ScrollBar::partAt(const Point& point) const
{
    const Geometry g = geometry();
    const int a = along(point);
    const auto inside = [a](const Span& span) { return a >= span.start && a < span.start + span.length; };
    if (inside(g.handle))
        return Part::Handle;
    if (inside(g.back))
        return Part::Back;
    if (inside(g.forward))
        return Part::Forward;
    if (inside(g.track))
        return a < g.handle.start ? Part::PageBack : Part::PageForward;
    return Part::None;
}

void ScrollBar::mouseDown(const Point& point)
{
    if (fits())
        return;
    held = partAt(point);
    if (held == Part::None)
        return;
    heldTicks = 0;
    pointerAlong = along(point);
    dragStart = pointerAlong;
    dragStartPosition = position;
    grabMouse();
    invalidate();
    if (held != Part::Handle)
        repeat();
}

void ScrollBar::mouseMoved(const Point& point)
{
    pointerAlong = along(point);
    if (held != Part::Handle)
        return;
    // Always from the start of the drag, so that nothing drifts.
    const Geometry g = geometry();
    const int travel = g.track.length - g.handle.length;
    if (travel > 0)
        setScrollPosition(Clamp(dragStartPosition + RoundedRatio(static_cast<long long>(pointerAlong - dragStart) * maxPosition(), travel), 0,
                          maxPosition()));
}

void ScrollBar::release()
{
    if (held == Part::None)
        return;
    held = Part::None;
    releaseMouse();
    invalidate();
}

void ScrollBar::repeat()
{
    if (held == Part::None || held == Part::Handle || fits())
        return;
    // The press moves at once; a hold moves again from the repeatDelay-th tick on.
    const int tick = heldTicks++;
    if (tick != 0 && tick < repeatDelay)
        return;
    const Span handle = geometry().handle;
    switch (held) {
    case Part::Back: setScrollPosition(std::max(position - step, 0)); break;
    case Part::Forward: setScrollPosition(Clamp(static_cast<long long>(position) + step, 0, maxPosition())); break;
    case Part::PageBack:
        if (pointerAlong < handle.start)
            setScrollPosition(std::max(position - page, 0));
        break;
    case Part::PageForward:
        if (pointerAlong >= handle.start + handle.length)
            setScrollPosition(Clamp(static_cast<long long>(position) + page, 0, maxPosition()));
        break;
    default: break;
    }
}

void ScrollBar::draw(Graphics::Painter& painter, const Rect& clip)
{
    const Graphics::Color tint = getColor();
    if (pictures.background)
        DrawNineSliced(painter, *pictures.background, pictures.backgroundMiddle, {0, 0, getSize().x, getSize().y}, clip, tint);
    const Geometry g = geometry();
    if (!fits() && pictures.handle)
        DrawNineSliced(painter, *pictures.handle, pictures.handleMiddle, spanRect(g.handle), clip, tint);
    else if (!fits())
        painter.fillRect(plainHandle, Intersect(spanRect(g.handle), clip)); // still to be seen and taken
    drawArrow(painter, g.back, pictures.releasedBack, pictures.pressedBack, Part::Back, clip);
    drawArrow(painter, g.forward, pictures.releasedForward, pictures.pressedForward, Part::Forward, clip);
}

void ScrollBar::drawArrow(Graphics::Painter& painter, const Span& span, Graphics::Image* released, Graphics::Image* pressed, Part part,
                          const Rect& clip)
{
    Graphics::Image* const image = held == part && pressed ? pressed : released ? released : pressed;
    const Rect at = spanRect(span);
    if (image == nullptr || IsEmpty(Intersect(at, clip)))
        return;
    // Dimmed to half its alpha when there is nothing to scroll.
    const bool dim = fits() || !isEnabled();
    const Graphics::Color tint = getColor();
    const Graphics::Color color = dim ? (tint & 0x00FFFFFFu) | ((tint >> 25) << 24) : tint;
    if (color == 0xFFFFFFFFu)
        painter.drawImage(*image, {at.x, at.y}, {0, 0, at.width, at.height});
    else
        painter.drawImageTinted(*image, Graphics::Painter::Modulate, color, {at.x, at.y}, {0, 0, at.width, at.height});
}

GUI::Widget* ScrollBar::build(ElementContext& context)
{
    const auto middle = [&context](const std::string& stem) {
        return Rect{context.integer((stem + "X").c_str()), context.integer((stem + "Y").c_str()), context.integer((stem + "W").c_str()),
                    context.integer((stem + "H").c_str())};
    };
    Pictures pictures;
    pictures.background = context.image(context.text("Background"));
    pictures.backgroundMiddle = middle("BackgroundResRect");
    pictures.handle = context.image(context.text("Handle"));
    pictures.handleMiddle = middle("HandleResRect");
    pictures.releasedBack = context.image(context.text("ReleasedBack"));
    pictures.pressedBack = context.image(context.text("PressedBack"));
    pictures.releasedForward = context.image(context.text("ReleasedForward"));
    pictures.pressedForward = context.image(context.text("PressedForward"));
    return new ScrollBar(context.parent(), context.rect(), pictures, context.integer("Vertical") != 0,
                         context.integer("AdjacentButtons") != 0);
}

}  // namespace OV::CFW::Widgets
