#pragma once

#include "docview/utils/BasicDocument.h"
#include "equaliser/VN4ModuleBaseDocumentProfile.h"

#include <cstdint>
#include <memory>

namespace OV::Comp::VN4ModuleBase {

// What the documents of the module family share:
// - values from the audio side (source 5) are dropped while `EngineStopped` is set;
// - a host write (source 3) to the set on view goes to both channel sets instead;
// - the reset button (PressReset) toggles between the defaults and the state before them; every
//   other reset (Reset: memories, loads without a module) goes to the defaults and drops the undo.
//
// Threads: as BasicDocument. Everything except SetParameter runs on the scheduler's worker or
// the host's main thread, serialised by the scheduler or the batch guard. SetParameter may come
// from the audio thread for transient rows and source 5: it then only reads row 0 and stores.
class Document : public CFW::DocViewUtils::BasicDocument {
public:
    Document(const DocumentProfile* profile, CFW::DocView::DocumentContext* context);
    ~Document() override;

    void SetParameter(int index, CFW::DocView::Parameter value, int source) override;

    // The reset button, as one batch: the first press remembers the state and resets, the next
    // press restores it, unless a parameter with flags was set in between (or a load ran), in
    // which case it resets again. Scheduler or main thread; allocates.
    void PressReset();
    // True while a press would restore rather than reset. Scheduler or main thread.
    bool HasUndo() const { return undoData != nullptr; }

protected:
    // The defaults; drops the undo.
    void DoReset() override;
    // The standard handler; then any set of a row with flags drops the undo, whether the value
    // changed or not.
    void DoSetParameter(int index, CFW::DocView::Parameter value, int source) override;
    // The standard load, which also drops the undo.
    virtual bool LoadKeepingUndoClear(const TiXmlElement& element);

    int GetFirstChannelParameter() const { return firstChannelParameter; }
    int GetLastChannelParameter() const { return lastChannelParameter; }
    int GetChannelParameterCount() const { return channelParameterCount; }

private:
    std::unique_ptr<TiXmlElement> undoData; // "UndoData": the state before the last reset
    int firstChannelParameter;
    int lastChannelParameter;
    int channelParameterCount;
};

}  // namespace OV::Comp::VN4ModuleBase
