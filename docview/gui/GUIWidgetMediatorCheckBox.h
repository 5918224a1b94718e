#pragma once

#include "docview/gui/GUIWidgetMediatorCreator.h"

#include <boost/signals2/connection.hpp>

namespace OV::CFW::Widgets {
class CheckBox;
}

namespace OV::CFW::DocViewUtils {

// A check box on a bool or integer row; `inverted` shows a true row unchecked.
class GUIWidgetMediatorCheckBox : public DocView::GUIWidgetMediator {
public:
    class Creator : public GUIWidgetMediatorCreator {
    public:
        Creator(int row, std::string widgetName, bool inverted = false)
            : GUIWidgetMediatorCreator(row, std::move(widgetName)), inverted(inverted)
        {
        }
        std::unique_ptr<DocView::GUIWidgetMediator> Create(const Widgets::LayoutManager& layout,
                                                            DocView::GUIWidgetMediator::Listener& listener) const override;

    private:
        bool inverted;
    };

    GUIWidgetMediatorCheckBox(int row, Widgets::CheckBox* box, DocView::GUIWidgetMediator::Listener& listener, bool inverted);

    int GetParameter() const override { return row; }
    void SetBool(bool value) override { Show(value); }
    void SetInteger(int value) override { Show(value != 0); }
    void SetEnum(int value) override { Show(value != 0); }
    void SetFloat(float value) override { Show(value != 0.0f); }

private:
    void Show(bool value);

    int row;
    Widgets::CheckBox* box;
    bool inverted;
    boost::signals2::scoped_connection toggled;
};

}  // namespace OV::CFW::DocViewUtils
