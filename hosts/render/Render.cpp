#include "hosts/render/Render.h"

#include "hosts/render/AudioFile.h"
#include "hosts/common/HostError.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace OV::Hosts::Render {

namespace {

constexpr int lowLatency = 4;  // samples, at the level without oversampling
constexpr int lowestOversampledRate = 22050;

}  // namespace

SetUpProcess::SetUpProcess(const RenderContext& context, float rate, int channels) : mainThread(*context.mainThread)
{
    const std::lock_guard<std::mutex> guard(mainThread);
    try {
        process = std::make_unique<HostedProcess>(context.plugIn, rate, context.block, channels);
    } catch (const std::runtime_error& error) {
        throw HostError(Failed, error.what());
    }
    context.settings->ApplyTo(*process);
}

SetUpProcess::~SetUpProcess()
{
    const std::lock_guard<std::mutex> guard(mainThread);
    process.reset();
}

RenderResult Render(const RenderContext& context, Source& source, const std::string& output, int format)
{
    RenderResult result;
    result.channels = source.GetChannels();
    result.sampleRate = source.GetSampleRate();
    if (result.channels < 1 || result.channels > 2)
        throw HostError(BadInput, source.GetName() + " has " + std::to_string(result.channels)
                                        + " channels; only mono and stereo files are rendered");
    const int channels = result.channels;
    const int block = context.block;
    result.peaks.assign(static_cast<std::size_t>(channels), 0.0f);

    try {
        AudioWriter writer(output, format, result.sampleRate, channels);
        SetUpProcess process(context, static_cast<float>(result.sampleRate), channels);
        result.latency = process->GetLatency();
        // The oversampling filters cut at 20.6 kHz whatever the rate: below twice that at the
        // doubled rate they pass and boost what they should remove.
        if (result.latency != lowLatency && result.sampleRate < lowestOversampledRate)
            throw HostError(BadArgument, "the oversampled latency levels need " + std::to_string(lowestOversampledRate)
                                               + " Hz or more; " + source.GetName() + " is at "
                                               + std::to_string(result.sampleRate) + " Hz (-l low renders it)");

        std::vector<float> interleavedIn(static_cast<std::size_t>(block * channels));
        std::vector<float> interleavedOut(interleavedIn.size());
        std::vector<std::vector<float>> in(static_cast<std::size_t>(channels), std::vector<float>(static_cast<std::size_t>(block)));
        std::vector<std::vector<float>> out(in);
        float* inputs[2] = {in[0].data(), in.back().data()};
        float* outputs[2] = {out[0].data(), out.back().data()};

        const auto started = std::chrono::steady_clock::now();
        long long toSkip = context.align ? result.latency : 0;
        long long read = 0;
        bool ended = false;
        while (!ended || result.frames < read) {
            if (context.interrupted->load())
                throw HostError(Interrupted, "interrupted");
            long long got = 0;
            if (!ended) {
                got = source.Read(interleavedIn.data(), block);
                read += got;
                ended = got < block;
                context.framesDone->fetch_add(got);
            }
            // Past the input's end, silence flushes what the latency holds back.
            std::fill(interleavedIn.begin() + got * channels, interleavedIn.end(), 0.0f);
            for (int c = 0; c < channels; ++c) {
                for (int i = 0; i < block; ++i)
                    in[c][i] = interleavedIn[i * channels + c];
            }
            process->Process(inputs, outputs, block);

            const long long skipped = std::min<long long>(toSkip, block);
            toSkip -= skipped;
            const long long wanted = std::min<long long>(block - skipped, read - result.frames);
            for (long long i = 0; i < wanted; ++i) {
                for (int c = 0; c < channels; ++c) {
                    const float sample = out[c][skipped + i];
                    interleavedOut[i * channels + c] = sample;
                    result.peaks[c] = std::max(result.peaks[c], std::fabs(sample));
                }
            }
            writer.Write(interleavedOut.data(), wanted);
            result.frames += wanted;
        }
        result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
        writer.Commit(context.force);
    } catch (const AudioFileError& error) {
        throw HostError(BadOutput, error.what());
    }
    return result;
}

}  // namespace OV::Hosts::Render
