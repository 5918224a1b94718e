#include "product/MainComponentSingleModule.h"

#include "product/HLAConfig.h"

namespace OV::Products::VN4 {

namespace {

// {2429F140-A34C-4C6C-BF23-3A5FBC13212E}
const Platform::Guid mainComponentId = {
    0x2429F140, 0xA34C, 0x4C6C, {0xBF, 0x23, 0x3A, 0x5F, 0xBC, 0x13, 0x21, 0x2E}};

}  // namespace

MainComponentProfileSingleModule& MainComponentProfileSingleModule::Instance()
{
    static MainComponentProfileSingleModule profile;
    return profile;
}

MainComponentProfileSingleModule::MainComponentProfileSingleModule()
    : BasicComponentProfile(mainComponentId, moduleName)
{
}

MainComponentSingleModule::MainComponentSingleModule()
    : BasicComponent(&MainComponentProfileSingleModule::Instance())
{
}

}  // namespace OV::Products::VN4
