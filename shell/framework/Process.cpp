#include "shell/framework/Process.h"

#include "docview/interfaces/Audio.h"
#include "docview/interfaces/Component.h"
#include "docview/interfaces/Document.h"
#include "docview/interfaces/MIDI.h"
#include "docview/interfaces/Programs.h"
#include "platform/XmlParse.h"
#include "shell/framework/TextCopy.h"

#include <pmmintrin.h>
#include <xmmintrin.h>

#include <tinyxml.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

namespace OV::CFW::HLAFramework {

namespace {

const char* const emptyChunk = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Root></Root>";

// Channel folding covers one and two channels: counts above two are taken as two.
unsigned FoldableCount(int count)
{
    return static_cast<unsigned>(std::clamp(count, 0, 2));
}

}  // namespace

Process::Process(HLA2Host* host, DocView::Component* owned, int pluginType, int inputCount,
                 int outputCount)
    : HLA2::Process(host), component(owned), pluginType(pluginType), inputCount(inputCount),
      outputCount(outputCount)
{
    if (!component)
        return;
    document = DocView::FindInterface<DocView::Document>(*component);
    if (document != nullptr) {
        const bool flag = host != nullptr && host->GetCapabilityFlag != nullptr
            && host->GetCapabilityFlag(host) != 0;
        document->SetHostFlag(flag);
    }
    automation = DocView::FindInterface<DocView::Automation>(*component);
    programs = DocView::FindInterface<DocView::Programs>(*component);
    audio = DocView::FindInterface<DocView::Audio>(*component);
    midi = DocView::FindInterface<DocView::MIDI>(*component);
    if (audio != nullptr && audio->GetProfile() != nullptr) {
        engineInputs = FoldableCount(audio->GetProfile()->GetInputCount());
        engineOutputs = FoldableCount(audio->GetProfile()->GetOutputCount());
    }
}

Process::~Process()
{
    if (resumed) {
        resumed = false;
        if (audio != nullptr)
            audio->Stop();
    }
    listening = false;
    component.reset();
}

void Process::GetName(char* buffer, int size)
{
    const bool named = component && component->GetProfile() != nullptr;
    BoundedCopy(named ? component->GetProfile()->GetName() : std::string(), buffer, size);
}

void Process::GetVendor(char* buffer, int size)
{
    const bool named = component && component->GetProfile() != nullptr;
    BoundedCopy(named ? component->GetProfile()->GetVendor() : std::string(), buffer, size);
}

void Process::SetHostInputCount(int count)
{
    hostInputs = FoldableCount(count);
}

void Process::SetHostOutputCount(int count)
{
    hostOutputs = FoldableCount(count);
}

void Process::Start()
{
    if (listening)
        return;
    listening = true;
    if (automation != nullptr)
        automation->SetListener(this);
}

bool Process::Stop()
{
    const bool was = listening;
    listening = false;
    return was;
}

void Process::SetBlockSize(unsigned frames)
{
    if (audio == nullptr || frames == blockSize)
        return;
    blockSize = frames;
    audio->SetBlockSize(frames);
    scratchIn.assign(frames, 0.0f);
    scratchOut.assign(frames, 0.0f);
}

int Process::SetSampleRate(float rate)
{
    if (audio == nullptr)
        return 0;
    audio->SetSampleRate(rate);
    return 1;
}

bool Process::Resume()
{
    resumed = true;
    return true;
}

void Process::Suspend()
{
    if (!resumed)
        return;
    resumed = false;
    if (audio != nullptr)
        audio->Stop();
}

int Process::GetLatency()
{
    return audio != nullptr ? audio->GetLatency() : 0;
}

void Process::ProcessReplacing(float** channels, int frames, void* extra)
{
    TempoStep();
    if (audio != nullptr)
        RunBlock(channels, channels, frames, extra);
}

void Process::ProcessSeparate(float** inputs, float** outputs, int frames, void* extra)
{
    TempoStep();
    if (audio != nullptr)
        RunBlock(inputs, outputs, frames, extra);
}

void Process::TempoStep()
{
    float bpm = 0.0f;
    double positionA = 0.0;
    double positionB = 0.0;
    if (host != nullptr && host->GetTransport != nullptr)
        host->GetTransport(host, &bpm, &positionA, &positionB);
    if (bpm != lastBPM || std::isnan(bpm) || std::isnan(lastBPM)) {
        lastBPM = bpm;
        if (document != nullptr)
            document->QueueSetBPM(bpm, 0);
    }
    if (audio != nullptr)
        audio->SetTransport(bpm, positionA, positionB);
}

void Process::RunBlock(float** inputs, float** outputs, int frames, void* extra)
{
    // Flush-to-zero, then denormals-are-zero; they stay set for the host's thread.
    _mm_setcsr(_mm_getcsr() | _MM_FLUSH_ZERO_ON);
    _mm_setcsr(_mm_getcsr() | _MM_DENORMALS_ZERO_ON);
    if (hostInputs == 0 || hostOutputs == 0 || frames < 0 || inputs == nullptr || outputs == nullptr)
        return;

    const bool usesScratch = engineInputs < hostInputs || engineOutputs > hostOutputs;
    if (!usesScratch || static_cast<unsigned>(frames) <= blockSize) {
        ProcessFolded(inputs, outputs, frames, extra);
        return;
    }
    // A block longer than announced goes through the scratch arrays in pieces.
    if (blockSize == 0)
        return;
    float* inputPiece[2];
    float* outputPiece[2];
    for (int done = 0; done < frames;) {
        const int count = std::min(frames - done, static_cast<int>(blockSize));
        for (unsigned c = 0; c < hostInputs; ++c)
            inputPiece[c] = inputs[c] + done;
        for (unsigned c = 0; c < hostOutputs; ++c)
            outputPiece[c] = outputs[c] + done;
        ProcessFolded(inputPiece, outputPiece, count, extra);
        done += count;
    }
}

void Process::ProcessFolded(float** inputs, float** outputs, int frames, void* extra)
{
    float* engineIn[2] = {nullptr, nullptr};
    float* engineOut[2] = {nullptr, nullptr};

    if (engineInputs < hostInputs) {
        const float* left = inputs[0];
        const float* right = inputs[1];
        float* mono = scratchIn.data();
        for (int i = 0; i < frames; ++i)
            mono[i] = (left[i] + right[i]) * 0.5f;
        engineIn[0] = mono;
    } else if (engineInputs > hostInputs) {
        engineIn[0] = inputs[0];
        engineIn[1] = inputs[0];
    } else {
        std::copy(inputs, inputs + engineInputs, engineIn);
    }

    if (engineOutputs < hostOutputs) {
        engineOut[0] = outputs[0];
    } else if (engineOutputs > hostOutputs) {
        engineOut[0] = outputs[0];
        engineOut[1] = scratchOut.data();
    } else {
        std::copy(outputs, outputs + engineOutputs, engineOut);
    }

    audio->Process(engineIn, engineOut, frames, extra);

    if (engineOutputs < hostOutputs) {
        std::copy(outputs[0], outputs[0] + frames, outputs[1]);
    } else if (engineOutputs > hostOutputs) {
        float* left = outputs[0];
        const float* right = scratchOut.data();
        for (int i = 0; i < frames; ++i)
            left[i] = (left[i] + right[i]) * 0.5f;
    }
}

int Process::SendMIDI(const void* events, int count)
{
    return midi != nullptr ? midi->ProcessEvents(events, count) : 0;
}

int Process::GetParameterCount()
{
    return automation != nullptr ? automation->GetProfile()->GetSlotCount() : 0;
}

void Process::GetParameterName(int index, char* buffer, int size)
{
    if (automation != nullptr && index >= 0 && index < GetParameterCount())
        BoundedCopy(automation->GetProfile()->GetSlotName(index), buffer, size);
}

// Slots past the profile's count have no target: the automation answers for them, up to the
// limit of what it keeps.
void Process::GetParameterDisplay(int index, char* buffer, int size)
{
    if (automation == nullptr)
        return;
    std::string text;
    automation->GetDisplay(text, index);
    BoundedCopy(text, buffer, size);
}

void Process::GetParameterDisplayFor(int index, float value, char* buffer, int size)
{
    if (automation == nullptr)
        return;
    std::string text;
    automation->GetDisplayFor(text, index, value);
    BoundedCopy(text, buffer, size);
}

float Process::ToNormalized(int index, float plain)
{
    return automation != nullptr ? automation->ToNormalized(index, plain) : 0.0f;
}

float Process::GetParameterValue(int index)
{
    return automation != nullptr ? automation->GetValue(index) : 0.0f;
}

float Process::GetParameterNormalized(int index)
{
    return automation != nullptr ? automation->GetNormalized(index) : 0.0f;
}

int Process::SetParameterValue(int index, float plain)
{
    return automation != nullptr && automation->QueueValue(index, plain) ? 1 : 0;
}

int Process::SetParameterNormalized(int index, float normalised)
{
    return automation != nullptr && automation->QueueNormalized(index, normalised) ? 1 : 0;
}

void Process::SetBankChunk(const void* text, int size)
{
    TiXmlDocument chunk;
    if (programs != nullptr && size > 0
        && Platform::ParseXml(chunk, static_cast<const char*>(text), static_cast<std::size_t>(size)))
        programs->LoadBank(*chunk.RootElement());
}

void Process::SetProgramChunk(const void* text, int size)
{
    TiXmlDocument chunk;
    if (programs != nullptr && size > 0
        && Platform::ParseXml(chunk, static_cast<const char*>(text), static_cast<std::size_t>(size)))
        programs->LoadProgram(programs->GetCurrent(), *chunk.RootElement());
}

int Process::GetBankChunk(void** text)
{
    return SaveChunk(true, bankChunk, text);
}

int Process::GetProgramChunk(void** text)
{
    return SaveChunk(false, programChunk, text);
}

int Process::SaveChunk(bool bank, std::unique_ptr<char[]>& chunk, void** text)
{
    if (programs == nullptr || text == nullptr)
        return 0;
    TiXmlDocument state;
    state.Parse(emptyChunk);
    TiXmlElement& root = *state.RootElement();
    if (bank)
        programs->SaveBank(root);
    else
        programs->SaveProgram(programs->GetCurrent(), root);

    std::ostringstream stream;
    stream << state;
    const std::string printed = stream.str();
    // One zero byte beyond the counted characters, for hosts that treat the text as a string.
    chunk.reset(new char[printed.size() + 1]);
    std::memcpy(chunk.get(), printed.data(), printed.size());
    chunk[printed.size()] = '\0';
    *text = chunk.get();
    return static_cast<int>(printed.size());
}

void Process::FreeBankChunk()
{
    bankChunk.reset();
}

void Process::FreeProgramChunk()
{
    programChunk.reset();
}

int Process::GetProgramCount()
{
    return programs != nullptr ? programs->GetProfile()->GetProgramCount() : 1;
}

int Process::SetProgram(int index)
{
    if (programs == nullptr || index < 0 || index >= GetProgramCount())
        return 0;
    programs->SetCurrent(index);
    return 1;
}

int Process::GetProgram()
{
    return programs != nullptr ? programs->GetCurrent() : 1;
}

void Process::SetProgramName(int index, const char* name)
{
    if (programs != nullptr && name != nullptr && index >= 0 && index < GetProgramCount())
        programs->SetName(index, name);
}

void Process::GetProgramName(int index, char* buffer, int size)
{
    if (programs != nullptr && index >= 0 && index < GetProgramCount())
        BoundedCopy(programs->GetName(index), buffer, size);
}

int Process::CopyProgram(int source, int target)
{
    const int count = GetProgramCount();
    if (programs == nullptr || source < 0 || source >= count || target < 0 || target >= count)
        return 0;
    programs->Copy(source, target);
    return 1;
}

void* Process::GetExtension(void*)
{
    return nullptr;
}

void Process::NotifyHost(int slot, float plain, float normalised)
{
    if (host != nullptr && host->NotifyParameter != nullptr)
        host->NotifyParameter(host, slot, plain, normalised);
}

void Process::OnSlotChanged(int slot, float plain, float normalised, int source)
{
    if (source != 3)
        NotifyHost(slot, plain, normalised);
}

}  // namespace OV::CFW::HLAFramework
