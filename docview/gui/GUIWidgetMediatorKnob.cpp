#include "docview/gui/GUIWidgetMediatorKnob.h"

#include "docview/datafilter/FloatConverter.h"
#include "widgets/controls/Knob.h"
#include "widgets/gui/WidgetManager.h"
#include "widgets/gui/WidgetSignals.h"

#include <boost/signals2/shared_connection_block.hpp>

namespace OV::CFW::DocViewUtils {

using DocView::Parameter;

std::unique_ptr<DocView::GUIWidgetMediator> GUIWidgetMediatorKnob::Creator::Create(const Widgets::LayoutManager& layout,
                                                                                   DocView::GUIWidgetMediator::Listener& listener) const
{
    return std::make_unique<GUIWidgetMediatorKnob>(GetRow(), Find<Widgets::Knob>(layout), listener, displayConverter);
}

GUIWidgetMediatorKnob::GUIWidgetMediatorKnob(int row, Widgets::Knob* knob, DocView::GUIWidgetMediator::Listener& listener,
                                             std::shared_ptr<const DataFilter::FloatConverter> displayConverter)
    : row(row), knob(knob), listener(listener), displayConverter(std::move(displayConverter)),
      type(listener.GetParameterInfo(row).type)
{
    if (knob == nullptr)
        return;
    // The knob's scale follows the row: the indices of an enum, 0 to 1 for everything else.
    const DocView::ParameterInfo& info = listener.GetParameterInfo(row);
    const auto* names = info.AsEnum();
    knob->setMinValue(0.0f);
    knob->setMaxValue(names != nullptr ? static_cast<float>(names->names.size() - 1) : 1.0f);
    changed = knob->valueChanged.connect([this](Widgets::Knob*, float position) { OnKnob(position); });
    pressed = knob->getSignals()->mouseDown.connect([this](GUI::Widget*, const BasicPoint<int>&, int, int) {
        this->knob->getManager()->setActiveWidget(this->knob);
        this->listener.NotifyParameter(this->row);
    });
}

float GUIWidgetMediatorKnob::ToPosition(float value) const
{
    if (displayConverter != nullptr)
        value = displayConverter->ToNormalized(value);
    const auto* info = listener.GetParameterInfo(row).AsFloat();
    return info != nullptr ? info->converter->ToNormalized(value) : value;
}

void GUIWidgetMediatorKnob::Show(float position)
{
    if (knob == nullptr)
        return;
    const boost::signals2::shared_connection_block quiet(changed);
    knob->setValue(position);
}

void GUIWidgetMediatorKnob::SetBool(bool value)
{
    Show(value ? 1.0f : 0.0f);
}

void GUIWidgetMediatorKnob::SetInteger(int value)
{
    Show(static_cast<float>(value));
}

void GUIWidgetMediatorKnob::SetEnum(int value)
{
    Show(static_cast<float>(value));
}

void GUIWidgetMediatorKnob::SetFloat(float value)
{
    Show(ToPosition(value));
}

// A bool or an integer row puts the knob on the value it took, telling itself again (the second
// report changes nothing); an enum or a float row puts it there quietly.
void GUIWidgetMediatorKnob::OnKnob(float position)
{
    switch (type) {
    case Parameter::Bool:
        listener.OnBool(row, position == 1.0f);
        knob->setValue(position == 0.0f ? 0.0f : 1.0f);
        break;
    case Parameter::Integer: {
        const int n = static_cast<int>(position);
        listener.OnInteger(row, n);
        knob->setValue(static_cast<float>(n));
        break;
    }
    case Parameter::Enum: {
        const int n = static_cast<int>(position);
        listener.OnEnum(row, n);
        Show(static_cast<float>(n));
        break;
    }
    case Parameter::Float: {
        const auto* info = listener.GetParameterInfo(row).AsFloat();
        float value = info != nullptr ? info->converter->ToValue(position) : position;
        if (displayConverter != nullptr)
            value = displayConverter->ToValue(value);
        listener.OnFloat(row, value);
        Show(ToPosition(value));
        break;
    }
    default:
        break;
    }
}

}  // namespace OV::CFW::DocViewUtils
