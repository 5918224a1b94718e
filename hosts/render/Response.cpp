#include "hosts/render/Response.h"

#include "hosts/render/OutputFile.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>

namespace OV::Hosts::Render {

namespace {

constexpr double pi = 3.14159265358979323846;
// Beyond the latency: over five seconds at 48 kHz, for a narrow band low down to ring out.
constexpr long long ringFrames = 1LL << 18;
constexpr int pointsPerOctave = 24;

// The spectrum of `signal` at `hz`, by a phasor that turns one step per sample and is set
// afresh now and then, so that rounding cannot build up.
std::complex<double> SpectrumAt(const std::vector<float>& signal, double hz, double rate)
{
    const double step = -2.0 * pi * hz / rate;
    const std::complex<double> turn = std::polar(1.0, step);
    std::complex<double> sum = 0.0;
    std::complex<double> phasor = 1.0;
    for (std::size_t n = 0; n < signal.size(); ++n) {
        if (n % 4096 == 0)
            phasor = std::polar(1.0, step * static_cast<double>(n));
        sum += static_cast<double>(signal[n]) * phasor;
        phasor *= turn;
    }
    return sum;
}

}  // namespace

std::vector<ResponsePoint> MeasureResponse(const RenderContext& context, float rate)
{
    SetUpProcess process(context, rate, 2);
    const long long length = process->GetLatency() + ringFrames;
    const int block = context.block;
    std::vector<float> impulse(static_cast<std::size_t>(block), 0.0f);
    std::vector<float> outLeft(static_cast<std::size_t>(block)), outRight(outLeft);
    std::vector<float> heard[2];
    for (long long done = 0; done < length; done += block) {
        impulse[0] = done == 0 ? 1.0f : 0.0f;
        float* inputs[2] = {impulse.data(), impulse.data()};
        float* outputs[2] = {outLeft.data(), outRight.data()};
        process->Process(inputs, outputs, block);
        heard[0].insert(heard[0].end(), outLeft.begin(), outLeft.end());
        heard[1].insert(heard[1].end(), outRight.begin(), outRight.end());
    }

    const int count = static_cast<int>(std::lround(pointsPerOctave * std::log2(1000.0))) + 1;
    std::vector<ResponsePoint> response;
    for (int k = 0; k < count; ++k) {
        ResponsePoint point{20.0 * std::pow(1000.0, static_cast<double>(k) / (count - 1)), {}};
        for (int c = 0; c < 2; ++c)
            point.decibels[c] = 20.0 * std::log10(std::max(std::abs(SpectrumAt(heard[c], point.hz, rate)), 1e-12));
        response.push_back(point);
    }
    return response;
}

void WriteResponse(const std::vector<ResponsePoint>& response, const std::string& path, bool replace)
{
    std::string text = "hz,left_db,right_db\n";
    char line[96];
    for (const ResponsePoint& point : response) {
        std::snprintf(line, sizeof line, "%.2f,%.3f,%.3f\n", point.hz, point.decibels[0], point.decibels[1]);
        text += line;
    }
    OutputFile file(path);
    file.Write(text);
    file.Commit(replace);
}

}  // namespace OV::Hosts::Render
