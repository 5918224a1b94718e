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
    // Reads the two coefficient blocks and the rate and pushes them into the document's ring;
    // a full ring drops them. Allocates only while the ring's records grow; never waits.
    void Idle() override;

private:
    Document& GetEqualiserDocument() const { return *static_cast<Document*>(GetDocument()); }

    CFW::DocView::MAFWrapper* engine = nullptr; // from Attach to Detach
    CFW::DocView::MAFWrapper::ResolvedName coeffsL;
    CFW::DocView::MAFWrapper::ResolvedName coeffsR;
    CFW::DocView::MAFWrapper::ResolvedName sampleRate;
};

}  // namespace OV::Comp::ModuleLinearPhaseEq
