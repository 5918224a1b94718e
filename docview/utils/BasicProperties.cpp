#include "docview/utils/BasicProperties.h"

namespace OV::CFW::DocViewUtils {

using DocView::NotAvailableError;
using DocView::Parameter;

void BasicProperties::Add(const std::string& key, Parameter value)
{
    std::lock_guard<std::mutex> guard(mutex);
    if (table.count(key) != 0)
        throw DocView::AlreadyAddedError("Already added property");
    auto property = std::make_shared<Property>();
    property->value = value;
    table.emplace(key, std::move(property));
}

void BasicProperties::Remove(const std::string& key)
{
    std::lock_guard<std::mutex> guard(mutex);
    if (table.erase(key) == 0)
        throw NotAvailableError("Property not available");
}

bool BasicProperties::Has(const std::string& key) const
{
    std::lock_guard<std::mutex> guard(mutex);
    return table.count(key) != 0;
}

std::shared_ptr<BasicProperties::Property> BasicProperties::Find(const std::string& key) const
{
    std::lock_guard<std::mutex> guard(mutex);
    const auto found = table.find(key);
    if (found == table.end())
        throw NotAvailableError("Property not available");
    return found->second;
}

void BasicProperties::Set(const std::string& key, Parameter value)
{
    const std::shared_ptr<Property> property = Find(key);
    std::lock_guard<std::recursive_mutex> guard(property->mutex);
    if (property->value == value)
        return;
    property->value = value;
    property->changed(value);
}

Parameter BasicProperties::Get(const std::string& key) const
{
    const std::shared_ptr<Property> property = Find(key);
    std::lock_guard<std::recursive_mutex> guard(property->mutex);
    return property->value;
}

boost::signals2::connection BasicProperties::Connect(const std::string& key, const ChangedSlot& slot)
{
    const std::shared_ptr<Property> property = Find(key);
    std::lock_guard<std::recursive_mutex> guard(property->mutex);
    return property->changed.connect(slot);
}

void LocalProperties::Set(const std::string& key, Parameter value)
{
    try {
        own.Set(key, value);
    } catch (const NotAvailableError&) {
        base.Set(key, value);
    }
}

Parameter LocalProperties::Get(const std::string& key) const
{
    try {
        return own.Get(key);
    } catch (const NotAvailableError&) {
        return base.Get(key);
    }
}

boost::signals2::connection LocalProperties::Connect(const std::string& key, const ChangedSlot& slot)
{
    try {
        return own.Connect(key, slot);
    } catch (const NotAvailableError&) {
        return base.Connect(key, slot);
    }
}

}  // namespace OV::CFW::DocViewUtils
