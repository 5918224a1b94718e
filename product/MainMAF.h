#pragma once

#include "docview/utils/BasicAudioMAF.h"
#include "docview/utils/BasicMAF.h"

#include <atomic>
#include <chrono>

namespace OV::Products::VN4 {

class MainDocumentSingleModule;
class ModuleComponent;

// The top MAF layer: the latency level into the engine's pad and oversampling, and the module's
// MAF under the name "Module". Update runs on the audio thread, inside one read of the shared
// ring for every MAF below it.
class MainMAFSingle : public CFW::DocViewUtils::BasicMAF {
public:
    MainMAFSingle(CFW::DocView::MAFContext* context, MainDocumentSingleModule* document, ModuleComponent* module);

    void Attach(CFW::DocView::MAFWrapper* wrapper, const std::string& prefix) override;
    void Detach() override;
    // Audio thread: no allocation, no lock.
    void Update() override;
    void Poll() override;
    void Idle() override;

    // The pad of each latency level, in samples.
    static constexpr float padLatency[3] = {0.0f, 128.0f, 18560.0f};

private:
    MainDocumentSingleModule* document;
    CFW::DocView::MAF* moduleMAF;
    CFW::DocView::MAFWrapper* engine = nullptr;
};

// The audio role of the instance: meters are read at most every 25 ms of audio and only while
// an editor is open; the latency reported is the level's pad plus the engine's 4 samples.
class MainAudioMAFSingleModule : public CFW::DocViewUtils::BasicAudioMAF {
public:
    MainAudioMAFSingleModule(MainDocumentSingleModule* document, CFW::DocView::MAF* maf, CFW::DocView::MAFWrapper* wrapper);

    // Main thread, audio stopped.
    void SetSampleRate(float rate) override;
    // Audio thread: no allocation, no lock.
    void Process(float** inputs, float** outputs, int frames, void* extra) override;
    // Main thread: reads the preference, not the engine.
    int GetLatency() override;
    // Any thread: whether a block ran in the last half second.
    bool IsProcessing() const;

private:
    MainDocumentSingleModule* document;
    std::uint32_t sampleCount = 0;
    std::uint32_t lastMeterSample = 0;
    std::uint32_t meterInterval = 0;
    std::uint32_t lastBlockFrames = 0;
    float sampleRate = 48000.0f;
    std::atomic<std::chrono::steady_clock::rep> lastProcessTime{0};
};

}  // namespace OV::Products::VN4
