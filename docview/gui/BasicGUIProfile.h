#pragma once

#include "docview/gui/GUIWidgetMediatorCreator.h"
#include "docview/interfaces/GUI.h"

#include <memory>
#include <string>
#include <vector>

namespace OV::CFW::DocViewUtils {

class GUIMediator;

// An editor's declaration: its layout's resource name and the bindings of its widgets to
// document rows, in order. Built once, read-only after.
class BasicGUIProfile : public DocView::GUIProfile {
public:
    explicit BasicGUIProfile(std::string layoutName) : layoutName(std::move(layoutName)) {}

    const std::string& GetName() const override { return layoutName; }
    void AddCreator(std::unique_ptr<GUIWidgetMediatorCreator> creator) { creators.push_back(std::move(creator)); }
    // One mediator for each binding, over the widgets of `layout`, added to `mediator`.
    void CreateMediators(const Widgets::LayoutManager& layout, GUIMediator& mediator) const;

private:
    std::string layoutName;
    std::vector<std::unique_ptr<GUIWidgetMediatorCreator>> creators;
};

}  // namespace OV::CFW::DocViewUtils
