#pragma once

#include "docview/interfaces/Automation.h"
#include "shell/hla2/Process.h"

#include <memory>
#include <vector>

namespace OV::CFW::DocView {
class Audio;
class Component;
class Document;
class MIDI;
class Programs;
}  // namespace OV::CFW::DocView

namespace OV::CFW::HLAFramework {

// The instance behind the host's process table. It knows nothing of the product: it finds the
// roles of its component by type once, and then forwards, folds channels around the audio
// call, watches the tempo, and turns state chunks into XML for the programs role. Every entry
// copes with a missing role.
class Process : public HLA2::Process, public DocView::Automation::Listener {
public:
    // Takes ownership of `component`, which may be null.
    Process(HLA2Host* host, DocView::Component* component, int pluginType, int inputCount,
            int outputCount);
    ~Process() override;

    DocView::Component* GetComponent() const { return component.get(); }

    void GetName(char* buffer, int size) override;
    void GetVendor(char* buffer, int size) override;
    int GetPlugInType() override { return pluginType; }
    int GetInputCount() override { return inputCount; }
    int GetOutputCount() override { return outputCount; }
    void SetHostInputCount(int count) override;
    void SetHostOutputCount(int count) override;
    void Start() override;
    bool Stop() override;
    void SetBlockSize(unsigned frames) override;
    int SetSampleRate(float rate) override;
    bool Resume() override;
    void Suspend() override;
    int GetLatency() override;
    // Audio thread: no allocation, no lock beyond a command pool's.
    void ProcessReplacing(float** channels, int frames, void* extra) override;
    void ProcessSeparate(float** inputs, float** outputs, int frames, void* extra) override;
    int SendMIDI(const void* events, int count) override;
    int GetParameterCount() override;
    void GetParameterName(int index, char* buffer, int size) override;
    void GetParameterDisplay(int index, char* buffer, int size) override;
    void GetParameterDisplayFor(int index, float value, char* buffer, int size) override;
    float ToNormalized(int index, float plain) override;
    float GetParameterValue(int index) override;
    float GetParameterNormalized(int index) override;
    int SetParameterValue(int index, float plain) override;
    int SetParameterNormalized(int index, float normalised) override;
    void SetBankChunk(const void* text, int size) override;
    int GetBankChunk(void** text) override;
    void FreeBankChunk() override;
    void SetProgramChunk(const void* text, int size) override;
    int GetProgramChunk(void** text) override;
    void FreeProgramChunk() override;
    int GetProgramCount() override;
    int SetProgram(int index) override;
    int GetProgram() override;
    void SetProgramName(int index, const char* name) override;
    void GetProgramName(int index, char* buffer, int size) override;
    int CopyProgram(int source, int target) override;
    void* GetExtension(void* what) override;
    void NotifyHost(int slot, float plain, float normalised) override;

    // Automation listener: reports every change that did not come from the host.
    void OnSlotChanged(int slot, float plain, float normalised, int source) override;

private:
    void TempoStep();
    void RunBlock(float** inputs, float** outputs, int frames, void* extra);
    void ProcessFolded(float** inputs, float** outputs, int frames, void* extra);
    int SaveChunk(bool bank, std::unique_ptr<char[]>& chunk, void** text);

    unsigned hostInputs = 0;
    unsigned hostOutputs = 0;
    std::unique_ptr<DocView::Component> component;
    DocView::Document* document = nullptr;
    DocView::Automation* automation = nullptr;
    DocView::Programs* programs = nullptr;
    DocView::Audio* audio = nullptr;
    unsigned blockSize = 0;
    std::vector<float> scratchIn;
    std::vector<float> scratchOut;
    DocView::MIDI* midi = nullptr;
    int pluginType;
    int inputCount;
    int outputCount;
    unsigned engineInputs = 0;
    unsigned engineOutputs = 0;
    float lastBPM = -1.0f;
    bool listening = false;
    bool resumed = false;
    std::unique_ptr<char[]> bankChunk;
    std::unique_ptr<char[]> programChunk;
};

}  // namespace OV::CFW::HLAFramework
