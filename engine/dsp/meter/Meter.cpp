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
typename Meter<F, A, R, P, O, S, G>::Pass Meter<F, A, R, P, O, S, G>::Begin() const
{
    const float fs = GetSampleRate();
    const float peakHold = peakHoldTime->GetValue();
    const float overHold = overHoldTime->GetValue();
    return {envelope,
            levelMaximum,
            heldPeak,
            peakMaximum,
            overLit,
            peakCounter,
            overCounter,
            fullScaleRun,
            attack,
            release,
            peakHold >= 0.0f,
            overHold >= 0.0f,
            static_cast<int>(peakHold * fs * 0.001f),
            static_cast<int>(overHold * fs * 0.001f),
            static_cast<int>(overSamples->GetValue())};
}

template <typename F, int A, int R, int P, int O, int S, int G>
inline void Meter<F, A, R, P, O, S, G>::Pass::Step(float x)
{
    const float a = std::fabs(x);
    const float coef = a < envelope ? release : attack;
    envelope = AudioAlgorithm::Biquad::FlushFloat((envelope - a) * coef + a);
    if (envelope > levelMaximum)
        levelMaximum = envelope;
    if (envelope > heldPeak) {
        heldPeak = envelope;
        peakCounter = 0;
    } else if (holdsPeak && (peakCounter > holdPeak || ++peakCounter > holdPeak)) {
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
    if (holdsOver && overLit && ++overCounter > holdOver) {
        overLit = false;
        overCounter = 0;
    }
}

template <typename F, int A, int R, int P, int O, int S, int G>
void Meter<F, A, R, P, O, S, G>::End(const Pass& pass)
{
    envelope = pass.envelope;
    levelMaximum = pass.levelMaximum;
    heldPeak = pass.heldPeak;
    peakMaximum = pass.peakMaximum;
    overLit = pass.overLit;
    peakCounter = pass.peakCounter;
    overCounter = pass.overCounter;
    fullScaleRun = pass.fullScaleRun;
    level->SetValue(levelMaximum * gain);
    peak->SetValue(peakMaximum * gain);
    over->SetValue(overLit ? 1.0f : 0.0f);
}

template <typename F, int A, int R, int P, int O, int S, int G>
void Meter<F, A, R, P, O, S, G>::ProcessBlock()
{
    Pass pass = Begin();
    const float* in = input->GetBuffer();
    const int count = GetBlockSize();
    for (int i = 0; i < count; ++i)
        pass.Step(in[i]);
    End(pass);
}

template <typename F, int A, int R, int P, int O, int S, int G>
void Meter<F, A, R, P, O, S, G>::ProcessPair(Meter& left, Meter& right)
{
    Pass l = left.Begin();
    Pass r = right.Begin();
    const float* inL = left.input->GetBuffer();
    const float* inR = right.input->GetBuffer();
    const int count = left.GetBlockSize();
    for (int i = 0; i < count; ++i) {
        l.Step(inL[i]);
        r.Step(inR[i]);
    }
    left.End(l);
    right.End(r);
}

template class Meter<MeterDetails::PeakFunction<float>, 0, 600, 2000, 2000, 3, 0>;

}  // namespace AudioEngine
