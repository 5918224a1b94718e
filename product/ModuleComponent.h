#pragma once

#include "docview/utils/BasicAudioProfile.h"
#include "docview/utils/BasicComponent.h"
#include "docview/utils/BasicComponentProfile.h"
#include "docview/utils/BasicMAF.h"
#include "product/ModuleAutomation.h"
#include "product/ModuleDocument.h"

#include <memory>

namespace OV::Products::VN4 {

class ModuleComponentProfile : public CFW::DocViewUtils::BasicComponentProfile {
public:
    static ModuleComponentProfile& Instance();

private:
    ModuleComponentProfile();
};

// The slot's MAF: nothing of its own to mediate; it carries the hosted model's MAF along, under
// the same engine and name. The model is fixed while audio runs (this product has one).
class ModuleMAF : public CFW::DocViewUtils::BasicMAF, private ModuleDocument::ChildListener {
public:
    ModuleMAF(CFW::DocView::MAFContext* context, ModuleDocument* document);
    ~ModuleMAF() override;

    void Attach(CFW::DocView::MAFWrapper* wrapper, const std::string& prefix) override;
    void Detach() override;
    void Update() override;
    void Poll() override;
    void Idle() override;

private:
    void OnChildChanged(const std::shared_ptr<CFW::DocView::Component>& next) override;
    void TakeChild(const std::shared_ptr<CFW::DocView::Component>& child);

    ModuleDocument* document;
    std::shared_ptr<CFW::DocView::Component> child;
    CFW::DocView::MAF* childMAF = nullptr;
    CFW::DocView::MAFWrapper* engine = nullptr;
    std::string name;
};

// A host for one exchangeable module: the slot's document (which owns the model's component),
// automation and MAF. Built in the context of the main component, in a local context of its own.
class ModuleComponent : public CFW::DocViewUtils::BasicComponent {
public:
    explicit ModuleComponent(CFW::DocView::ComponentContext* context);
    ~ModuleComponent() override;

    ModuleDocument& GetDocument() const { return *document; }
    ModuleAutomationSingleModule& GetAutomation() const { return *automation; }
    ModuleMAF& GetMAF() const { return *maf; }

private:
    std::shared_ptr<CFW::DocView::ComponentContext> context;
    std::unique_ptr<ModuleDocument> document;
    std::unique_ptr<ModuleAutomationSingleModule> automation;
    std::unique_ptr<ModuleMAF> maf;
};

}  // namespace OV::Products::VN4
