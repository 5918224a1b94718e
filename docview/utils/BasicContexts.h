#pragma once

#include "docview/interfaces/DocumentContext.h"
#include "docview/interfaces/MAFContext.h"
#include "docview/interfaces/RoleContexts.h"
#include "docview/utils/BasicProperties.h"
#include "docview/utils/DocumentCommands.h"
#include "docview/utils/ExchangeRing.h"

namespace OV::CFW::DocViewUtils {

// What every role context holds: its properties and the component context above it.
template <typename Role, typename PropertiesType>
class RoleContextBase : public Role {
public:
    template <typename... Arguments>
    RoleContextBase(DocView::ComponentContext* parent, Arguments&... arguments)
        : parent(parent), properties(arguments...)
    {
    }
    const DocView::Properties& GetProperties() const override { return properties; }
    DocView::Properties& GetProperties() override { return properties; }
    DocView::ComponentContext* GetParent() const override { return parent; }

private:
    DocView::ComponentContext* parent;
    PropertiesType properties;
};

// The stand-in of a role context inside a nested component: local properties over the
// shared context's, everything else from the shared context. Self is the concrete class.
template <typename Role, typename Self>
class LocalRoleContext : public RoleContextBase<Role, LocalProperties> {
public:
    LocalRoleContext(Role& base, DocView::ComponentContext* owner)
        : RoleContextBase<Role, LocalProperties>(owner, base.GetProperties()), base(base)
    {
    }
    std::shared_ptr<DocView::InterfaceContext> CreateLocal(DocView::ComponentContext* owner) override
    {
        return std::make_shared<Self>(base, owner);
    }

protected:
    Role& base;
};

template <typename Role>
class LocalSimpleContext final : public LocalRoleContext<Role, LocalSimpleContext<Role>> {
public:
    using LocalRoleContext<Role, LocalSimpleContext<Role>>::LocalRoleContext;
};

class LocalDocumentContext final : public LocalRoleContext<DocView::DocumentContext, LocalDocumentContext> {
public:
    using LocalRoleContext::LocalRoleContext;
    DocView::DocumentCommandFactory& GetCommandFactory() override { return base.GetCommandFactory(); }
};

class LocalMAFContext final : public LocalRoleContext<DocView::MAFContext, LocalMAFContext> {
public:
    using LocalRoleContext::LocalRoleContext;
    ExchangeRing& GetExchangeRing() override { return base.GetExchangeRing(); }
};

class LocalGUIContext final : public LocalRoleContext<DocView::GUIContext, LocalGUIContext> {
public:
    using LocalRoleContext::LocalRoleContext;
    Res::ResourceSet* GetResources() override { return base.GetResources(); }
};

// A shared role context; Local is what it makes for a nested component.
template <typename Role, typename Local = LocalSimpleContext<Role>>
class BasicRoleContext : public RoleContextBase<Role, BasicProperties> {
public:
    explicit BasicRoleContext(DocView::ComponentContext* parent) : RoleContextBase<Role, BasicProperties>(parent) {}
    std::shared_ptr<DocView::InterfaceContext> CreateLocal(DocView::ComponentContext* owner) override
    {
        return std::make_shared<Local>(*this, owner);
    }
};

using BasicAutomationContext = BasicRoleContext<DocView::AutomationContext>;
using BasicProgramsContext = BasicRoleContext<DocView::ProgramsContext>;
using BasicAudioContext = BasicRoleContext<DocView::AudioContext>;

// The documents' context: the pools of their queued changes.
class BasicDocumentContext : public BasicRoleContext<DocView::DocumentContext, LocalDocumentContext> {
public:
    using BasicRoleContext::BasicRoleContext;
    DocView::DocumentCommandFactory& GetCommandFactory() override { return factory; }

private:
    LockingDocumentCommandFactory factory;
};

// The MAF layer's context: the exchange ring all its mediators share.
class BasicMAFContext : public BasicRoleContext<DocView::MAFContext, LocalMAFContext> {
public:
    using BasicRoleContext::BasicRoleContext;
    ExchangeRing& GetExchangeRing() override { return ring; }

private:
    ExchangeRing ring;
};

// The editor's context: the plug-in's resources, not owned.
class BasicGUIContext : public BasicRoleContext<DocView::GUIContext, LocalGUIContext> {
public:
    BasicGUIContext(DocView::ComponentContext* parent, Res::ResourceSet* resources)
        : BasicRoleContext(parent), resources(resources)
    {
    }
    Res::ResourceSet* GetResources() override { return resources; }

private:
    Res::ResourceSet* resources;
};

}  // namespace OV::CFW::DocViewUtils
