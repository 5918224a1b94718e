#pragma once

#include "widgets/layout/ElementContext.h"

namespace OV::CFW::Widgets {

// The builders of the displays' layout elements, one per element name.
GUI::Widget* BuildMeter(ElementContext& context);
GUI::Widget* BuildAnalogMeter(ElementContext& context);
GUI::Widget* BuildTuner(ElementContext& context);
GUI::Widget* BuildGraph(ElementContext& context);
GUI::Widget* BuildSimpleWindow(ElementContext& context);
GUI::Widget* BuildPhaseScope(ElementContext& context);
GUI::Widget* BuildCorrelationMeter(ElementContext& context);
GUI::Widget* BuildTapDelayDisplay(ElementContext& context);
GUI::Widget* BuildChainView(ElementContext& context);
GUI::Widget* BuildQM3Matrix(ElementContext& context);

}  // namespace OV::CFW::Widgets
