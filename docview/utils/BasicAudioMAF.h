#pragma once

#include "docview/interfaces/Audio.h"
#include "docview/interfaces/MAF.h"
#include "docview/interfaces/MAFWrapper.h"

namespace OV::CFW::DocViewUtils {

// The audio role over a MAF layer and an engine: each block first brings the document's
// changes into the engine, then, when due, the engine's outputs into the document, then runs
// the engine. Profile, MAF and wrapper are not owned and outlive it.
class BasicAudioMAF : public DocView::Audio {
public:
    BasicAudioMAF(const DocView::AudioProfile* profile, DocView::MAF* maf, DocView::MAFWrapper* wrapper);

    const DocView::AudioProfile* GetProfile() const override { return profile; }
    // Main thread, audio stopped.
    void SetBlockSize(unsigned) override {}
    void SetSampleRate(float rate) override { wrapper->SetSampleRate(rate); }
    void SetTransport(float bpm, double positionA, double positionB) override;
    // Audio thread: no allocation, no lock, no wait.
    void Process(float** inputs, float** outputs, int frames, void* extra) override;
    // Samples; none here, a concrete class adds its own.
    int GetLatency() override { return 0; }
    // Main thread: clears the engine's audio state.
    void Stop() override { wrapper->Reset(); }

protected:
    // Audio thread: whether the next Process reads the engine's outputs (true at first).
    void SetPollDue(bool due) { pollDue = due; }
    bool IsPollDue() const { return pollDue; }
    DocView::MAF* GetMAF() const { return maf; }
    DocView::MAFWrapper* GetWrapper() const { return wrapper; }

private:
    const DocView::AudioProfile* profile;
    DocView::MAF* maf;
    DocView::MAFWrapper* wrapper;
    bool pollDue = true;
};

}  // namespace OV::CFW::DocViewUtils
