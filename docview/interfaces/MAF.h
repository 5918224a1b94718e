#pragma once

#include "docview/interfaces/Interface.h"
#include "docview/interfaces/Profile.h"

#include <string>

namespace OV::CFW::DocView {

class MAFWrapper;

// The declaration of a MAF layer: its name and, in the implementation, its mediators.
// Read-only after construction: any thread.
class MAFProfile : public Profile {
public:
    const std::type_info& GetType() const override { return typeid(MAFProfile); }
    virtual const std::string& GetName() const = 0;
};

// The layer between a document and the audio engine: document changes go down into engine
// parameters, engine outputs come up into document rows, and the audio thread never waits
// for the model.
class MAF : public Interface {
public:
    const std::type_info& GetType() const override { return typeid(MAF); }
    virtual const MAFProfile* GetProfile() const = 0;
    // Binds every mediator to `wrapper`, their engine names ending in `prefix` (empty for the
    // root). Main thread, or the audio thread when a model is switched there; allocates.
    virtual void Attach(MAFWrapper* wrapper, const std::string& prefix) = 0;
    // Unbinds; runs before the engine goes away. Same threads as Attach.
    virtual void Detach() = 0;
    virtual bool IsAttached() const = 0;
    // Pending document changes into the engine. Audio thread: no allocation, no lock.
    virtual void Update() = 0;
    // Engine outputs into the document's transient rows. Audio thread: no allocation, no lock.
    virtual void Poll() = 0;
    // Periodic work off the audio thread, such as reading engine data for the editor. Main
    // (idle) thread only, while attached; may allocate. Does nothing unless a layer needs it.
    virtual void Idle() {}
};

}  // namespace OV::CFW::DocView
