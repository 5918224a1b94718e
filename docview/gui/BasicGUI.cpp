#include "docview/gui/BasicGUI.h"

#include "docview/gui/BasicGUIProfile.h"
#include "docview/interfaces/Document.h"
#include "docview/interfaces/RoleContexts.h"
#include "docview/utils/GUIMediator.h"
#include "graphics/res/ResourceSet.h"
#include "platform/DebugOutput.h"
#include "widgets/layout/LayoutManager.h"

#include <tinyxml.h>

namespace OV::CFW::DocViewUtils {

namespace {

// The layout document `name` while `use` runs with it; false when there is none.
template <typename Use>
bool WithDocument(DocView::GUIContext& context, const std::string& name, Use use)
{
    Res::ResourceSet* resources = context.GetResources();
    TiXmlDocument* document = resources != nullptr ? resources->getDocuments().acquire(name) : nullptr;
    if (document == nullptr)
        return false;
    struct Release {
        Res::ResourceSet& resources;
        TiXmlDocument* document;
        ~Release() { resources.getDocuments().release(document); }
    } release{*resources, document};
    use(*document, *resources);
    return true;
}

}  // namespace

BasicGUI::BasicGUI(const BasicGUIProfile& profile, DocView::GUIContext& context, DocView::Document& document)
    : profile(profile), context(context), document(document)
{
}

BasicGUI::~BasicGUI()
{
    Close();
}

const DocView::GUIProfile* BasicGUI::GetProfile() const
{
    return &profile;
}

std::string BasicGUI::GetLayoutName() const
{
    return profile.GetName();
}

BasicPoint<int> BasicGUI::GetDefaultSize()
{
    if (!defaultSize) {
        BasicPoint<int> size{100, 100};
        WithDocument(context, GetLayoutName(), [&size](TiXmlDocument& layoutDocument, Res::ResourceSet&) {
            if (const TiXmlElement* root = layoutDocument.RootElement()) {
                root->QueryIntAttribute("SizeW", &size.x);
                root->QueryIntAttribute("SizeH", &size.y);
            }
        });
        defaultSize = size;
    }
    return *defaultSize;
}

void BasicGUI::Open(::OV::CFW::GUI::Widget* root)
{
    if (root == nullptr || layout != nullptr)
        return;
    const std::string name = GetLayoutName();
    try {
        if (!WithDocument(context, name, [&](TiXmlDocument& layoutDocument, Res::ResourceSet& resources) {
                layout = std::make_unique<Widgets::LayoutManager>(layoutDocument, resources, *root);
            }))
            Platform::DebugOutput("Varnel4: the editor's layout " + name + " was not found");
    } catch (const Widgets::LayoutManager::Error& error) {
        // What the layout built before the error stays with the root; the editor stays empty.
        Platform::DebugOutput("Varnel4: the editor's layout " + name + ": " + error.what());
        return;
    }
    if (layout == nullptr)
        return;
    mediator = std::make_unique<GUIMediator>(document);
    profile.CreateMediators(*layout, *mediator);
    OnOpened();
    Update();
}

void BasicGUI::Close()
{
    if (layout == nullptr)
        return;
    OnClosing();
    // The mediators go before the widgets they are connected to.
    mediator.reset();
    layout.reset();
}

void BasicGUI::Update()
{
    if (mediator != nullptr)
        mediator->Update();
    OnUpdate();
}

}  // namespace OV::CFW::DocViewUtils
