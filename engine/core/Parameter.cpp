#include "engine/core/Parameter.h"

#include "engine/core/Handler.h"

#include <cmath>

namespace AudioEngine {

Parameter::Parameter(std::string name, std::string description, float minimum, float maximum,
                     float defaultValue, unsigned flags)
    : name(std::move(name)), description(std::move(description)), minimum(minimum),
      maximum(maximum), defaultValue(defaultValue), flags(flags),
      value((flags & FloorHold) != 0 ? maximum : minimum)
{
    SetValue(defaultValue);
}

Parameter::Parameter(std::string name, std::string description,
                     const std::vector<std::string>& stateNames, const std::string& defaultState,
                     unsigned flags)
    : name(std::move(name)), description(std::move(description)), minimum(0.0f),
      maximum(static_cast<float>(stateNames.size()) - 1.0f), defaultValue(0.0f), flags(flags),
      value((flags & FloorHold) != 0 ? maximum : minimum)
{
    for (std::size_t i = 0; i < stateNames.size(); ++i)
        states[stateNames[i]] = static_cast<float>(i);
    const auto found = states.find(defaultState);
    defaultValue = found != states.end() ? found->second : 0.0f;
    SetValue(defaultValue);
}

void Parameter::SetValue(float x)
{
    if (std::isnan(x))
        return;
    x = x <= minimum ? minimum : x >= maximum ? maximum : x;
    const float stored = value.load(std::memory_order_relaxed);
    if ((flags & FloorHold) != 0) {
        if (stored > x)
            value.store(x, std::memory_order_relaxed);
    } else if ((flags & PeakHold) != 0) {
        if (x > stored)
            value.store(x, std::memory_order_relaxed);
    } else {
        value.store(x, std::memory_order_relaxed);
    }
}

float Parameter::GetValue()
{
    const float result = value.load(std::memory_order_relaxed);
    if ((flags & FloorHold) != 0)
        value.store(maximum, std::memory_order_relaxed);
    else if ((flags & PeakHold) != 0)
        value.store(minimum, std::memory_order_relaxed);
    return result;
}

ParameterLinked::ParameterLinked(ParameterHandler& target, const std::string& targetName,
                                 std::string linkName)
    : targetHandler(&target), targetParameter(target.GetParameter(targetName)),
      targetName(targetName), linkName(std::move(linkName)),
      description(targetParameter.load() != nullptr ? targetParameter.load()->GetDescription() : std::string())
{
}

void ParameterLinked::SetValue(float value)
{
    targetHandler->SetParameter(targetName, value);
}

// A link whose target name its handler lacks reads as an empty parameter.
namespace {
const ParameterBase::States noStates;
}

float ParameterLinked::GetValue()
{
    ParameterBase* target = targetParameter.load(std::memory_order_relaxed);
    return target != nullptr ? target->GetValue() : 0.0f;
}

float ParameterLinked::GetMin() const
{
    const ParameterBase* target = targetParameter.load(std::memory_order_relaxed);
    return target != nullptr ? target->GetMin() : 0.0f;
}

float ParameterLinked::GetMax() const
{
    const ParameterBase* target = targetParameter.load(std::memory_order_relaxed);
    return target != nullptr ? target->GetMax() : 0.0f;
}

float ParameterLinked::GetDefault() const
{
    const ParameterBase* target = targetParameter.load(std::memory_order_relaxed);
    return target != nullptr ? target->GetDefault() : 0.0f;
}

const ParameterBase::States& ParameterLinked::GetStates() const
{
    const ParameterBase* target = targetParameter.load(std::memory_order_relaxed);
    return target != nullptr ? target->GetStates() : noStates;
}

unsigned ParameterLinked::GetFlags() const
{
    const ParameterBase* target = targetParameter.load(std::memory_order_relaxed);
    return target != nullptr ? target->GetFlags() : 0u;
}

void ParameterLinked::Retarget(ParameterHandler& handler)
{
    targetHandler = &handler;
    targetParameter.store(handler.GetParameter(targetName), std::memory_order_relaxed);
}

ParameterMultiLink::ParameterMultiLink(std::vector<ParameterHandler*> targets, std::string linkName)
    : name(std::move(linkName)), handlers(std::move(targets)), description(First().GetDescription())
{
}

ParameterBase& ParameterMultiLink::First() const
{
    return *handlers.front()->GetParameter(name);
}

void ParameterMultiLink::SetValue(float value)
{
    for (ParameterHandler* handler : handlers)
        handler->SetParameter(name, value);
}

float ParameterMultiLink::GetValue()
{
    return First().GetValue();
}

float ParameterMultiLink::GetMin() const
{
    return First().GetMin();
}

float ParameterMultiLink::GetMax() const
{
    return First().GetMax();
}

float ParameterMultiLink::GetDefault() const
{
    return First().GetDefault();
}

const ParameterBase::States& ParameterMultiLink::GetStates() const
{
    return First().GetStates();
}

unsigned ParameterMultiLink::GetFlags() const
{
    return First().GetFlags();
}

std::string BandName(const std::string& base, int band)
{
    return base + "_" + static_cast<char>('0' + band);
}

}  // namespace AudioEngine
