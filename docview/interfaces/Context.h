#pragma once

#include <memory>
#include <typeinfo>

#include <boost/noncopyable.hpp>

namespace OV::CFW::DocView {

class Properties;
class Scheduler;

// Run-time services shared by the objects of one component tree.
class Context : boost::noncopyable {
public:
    virtual ~Context() = default;
    virtual const std::type_info& GetType() const = 0;
    virtual const Properties& GetProperties() const = 0;
    virtual Properties& GetProperties() = 0;
};

class ComponentContext;

// The context of one role (document, editor, ...) under a component context.
class InterfaceContext : public Context {
public:
    // A local stand-in for a nested component: its own properties over this one's.
    virtual std::shared_ptr<InterfaceContext> CreateLocal(ComponentContext* owner) = 0;
    virtual ComponentContext* GetParent() const = 0;
};

// The context of a component: a scheduler and one child context per role.
class ComponentContext : public Context {
public:
    virtual std::shared_ptr<ComponentContext> CreateLocal(ComponentContext* owner) = 0;
    virtual Scheduler* GetScheduler() = 0;
    virtual int GetChildCount() const = 0;
    // Null for a role without a context.
    virtual const InterfaceContext* GetChild(const std::type_info& type) const = 0;
    virtual InterfaceContext* GetChild(const std::type_info& type) = 0;
    // No bound check.
    virtual InterfaceContext* GetChild(int index) = 0;
    virtual bool HasChild(const std::type_info& type) const = 0;

    // The child context of type C, or null.
    template <typename C>
    C* Find()
    {
        return dynamic_cast<C*>(GetChild(typeid(C)));
    }
};

}  // namespace OV::CFW::DocView
