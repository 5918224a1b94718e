#pragma once

#include "docview/interfaces/Interface.h"
#include "docview/interfaces/Parameter.h"
#include "docview/interfaces/ParameterInfo.h"
#include "docview/interfaces/Profile.h"

#include <functional>

#include <boost/signals2/connection.hpp>

class TiXmlElement;

namespace OV::CFW::DocView {

class Scheduler;

// The rows a document declares. Read-only after construction: any thread.
class DocumentProfile : public Profile {
public:
    const std::type_info& GetType() const override { return typeid(DocumentProfile); }
    virtual int GetParameterCount() const = 0;
    // No bound check: index < GetParameterCount().
    virtual const ParameterInfo& GetParameterInfo(int index) const = 0;
};

// The model of a component: a flat table of typed parameters, plus a tempo.
//
// Threads: SetParameter and everything it triggers run on the caller's thread, which is the
// scheduler's worker, the host's main thread (the editor, programs), or, for transient rows
// only, the audio thread; signals fire on that thread. The Queue operations may come from any
// thread, the audio thread included: they hand a pooled command to the scheduler and never
// allocate. Reads of a cell never tear.
class Document : public Interface {
public:
    using LoadedSlot = std::function<void(Document&)>;
    using ParameterChangedSlot = std::function<void(Document&, int index, Parameter value, int source)>;
    using ParameterTouchedSlot = std::function<void(Document&, int index)>;
    using BPMChangedSlot = std::function<void(Document&, float bpm, int source)>;
    using BatchSlot = std::function<void(Document&)>;

    const std::type_info& GetType() const override { return typeid(Document); }
    virtual const DocumentProfile* GetProfile() const = 0;
    // Disconnects every property and preference binding.
    virtual void DropBindings() = 0;
    // Defaults, as one batch.
    virtual void Reset() = 0;
    // State from an element, as one batch.
    virtual bool Load(const TiXmlElement& element) = 0;
    virtual bool Save(TiXmlElement& element) = 0;
    virtual void SetParameter(int index, Parameter value, int source) = 0;
    virtual void SetNormalized(int index, float normalized, int source) = 0;
    virtual Parameter GetParameter(int index) const = 0;
    // The plain value through the row's converter, as a float.
    virtual Parameter GetNormalized(int index) const = 0;
    virtual void SetBPM(float bpm, int source) = 0;
    virtual float GetBPM() const = 0;
    // Any thread: false when the command pool is empty; the change is then lost.
    virtual bool QueueSetParameter(int index, Parameter value, int source) = 0;
    virtual bool QueueSetNormalized(int index, float normalized, int source) = 0;
    virtual bool QueueSetBPM(float bpm, int source) = 0;
    virtual Scheduler* GetScheduler() const = 0;
    // Asks the row's listeners to show it again.
    virtual void NotifyParameter(int index) = 0;
    virtual boost::signals2::connection ConnectLoaded(const LoadedSlot& slot) = 0;
    virtual boost::signals2::connection ConnectParameterChanged(const ParameterChangedSlot& slot) = 0;
    virtual boost::signals2::connection ConnectParameterTouched(const ParameterTouchedSlot& slot) = 0;
    virtual boost::signals2::connection ConnectBPMChanged(const BPMChangedSlot& slot) = 0;
    virtual boost::signals2::connection ConnectBeginBatch(const BatchSlot& slot) = 0;
    virtual boost::signals2::connection ConnectEndBatch(const BatchSlot& slot) = 0;
    // Stores the host's capability flag; nothing reads it.
    virtual void SetHostFlag(bool flag) = 0;

protected:
    virtual void DoReset() = 0;
    virtual bool DoLoad(const TiXmlElement& element) = 0;
    virtual bool DoSave(TiXmlElement& element) = 0;
    virtual void DoSetParameter(int index, Parameter value, int source) = 0;
    virtual void DoSetBPM(float bpm, int source) = 0;
    bool QueueSetParameterInternal(int index, Parameter value) { return QueueSetParameter(index, value, SourceInternal); }
    void SetParameterInternal(int index, Parameter value) { SetParameter(index, value, SourceInternal); }
};

}  // namespace OV::CFW::DocView
