#pragma once

#include "docview/interfaces/Automation.h"
#include "docview/interfaces/RoleContexts.h"
#include "docview/utils/AutomationMediator.h"
#include "docview/utils/BasicAutomationProfile.h"

#include <memory>

namespace OV::CFW::DocViewUtils {

// The standard automation role: the profile's slots over a document, through an owned
// AutomationMediator to which every operation goes. Threads: as DocView::Automation.
class BasicAutomation : public DocView::Automation {
public:
    // Main thread; allocates. `context` may be null; `document` outlives the role.
    BasicAutomation(const BasicAutomationProfile* profile, DocView::AutomationContext* context, DocView::Document* document);
    ~BasicAutomation() override;

    const DocView::AutomationProfile* GetProfile() const override { return profile; }
    void SetListener(Listener* listener) override { mediator->SetListener(listener); }
    Listener* GetListener() const override { return mediator->GetListener(); }
    void GetDisplay(std::string& text, int slot) override { mediator->GetDisplay(text, slot); }
    void GetDisplayFor(std::string& text, int slot, float value) override { mediator->GetDisplayFor(text, slot, value); }
    float ToNormalized(int slot, float plain) override { return mediator->ToNormalized(slot, plain); }
    float GetValue(int slot) override { return mediator->GetValue(slot); }
    float GetNormalized(int slot) override { return mediator->GetNormalized(slot); }
    void SetValue(int slot, float plain) override { mediator->SetValue(slot, plain); }
    void SetNormalized(int slot, float normalised) override { mediator->SetNormalized(slot, normalised); }
    bool QueueValue(int slot, float plain) override { return mediator->QueueValue(slot, plain); }
    bool QueueNormalized(int slot, float normalised) override { return mediator->QueueNormalized(slot, normalised); }

protected:
    DocView::AutomationContext* GetContext() const { return context; }

private:
    const BasicAutomationProfile* profile;
    DocView::AutomationContext* context;
    std::unique_ptr<AutomationMediator> mediator;
};

}  // namespace OV::CFW::DocViewUtils
