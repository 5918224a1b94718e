#pragma once

#include <typeinfo>

#include <boost/noncopyable.hpp>

namespace OV::CFW::DocView {

// The static declaration of a component or of one of its roles: built once, read-only after,
// and read from any thread without a lock.
class Profile : boost::noncopyable {
public:
    virtual const std::type_info& GetType() const = 0;
    virtual ~Profile() = default;
};

}  // namespace OV::CFW::DocView
