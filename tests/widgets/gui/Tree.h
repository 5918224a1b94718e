#pragma once

#include "graphics/DeviceSW.h"
#include "graphics/WindowOffscreen.h"
#include "widgets/gui/Root.h"
#include "widgets/gui/WidgetManager.h"

#include <map>
#include <string>
#include <vector>

namespace OV::Testing {

// A root on an off-screen window with named widgets. Their events are logged as lines such as
// "down knob 20,20 1" (event, widget, arguments); each widget's own signal must follow the
// global one, which the log checks instead of repeating every line.
class Tree {
public:
    explicit Tree(const CFW::BasicPoint<int>& size = {256, 256});

    CFW::GUI::Widget& add(const std::string& name, CFW::GUI::Widget& parent, const CFW::BasicRect<int>& rect,
                          bool wantsWheel = false);
    CFW::GUI::Widget& add(const std::string& name, const CFW::BasicRect<int>& rect) { return add(name, root, rect); }
    CFW::GUI::Widget& operator[](const std::string& name);
    CFW::GUI::WidgetManager& manager() { return *root.getManager(); }
    // The lines since the last call, then "grabs n" and "releases n" when the keyboard of the
    // window was grabbed or released n times.
    std::vector<std::string> take();

private:
    void watch(CFW::GUI::Widget& widget, const std::string& name);
    template <typename... Args>
    std::string line(const char* event, CFW::GUI::Widget* widget, const Args&... args);

    std::map<std::string, CFW::GUI::Widget*> widgets;
    std::map<const CFW::GUI::Widget*, std::string> names;
    std::vector<std::string> log;
    std::string unmatchedGlobal; // a global line whose own twin has not come yet
    int grabs = 0;
    int releases = 0;

public:
    CFW::Graphics::DeviceSW device;
    CFW::GUI::Root root;
    CFW::Graphics::WindowOffscreen window; // goes first: it tells the manager it is closing
};

}  // namespace OV::Testing
