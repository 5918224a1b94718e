#pragma once

#include "docview/utils/BasicAutomation.h"
#include "docview/utils/BasicAutomationProfile.h"
#include "docview/utils/FakeAutomation.h"
#include "product/ModuleDocument.h"
#include "product/automationrouter/AutomationTargetModule.h"

#include <memory>
#include <vector>

namespace OV::CFW::DocView {
class Component;
}

namespace OV::Products::VN4 {


// The module slot's own automation: "Module Selector", no slots of its own.
class ModuleAutomationProfile : public CFW::DocViewUtils::BasicAutomationProfile {
public:
    static const ModuleAutomationProfile& Instance();

private:
    ModuleAutomationProfile();
};

// The module slot's automation. For each model of the registry it keeps a stand-in with that
// model's slots, which the router's targets name; the stand-in of the model in the slot
// forwards to the hosted component's automation, the others to nothing. So the targets stay
// when the model is switched, and values set before a component exists are kept.
//
// Threads: as DocView::Automation. Construction, AddTargets and destruction on the main thread;
// a model switch reaches it on the worker.
class ModuleAutomationSingleModule : public CFW::DocViewUtils::BasicAutomation,
                                     public Comp::AutomationRouter::AutomationTargetModule,
                                     private ModuleDocument::ChildListener {
public:
    // `document` outlives this; its child is followed from now on.
    ModuleAutomationSingleModule(CFW::DocView::AutomationContext* context, ModuleDocument* document);
    ~ModuleAutomationSingleModule() override;

    // Under `node`, one node per model, named after it, holding one leaf per slot of the model.
    void AddTargets(Comp::AutomationRouter::TargetTreeNode& node, const std::string& path) override;

    int GetFakeCount() const { return static_cast<int>(fakes.size()); }
    // No bound check.
    CFW::DocViewUtils::FakeAutomation& GetFake(int index) const { return *fakes[static_cast<std::size_t>(index)]; }

private:
    void OnChildChanged(const std::shared_ptr<CFW::DocView::Component>& child) override;

    ModuleDocument* document;
    std::vector<std::unique_ptr<CFW::DocViewUtils::FakeAutomation>> fakes;  // one per registry model
    // The hosted component's automation, kept alive until no stand-in forwards to it.
    std::shared_ptr<CFW::DocView::Automation> childAutomation;
};

}  // namespace OV::Products::VN4
