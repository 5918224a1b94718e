#include "hosts/lv2/Lv2Plugin.h"

#include "hosts/lv2/PortLayout.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace OV::Hosts::Lv2 {

namespace {

HLA2PlugIn* AcquireFrom(const PlugInLibrary& library)
{
    int version = 0;
    HLA2PlugIn* plugIn = library.Acquire(HLA2_INTERFACE_VERSION, &version);
    if (plugIn == nullptr)
        throw std::runtime_error(library.Path() + " refused interface version " + std::to_string(HLA2_INTERFACE_VERSION));
    return plugIn;
}

}  // namespace

Lv2Plugin::Lv2Plugin(const std::string& bundle, double rate, int frames)
    : library(bundle + "/" + libraryName), blockSize(frames)
{
    HLA2PlugIn* plugIn = AcquireFrom(library);
    try {
        process = std::make_unique<HostedProcess>(plugIn, static_cast<float>(rate), blockSize, 2);
    } catch (...) {
        library.Release();
        throw;
    }
    controls.assign(static_cast<std::size_t>(process->GetSlotCount()), nullptr);
    lastControls.resize(controls.size());
    for (std::vector<float>& channel : scratch)
        channel.resize(static_cast<std::size_t>(blockSize));
    ReadBack();
}

Lv2Plugin::~Lv2Plugin()
{
    process.reset();
    library.Release();
}

void Lv2Plugin::ConnectPort(unsigned port, void* data)
{
    float* value = static_cast<float*>(data);
    switch (port) {
    case InputLeft:
    case InputRight:
    case OutputLeft:
    case OutputRight:
        audio[port] = value;
        break;
    case Latency:
        latencyOut = value;
        break;
    case LatencyLevel:
        levelOut = value;
        break;
    case MeterLeft:
    case MeterRight:
        meters[port - MeterLeft] = value;
        break;
    default:
        if (port - FirstSlot < controls.size())
            controls[port - FirstSlot] = value;
    }
}

void Lv2Plugin::Activate()
{
    HLA2Process* raw = process->Get();
    raw->Suspend(raw);
    raw->Resume(raw);
    // Controls set before the start are in place from the first frame on, as a renderer has them.
    ApplyControls();
    process->Settle();
    latency = process->GetLatency();
}

void Lv2Plugin::ReadBack()
{
    // A port the host leaves where it was must not undo the new state, so what counts as seen
    // is the port's value where there is a port.
    for (std::size_t slot = 0; slot < controls.size(); ++slot)
        lastControls[slot] = controls[slot] != nullptr ? *controls[slot] : process->GetSlotValue(static_cast<int>(slot));
    latency = process->GetLatency();
}

void Lv2Plugin::ApplyControls()
{
    for (std::size_t slot = 0; slot < controls.size(); ++slot) {
        if (controls[slot] == nullptr)
            continue;
        const float value = *controls[slot];
        if (!std::isfinite(value) || value == lastControls[slot])
            continue;
        lastControls[slot] = value;
        process->SetSlotValue(static_cast<int>(slot), value);
    }
}

void Lv2Plugin::Run(unsigned frames)
{
    ApplyControls();
    float peaks[2] = {};
    if (std::all_of(std::begin(audio), std::end(audio), [](const float* port) { return port != nullptr; })) {
        for (unsigned done = 0; done < frames;) {
            const unsigned count = std::min(frames - done, static_cast<unsigned>(blockSize));
            float* inputs[2];
            float* outputs[2];
            for (int channel = 0; channel < 2; ++channel) {
                inputs[channel] = audio[InputLeft + channel] + done;
                outputs[channel] = audio[OutputLeft + channel] + done;
                if (inputs[channel] == outputs[channel]) {
                    std::memcpy(scratch[channel].data(), inputs[channel], count * sizeof(float));
                    inputs[channel] = scratch[channel].data();
                }
            }
            process->Process(inputs, outputs, static_cast<int>(count));
            for (int channel = 0; channel < 2; ++channel) {
                for (unsigned i = 0; i < count; ++i)
                    peaks[channel] = std::fmax(peaks[channel], std::fabs(outputs[channel][i]));
            }
            done += count;
        }
    }
    for (int channel = 0; channel < 2; ++channel) {
        if (meters[channel] != nullptr)
            *meters[channel] = PeakToDecibels(peaks[channel]);
    }
    if (latencyOut != nullptr)
        *latencyOut = static_cast<float>(latency);
    if (levelOut != nullptr)
        *levelOut = static_cast<float>(LatencyLevelOf(latency));
}

std::string Lv2Plugin::GetProgramChunk()
{
    return process->GetProgramChunk();
}

void Lv2Plugin::SetProgramChunk(const std::string& text)
{
    process->SetProgramChunk(text);
    process->Settle();
    ReadBack();
}

}  // namespace OV::Hosts::Lv2
