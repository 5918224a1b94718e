#include "product/ModuleRegistry.h"

#include "equaliser/Component.h"

namespace OV::Products::VN4 {

const Info& Info::Instance()
{
    static const Info info;
    return info;
}

Info::Info()
{
    rows.push_back({"Linear Phase EQ", "LIN|PHASE", true});
    factory.Add(std::make_unique<CFW::DocViewUtils::GenericCreator<Comp::ModuleLinearPhaseEq::Component>>());
}

std::vector<std::string> Info::GetModelNames() const
{
    std::vector<std::string> names;
    for (int i = 0; i < factory.GetCount(); ++i)
        names.push_back(Platform::FormatGuid(factory.GetProfile(i).GetId()));
    return names;
}

int Info::FindModel(const std::string& guidText) const
{
    for (int i = 0; i < factory.GetCount(); ++i) {
        if (Platform::FormatGuid(factory.GetProfile(i).GetId()) == guidText)
            return i;
    }
    return -1;
}

}  // namespace OV::Products::VN4
