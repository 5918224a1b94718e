#include "hosts/render/Source.h"

#include "hosts/common/HostError.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace OV::Hosts::Render {

namespace {

class FileSource : public Source {
public:
    explicit FileSource(const std::string& filePath) : path(filePath), reader(filePath) {}

    std::string GetName() const override { return path; }
    int GetChannels() const override { return reader.GetChannels(); }
    int GetSampleRate() const override { return reader.GetSampleRate(); }
    long long GetFrames() const override { return reader.GetFrames(); }
    int GetFormat() const override { return reader.GetFormat(); }
    long long Read(float* interleaved, long long frames) override
    {
        try {
            return reader.Read(interleaved, frames);
        } catch (const AudioFileError& error) {
            throw HostError(BadInput, error.what());
        }
    }

private:
    std::string path;
    AudioReader reader;
};

constexpr double pi = 3.14159265358979323846;

// A raised-cosine gate: 1 inside [start, end), with `fade` seconds of ramp at both ends.
double Gate(double t, double start, double end, double fade)
{
    if (t < start || t >= end)
        return 0.0;
    const double edge = std::min(t - start, end - t);
    return edge >= fade ? 1.0 : 0.5 - 0.5 * std::cos(pi * edge / fade);
}

class DemoSource : public Source {
public:
    std::string GetName() const override { return "the demo"; }
    int GetChannels() const override { return 2; }
    int GetSampleRate() const override { return rate; }
    long long GetFrames() const override { return frames; }
    int GetFormat() const override { return SF_FORMAT_WAV | SF_FORMAT_PCM_24; }

    long long Read(float* interleaved, long long count) override
    {
        const long long done = std::min(count, frames - position);
        for (long long i = 0; i < done; ++i, ++position) {
            double left = 0.0;
            double right = 0.0;
            Frame(static_cast<double>(position) / rate, left, right);
            interleaved[2 * i] = static_cast<float>(left);
            interleaved[2 * i + 1] = static_cast<float>(right);
        }
        return done;
    }

private:
    static constexpr int rate = 48000;
    static constexpr long long frames = 8LL * rate;

    // Pink noise: white noise from a fixed-seed generator through a three-pole filter, one
    // generator per channel so that the centre bursts are wide.
    struct Pink {
        std::uint32_t state;
        double b0 = 0.0, b1 = 0.0, b2 = 0.0;

        double Next()
        {
            state = state * 1664525u + 1013904223u;
            const double white = static_cast<double>(state >> 8) / double(1u << 24) * 2.0 - 1.0;
            b0 = 0.99765 * b0 + white * 0.0990460;
            b1 = 0.96300 * b1 + white * 0.2965164;
            b2 = 0.57000 * b2 + white * 1.0526913;
            return (b0 + b1 + b2 + white * 0.1848) * 0.11;
        }
    };

    void Frame(double t, double& left, double& right)
    {
        // 0 to 2 s: noise bursts on the left, the right, then twice across the middle.
        const double noiseLeft = pinkLeft.Next();
        const double noiseRight = pinkRight.Next();
        const double burstL = Gate(t, 0.0, 0.25, 0.005) + Gate(t, 1.0, 1.25, 0.005) + Gate(t, 1.5, 1.75, 0.005);
        const double burstR = Gate(t, 0.5, 0.75, 0.005) + Gate(t, 1.0, 1.25, 0.005) + Gate(t, 1.5, 1.75, 0.005);
        left += 0.5 * burstL * noiseLeft;
        right += 0.5 * burstR * noiseRight;

        // 2 to 4 s: an A major chord of bright tones, struck and decaying.
        if (t >= 2.0 && t < 4.0) {
            static const double chord[] = {110.0, 164.81, 277.18, 329.63};
            const double envelope = Gate(t, 2.0, 4.0, 0.01) * std::exp(-(t - 2.0) * 1.2);
            double tone = 0.0;
            for (const double hz : chord) {
                for (int harmonic = 1; harmonic <= 6; ++harmonic)
                    tone += std::sin(2.0 * pi * hz * harmonic * t) / harmonic;
            }
            left += 0.08 * envelope * tone;
            right += 0.08 * envelope * tone;
        }

        // 4 to 5 s: a bass line of three notes.
        if (t >= 4.0 && t < 5.0) {
            static const double notes[] = {55.0, 73.42, 82.41};
            const int note = std::min(2, static_cast<int>((t - 4.0) * 3.0));
            const double start = 4.0 + note / 3.0;
            const double envelope = Gate(t, start, start + 1.0 / 3.0, 0.01);
            const double hz = notes[note];
            const double bass = std::sin(2.0 * pi * hz * t) + 0.3 * std::sin(4.0 * pi * hz * t);
            left += 0.4 * envelope * bass;
            right += 0.4 * envelope * bass;
        }

        // 5 to 8 s: an exponential sweep from 20 Hz to 20 kHz.
        if (t >= 5.0 && t < 8.0) {
            const double length = 3.0;
            const double ratio = std::log(20000.0 / 20.0);
            const double phase = 2.0 * pi * 20.0 * length / ratio * (std::exp((t - 5.0) / length * ratio) - 1.0);
            const double sweep = 0.25 * Gate(t, 5.0, 8.0, 0.02) * std::sin(phase);
            left += sweep;
            right += sweep;
        }
    }

    long long position = 0;
    Pink pinkLeft{0x2545f491u};
    Pink pinkRight{0x9e3779b9u};
};

}  // namespace

std::unique_ptr<Source> OpenFile(const std::string& path)
{
    try {
        return std::make_unique<FileSource>(path);
    } catch (const AudioFileError& error) {
        throw HostError(BadInput, error.what());
    }
}

std::unique_ptr<Source> MakeDemo()
{
    return std::make_unique<DemoSource>();
}

}  // namespace OV::Hosts::Render
