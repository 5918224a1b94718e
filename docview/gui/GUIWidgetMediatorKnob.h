#pragma once

#include "docview/gui/GUIWidgetMediatorCreator.h"

#include <memory>

#include <boost/signals2/connection.hpp>

namespace OV::CFW::DataFilter {
class FloatConverter;
}

namespace OV::CFW::Widgets {
class Knob;
}

namespace OV::CFW::DocViewUtils {

// A knob on a row of any type. Its position runs 0 to 1 for bool and float rows (a float
// through the row's converter, and the optional display converter before it) and over the
// indices for an enum. A press makes it the editor's active widget and touches the row.
class GUIWidgetMediatorKnob : public DocView::GUIWidgetMediator {
public:
    class Creator : public GUIWidgetMediatorCreator {
    public:
        // `displayConverter`, when given, maps the row's value to the knob's scale first.
        Creator(int row, std::string widgetName, std::shared_ptr<const DataFilter::FloatConverter> displayConverter = nullptr)
            : GUIWidgetMediatorCreator(row, std::move(widgetName)), displayConverter(std::move(displayConverter))
        {
        }
        std::unique_ptr<DocView::GUIWidgetMediator> Create(const Widgets::LayoutManager& layout,
                                                            DocView::GUIWidgetMediator::Listener& listener) const override;

    private:
        std::shared_ptr<const DataFilter::FloatConverter> displayConverter;
    };

    GUIWidgetMediatorKnob(int row, Widgets::Knob* knob, DocView::GUIWidgetMediator::Listener& listener,
                          std::shared_ptr<const DataFilter::FloatConverter> displayConverter);

    int GetParameter() const override { return row; }
    void SetBool(bool value) override;
    void SetInteger(int value) override;
    void SetEnum(int value) override;
    void SetFloat(float value) override;

private:
    void OnKnob(float position);
    // The knob at `position`, without telling anyone.
    void Show(float position);
    float ToPosition(float value) const;

    int row;
    Widgets::Knob* knob;
    DocView::GUIWidgetMediator::Listener& listener;
    std::shared_ptr<const DataFilter::FloatConverter> displayConverter;
    std::uint32_t type;
    boost::signals2::scoped_connection changed;
    boost::signals2::scoped_connection pressed;
};

}  // namespace OV::CFW::DocViewUtils
