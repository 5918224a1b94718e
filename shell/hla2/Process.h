#pragma once

#include "shell/include/varnel4/hla2.h"

namespace OV::HLA2 {

// One running instance as the host sees it. The table's entries forward to the virtual
// operations of the same position. ProcessReplacing and ProcessSeparate run on the audio
// thread, SetParameterValue and SetParameterNormalized on any thread, the rest on the host's
// main thread.
class Process {
public:
    explicit Process(HLA2Host* host);
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    virtual ~Process() = default;

    virtual void GetName(char* buffer, int size) = 0;
    virtual void GetVendor(char* buffer, int size) = 0;
    virtual int GetPlugInType() = 0;
    virtual int GetInputCount() = 0;
    virtual int GetOutputCount() = 0;
    virtual void SetHostInputCount(int count) = 0;
    virtual void SetHostOutputCount(int count) = 0;
    virtual void Start() = 0;
    virtual bool Stop() = 0;
    virtual void SetBlockSize(unsigned frames) = 0;
    virtual int SetSampleRate(float rate) = 0;
    virtual bool Resume() = 0;
    virtual void Suspend() = 0;
    virtual int GetLatency() = 0;
    virtual void ProcessReplacing(float** channels, int frames, void* extra) = 0;
    virtual void ProcessSeparate(float** inputs, float** outputs, int frames, void* extra) = 0;
    virtual int SendMIDI(const void* events, int count) = 0;
    virtual int GetParameterCount() = 0;
    virtual void GetParameterName(int index, char* buffer, int size) = 0;
    virtual void GetParameterDisplay(int index, char* buffer, int size) = 0;
    virtual void GetParameterDisplayFor(int index, float value, char* buffer, int size) = 0;
    virtual float ToNormalized(int index, float plain) = 0;
    virtual float GetParameterValue(int index) = 0;
    virtual float GetParameterNormalized(int index) = 0;
    virtual int SetParameterValue(int index, float plain) = 0;
    virtual int SetParameterNormalized(int index, float normalised) = 0;
    virtual void SetBankChunk(const void* text, int size) = 0;
    virtual int GetBankChunk(void** text) = 0;
    virtual void FreeBankChunk() = 0;
    virtual void SetProgramChunk(const void* text, int size) = 0;
    virtual int GetProgramChunk(void** text) = 0;
    virtual void FreeProgramChunk() = 0;
    virtual int GetProgramCount() = 0;
    virtual int SetProgram(int index) = 0;
    virtual int GetProgram() = 0;
    virtual void SetProgramName(int index, const char* name) = 0;
    virtual void GetProgramName(int index, char* buffer, int size) = 0;
    virtual int CopyProgram(int source, int target) = 0;
    virtual void* GetExtension(void* what) = 0;
    // Tells the host that a parameter moved inside the plug-in.
    virtual void NotifyHost(int slot, float plain, float normalised) = 0;

    static HLA2Process* ToTable(Process* object) { return object ? &object->table : nullptr; }
    static Process* FromTable(HLA2Process* table)
    {
        return table ? static_cast<Process*>(table->object) : nullptr;
    }

private:
    HLA2Process table; // directly behind the vtable word: the host holds its address

protected:
    HLA2Host* const host;
};

}  // namespace OV::HLA2
