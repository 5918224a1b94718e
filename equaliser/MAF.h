#pragma once

#include "docview/interfaces/MAFWrapper.h"
#include "docview/utils/BasicMAF.h"
#include "equaliser/Document.h"
#include "equaliser/MAFProfile.h"

namespace OV::Comp::ModuleLinearPhaseEq {

// The equaliser's bridge to its engine module. Downward and the meters: the bindings of
// MAFProfile. Upward for the editor: at each Idle, the coefficients both chains are running
// with, and their rate, go into the document's CoefficientRing.
//
// Threads: construction, Attach, Detach and Idle on the main thread, never at once; Idle only
// while attached. Update and Poll: audio thread, no allocation, no lock.
class MAF : public CFW::DocViewUtils::BasicMAF {
public:
    // Allocates. Profile, context and document are not owned and outlive the MAF.
    MAF(const MAFProfile* profile, CFW::DocView::MAFContext* context, Document* document);

    // The bindings, then the handles of "ChainCoeffsL", "ChainCoeffsR" and "SampleRate"
    // under `prefix`. Allocates.
    void Attach(CFW::DocView::MAFWrapper* wrapper, const std::string& prefix) override;
    void Detach() override;
    // Reads the two coefficient blocks and the rate, as they stood at one moment between the
    // audio thread's changes, and pushes them into the document's ring; a full ring drops
    // them, and so does a tick whose reads changes kept overlapping. Allocates only while the
    // vectors grow; never holds the audio up.
    void Idle() override;

private:
    Document& GetEqualiserDocument() const { return *static_cast<Document*>(GetDocument()); }

    CFW::DocView::MAFWrapper* engine = nullptr; // from Attach to Detach
    CFW::DocView::MAFWrapper::ResolvedName coeffsL;
    CFW::DocView::MAFWrapper::ResolvedName coeffsR;
    CFW::DocView::MAFWrapper::ResolvedName sampleRate;
    std::vector<float> left; // the last reads, kept for their storage
    std::vector<float> right;
    float rate = 0.0f;
};

}  // namespace OV::Comp::ModuleLinearPhaseEq
