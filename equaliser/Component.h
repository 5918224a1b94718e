#pragma once

#include "docview/interfaces/Context.h"
#include "docview/utils/BasicAutomation.h"
#include "docview/utils/BasicComponent.h"
#include "equaliser/ComponentProfile.h"
#include "equaliser/Document.h"
#include "equaliser/MAF.h"

#include <memory>

namespace OV::Comp::ModuleLinearPhaseEq {

// The equaliser as a component: its roles, made in the order document, editor, automation,
// MAF, each with the document, and offered in that order. The editor role is not part of it
// yet. A role whose context the given context lacks is left out.
//
// Threads: construction and destruction on the main thread or the scheduler's worker (a model
// switch); they allocate.
class Component : public CFW::DocViewUtils::BasicComponent {
public:
    // `context` is not owned and outlives the component; it may be null (no roles but the
    // document, which then cannot queue).
    explicit Component(CFW::DocView::ComponentContext* context);
    ~Component() override;

    // The profile singleton: what a component factory shows before making one.
    static const ComponentProfile& Profile() { return ComponentProfile::Instance(); }

    Document& GetDocument() const { return *document; }
    // Null when the context has no automation context.
    CFW::DocViewUtils::BasicAutomation* GetAutomation() const { return automation.get(); }
    // Null when the context has no MAF context.
    MAF* GetMAF() const { return maf.get(); }

private:
    // Deleted in the reverse order: the automation and the MAF listen to the document.
    std::unique_ptr<Document> document;
    // The editor role goes here, between document and automation.
    std::unique_ptr<CFW::DocViewUtils::BasicAutomation> automation;
    std::unique_ptr<MAF> maf;
};

}  // namespace OV::Comp::ModuleLinearPhaseEq
