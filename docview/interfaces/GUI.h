#pragma once

#include "docview/interfaces/Interface.h"
#include "docview/interfaces/Profile.h"
#include "graphics/Geometry.h"

#include <string>

namespace OV::CFW::GUI {
class Widget;
}

namespace OV::CFW::DocView {

// The editor's declaration.
class GUIProfile : public Profile {
public:
    const std::type_info& GetType() const override { return typeid(GUIProfile); }
    // The resource name of the editor's layout.
    virtual const std::string& GetName() const = 0;
};

// The editor role. Main thread.
class GUI : public Interface {
public:
    const std::type_info& GetType() const override { return typeid(GUI); }
    virtual const GUIProfile* GetProfile() const = 0;
    // Width and height of the editor's layout.
    virtual BasicPoint<int> GetDefaultSize() = 0;
    // Builds the editor into `root`, the top of a window's widget tree, which outlives it
    // until Close.
    virtual void Open(::OV::CFW::GUI::Widget* root) = 0;
    virtual void Close() = 0;
    // Brings the widgets up to date with the document.
    virtual void Update() = 0;
};

}  // namespace OV::CFW::DocView
