#pragma once

#include "docview/interfaces/GUIWidgetMediator.h"

#include <memory>
#include <string>

namespace OV::CFW::Widgets {
class LayoutManager;
}

namespace OV::CFW::DocViewUtils {

// One binding of an editor's profile: a document row and the name of its widget in the layout.
class GUIWidgetMediatorCreator {
public:
    GUIWidgetMediatorCreator(int row, std::string widgetName) : row(row), widgetName(std::move(widgetName)) {}
    virtual ~GUIWidgetMediatorCreator() = default;

    // The mediator of the named widget of `layout`. A name the layout lacks, or a widget of
    // another class, gives a mediator without a widget, which does nothing.
    virtual std::unique_ptr<DocView::GUIWidgetMediator> Create(const Widgets::LayoutManager& layout,
                                                                DocView::GUIWidgetMediator::Listener& listener) const = 0;

    int GetRow() const { return row; }
    const std::string& GetWidgetName() const { return widgetName; }

protected:
    // The widget named by this binding as a T, or null.
    template <typename T>
    T* Find(const Widgets::LayoutManager& layout) const;

private:
    int row;
    std::string widgetName;
};

}  // namespace OV::CFW::DocViewUtils

#include "widgets/layout/LayoutManager.h"

namespace OV::CFW::DocViewUtils {

template <typename T>
T* GUIWidgetMediatorCreator::Find(const Widgets::LayoutManager& layout) const
{
    T* widget = nullptr;
    try {
        layout.getWidget(widgetName, widget);
    } catch (const Widgets::LayoutManager::Error&) {
        return nullptr;
    }
    return widget;
}

}  // namespace OV::CFW::DocViewUtils
