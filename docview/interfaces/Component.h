#pragma once

#include "docview/interfaces/Interface.h"
#include "docview/interfaces/Profile.h"
#include "platform/Guid.h"

#include <string>

namespace OV::CFW::DocView {

class ComponentProfile : public Profile {
public:
    const std::type_info& GetType() const override { return typeid(ComponentProfile); }
    virtual const Platform::Guid& GetId() const = 0;
    virtual const std::string& GetName() const = 0;
    virtual const std::string& GetVendor() const = 0;
    virtual int GetInterfaceProfileCount() const = 0;
    // Null when the component declares no profile of that role.
    virtual const Profile* GetInterfaceProfile(const std::type_info& type) const = 0;
    virtual Profile* GetInterfaceProfile(const std::type_info& type) = 0;
    // No bound check: index < GetInterfaceProfileCount().
    virtual const Profile* GetInterfaceProfile(int index) const = 0;
    virtual bool HasInterfaceProfile(const std::type_info& type) const = 0;
};

// A plug-in instance as a set of roles, found by type. Main thread.
class Component : boost::noncopyable {
public:
    virtual ~Component() = default;
    virtual const ComponentProfile* GetProfile() const = 0;
    virtual int GetInterfaceCount() const = 0;
    // Null for a role the component does not have.
    virtual const Interface* GetInterface(const std::type_info& type) const = 0;
    virtual Interface* GetInterface(const std::type_info& type) = 0;
    // No bound check: index < GetInterfaceCount().
    virtual Interface* GetInterface(int index) = 0;
    virtual bool HasInterface(const std::type_info& type) const = 0;
};

// The role of type R, or null.
template <typename R>
R* FindInterface(Component& component)
{
    return dynamic_cast<R*>(component.GetInterface(typeid(R)));
}

}  // namespace OV::CFW::DocView
