#pragma once

#include "docview/utils/BasicComponentContext.h"
#include "docview/utils/BasicContexts.h"

namespace OV::Products::VN4 {

// The context the whole component tree of one instance shares: its scheduler thread and one
// context per role, made in the order document, editor, automation, programs, MAF, audio.
class ComponentContext : public CFW::DocViewUtils::BasicComponentContext {
public:
    explicit ComponentContext(CFW::Res::ResourceSet* resources);
    ~ComponentContext() override;

private:
    CFW::DocViewUtils::BasicDocumentContext document;
    CFW::DocViewUtils::BasicGUIContext gui;
    CFW::DocViewUtils::BasicAutomationContext automation;
    CFW::DocViewUtils::BasicProgramsContext programs;
    CFW::DocViewUtils::BasicMAFContext maf;
    CFW::DocViewUtils::BasicAudioContext audio;
};

}  // namespace OV::Products::VN4
