#pragma once

#include "docview/interfaces/Context.h"

namespace OV::CFW::Res {
class ResourceSet;
}

namespace OV::CFW::DocView {

// The contexts of the roles that need no service beyond properties, and the editor's, which
// gives the resources to draw with.
class GUIContext : public InterfaceContext {
public:
    const std::type_info& GetType() const override { return typeid(GUIContext); }
    virtual Res::ResourceSet* GetResources() = 0;
};

class AutomationContext : public InterfaceContext {
public:
    const std::type_info& GetType() const override { return typeid(AutomationContext); }
};

class ProgramsContext : public InterfaceContext {
public:
    const std::type_info& GetType() const override { return typeid(ProgramsContext); }
};

class AudioContext : public InterfaceContext {
public:
    const std::type_info& GetType() const override { return typeid(AudioContext); }
};

}  // namespace OV::CFW::DocView
