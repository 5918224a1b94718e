#include "docview/utils/BasicComponent.h"

namespace OV::CFW::DocViewUtils {

BasicComponent::BasicComponent(const DocView::ComponentProfile* profile) : profile(profile) {}

const DocView::Interface* BasicComponent::GetInterface(const std::type_info& type) const
{
    return FindByType(interfaces, type);
}

DocView::Interface* BasicComponent::GetInterface(const std::type_info& type)
{
    return FindByType(interfaces, type);
}

bool BasicComponent::HasInterface(const std::type_info& type) const
{
    return FindByType(interfaces, type) != nullptr;
}

void BasicComponent::AddInterface(DocView::Interface* role)
{
    interfaces.push_back(role);
}

}  // namespace OV::CFW::DocViewUtils
