#pragma once

#include "docview/interfaces/Interface.h"
#include "docview/interfaces/Profile.h"

#include <string>

namespace OV::CFW::DocView {

// The host-visible slots: names and count.
class AutomationProfile : public Profile {
public:
    const std::type_info& GetType() const override { return typeid(AutomationProfile); }
    virtual const std::string& GetName() const = 0;
    virtual int GetSlotCount() const = 0;
    virtual std::string GetSlotName(int slot) const = 0;
    virtual std::string GetSlotShortName(int slot) const = 0;
};

// The automation role: host parameters by flat slot index. Queue operations may come from any
// thread, the audio thread included; the rest run on the main thread.
class Automation : public Interface {
public:
    // Told of every slot change; `source` 3 marks the host's own writes.
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
    virtual void GetDisplay(std::string& text, int slot) = 0;
    virtual void GetDisplayFor(std::string& text, int slot, float plain) = 0;
    virtual float ToNormalized(int slot, float plain) = 0;
    virtual float GetValue(int slot) = 0;
    virtual float GetNormalized(int slot) = 0;
    virtual void SetValue(int slot, float plain) = 0;
    virtual void SetNormalized(int slot, float normalised) = 0;
    virtual bool QueueValue(int slot, float plain) = 0;
    virtual bool QueueNormalized(int slot, float normalised) = 0;
};

}  // namespace OV::CFW::DocView
