// The controls' layout elements: what each needs, the sizes taken from pictures, and the
// defaults, checked through what the built widget then does.
#include "Screen.h"

#include "widgets/controls/ClickRoll.h"
#include "widgets/controls/ControlBuilders.h"
#include "widgets/controls/KnobRotatable.h"
#include "widgets/controls/RadioButton.h"
#include "widgets/controls/Slider.h"
#include "widgets/layout/ElementTable.h"

#include <map>

#include <tinyxml.h>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using CFW::GUI::Widget;

// Elements built under the screen's root, with pictures by name. The strip has 5 frames of
// 8 × 8, frame i of the colour 0xFF00000i.
class Layout : public ElementContext {
public:
    template <typename T = Widget>
    T* build(const char* xml)
    {
        document.Clear();
        document.Parse(xml);
        const BuildFunction builder = FindElement(element().Value());
        return builder ? dynamic_cast<T*>(builder(*this)) : nullptr;
    }
    void drag(CFW::BasicPoint<int> from, CFW::BasicPoint<int> to, int modifiers = 0)
    {
        screen.window.mouseDown(from, 1, modifiers);
        screen.window.mouseMoved(to, 0);
        screen.window.mouseUp(to, 1, 0);
    }

    const TiXmlElement& element() const override { return *document.RootElement(); }
    Widget& parent() const override { return screen.root; }
    CFW::Graphics::Image* image(const std::string& name) override { return images.count(name) ? images[name] : nullptr; }
    CFW::Graphics::Font* font(const std::string&) override { return nullptr; }

    mutable Screen screen;
    std::map<std::string, CFW::Graphics::Image*> images{
        {"strip", &screen.picture({8, 40}, [](int, int y) { return 0xFF000000u + static_cast<unsigned>(y / 8); })},
        {"picture", &screen.plain({12, 7}, 0xFF123456)},
        {"track", &screen.plain({30, 6}, 0xFF111111)},
        {"handle", &screen.plain({6, 6}, 0xFF222222)},
    };
    TiXmlDocument document;
};

TEST(ControlBuilders, RequirementsAndSizes)
{
    const std::pair<const char*, std::vector<int>> cases[] = { // the rect, empty for no widget
        {R"(<Knob Strip="absent" PositionX="3" Frames="5"/>)", {}},
        {R"(<Knob Strip="strip" Frames="5"/>)", {}},
        {R"(<Knob Strip="strip" PositionX="3"/>)", {}},
        {R"(<Knob Strip="strip" PositionX="3" PositionY="4" Frames="5"/>)", {3, 4, 8, 8}},
        {R"(<Slider Background="track" PositionX="2"/>)", {}},
        {R"(<Slider Handle="handle" Background="track" PositionX="2" PositionY="3"/>)", {2, 3, 30, 6}},
        {R"(<Slider Handle="handle" Background="track" PositionX="2" SizeW="50" SizeH="9"/>)", {2, 0, 50, 9}},
        {R"(<PushButton Pressed="picture" PositionX="1" SizeW="0" SizeH="0"/>)", {1, 0, 12, 7}},
        {R"(<PushButton Released="picture" SizeW="5"/>)", {0, 0, 5, 0}},
        {R"(<MultiStateButton Image0="absent" Image1="picture"/>)", {0, 0, 12, 7}},
        {R"(<Dragger Tiled="1"/>)", {}},
        {R"(<Dragger Image="picture" PositionX="4"/>)", {4, 0, 12, 7}},
        {R"(<SliderStepArray StepOff="picture" NumberOfSliderStep="3"/>)", {0, 0, 36, 7}},
    };
    for (const auto& [xml, rect] : cases) {
        Layout f;
        const Widget* widget = f.build(xml);
        std::vector<int> built;
        if (widget)
            built = {widget->getRect().x, widget->getRect().y, widget->getRect().width, widget->getRect().height};
        EXPECT_EQ(rect, built) << xml;
    }
}

