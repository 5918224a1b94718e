#pragma once

#include "engine/core/ModuleBasic.h"

namespace AudioEngine {

namespace MeterDetails {

// The peak of |x| through an attack and release envelope.
template <typename Sample>
struct PeakFunction {};

}  // namespace MeterDetails

// A peak meter: one input, no outputs. "Level" is the largest envelope since the last read,
// "Peak" the largest held peak, "Over" lit by a sample above full scale or a run of samples at
// exactly full scale. Audio thread; "Level" and "Peak" are read on the audio thread too.
template <typename Function, int AttackMs, int ReleaseMs, int PeakHoldMs, int OverHoldMs, int OverSamples,
          int GainAdjustDb>
class Meter : public ModuleBasic {
public:
    Meter() : ModuleBasic(ModuleInfo{18, "Meter", ""}) {}

    void SetParameter(const std::string& name, float value) override;
    void SampleRateChanged() override { UpdateCoefficients(); }
    void Reset() override;
    void BindPorts() override;
    // Both channels' meters over the same block in one pass, their work interleaved; the same
    // results as each one's Process. Audio thread.
    static void ProcessPair(Meter& left, Meter& right);

protected:
    void CreateInputs() override { AddInput("In"); }
    void CreateOutputsBuffered() override {}
    void CreateParameters() override;
    void ProcessBlock() override;

private:
    // An output value whose read also clears the maximum gathered since the last read.
    class ParameterReset : public Parameter {
    public:
        ParameterReset(const char* name, float& maximum)
            : Parameter(name, "", 0.0f, 100000.0f, 0.0f, ParameterBase::OutputOnly), maximum(maximum)
        {
        }
        float GetValue() override
        {
            const float value = Parameter::GetValue();
            maximum = 0.0f;
            return value;
        }

    private:
        float& maximum;
    };

    // A block's work on one channel, in locals (the compiler cannot tell members from samples).
    struct Pass {
        void Step(float x);

        float envelope, levelMaximum, heldPeak, peakMaximum;
        bool overLit;
        int peakCounter, overCounter, fullScaleRun;
        float attack, release;
        bool holdsPeak, holdsOver; // a negative hold time holds for ever
        int holdPeak, holdOver, runForOver;
    };

    float Coefficient(const char* timeName) const;
    void UpdateCoefficients();
    Pass Begin() const;
    void End(const Pass& pass);

    AudioContainers::Input* input = nullptr;
    ParameterBase* peakHoldTime = nullptr;
    ParameterBase* overHoldTime = nullptr;
    ParameterBase* overSamples = nullptr;
    ParameterBase* level = nullptr;
    ParameterBase* peak = nullptr;
    ParameterBase* over = nullptr;

    float envelope = 0.0f;
    float levelMaximum = 0.0f;
    float heldPeak = 0.0f;
    float peakMaximum = 0.0f;
    bool overLit = false;
    float attack = 0.0f;
    float release = 0.0f;
    float gain = 1.0f;
    int peakCounter = 0;
    int overCounter = 0;
    int fullScaleRun = 0;
};

using PeakMeter = Meter<MeterDetails::PeakFunction<float>, 0, 600, 2000, 2000, 3, 0>;

}  // namespace AudioEngine
