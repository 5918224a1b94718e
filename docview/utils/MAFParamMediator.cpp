#include "docview/utils/MAFParamMediator.h"

#include <algorithm>
#include <limits>

namespace OV::CFW::DocViewUtils {

using DocView::Parameter;

namespace {

// Made before any mediator runs, so that the audio thread only passes references.
const std::string processName = "Process";
const std::string stopText = "Stop";
const std::string muteText = "Mute";
const std::string bypassText = "Bypass";
const std::string normalText = "Normal";

// An enum or bool row's index; a float counts by its integer part, a negative number as 0.
std::uint32_t IndexOf(Parameter value)
{
    if (value.type == Parameter::Bool || value.type == Parameter::Enum)
        return value.payload;
    const float number = value.ToNumber();
    if (!(number > 0.0f))
        return 0;
    if (number >= 4294967296.0f)
        return std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(number);
}

// The integer part of an engine value; false for NaN and values out of int's range.
bool Truncate(float value, int& result)
{
    if (!(value > -2147483648.0f && value < 2147483648.0f))
        return false;
    result = static_cast<int>(value);
    return true;
}

}  // namespace

std::string MAFParamMediator::MakeEngineName(const std::string& name, const std::string& prefix)
{
    if (prefix.empty())
        return name;
    if (name.empty())
        return prefix;
    return name + "_" + prefix;
}

// Row mediators.

MAFParamMediatorRow::MAFParamMediatorRow(Listener& listener, int row, std::string name)
    : listener(listener), row(row), name(std::move(name)), engineName(this->name)
{
}

void MAFParamMediatorRow::Attach(DocView::MAFWrapper* newWrapper, const std::string& prefix)
{
    wrapper = newWrapper;
    engineName = MakeEngineName(name, prefix);
    // Room for the name, so that the lookup at the first read fills it without allocating.
    resolved = DocView::MAFWrapper::ResolvedName();
    resolved.name.reserve(engineName.size());
    isResolved = false;
}

bool MAFParamMediatorRow::ReadEngine(float& value)
{
    if (wrapper == nullptr)
        return false;
    if (!isResolved) {
        wrapper->ResolveName(resolved, engineName);
        isResolved = true;
    }
    value = wrapper->GetFloatParameter(resolved);
    return true;
}

MAFParamMediatorBool::Creator::Creator(int row, std::string name, float offValue, float onValue)
    : row(row), name(std::move(name)), offValue(offValue), onValue(onValue), usesText(false)
{
}

MAFParamMediatorBool::Creator::Creator(int row, std::string name, std::string offText, std::string onText)
    : row(row), name(std::move(name)), offValue(0.0f), onValue(1.0f), offText(std::move(offText)),
      onText(std::move(onText)), usesText(true)
{
}

std::unique_ptr<MAFParamMediator> MAFParamMediatorBool::Creator::Create(Listener& listener) const
{
    return std::make_unique<MAFParamMediatorBool>(listener, *this);
}

MAFParamMediatorBool::MAFParamMediatorBool(Listener& listener, const Creator& creator)
    : MAFParamMediatorRow(listener, creator.row, creator.name), settings(creator)
{
}

void MAFParamMediatorBool::OnParameter(int, Parameter value)
{
    DocView::MAFWrapper* wrapper = GetWrapper();
    if (wrapper == nullptr)
        return;
    const bool on = value.ToNumber() != 0.0f;
    if (settings.usesText)
        wrapper->SetStringParameter(GetEngineName(), on ? settings.onText : settings.offText);
    else
        wrapper->SetFloatParameter(GetEngineName(), on ? settings.onValue : settings.offValue);
}

void MAFParamMediatorBool::Poll()
{
    float value;
    if (ReadEngine(value))
        Send(Parameter::FromBool(value == settings.onValue));
}

MAFParamMediatorEnum::Creator::Creator(int row, std::string name) : row(row), name(std::move(name)) {}

MAFParamMediatorEnum::Creator::Creator(int row, std::string name, std::vector<float> values)
    : row(row), name(std::move(name)), values(std::move(values))
{
    for (std::size_t i = 0; i < this->values.size(); ++i) {
        int key;
        if (Truncate(this->values[i], key))
            indices.emplace(key, static_cast<std::uint32_t>(i));
    }
}

MAFParamMediatorEnum::Creator::Creator(int row, std::string name, std::vector<std::string> texts)
    : row(row), name(std::move(name)), texts(std::move(texts))
{
}

std::unique_ptr<MAFParamMediator> MAFParamMediatorEnum::Creator::Create(Listener& listener) const
{
    return std::make_unique<MAFParamMediatorEnum>(listener, *this);
}

MAFParamMediatorEnum::MAFParamMediatorEnum(Listener& listener, const Creator& creator)
    : MAFParamMediatorRow(listener, creator.row, creator.name), settings(creator)
{
}

void MAFParamMediatorEnum::OnParameter(int, Parameter value)
{
    DocView::MAFWrapper* wrapper = GetWrapper();
    if (wrapper == nullptr)
        return;
    const std::uint32_t index = IndexOf(value);
    if (!settings.values.empty()) {
        const std::size_t last = settings.values.size() - 1;
        wrapper->SetFloatParameter(GetEngineName(), settings.values[std::min<std::size_t>(index, last)]);
    } else if (!settings.texts.empty()) {
        const std::size_t last = settings.texts.size() - 1;
        wrapper->SetStringParameter(GetEngineName(), settings.texts[std::min<std::size_t>(index, last)]);
    } else {
        wrapper->SetFloatParameter(GetEngineName(), static_cast<float>(index));
    }
}

void MAFParamMediatorEnum::Poll()
{
    float value;
    int key;
    if (!ReadEngine(value) || !Truncate(value, key))
        return;
    if (settings.values.empty() && settings.texts.empty()) {
        if (key >= 0)
            Send(Parameter::FromEnum(static_cast<std::uint32_t>(key)));
        return;
    }
    const auto found = settings.indices.find(key);
    if (found != settings.indices.end())
        Send(Parameter::FromEnum(found->second));
}

MAFParamMediatorFloat::Creator::Creator(int row, std::string name)
    : row(row), name(std::move(name)), converter(DataFilter::MakeNull())
{
}

MAFParamMediatorFloat::Creator::Creator(int row, std::string name, const DataFilter::FloatConverter& given)
    : row(row), name(std::move(name))
{
    given.Clone(converter);
}

std::unique_ptr<MAFParamMediator> MAFParamMediatorFloat::Creator::Create(Listener& listener) const
{
    return std::make_unique<MAFParamMediatorFloat>(listener, *this);
}

MAFParamMediatorFloat::MAFParamMediatorFloat(Listener& listener, const Creator& creator)
    : MAFParamMediatorRow(listener, creator.row, creator.name)
{
    creator.converter->Clone(converter);
}

void MAFParamMediatorFloat::OnParameter(int, Parameter value)
{
    if (DocView::MAFWrapper* wrapper = GetWrapper())
        wrapper->SetFloatParameter(GetEngineName(), converter->ToNormalized(value.ToNumber()));
}

void MAFParamMediatorFloat::Poll()
{
    float value;
    if (ReadEngine(value))
        Send(Parameter::FromFloat(converter->ToValue(value)));
}

// Process.

MAFParamMediatorProcess::Creator::Creator(int disableRow, int bypassRow, int muteRow)
    : disableRow(disableRow), bypassRow(bypassRow), muteRow(muteRow)
{
}

std::unique_ptr<MAFParamMediator> MAFParamMediatorProcess::Creator::Create(Listener&) const
{
    return std::make_unique<MAFParamMediatorProcess>(*this);
}

MAFParamMediatorProcess::MAFParamMediatorProcess(const Creator& creator)
    : rows{creator.disableRow, creator.bypassRow, creator.muteRow}, engineName(processName)
{
}

void MAFParamMediatorProcess::Attach(DocView::MAFWrapper* newWrapper, const std::string& prefix)
{
    wrapper = newWrapper;
    engineName = MakeEngineName(processName, prefix);
}

int MAFParamMediatorProcess::GetParameter(int i) const
{
    return rows[i];
}

void MAFParamMediatorProcess::OnParameter(int index, Parameter value)
{
    const bool on = value.ToNumber() != 0.0f;
    if (index == rows[0]) {
        disabled = on;
    } else if (index == rows[1]) {
        bypassed = on;
        if (disabled || muted)
            return;
    } else if (index == rows[2]) {
        muted = on;
        if (disabled)
            return;
    } else {
        return;
    }
    Send();
}

void MAFParamMediatorProcess::Send()
{
    if (wrapper == nullptr)
        return;
    const std::string& text = disabled ? stopText : muted ? muteText : bypassed ? bypassText : normalText;
    wrapper->SetStringParameter(engineName, text);
}

}  // namespace OV::CFW::DocViewUtils
