#pragma once

#include "docview/gui/GUIWidgetMediatorCreator.h"

#include <boost/signals2/connection.hpp>

namespace OV::CFW::Widgets {
class MultiStateButton;
}

namespace OV::CFW::DocViewUtils {

// A multi-state button on an enum or integer row: the state is the index.
class GUIWidgetMediatorMultiStateButton : public DocView::GUIWidgetMediator {
public:
    class Creator : public GUIWidgetMediatorCreator {
    public:
        using GUIWidgetMediatorCreator::GUIWidgetMediatorCreator;
        std::unique_ptr<DocView::GUIWidgetMediator> Create(const Widgets::LayoutManager& layout,
                                                            DocView::GUIWidgetMediator::Listener& listener) const override;
    };

    GUIWidgetMediatorMultiStateButton(int row, Widgets::MultiStateButton* button, DocView::GUIWidgetMediator::Listener& listener);

    int GetParameter() const override { return row; }
    void SetBool(bool value) override { Show(value ? 1 : 0); }
    void SetInteger(int value) override { Show(value); }
    void SetEnum(int value) override { Show(value); }
    void SetFloat(float value) override { Show(static_cast<int>(value)); }

private:
    void Show(int state);

    int row;
    Widgets::MultiStateButton* button;
    boost::signals2::scoped_connection stateChanged;
};

}  // namespace OV::CFW::DocViewUtils
