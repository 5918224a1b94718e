#pragma once

#include "docview/interfaces/Audio.h"

namespace OV::CFW::DocViewUtils {

// The channel counts of an audio role. Read-only: any thread.
class BasicAudioProfile : public DocView::AudioProfile {
public:
    BasicAudioProfile(int inputCount, int outputCount) : inputCount(inputCount), outputCount(outputCount) {}

    int GetInputCount() const override { return inputCount; }
    int GetOutputCount() const override { return outputCount; }

private:
    int inputCount;
    int outputCount;
};

}  // namespace OV::CFW::DocViewUtils
