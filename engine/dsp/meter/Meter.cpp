#include "engine/dsp/meter/Meter.h"

#include "engine/dsp/equaliser/FilterBiquad.h"

#include <cmath>

namespace AudioEngine {

template <typename F, int A, int R, int P, int O, int S, int G>
void Meter<F, A, R, P, O, S, G>::CreateParameters()
{
    const auto add = [this](const char* name, float minimum, float maximum, float value, unsigned flags) {
        AddParameter(std::make_unique<Parameter>(name, "", minimum, maximum, value, flags));
    };
    add("AttackTime", 0.0f, 10000.0f, static_cast<float>(A), ParameterBase::Step);
    add("ReleaseTime", 0.0f, 10000.0f, static_cast<float>(R), ParameterBase::Step);
    add("GainAdjust", -40.0f, 40.0f, static_cast<float>(G), ParameterBase::Step);
    add("PeakHoldTime", -1.0f, 10000.0f, static_cast<float>(P), ParameterBase::Step);
    add("OverHoldTime", -1.0f, 10000.0f, static_cast<float>(O), ParameterBase::Step);
    add("NumSamples0dBFS", 0.0f, 1000.0f, static_cast<float>(S), ParameterBase::Step);
    AddParameter(std::make_unique<ParameterReset>("Level", levelMaximum));
    AddParameter(std::make_unique<ParameterReset>("Peak", peakMaximum));
    add("Over", 0.0f, 1.0f, 0.0f, ParameterBase::OutputOnly);
}

template <typename F, int A, int R, int P, int O, int S, int G>
void Meter<F, A, R, P, O, S, G>::BindPorts()
{
    input = GetInput("In");
    peakHoldTime = GetParameter("PeakHoldTime");
    overHoldTime = GetParameter("OverHoldTime");
    overSamples = GetParameter("NumSamples0dBFS");
    level = GetParameter("Level");
    peak = GetParameter("Peak");
    over = GetParameter("Over");
}

// 0.1^(1000 / (t * fs)) for a time t in ms at the running rate; 0 for t = 0.
template <typename F, int A, int R, int P, int O, int S, int G>
float Meter<F, A, R, P, O, S, G>::Coefficient(const char* timeName) const
{
    const double t = GetParameter(timeName)->GetValue();
    if (t == 0.0)
        return 0.0f;
    return static_cast<float>(std::pow(static_cast<double>(0.1f), 1000.0 / (t * GetSampleRate())));
}

template <typename F, int A, int R, int P, int O, int S, int G>
void Meter<F, A, R, P, O, S, G>::UpdateCoefficients()
{
    attack = Coefficient("AttackTime");
    release = Coefficient("ReleaseTime");
}

template <typename F, int A, int R, int P, int O, int S, int G>
void Meter<F, A, R, P, O, S, G>::SetParameter(const std::string& name, float value)
{
    ModuleBasic::SetParameter(name, value);
    if (name == "AttackTime" || name == "ReleaseTime")
        UpdateCoefficients();
    else if (name == "GainAdjust")
        gain = static_cast<float>(std::pow(10.0, GetParameter(name)->GetValue() * 0.05));
}

template <typename F, int A, int R, int P, int O, int S, int G>
void Meter<F, A, R, P, O, S, G>::Reset()
{
    envelope = levelMaximum = heldPeak = peakMaximum = 0.0f;
    overLit = false;
    peakCounter = overCounter = fullScaleRun = 0;
}

template <typename F, int A, int R, int P, int O, int S, int G>
void Meter<F, A, R, P, O, S, G>::ProcessBlock()
{
    const float fs = GetSampleRate();
    const float peakHold = peakHoldTime->GetValue();
    const float overHold = overHoldTime->GetValue();
    const int holdPeak = static_cast<int>(peakHold * fs * 0.001f);
    const int holdOver = static_cast<int>(overHold * fs * 0.001f);
    const int runForOver = static_cast<int>(overSamples->GetValue());
    const float* in = input->GetBuffer();
    const int count = GetBlockSize();
    for (int i = 0; i < count; ++i) {
        const float a = std::fabs(in[i]);
        const float coef = a < envelope ? release : attack;
        envelope = AudioAlgorithm::Biquad::FlushFloat((envelope - a) * coef + a);
        if (envelope > levelMaximum)
            levelMaximum = envelope;
        if (envelope > heldPeak) {
            heldPeak = envelope;
            peakCounter = 0;
        } else if (peakHold >= 0.0f && (peakCounter > holdPeak || ++peakCounter > holdPeak)) {
            // Counting stops once the hold is over: hours of silence never overflow it.
            heldPeak = 0.0f;
        }
        if (heldPeak > peakMaximum)
            peakMaximum = heldPeak;
        if (a > 1.0f) {
            overLit = true;
        } else if (a == 1.0f) {
            if (++fullScaleRun == runForOver)
                overLit = true;
        } else {
            fullScaleRun = 0;
        }
        if (overHold >= 0.0f && overLit && ++overCounter > holdOver) {
            overLit = false;
            overCounter = 0;
        }
    }
    level->SetValue(levelMaximum * gain);
    peak->SetValue(peakMaximum * gain);
    over->SetValue(overLit ? 1.0f : 0.0f);
}

template class Meter<MeterDetails::PeakFunction<float>, 0, 600, 2000, 2000, 3, 0>;

}  // namespace AudioEngine
