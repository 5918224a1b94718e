#pragma once

#include "docview/interfaces/Interface.h"
#include "docview/interfaces/Profile.h"

#include <string>

namespace OV::CFW::DocView {

// The host-visible slots: names, count and the document rows behind them. Read-only after
// construction: any thread; the string queries allocate.
class AutomationProfile : public Profile {
public:
    const std::type_info& GetType() const override { return typeid(AutomationProfile); }
    virtual const std::string& GetName() const = 0;
    virtual int GetSlotCount() const = 0;
    virtual std::string GetSlotName(int slot) const = 0;
    virtual std::string GetSlotShortName(int slot) const = 0;
    // The document row behind a slot; -1 where the profile has no rows of its own.
    virtual int GetSlotParameter(int) const { return -1; }
};

// The automation role: host parameters by flat slot index.
//
// Threads: the Queue operations, GetValue and GetNormalized may come from any thread, the audio
// thread included: they neither allocate nor wait (beyond a command pool's short lock). The
// others run on the host's main thread or the scheduler's worker; the display queries allocate.
class Automation : public Interface {
public:
    // Told of every slot change; `source` 3 marks the host's own writes. Called on the thread
    // that applied the change: the scheduler's worker or the main thread, never the audio thread.
    class Listener {
    public:
        virtual void OnSlotChanged(int slot, float plain, float normalised, int source) = 0;

    protected:
        ~Listener() = default;
    };

    const std::type_info& GetType() const override { return typeid(Automation); }
    virtual const AutomationProfile* GetProfile() const = 0;
    // Null removes the listener.
    virtual void SetListener(Listener* listener) = 0;
    virtual Listener* GetListener() const = 0;
    // The text of the present value.
    virtual void GetDisplay(std::string& text, int slot) = 0;
    // The text of a given value, taken as the host's normalised position (a switch's plain and
    // normalised values are the same number).
    virtual void GetDisplayFor(std::string& text, int slot, float value) = 0;
    virtual float ToNormalized(int slot, float plain) = 0;
    virtual float GetValue(int slot) = 0;
    virtual float GetNormalized(int slot) = 0;
    // At once, into the document. Main thread or worker.
    virtual void SetValue(int slot, float plain) = 0;
    virtual void SetNormalized(int slot, float normalised) = 0;
    // Through the scheduler; false when the change was refused (command pool empty).
    virtual bool QueueValue(int slot, float plain) = 0;
    virtual bool QueueNormalized(int slot, float normalised) = 0;
    // Kept free for later use; both answer 0.
    virtual int Reserved1() { return 0; }
    virtual int Reserved2() { return 0; }
};

}  // namespace OV::CFW::DocView
