#include "docview/utils/BasicComponentProfile.h"

namespace OV::CFW::DocViewUtils {

BasicComponentProfile::BasicComponentProfile(const Platform::Guid& id, std::string name)
    : id(id), name(std::move(name)), vendor("Orvane Studio Production")
{
}

const DocView::Profile* BasicComponentProfile::GetInterfaceProfile(const std::type_info& type) const
{
    return FindByType(interfaceProfiles, type);
}

DocView::Profile* BasicComponentProfile::GetInterfaceProfile(const std::type_info& type)
{
    return FindByType(interfaceProfiles, type);
}

const DocView::Profile* BasicComponentProfile::GetInterfaceProfile(int index) const
{
    return interfaceProfiles[index];
}

bool BasicComponentProfile::HasInterfaceProfile(const std::type_info& type) const
{
    return FindByType(interfaceProfiles, type) != nullptr;
}

void BasicComponentProfile::AddInterfaceProfile(DocView::Profile* profile)
{
    interfaceProfiles.push_back(profile);
}

}  // namespace OV::CFW::DocViewUtils
