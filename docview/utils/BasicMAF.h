#pragma once

#include "docview/interfaces/Document.h"
#include "docview/interfaces/MAF.h"
#include "docview/interfaces/MAFContext.h"
#include "docview/utils/BasicMAFProfile.h"
#include "docview/utils/MAFMediator.h"

#include <memory>

namespace OV::CFW::DocViewUtils {

// The standard MAF layer: the mediators of its profile over one document, exchanging through
// the context's ring. Profile, context and document are not owned and outlive it.
class BasicMAF : public DocView::MAF {
public:
    // Main thread: allocates, and writes the document's present state for the first Update.
    BasicMAF(const BasicMAFProfile* profile, DocView::MAFContext* context, DocView::Document* document);

    const DocView::MAFProfile* GetProfile() const override { return profile; }
    void Attach(DocView::MAFWrapper* wrapper, const std::string& prefix) override;
    void Detach() override;
    // Main thread.
    bool IsAttached() const override { return attached; }
    void Update() override { mediator->Apply(); }
    void Poll() override { mediator->Poll(); }

protected:
    DocView::MAFContext* GetContext() const { return context; }
    DocView::Document* GetDocument() const { return document; }

private:
    const BasicMAFProfile* profile;
    DocView::MAFContext* context;
    DocView::Document* document;
    bool attached = false;
    std::unique_ptr<MAFMediator> mediator;
};

}  // namespace OV::CFW::DocViewUtils
