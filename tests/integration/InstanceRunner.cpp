#include "tests/integration/InstanceRunner.h"

#include <algorithm>
#include <stdexcept>

namespace OV::Testing {

InstanceRunner::InstanceRunner(const LibraryCopy& copy, float rate, int blockSize) : library(copy), block(blockSize)
{
    plugIn = library.Acquire();
    if (plugIn == nullptr)
        throw std::runtime_error("the library refused to start");
    process = plugIn->CreateProcess(plugIn, host.Callbacks(), 0);
    process->SetHostInputCount(process, 2);
    process->SetHostOutputCount(process, 2);
    process->SetSampleRate(process, rate);
    process->SetBlockSize(process, static_cast<unsigned>(blockSize));
    process->Start(process);
    process->Resume(process);
}

InstanceRunner::~InstanceRunner()
{
    process->Suspend(process);
    plugIn->DestroyProcess(plugIn, process);
    library.Library().Release();
}

std::vector<std::vector<float>> InstanceRunner::Run(const std::vector<float>& left, const std::vector<float>& right)
{
    std::vector<float> inL(left), inR(right);
    std::vector<std::vector<float>> out(2, std::vector<float>(left.size()));
    for (std::size_t done = 0; done < left.size(); done += static_cast<std::size_t>(block)) {
        const int count = static_cast<int>(std::min<std::size_t>(static_cast<std::size_t>(block), left.size() - done));
        float* in[2] = {inL.data() + done, inR.data() + done};
        float* outs[2] = {out[0].data() + done, out[1].data() + done};
        process->ProcessSeparate(process, in, outs, count, nullptr);
    }
    return out;
}

std::string InstanceRunner::GetProgramChunk()
{
    void* text = nullptr;
    const int size = process->GetProgramChunk(process, &text);
    return std::string(static_cast<const char*>(text), static_cast<std::size_t>(size));
}

std::string InstanceRunner::GetBankChunk()
{
    void* text = nullptr;
    const int size = process->GetBankChunk(process, &text);
    return std::string(static_cast<const char*>(text), static_cast<std::size_t>(size));
}

void InstanceRunner::SetProgramChunk(const std::string& text)
{
    process->SetProgramChunk(process, text.c_str(), static_cast<int>(text.size()));
}

void InstanceRunner::SetBankChunk(const std::string& text)
{
    process->SetBankChunk(process, text.c_str(), static_cast<int>(text.size()));
}

}  // namespace OV::Testing
