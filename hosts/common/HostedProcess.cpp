#include "hosts/common/HostedProcess.h"

#include <stdexcept>

namespace OV::Hosts {

namespace {

constexpr int textSize = 256;

template <typename Read>
std::string ReadText(Read read)
{
    char text[textSize] = {};
    read(text, textSize - 1);
    return text;
}

}  // namespace

HostedProcess::HostedProcess(HLA2PlugIn* owner, float rate, int frames, int channels)
    : host{}, plugIn(owner), blockSize(frames)
{
    host.GetTransport = [](HLA2Host*, float* bpm, double* positionA, double* positionB) {
        *bpm = 0.0f;
        *positionA = 0.0;
        *positionB = 0.0;
    };
    host.NotifyParameter = [](HLA2Host*, int, float, float) {};
    host.GetCapabilityFlag = [](HLA2Host*) { return 0; };
    process = plugIn->CreateProcess(plugIn, &host, 0);
    if (process == nullptr)
        throw std::runtime_error("the plug-in made no process");
    process->SetHostInputCount(process, channels);
    process->SetHostOutputCount(process, channels);
    if (process->SetSampleRate(process, rate) == 0) {
        plugIn->DestroyProcess(plugIn, process);
        throw std::runtime_error("the plug-in refused the sample rate");
    }
    process->SetBlockSize(process, static_cast<unsigned>(blockSize));
    process->Start(process);
    process->Resume(process);
}

HostedProcess::~HostedProcess()
{
    process->Suspend(process);
    process->Stop(process);
    plugIn->DestroyProcess(plugIn, process);
}

void HostedProcess::Process(float** inputs, float** outputs, int frames)
{
    process->ProcessSeparate(process, inputs, outputs, frames, nullptr);
}

int HostedProcess::GetLatency() const
{
    return process->GetLatency(process);
}

std::string HostedProcess::GetProgramChunk()
{
    void* text = nullptr;
    const int size = process->GetProgramChunk(process, &text);
    std::string chunk(static_cast<const char*>(text), size > 0 ? static_cast<std::size_t>(size) : 0);
    process->FreeProgramChunk(process);
    return chunk;
}

std::string HostedProcess::GetBankChunk()
{
    void* text = nullptr;
    const int size = process->GetBankChunk(process, &text);
    std::string chunk(static_cast<const char*>(text), size > 0 ? static_cast<std::size_t>(size) : 0);
    process->FreeBankChunk(process);
    return chunk;
}

void HostedProcess::SetProgramChunk(const std::string& text)
{
    process->SetProgramChunk(process, text.c_str(), static_cast<int>(text.size()));
}

void HostedProcess::SetBankChunk(const std::string& text)
{
    process->SetBankChunk(process, text.c_str(), static_cast<int>(text.size()));
}

void HostedProcess::Settle()
{
    GetProgramChunk();
}

int HostedProcess::GetSlotCount() const
{
    return process->GetParameterCount(process);
}

std::string HostedProcess::GetSlotName(int slot) const
{
    return ReadText([&](char* text, int size) { process->GetParameterName(process, slot, text, size); });
}

std::string HostedProcess::GetSlotDisplay(int slot) const
{
    return ReadText([&](char* text, int size) { process->GetParameterDisplay(process, slot, text, size); });
}

std::string HostedProcess::GetSlotDisplayFor(int slot, float plain) const
{
    return ReadText([&](char* text, int size) { process->GetParameterDisplayFor(process, slot, plain, text, size); });
}

float HostedProcess::GetSlotValue(int slot) const
{
    return process->GetParameterValue(process, slot);
}

float HostedProcess::GetSlotNormalized(int slot) const
{
    return process->GetParameterNormalized(process, slot);
}

bool HostedProcess::SetSlotValue(int slot, float plain)
{
    return process->SetParameterValue(process, slot, plain) != 0;
}

bool HostedProcess::SetSlotNormalized(int slot, float normalised)
{
    return process->SetParameterNormalized(process, slot, normalised) != 0;
}

}  // namespace OV::Hosts