// The defaults show in how far a drag moves the value. The strip has 5 frames, the slider
// starts at 0.5 on a span of 24 with its handle at 12, the others start at 0.
TEST(ControlBuilders, DefaultsOfTheDrag)
{
    struct Case {
        const char* xml;
        CFW::BasicPoint<int> from, to;
        int modifiers;
        float value;
    };
    const Case cases[] = {
        {R"(<Knob Strip="strip" PositionX="0" Frames="5"/>)", {4, 4}, {4, 3}, 0, 0.2f},   // a frame a pixel
        {R"(<Knob Strip="strip" PositionX="0" Frames="5"/>)", {4, 4}, {4, 3}, 16, 0.02f}, // ten with Shift
        {R"(<Knob Strip="strip" PositionX="0" Frames="5" MouseRange="100" MinValue="-2" MaxValue="2"/>)", {4, 4}, {4, 3}, 0, 0.04f},
        {R"(<KnobRotatable Strip="strip" PositionX="0" Frames="5"/>)", {4, 4}, {4, 3}, 16, 0.1f}, // two with Shift
        {R"(<Slider Handle="handle" Background="track" PositionX="0"/>)", {14, 2}, {20, 2}, 0, 0.0f}, // 0.75 truncated
        {R"(<Slider Handle="handle" PositionX="0" SizeW="6" SizeH="30" Smooth="1" Vertical="1"/>)", {3, 14}, {3, 8}, 0, 0.75f},
        {R"(<ClickRoll StepValue="0.1" SizeW="20" SizeH="20"/>)", {5, 10}, {5, 7}, 0, 0.3f},
        {R"(<ClickRoll StepValue="0.1" SizeW="20" SizeH="20"/>)", {5, 10}, {5, -30}, 0, 1.0f}, // the maximum
    };
    for (const Case& c : cases) {
        Layout f;
        Widget* widget = f.build(c.xml);
        f.drag(c.from, c.to, c.modifiers);
        if (auto* knob = dynamic_cast<Knob*>(widget))
            EXPECT_FLOAT_EQ(c.value, knob->getValue()) << c.xml;
        else if (auto* slider = dynamic_cast<Slider*>(widget))
            EXPECT_FLOAT_EQ(c.value, slider->getValue()) << c.xml;
        else if (auto* roll = dynamic_cast<ClickRoll*>(widget))
            EXPECT_FLOAT_EQ(c.value, roll->getValue()) << c.xml;
        else
            ADD_FAILURE() << c.xml;
    }
}

TEST(ControlBuilders, KnobFrameListAndRadioGroups)
{
    Layout f;
    auto* knob = f.build<Knob>(R"(<Knob Strip="strip" PositionX="0" Frames="5" Frame0="4" Frame1="1"/>)");
    std::vector<CFW::Graphics::Color> shown; // frame i is 0xFF00000i
    for (const float value : {0.0f, 1.0f}) {
        knob->setValue(value);
        f.screen.window.redraw();
        shown.push_back(f.screen.window.pixel(3, 3));
    }
    EXPECT_EQ((std::vector<CFW::Graphics::Color>{0xFF000004, 0xFF000001}), shown);

    auto* a = f.build<RadioButton>(R"(<RadioButton Group="mode"/>)");
    auto* b = f.build<RadioButton>(R"(<RadioButton Group="mode" Default="1"/>)");
    auto* other = f.build<RadioButton>(R"(<RadioButton Group="band" Default="1"/>)");
    auto* loose1 = f.build<RadioButton>(R"(<RadioButton/>)");
    auto* loose2 = f.build<RadioButton>(R"(<RadioButton/>)");
    ASSERT_TRUE(a && b && other && loose1 && loose2);
    EXPECT_EQ(a->getGroup(), b->getGroup());
    EXPECT_TRUE(b->isSelected() && other->isSelected());
    EXPECT_NE(a->getGroup(), other->getGroup());
    EXPECT_NE(loose1->getGroup(), loose2->getGroup());
}

}  // namespace
}  // namespace OV::Testing
