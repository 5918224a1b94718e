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

namespace OV::CFW::Widgets {

namespace {

struct Element {
    const char* name;
    BuildFunction build;
};

// In the vocabulary's customary order. Names of the vocabulary without a line here (text
// editing, lists, menus, meters and the like) build nothing yet.
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
    {"Blender", Blender::build},
    {"Highlight", Highlight::build},
    {"ClickRoll", BuildClickRoll},
    {"DragIcon", DragIcon::build},
    {"BlendImages", BlendImages::build},
    {"Dragger", BuildDragger},
    {"SliderStepArray", BuildSliderStepArray},
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
