#pragma once

#include <typeinfo>

#include <boost/noncopyable.hpp>

namespace OV::CFW::DocView {

// A live role of a component. The role is named by its type_info; lookups compare it.
class Interface : boost::noncopyable {
public:
    virtual const std::type_info& GetType() const = 0;
    virtual ~Interface() = default;
};

}  // namespace OV::CFW::DocView
