#pragma once

#include "docview/utils/BasicComponent.h"
#include "docview/utils/BasicComponentProfile.h"

namespace OV::Products::VN4 {

// Declares the product's top component: its GUID, name and role profiles.
class MainComponentProfileSingleModule : public CFW::DocViewUtils::BasicComponentProfile {
public:
    static MainComponentProfileSingleModule& Instance();

private:
    MainComponentProfileSingleModule();
};

// The whole instance of the product; its roles join as they are built.
class MainComponentSingleModule : public CFW::DocViewUtils::BasicComponent {
public:
    MainComponentSingleModule();
};

}  // namespace OV::Products::VN4
