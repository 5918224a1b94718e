#include "docview/gui/GUIWidgetMediatorCheckBox.h"

#include "widgets/controls/CheckBox.h"

#include <boost/signals2/shared_connection_block.hpp>

namespace OV::CFW::DocViewUtils {

std::unique_ptr<DocView::GUIWidgetMediator> GUIWidgetMediatorCheckBox::Creator::Create(const Widgets::LayoutManager& layout,
                                                                                       DocView::GUIWidgetMediator::Listener& listener) const
{
    return std::make_unique<GUIWidgetMediatorCheckBox>(GetRow(), Find<Widgets::CheckBox>(layout), listener, inverted);
}

GUIWidgetMediatorCheckBox::GUIWidgetMediatorCheckBox(int row, Widgets::CheckBox* box, DocView::GUIWidgetMediator::Listener& listener,
                                                     bool inverted)
    : row(row), box(box), inverted(inverted)
{
    if (box != nullptr)
        toggled = box->toggled.connect([this, &listener](Widgets::CheckBox*, bool checked) { listener.OnBool(this->row, checked != this->inverted); });
}

void GUIWidgetMediatorCheckBox::Show(bool value)
{
    if (box == nullptr)
        return;
    const boost::signals2::shared_connection_block quiet(toggled);
    box->setChecked(value != inverted);
}

}  // namespace OV::CFW::DocViewUtils
