#include "equaliser/VN4ModuleBaseMAFProfile.h"

namespace OV::Comp::VN4ModuleBase {

using namespace CFW::DocViewUtils;

MAFProfile::MAFProfile(std::string engineModuleName) : BasicMAFProfile(std::move(engineModuleName)) {}

void MAFProfile::AddFloat(int row, std::string engineName)
{
    AddCreator(std::make_unique<MAFParamMediatorFloat::Creator>(row, std::move(engineName)));
}

void MAFProfile::AddIndex(int row, std::string engineName)
{
    AddCreator(std::make_unique<MAFParamMediatorEnum::Creator>(row, std::move(engineName)));
}

void MAFProfile::AddBool(int row, std::string engineName)
{
    AddCreator(std::make_unique<MAFParamMediatorBool::Creator>(row, std::move(engineName)));
}

}  // namespace OV::Comp::VN4ModuleBase
