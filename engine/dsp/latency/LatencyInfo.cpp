#include "engine/dsp/latency/LatencyInfo.h"

#include "engine/core/Module.h"
#include "engine/dsp/equaliser/ReversedBlockFilter.h"

namespace AudioEngine {

namespace {

float Value(Module& module, const std::string& name)
{
    ParameterBase* parameter = module.GetParameter(name);
    return parameter != nullptr ? parameter->GetValue() : 0.0f;
}

}  // namespace

unsigned LatencyInfo::GetLatency(Module& module) const
{
    static const std::string process = "Process";
    return Value(module, process) == 0.0f ? fixedLatency : 0u;
}

unsigned LatencyInfoLinearPhaseEq::GetLatency(Module& module) const
{
    static const std::string linearize = "Linearize";
    return Value(module, linearize) != 0.0f ? AudioAlgorithm::ReversedBlockFilter::latency : 0u;
}

}  // namespace AudioEngine
