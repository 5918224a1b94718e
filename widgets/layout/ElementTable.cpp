#include "widgets/layout/ElementTable.h"

#include "widgets/layout/Builder.h"
#include "widgets/layout/DynamicBuilder.h"
#include "widgets/statics/BlendImages.h"
#include "widgets/statics/DragIcon.h"
#include "widgets/statics/Group.h"
#include "widgets/statics/Highlight.h"
#include "widgets/statics/StaticImage.h"
#include "widgets/statics/StaticResizableImage.h"
#include "widgets/statics/StaticText.h"
#include "widgets/controls/ControlBuilders.h"
#include "widgets/displays/DisplayBuilders.h"
#include "widgets/menus/MenuBuilders.h"
#include "widgets/lists/ListBuilders.h"
#include "widgets/lists/ScrollBar.h"

namespace OV::CFW::Widgets {

namespace {

struct Element {
    const char* name;
    BuildFunction build;
};

// In the vocabulary's customary order. Names of the vocabulary without a line here (text
// editing, envelopes) build nothing yet.
const Element elements[] = {
    {"Builder", Builder::build},
    {"DynamicBuilder", DynamicBuilder::build},
    {"StaticImage", StaticImage::build},
    {"StaticResizableImage", StaticResizableImage::build},
    {"StaticText", StaticText::build},
    {"PushButton", BuildPushButton},
    {"CheckBox", BuildCheckBox},
    {"RadioButton", BuildRadioButton},
    {"MultiStateButton", BuildMultiStateButton},
    {"Group", Group::build},
    {"Knob", BuildKnob},
    {"KnobRotatable", BuildKnobRotatable},
    {"Slider", BuildSlider},
    {"OldMenu", BuildOldMenu},
    {"OVMenu", BuildOVMenu},
    {"SimpleWindow", BuildSimpleWindow},
    {"Graph", BuildGraph},
    {"Meter", BuildMeter},
    {"Tuner", BuildTuner},
    {"AnalogMeter", BuildAnalogMeter},
    {"ScrollBar", ScrollBar::build},
    {"TextList", BuildTextList},
    {"TextTree", BuildTextTree},
    {"FolderTree", BuildFolderTree},
    {"MultiTextList", BuildMultiTextList},
    {"PhaseScope", BuildPhaseScope},
    {"CorrelationMeter", BuildCorrelationMeter},
    {"Blender", Blender::build},
    {"Highlight", Highlight::build},
    {"TextList2", BuildTextList2},
    {"MultiTextList2", BuildMultiTextList2},
    {"TextTree2", BuildTextTree2},
    {"ClickRoll", BuildClickRoll},
    {"DragIcon", DragIcon::build},
    {"BlendImages", BlendImages::build},
    {"Dragger", BuildDragger},
    {"SliderStepArray", BuildSliderStepArray},
    {"TapDelayDisplay", BuildTapDelayDisplay},
    {"OVMenu2", BuildOVMenu2},
    {"ChainView", BuildChainView},
    {"QM3Matrix", BuildQM3Matrix},
};

}  // namespace

BuildFunction FindElement(const std::string& name)
{
    for (const Element& element : elements) {
        if (name == element.name)
            return element.build;
    }
    return nullptr;
}

}  // namespace OV::CFW::Widgets
