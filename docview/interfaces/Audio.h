#pragma once

#include "docview/interfaces/Interface.h"
#include "docview/interfaces/Profile.h"

namespace OV::CFW::DocView {

class AudioProfile : public Profile {
public:
    const std::type_info& GetType() const override { return typeid(AudioProfile); }
    virtual int GetInputCount() const = 0;
    virtual int GetOutputCount() const = 0;
};

// The audio role. Process runs on the audio thread and never allocates, locks or waits; the
// others run on the host's main thread.
class Audio : public Interface {
public:
    const std::type_info& GetType() const override { return typeid(Audio); }
    virtual const AudioProfile* GetProfile() const = 0;
    virtual void SetBlockSize(unsigned frames) = 0;
    virtual void SetSampleRate(float rate) = 0;
    virtual void SetTransport(float bpm, double positionA, double positionB) = 0;
    // `inputs` and `outputs` hold the profile's channel counts; frames <= the block size.
    virtual void Process(float** inputs, float** outputs, int frames, void* extra) = 0;
    virtual int GetLatency() = 0;
    virtual void Stop() = 0;
};

}  // namespace OV::CFW::DocView
