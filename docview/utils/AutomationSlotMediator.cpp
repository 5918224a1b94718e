#include "docview/utils/AutomationSlotMediator.h"

#include <cmath>
#include <stdexcept>

namespace OV::CFW::DocViewUtils {

using DocView::Parameter;

namespace {

std::string FormatText(int precision, const std::string& unitText)
{
    std::string text = precision < 0 ? "%f" : "%." + std::to_string(precision) + "f";
    if (!unitText.empty()) {
        text += ' ';
        for (char c : unitText)
            text += c == '%' ? std::string("%%") : std::string(1, c);
    }
    return text;
}

const DocView::ParameterInfo& Row(const DocView::Document& document, int row)
{
    if (row < 0 || row >= document.GetProfile()->GetParameterCount())
        throw std::invalid_argument("Automation slot on row " + std::to_string(row) + " outside the document");
    return document.GetProfile()->GetParameterInfo(row);
}

}  // namespace

AutomationSlotMediator::Creator::Creator(int row, int slot, std::string name, std::string shortName)
    : row(row), slot(slot), name(std::move(name)), shortName(std::move(shortName))
{
}

AutomationSlotMediatorFloat::Creator::Creator(int row, int slot, std::string name, std::string shortName, int precision,
                                              const std::string& unitText)
    : AutomationSlotMediator::Creator(row, slot, std::move(name), std::move(shortName)),
      format(FormatText(precision, unitText))
{
}

std::unique_ptr<AutomationSlotMediator> AutomationSlotMediatorFloat::Creator::Create(const DocView::Document& document) const
{
    const DocView::ParameterInfo::FloatInfo* info = Row(document, GetParameter()).AsFloat();
    if (info == nullptr)
        throw std::invalid_argument("Float automation slot on a row that is not a float: " + GetName());
    // The row's present value: its default while the document is new.
    return std::make_unique<AutomationSlotMediatorFloat>(*this, *info->converter, document.GetParameter(GetParameter()).ToNumber());
}

AutomationSlotMediatorFloat::AutomationSlotMediatorFloat(const Creator& creator, const DataFilter::FloatConverter& converter,
                                                         float value)
    : creator(creator), converter(converter), value(value)
{
}

bool AutomationSlotMediatorFloat::SetValue(float plain)
{
    // A NaN is no value: the document would refuse it anyway.
    if (plain == GetValue() || std::isnan(plain))
        return false;
    value.store(plain, std::memory_order_relaxed);
    return true;
}

bool AutomationSlotMediatorFloat::SetFromDocument(Parameter parameter)
{
    return SetValue(parameter.ToNumber());
}

void AutomationSlotMediatorFloat::Format(std::string& text, float plain) const
{
    boost::format format = creator.GetFormat();
    format % plain;
    text = format.str();
}

AutomationSlotMediatorBool::Creator::Creator(int row, int slot, std::string name, std::string shortName, std::string onText,
                                             std::string offText)
    : AutomationSlotMediator::Creator(row, slot, std::move(name), std::move(shortName)), onText(std::move(onText)),
      offText(std::move(offText))
{
}

std::unique_ptr<AutomationSlotMediator> AutomationSlotMediatorBool::Creator::Create(const DocView::Document& document) const
{
    if (Row(document, GetParameter()).type != Parameter::Bool)
        throw std::invalid_argument("Switch automation slot on a row that is not a bool: " + GetName());
    return std::make_unique<AutomationSlotMediatorBool>(*this, document.GetParameter(GetParameter()).AsBool());
}

AutomationSlotMediatorBool::AutomationSlotMediatorBool(const Creator& creator, bool on)
    : creator(creator), value(on ? 1.0f : 0.0f)
{
}

void AutomationSlotMediatorBool::GetDisplayFor(std::string& text, float normalised) const
{
    text = IsOn(normalised) ? creator.GetOnText() : creator.GetOffText();
}

bool AutomationSlotMediatorBool::SetValue(float plain)
{
    const bool was = IsOn(value.exchange(plain, std::memory_order_relaxed));
    return was != IsOn(plain);
}

bool AutomationSlotMediatorBool::SetFromDocument(Parameter parameter)
{
    const bool on = parameter.ToNumber() != 0.0f;
    if (on == IsOn(GetValue()))
        return false;
    value.store(on ? 0.5f : 0.0f, std::memory_order_relaxed);
    return true;
}

}  // namespace OV::CFW::DocViewUtils
