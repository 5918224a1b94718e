#include "docview/gui/BasicGUIProfile.h"

#include "docview/utils/GUIMediator.h"

namespace OV::CFW::DocViewUtils {

void BasicGUIProfile::CreateMediators(const Widgets::LayoutManager& layout, GUIMediator& mediator) const
{
    for (const auto& creator : creators)
        mediator.Add(creator->Create(layout, mediator));
}

}  // namespace OV::CFW::DocViewUtils
