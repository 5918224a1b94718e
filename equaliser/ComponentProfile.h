#pragma once

#include "docview/utils/BasicComponentProfile.h"

namespace OV::Comp::ModuleLinearPhaseEq {

// "Linear Phase EQ", {F8FD5639-DA16-4332-86C3-E1E0E7272048}, with the profiles of its roles:
// document, automation and MAF (the editor's joins them after the document).
//
// A process-wide singleton, built on first use (main thread); read-only after: any thread.
class ComponentProfile : public CFW::DocViewUtils::BasicComponentProfile {
public:
    static ComponentProfile& Instance();

private:
    ComponentProfile();
};

}  // namespace OV::Comp::ModuleLinearPhaseEq
