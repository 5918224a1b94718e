#pragma once

namespace AudioEngine {

class Module;

// How much latency an effect module has, by its parameters.
class LatencyInfo {
public:
    LatencyInfo(bool halvesUnderOversampling, unsigned fixedLatency)
        : halvesUnderOversampling(halvesUnderOversampling), fixedLatency(fixedLatency)
    {
    }
    virtual ~LatencyInfo() = default;

    // Samples at the host rate without oversampling: the fixed latency while "Process" is 0.
    virtual unsigned GetLatency(Module& module) const;
    // Whether the latency halves when the module runs at twice the rate.
    bool HalvesUnderOversampling() const { return halvesUnderOversampling; }

protected:
    bool halvesUnderOversampling;
    unsigned fixedLatency;
};

// The equaliser: the reversed-block filter's latency while "Linearize" is on.
class LatencyInfoLinearPhaseEq : public LatencyInfo {
public:
    using LatencyInfo::LatencyInfo;
    unsigned GetLatency(Module& module) const override;
};

}  // namespace AudioEngine
