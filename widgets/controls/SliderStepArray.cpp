#include "widgets/controls/SliderStepArray.h"

#include "graphics/Image.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/statics/Tiling.h"

#include <algorithm>
#include <climits>

namespace OV::CFW::Widgets {

SliderStepArray::SliderStepArray(GUI::Widget& parent, const Rect& rect, Graphics::Image& stepOff, int count)
    : Widget(parent, rect), stepOff(stepOff), count(count)
{
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { draw(*painter, clip); }));
}

void SliderStepArray::draw(Graphics::Painter& painter, const Rect& clip)
{
    const Point cell = stepOff.size();
    const long long width = std::min<long long>(static_cast<long long>(count) * cell.x, INT_MAX);
    DrawTiled(painter, stepOff, {0, 0, cell.x, cell.y}, {0, 0, static_cast<int>(width), cell.y}, clip);
}

}  // namespace OV::CFW::Widgets
