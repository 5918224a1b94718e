#pragma once

#include "docview/interfaces/Document.h"
#include "docview/utils/ChangeList.h"
#include "docview/utils/MAFParamMediator.h"

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include <boost/signals2/connection.hpp>

namespace OV::CFW::DocViewUtils {

class BasicMAFProfile;
class ExchangeRing;

// Carries one document's changes to its parameter mediators on the audio thread, and their
// engine readings back into the document.
//
// The document side writes every change of a mediated row into this mediator's list of the
// ring's write slot; a document batch is one write, so it arrives in one block. The audio side
// drains the list of the slot it reads. All mediators on one ring must run Apply inside one
// outer BeginRead/EndRead per block (nesting gives them the same slot), or a slot's list would
// wait a round and come late.
class MAFMediator final : public MAFParamMediator::Listener {
public:
    // Main thread, set-up: allocates. Makes the mediators of `profile`, connects to the
    // document's change and batch signals, and writes the present value of every mediated row,
    // so that the engine gets the whole state at the first Apply.
    MAFMediator(const BasicMAFProfile& profile, DocView::Document& document, ExchangeRing& ring);
    ~MAFMediator();
    MAFMediator(const MAFMediator&) = delete;
    MAFMediator& operator=(const MAFMediator&) = delete;

    // Binds every mediator to `wrapper` and asks for the event outputs to be read at the next
    // Apply. Null detaches. Allocates; run it while this mediator's audio path is idle.
    void Attach(DocView::MAFWrapper* wrapper, const std::string& prefix);

    // The thread that changes the document (the signals call it): takes the ring's writer
    // mutex, no allocation. A row without mediators is ignored.
    void Post(int index, DocView::Parameter value);

    // Audio thread: no allocation, no lock, no wait. The newest finished changes into the
    // engine, then the event outputs when asked for.
    void Apply();
    // Audio thread: no allocation, no lock. The outputs of transient rows into the document.
    void Poll();

    // Poll's way back: the document's row, with source "engine". Audio thread for transient
    // rows, which the document stores without a signal or lock.
    void OnValue(int index, DocView::Parameter value) override;

    int GetMediatorCount() const { return static_cast<int>(allMediators.size()); }

private:
    void BeginBatch();
    void EndBatch();

    DocView::Document* document;
    ExchangeRing* ring;
    std::vector<ChangeList> lists; // one per slot of the ring
    std::vector<std::unique_ptr<MAFParamMediator>> allMediators;
    std::vector<std::vector<MAFParamMediator*>> byParameter; // by document row
    std::vector<MAFParamMediator*> pollList;                 // outputs of transient rows
    std::vector<MAFParamMediator*> eventList;                // outputs read once after Attach
    boost::signals2::scoped_connection changedConnection;
    boost::signals2::scoped_connection beginBatchConnection;
    boost::signals2::scoped_connection endBatchConnection;
    bool inBatch = false; // this mediator holds a write for its document's batch
    std::atomic<bool> dirty{false};
};

}  // namespace OV::CFW::DocViewUtils
