#pragma once

#include "docview/interfaces/Automation.h"
#include "product/automationrouter/Automation.h"
#include "product/automationrouter/AutomationHelperSerializer.h"
#include "product/automationrouter/MapStore.h"

#include <memory>

namespace OV::Products::VN4 {

class MainDocumentSingleModule;
class ModuleComponent;

// The host's slots: the slot table of the first model of the registry, taken as it stands.
// A process-wide singleton, built on first use (main thread); read-only after: any thread.
class MainAutomationProfileSingleModule : public CFW::DocView::AutomationProfile {
public:
    static const MainAutomationProfileSingleModule& Instance();

    const std::string& GetName() const override { return model.GetName(); }
    int GetSlotCount() const override { return model.GetSlotCount(); }
    std::string GetSlotName(int slot) const override { return model.GetSlotName(slot); }
    std::string GetSlotShortName(int slot) const override { return model.GetSlotShortName(slot); }
    int GetSlotParameter(int slot) const override { return model.GetSlotParameter(slot); }

private:
    explicit MainAutomationProfileSingleModule(const CFW::DocView::AutomationProfile& model);

    const CFW::DocView::AutomationProfile& model;
};

// The instance's automation as the host sees it: the router over the module slot's targets.
// At construction it builds the target tree, installs the default map (host slot i is the
// model's slot i) and hands the map's serialiser to the main document, so that every host
// program carries the map.
//
// Threads: as Comp::AutomationRouter::Automation; built and destroyed on the main thread, after
// the main document and the module component and before they go.
class MainAutomationSingleModule : public Comp::AutomationRouter::Automation {
public:
    MainAutomationSingleModule(const MainAutomationProfileSingleModule* profile, CFW::DocView::AutomationContext* context,
                               MainDocumentSingleModule* document, ModuleComponent* module);
    ~MainAutomationSingleModule() override;

private:
    MainDocumentSingleModule* document;
    std::unique_ptr<Comp::AutomationRouter::MapStore> store;
    std::unique_ptr<Comp::AutomationRouter::AutomationHelperSerializer> serializer;
};

}  // namespace OV::Products::VN4
