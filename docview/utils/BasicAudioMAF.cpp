#include "docview/utils/BasicAudioMAF.h"

namespace OV::CFW::DocViewUtils {

BasicAudioMAF::BasicAudioMAF(const DocView::AudioProfile* profile, DocView::MAF* maf, DocView::MAFWrapper* wrapper)
    : profile(profile), maf(maf), wrapper(wrapper)
{
}

void BasicAudioMAF::SetTransport(float bpm, double positionA, double positionB)
{
    wrapper->SetTransport(bpm, positionA, positionB);
}

void BasicAudioMAF::Process(float** inputs, float** outputs, int frames, void*)
{
    maf->Update();
    if (pollDue)
        maf->Poll();
    wrapper->ProcessBlock(inputs, outputs, frames);
}

}  // namespace OV::CFW::DocViewUtils
