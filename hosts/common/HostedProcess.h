#pragma once

#include "shell/include/varnel4/hla2.h"

#include <string>

namespace OV::Hosts {

// One process of the plug-in, driven as a host drives it: channel counts, rate and block size
// set, started and resumed at construction; suspended and destroyed at the end. The callback
// table answers a tempo of 0 and drops the plug-in's notifications.
//
// Main thread, but for Process (the audio thread of this host). Not copyable.
class HostedProcess {
public:
    // Throws std::runtime_error when the plug-in makes no process or refuses the rate.
    HostedProcess(HLA2PlugIn* plugIn, float rate, int blockSize, int channels);
    ~HostedProcess();
    HostedProcess(const HostedProcess&) = delete;
    HostedProcess& operator=(const HostedProcess&) = delete;

    HLA2Process* Get() const { return process; }
    int GetBlockSize() const { return blockSize; }
    // At most GetBlockSize() frames; `inputs` and `outputs` hold the constructor's channel count.
    void Process(float** inputs, float** outputs, int frames);
    int GetLatency() const;

    std::string GetProgramChunk();
    std::string GetBankChunk();
    void SetProgramChunk(const std::string& text);
    void SetBankChunk(const std::string& text);
    // Returns once every change handed over so far has reached the plug-in's document, so that
    // the next block is processed with all of them: the program chunk waits for the plug-in's
    // worker, which runs changes in order.
    void Settle();

    int GetSlotCount() const;
    std::string GetSlotName(int slot) const;
    std::string GetSlotDisplay(int slot) const;
    std::string GetSlotDisplayFor(int slot, float plain) const;
    float GetSlotValue(int slot) const;
    float GetSlotNormalized(int slot) const;
    bool SetSlotValue(int slot, float plain);
    bool SetSlotNormalized(int slot, float normalised);

private:
    HLA2Host host;
    HLA2PlugIn* plugIn;
    HLA2Process* process;
    int blockSize;
};

}  // namespace OV::Hosts
