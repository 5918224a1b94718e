#pragma once

#include "widgets/layout/ElementContext.h"

namespace OV::CFW::Widgets {

// The builders of the value controls' layout elements, one per element name.
GUI::Widget* BuildKnob(ElementContext& context);
GUI::Widget* BuildKnobRotatable(ElementContext& context);
GUI::Widget* BuildSlider(ElementContext& context);
GUI::Widget* BuildPushButton(ElementContext& context);
GUI::Widget* BuildCheckBox(ElementContext& context);
GUI::Widget* BuildRadioButton(ElementContext& context);
GUI::Widget* BuildMultiStateButton(ElementContext& context);
GUI::Widget* BuildClickRoll(ElementContext& context);
GUI::Widget* BuildDragger(ElementContext& context);
GUI::Widget* BuildSliderStepArray(ElementContext& context);

}  // namespace OV::CFW::Widgets
