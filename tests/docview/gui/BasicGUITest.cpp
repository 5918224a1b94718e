// An editor built from a layout and bound to a document: the widgets show the document, a drag
// and a click queue the editor's changes, and neither way echoes.
#include "docview/gui/BasicGUI.h"
#include "docview/gui/BasicGUIProfile.h"
#include "docview/gui/GUIWidgetMediatorCheckBox.h"
#include "docview/gui/GUIWidgetMediatorKnob.h"
#include "docview/utils/BasicContexts.h"
#include "graphics/DeviceSW.h"
#include "graphics/WindowOffscreen.h"
#include "graphics/res/ResourceSet.h"
#include "tests/docview/utils/AutomationTestSetup.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/Tga.h"
#include "widgets/controls/CheckBox.h"
#include "widgets/controls/Knob.h"
#include "widgets/gui/Root.h"
#include "widgets/gui/WidgetManager.h"

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW;
using Row = SlotDocumentProfile::Row;

// A knob of 10 frames of 20 x 20 at (10, 10), whose full range is 100 pixels of drag, and a
// check box of 16 x 16 at (100, 10) shown inverted, in a layout of 200 x 100.
struct Editor {
    Editor()
    {
        folder.Write("Test/Knob.tga", Tga(20, 200, std::vector<std::uint32_t>(20 * 200, 0xff404040u)));
        folder.Write("Test/Off.tga", Tga(16, 16, std::vector<std::uint32_t>(16 * 16, 0xff000000u)));
        folder.Write("Test/On.tga", Tga(16, 16, std::vector<std::uint32_t>(16 * 16, 0xffffffffu)));
        folder.Write("Test/Layout.xml", "<Layout SizeW=\"200\" SizeH=\"100\">"
                                        "<Knob Name=\"GainKnob\" Strip=\"Test/Knob.tga\" Frames=\"10\" PositionX=\"10\" PositionY=\"10\" MouseRange=\"100\"/>"
                                        "<CheckBox Name=\"ActiveBox\" Unchecked=\"Test/Off.tga\" Checked=\"Test/On.tga\" PositionX=\"100\" PositionY=\"10\"/>"
                                        "</Layout>");
        resources.getProvider().addPath(folder.Path());
        profile.AddCreator(std::make_unique<DocViewUtils::GUIWidgetMediatorKnob::Creator>(Row::Gain, "GainKnob"));
        profile.AddCreator(std::make_unique<DocViewUtils::GUIWidgetMediatorCheckBox::Creator>(Row::Active, "ActiveBox", true));
        profile.AddCreator(std::make_unique<DocViewUtils::GUIWidgetMediatorKnob::Creator>(Row::Mix, "NoSuchKnob"));
    }
    template <typename T>
    T& Child(std::size_t index) { return dynamic_cast<T&>(*root.getChildren().at(index)); }

    ScratchFolder folder;
    Graphics::DeviceSW device;
    Res::ResourceSet resources{device};
    DocViewUtils::BasicGUIContext context{nullptr, &resources};
    SpyDocument document;
    DocViewUtils::BasicGUIProfile profile{"Test/Layout.xml"};
    GUI::Root root{{200, 100}};
    Graphics::WindowOffscreen window{device, *root.getManager(), {200, 100}};
    DocViewUtils::BasicGUI gui{profile, context, document};
};

TEST(BasicGUITest, TheLayoutGivesTheSizeAndTheWidgetsFollowTheDocument)
{
    Editor e;
    EXPECT_EQ(200, e.gui.GetDefaultSize().x);
    EXPECT_EQ(100, e.gui.GetDefaultSize().y);
    e.gui.Open(&e.root);
    auto& knob = e.Child<Widgets::Knob>(0);
    auto& box = e.Child<Widgets::CheckBox>(1);
    // Gain 0 dB on its range of -15 to 15 is the knob's middle; Active false shows checked.
    EXPECT_FLOAT_EQ(0.5f, knob.getValue());
    EXPECT_TRUE(box.isChecked());

    // The host moves the rows: the widgets follow on the next update and send nothing back.
    e.document.SetParameter(Row::Gain, Parameter::FromFloat(-7.5f), CFW::DocView::SourceHost);
    e.document.SetParameter(Row::Active, Parameter::FromBool(true), CFW::DocView::SourceHost);
    e.gui.Update();
    EXPECT_FLOAT_EQ(0.25f, knob.getValue());
    EXPECT_FALSE(box.isChecked());
    EXPECT_TRUE(e.document.TakeQueued().empty());

    DocViewUtils::BasicGUIProfile missing{"Test/Missing.xml"};
    DocViewUtils::BasicGUI none{missing, e.context, e.document};
    EXPECT_EQ(100, none.GetDefaultSize().x);
    e.gui.Close();
}

TEST(BasicGUITest, ADragAndAClickQueueTheEditorsChangesWithoutEcho)
{
    Editor e;
    e.gui.Open(&e.root);
    auto& knob = e.Child<Widgets::Knob>(0);
    // 25 pixels up of a 100-pixel range: a quarter of -15 to 15 above 0 dB.
    e.window.mouseDown({20, 25}, 1, 0);
    e.window.mouseMoved({20, 0}, 1);
    e.window.mouseUp({20, 0}, 1, 0);
    EXPECT_FLOAT_EQ(0.75f, knob.getValue());
    const auto queued = e.document.TakeQueued();
    ASSERT_EQ(1u, queued.size());
    EXPECT_EQ(Row::Gain, queued[0].index);
    EXPECT_FLOAT_EQ(7.5f, queued[0].value.AsFloat());
    EXPECT_EQ(CFW::DocView::SourceEditor, queued[0].source);
    EXPECT_EQ(&knob, e.root.getManager()->getActiveWidget());

    // A click on the inverted box: shown checked for false, so unchecking it asks for true.
    e.window.mouseDown({105, 15}, 1, 0);
    e.window.mouseUp({105, 15}, 1, 0);
    const auto clicked = e.document.TakeQueued();
    ASSERT_EQ(1u, clicked.size());
    EXPECT_EQ(Row::Active, clicked[0].index);
    EXPECT_TRUE(clicked[0].value.AsBool());

    // Once the document has the values, updating shows them and sends nothing.
    e.document.SetParameter(Row::Gain, queued[0].value, queued[0].source);
    e.document.SetParameter(Row::Active, clicked[0].value, clicked[0].source);
    e.gui.Update();
    EXPECT_FLOAT_EQ(0.75f, knob.getValue());
    EXPECT_TRUE(e.document.TakeQueued().empty());
    e.gui.Close();
}

}  // namespace
}  // namespace OV::Testing
