#pragma once

#include "docview/interfaces/GUI.h"

#include <memory>
#include <optional>
#include <string>

namespace OV::CFW::DocView {
class Document;
class GUIContext;
}  // namespace OV::CFW::DocView

namespace OV::CFW::Widgets {
class LayoutManager;
}

namespace OV::CFW::DocViewUtils {

class BasicGUIProfile;
class GUIMediator;

// The standard editor: its profile's layout built into the window's root, and the profile's
// bindings kept in step with the document by Update on every tick. Concrete editors add what
// a table cannot through the three hooks. Main thread only.
class BasicGUI : public DocView::GUI {
public:
    BasicGUI(const BasicGUIProfile& profile, DocView::GUIContext& context, DocView::Document& document);
    ~BasicGUI() override;

    const DocView::GUIProfile* GetProfile() const override;
    // The layout's "SizeW" and "SizeH", read once; 100 by 100 when the layout cannot be read.
    BasicPoint<int> GetDefaultSize() override;
    void Open(::OV::CFW::GUI::Widget* root) override;
    void Close() override;
    bool IsOpen() const { return layout != nullptr; }
    void Update() override;

protected:
    virtual std::string GetLayoutName() const;
    virtual void OnOpened() {}
    virtual void OnClosing() {}
    virtual void OnUpdate() {}

    Widgets::LayoutManager* GetLayout() const { return layout.get(); }
    DocView::Document& GetDocument() const { return document; }

private:
    const BasicGUIProfile& profile;
    DocView::GUIContext& context;
    DocView::Document& document;
    std::optional<BasicPoint<int>> defaultSize;
    std::unique_ptr<Widgets::LayoutManager> layout;
    std::unique_ptr<GUIMediator> mediator;
};

}  // namespace OV::CFW::DocViewUtils
