#include "docview/utils/PreferencesManager.h"

#include <iomanip>
#include <sstream>

namespace OV::CFW::DocViewUtils {

using DocView::Parameter;

PreferencesManager& PreferencesManager::Instance()
{
    static PreferencesManager manager;
    return manager;
}

void PreferencesManager::SetRegistry(const Platform::RegistryKey& key)
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    registry = key;
}

bool PreferencesManager::Get(const std::string& key, Parameter& value) const
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    return GetLocked(key, value);
}

bool PreferencesManager::GetLocked(const std::string& key, Parameter& value) const
{
    std::string text;
    if (!registry || !registry->ReadString(key, text))
        return false;
    std::istringstream stream(text);
    switch (value.type) {
    case Parameter::Bool: {
        int number = 0;
        if (!(stream >> number))
            return false;
        value = Parameter::FromBool(number != 0);
        return true;
    }
    case Parameter::Integer:
    case Parameter::Enum: {
        long long number = 0;
        if (!(stream >> number) || number < INT32_MIN || number > UINT32_MAX)
            return false;
        value.payload = static_cast<std::uint32_t>(number);
        return true;
    }
    case Parameter::Float: {
        float number = 0.0f;
        if (!(stream >> number))
            return false;
        value = Parameter::FromFloat(number);
        return true;
    }
    default:
        return false;
    }
}

void PreferencesManager::Set(const std::string& key, Parameter value)
{
    std::shared_ptr<Signal> signal;
    {
        std::lock_guard<std::recursive_mutex> guard(mutex);
        Parameter stored{value.type, 0};
        if (GetLocked(key, stored) && stored == value)
            return;
        std::ostringstream text;
        switch (value.type) {
        case Parameter::Bool:
            text << (value.AsBool() ? "1" : "0");
            break;
        case Parameter::Integer:
            text << value.AsInteger();
            break;
        case Parameter::Enum:
            text << value.AsEnum();
            break;
        case Parameter::Float:
            // Nine significant digits read back as the same float.
            text << std::setprecision(9) << value.AsFloat();
            break;
        default:
            return;
        }
        if (registry)
            registry->WriteString(key, text.str());
        const auto found = signals.find(key);
        if (found != signals.end())
            signal = found->second;
    }
    // Outside the lock: a listener may take locks of its own, and read preferences on any thread.
    if (signal)
        (*signal)(value);
}

boost::signals2::connection PreferencesManager::Connect(const std::string& key, const ChangedSlot& slot)
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    std::shared_ptr<Signal>& signal = signals[key];
    if (!signal)
        signal = std::make_shared<Signal>();
    return signal->connect(slot);
}

}  // namespace OV::CFW::DocViewUtils
