#pragma once

#include "equaliser/CoefficientRing.h"
#include "equaliser/DocumentProfile.h"
#include "equaliser/VN4ModuleBaseDocument.h"

#include <cstdint>

namespace OV::Comp::ModuleLinearPhaseEq {

// The equaliser's model. It keeps its four sets in step:
// - an edit of the set on view goes to the channel(s) `CurrentChannel` names;
// - a change of a channel set shows in the set on view when that channel is on view ("="
//   shows either);
// - the linked set writes both channels;
// - selecting a channel shows it; selecting "=" keeps what is shown;
// - `LinearPhase` is on only at latency level "High", and lowering the level turns it off.
// It also owns the ring that carries the engine's coefficients to the editor.
//
// Threads: as VN4ModuleBase::Document. The ring has its own rules (PeekCoefficients).
class Document : public VN4ModuleBase::Document {
public:
    // Main thread: allocates.
    Document(const DocumentProfile* profile, CFW::DocView::DocumentContext* context);

    // The editor's idle thread: the oldest unread coefficients, or null; valid until
    // PopCoefficients. No allocation, no lock.
    const ChainCoeffRecord* PeekCoefficients() const { return ring.Peek(); }
    // The editor's idle thread: done with the record PeekCoefficients gave. No allocation, no lock.
    void PopCoefficients() { ring.Pop(); }
    // The writer side is the MAF's idle (CoefficientRing::Push).
    CoefficientRing& GetCoefficientRing() { return ring; }

protected:
    bool DoLoad(const TiXmlElement& element) override;
    void DoSetParameter(int index, CFW::DocView::Parameter value, int source) override;

private:
    // Copies the channel on view into the set on view. "=" copies the left/mid set only when
    // forced, so that going to "=" keeps the display.
    void RefreshCurrentSet(bool force);
    std::uint32_t GetEnum(int index) const { return GetParameter(index).AsEnum(); }

    CoefficientRing ring;
    std::uint8_t propagating = 0; // raised while the set on view is written from a channel
};

}  // namespace OV::Comp::ModuleLinearPhaseEq
