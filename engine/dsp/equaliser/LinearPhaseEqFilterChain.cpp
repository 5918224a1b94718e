#include "engine/dsp/equaliser/LinearPhaseEqFilterChain.h"

#include "engine/dsp/equaliser/CascadeKernels.h"

#include <algorithm>
#include <cmath>

namespace AudioEngine::AudioAlgorithm {

namespace {

struct Coefficients {
    double b0, b1, b2, a1, a2;
};

// The shelf slope, limited to what the gain allows.
double ClampSlope(double A, double S)
{
    if (A == 1.0)
        return S;
    const double Smax = (A * A + 1) / ((A - 1) * (A - 1));
    if (S <= 0)
        return 0;
    return S < Smax ? S : Smax;
}

Coefficients DesignBand(const FilterBand& band, bool linearized, double fs)
{
    const double pi = static_cast<float>(std::acos(-1.0));
    const double w = (pi + pi) / fs * band.frequency;
    const double c = std::cos(w);
    const double s = std::sin(w);
    const double halving = linearized ? 0.5 : 1.0;

    switch (band.type) {
    case HiPass:
    case LowPass: {
        const double Q = band.qLowHighPass;
        const double alpha = s / (Q + Q);
        const double k = 1 / (1 + alpha);
        if (band.type == HiPass)
            return {(c + 1) * 0.5 * k, -(c + 1) * k, (c + 1) * 0.5 * k, c * -2 * k, (1 - alpha) * k};
        return {(1 - c) * 0.5 * k, (1 - c) * k, (1 - c) * 0.5 * k, c * -2 * k, (1 - alpha) * k};
    }
    case Peaking: {
        const double g = band.gain * halving;
        const double A = std::pow(10.0, g * 0.025);
        const double Q = band.qPeaking;
        const double alpha = s / (Q + Q);
        const double k = 1 / (alpha / A + 1);
        return {(alpha * A + 1) * k, c * -2 * k, (1 - alpha * A) * k, c * -2 * k, (1 - alpha / A) * k};
    }
    default: {
        const double g = band.gain * halving;
        const double A = std::pow(10.0, g * 0.025);
        const double S = ClampSlope(A, band.qShelving * (linearized ? 2.0 : 1.0));
        const double r = std::sqrt((1 / A + A) * (1 / S - 1) + 2);
        const double t = r * s * 0.5 * std::sqrt(A) * 2;
        const double p = A + 1;
        const double m = A - 1;
        if (band.type == LowShelving) {
            const double k = 1 / (p + m * c + t);
            return {A * (p - m * c + t) * k, 2 * A * (m - p * c) * k, A * (p - m * c - t) * k,
                    -2 * (m + p * c) * k, (p + m * c - t) * k};
        }
        const double k = 1 / (p - m * c + t);
        return {A * (p + m * c + t) * k, -2 * A * (m + p * c) * k, A * (p + m * c - t) * k,
                2 * (m - p * c) * k, (p - m * c - t) * k};
    }
    }
}

}  // namespace

LinearPhaseEqFilterChain<Biquad, 6>::LinearPhaseEqFilterChain() = default;

void LinearPhaseEqFilterChain<Biquad, 6>::Reset()
{
    for (int band = 0; band < bandCount; ++band) {
        sections[static_cast<std::size_t>(band)].Reset();
        Design(band);
    }
}

int LinearPhaseEqFilterChain<Biquad, 6>::RunningSections(Biquad** running)
{
    int count = 0;
    for (int band = 0; band < bandCount && !bypass; ++band) {
        if (bands[static_cast<std::size_t>(band)].active)
            running[count++] = &sections[static_cast<std::size_t>(band)];
    }
    return count;
}

void LinearPhaseEqFilterChain<Biquad, 6>::Process(const float* in, float* out, int count)
{
    Biquad* running[bandCount];
    const int k = RunningSections(running);
    if (k > 0)
        Cascade().mono(running, k, in, out, count);
    else if (in != out)
        std::copy(in, in + count, out);
}

void LinearPhaseEqFilterChain<Biquad, 6>::ProcessPair(LinearPhaseEqFilterChain& left, LinearPhaseEqFilterChain& right,
                                                      const float* inL, const float* inR, float* outL, float* outR,
                                                      int count)
{
    Biquad* runningL[bandCount];
    Biquad* runningR[bandCount];
    const int kL = left.RunningSections(runningL);
    const int kR = right.RunningSections(runningR);
    if (kL == 0 || kR == 0) {
        left.Process(inL, outL, count);
        right.Process(inR, outR, count);
        return;
    }
    Cascade().stereo(runningL, kL, runningR, kR, inL, inR, outL, outR, count);
}

void LinearPhaseEqFilterChain<Biquad, 6>::Design(int band)
{
    FilterBand& settings = bands[static_cast<std::size_t>(band)];
    const Coefficients k = DesignBand(settings, linearized, static_cast<double>(GetSampleRate()));
    sections[static_cast<std::size_t>(band)].SetCoefficients(k.b0, k.b1, k.b2, k.a1, k.a2);
    settings.coefficients[0] = static_cast<float>(k.b0);
    settings.coefficients[1] = static_cast<float>(k.b1);
    settings.coefficients[2] = static_cast<float>(k.b2);
    settings.coefficients[3] = static_cast<float>(k.a1);
    settings.coefficients[4] = static_cast<float>(k.a2);
}

void LinearPhaseEqFilterChain<Biquad, 6>::CopyCoefficients(float* target) const
{
    for (const FilterBand& band : bands)
        target = std::copy(band.coefficients.begin(), band.coefficients.begin() + 5, target);
}

}  // namespace AudioEngine::AudioAlgorithm
