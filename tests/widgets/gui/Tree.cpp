#include "Tree.h"

#include <sstream>

#include <gtest/gtest.h>

namespace OV::Testing {

using namespace CFW::GUI;
using CFW::BasicPoint;
using CFW::BasicRect;

namespace {

class TestWidget : public Widget {
public:
    TestWidget(Widget& parent, const BasicRect<int>& rect, bool wantsWheel) : Widget(parent, rect) { setWantsWheel(wantsWheel); }
};

void Put(std::ostream& out, const BasicPoint<int>& p) { out << ' ' << p.x << ',' << p.y; }
void Put(std::ostream& out, const BasicRect<int>& r) { out << ' ' << r.x << ',' << r.y << ',' << r.width << ',' << r.height; }
void Put(std::ostream& out, int value) { out << ' ' << value; }
void Put(std::ostream& out, char value) { out << ' ' << value; }
void Put(std::ostream&, CFW::Graphics::Painter*) {}

// Connects `note(event, widget, args...)` to every signal of `signals`.
template <typename Note>
void ConnectAll(WidgetSignals& signals, Note note)
{
    const auto to = [note](const char* event) { return [note, event](Widget* w, const auto&... args) { note(event, w, args...); }; };
    signals.paint.connect(to("paint"));
    signals.mouseMoved.connect(to("move"));
    signals.mouseDown.connect(to("down"));
    signals.mouseUp.connect(to("up"));
    signals.mouseWheel.connect(to("wheel"));
    signals.doubleClick.connect(to("double"));
    signals.keyDown.connect(to("keyDown"));
    signals.keyUp.connect(to("keyUp"));
    signals.mouseEntered.connect(to("enter"));
    signals.mouseLeft.connect(to("leave"));
}

}  // namespace

Tree::Tree(const BasicPoint<int>& size) : root(size), window(device, *root.getManager(), size)
{
    ConnectAll(manager().getSignals(), [this](const char* event, Widget* w, const auto&... args) {
        EXPECT_EQ("", unmatchedGlobal) << "no own signal after the global one";
        unmatchedGlobal = line(event, w, args...);
        log.push_back(unmatchedGlobal);
    });
    watch(root, "root");
}

template <typename... Args>
std::string Tree::line(const char* event, Widget* widget, const Args&... args)
{
    std::ostringstream out;
    out << event << ' ' << names[widget];
    (Put(out, args), ...);
    return out.str();
}

void Tree::watch(Widget& widget, const std::string& name)
{
    widgets[name] = &widget;
    names[&widget] = name;
    ConnectAll(*widget.getSignals(), [this](const char* event, Widget* w, const auto&... args) {
        EXPECT_EQ(unmatchedGlobal, line(event, w, args...)) << "own signal without the global one before it";
        unmatchedGlobal.clear();
    });
    const auto note = [this](const char* event) { return [this, event](Widget* w) { log.push_back(line(event, w)); }; };
    widget.focusGained.connect(note("focusGained"));
    widget.focusLost.connect(note("focusLost"));
    widget.mouseGrabbed.connect(note("mouseGrabbed"));
    widget.mouseReleased.connect(note("mouseReleased"));
    widget.destroyed.connect(note("destroyed"));
}

Widget& Tree::add(const std::string& name, Widget& parent, const BasicRect<int>& rect, bool wantsWheel)
{
    Widget* widget = new TestWidget(parent, rect, wantsWheel);
    watch(*widget, name);
    return *widget;
}

Widget& Tree::operator[](const std::string& name)
{
    return *widgets.at(name);
}

std::vector<std::string> Tree::take()
{
    EXPECT_EQ("", unmatchedGlobal) << "no own signal after the global one";
    if (window.keyboardGrabs() != grabs)
        log.push_back("grabs " + std::to_string(window.keyboardGrabs() - std::exchange(grabs, window.keyboardGrabs())));
    if (window.keyboardReleases() != releases)
        log.push_back("releases " + std::to_string(window.keyboardReleases() - std::exchange(releases, window.keyboardReleases())));
    return std::exchange(log, {});
}

}  // namespace OV::Testing
