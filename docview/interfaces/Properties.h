#pragma once

#include "docview/interfaces/Parameter.h"

#include <functional>
#include <stdexcept>
#include <string>

#include <boost/signals2/connection.hpp>

namespace OV::CFW::DocView {

class AlreadyAddedError : public std::runtime_error {
public:
    explicit AlreadyAddedError(const std::string& what) : std::runtime_error(what) {}
};

class NotAvailableError : public std::runtime_error {
public:
    explicit NotAvailableError(const std::string& what) : std::runtime_error(what) {}
};

// A named, typed, observable table. Any thread except the audio thread; locked inside.
class Properties {
public:
    using ChangedSlot = std::function<void(Parameter)>;

    virtual ~Properties() = default;
    // Throws AlreadyAddedError ("Already added property") for a key that exists.
    virtual void Add(const std::string& key, Parameter value) = 0;
    // The others throw NotAvailableError ("Property not available") for a missing key.
    virtual void Remove(const std::string& key) = 0;
    virtual bool Has(const std::string& key) const = 0;
    // Stores and tells the listeners when the bits change; listeners run on the caller's
    // thread under the property's lock, so they must not call back into the same property.
    virtual void Set(const std::string& key, Parameter value) = 0;
    virtual Parameter Get(const std::string& key) const = 0;
    virtual boost::signals2::connection Connect(const std::string& key, const ChangedSlot& slot) = 0;
};

}  // namespace OV::CFW::DocView
