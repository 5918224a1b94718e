#include "docview/gui/GUIWidgetMediatorMultiStateButton.h"

#include "widgets/controls/MultiStateButton.h"

#include <boost/signals2/shared_connection_block.hpp>

namespace OV::CFW::DocViewUtils {

std::unique_ptr<DocView::GUIWidgetMediator> GUIWidgetMediatorMultiStateButton::Creator::Create(
    const Widgets::LayoutManager& layout, DocView::GUIWidgetMediator::Listener& listener) const
{
    return std::make_unique<GUIWidgetMediatorMultiStateButton>(GetRow(), Find<Widgets::MultiStateButton>(layout), listener);
}

GUIWidgetMediatorMultiStateButton::GUIWidgetMediatorMultiStateButton(int row, Widgets::MultiStateButton* button,
                                                                     DocView::GUIWidgetMediator::Listener& listener)
    : row(row), button(button)
{
    if (button != nullptr)
        stateChanged = button->stateChanged.connect([this, &listener](Widgets::MultiStateButton*, int state) { listener.OnEnum(this->row, state); });
}

void GUIWidgetMediatorMultiStateButton::Show(int state)
{
    if (button == nullptr)
        return;
    const boost::signals2::shared_connection_block quiet(stateChanged);
    button->setState(state);
}

}  // namespace OV::CFW::DocViewUtils
