#pragma once

#include "docview/interfaces/Parameter.h"
#include "platform/RegistryKey.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include <boost/signals2/signal.hpp>

namespace OV::CFW::DocViewUtils {

// The user's preferences, kept as text values of the product's registry key, each under its
// parameter's name. Process-wide. Main or scheduler thread: reads and writes files.
class PreferencesManager {
public:
    using ChangedSlot = std::function<void(DocView::Parameter)>;

    static PreferencesManager& Instance();

    // Where preferences live; set once at start-up. Before it, every Get fails.
    void SetRegistry(const Platform::RegistryKey& key);
    // Reads `key` as the type of `value`; false, with `value` unchanged, when there is none.
    bool Get(const std::string& key, DocView::Parameter& value) const;
    // Writes unless the stored value is the same, then tells the key's listeners.
    void Set(const std::string& key, DocView::Parameter value);
    boost::signals2::connection Connect(const std::string& key, const ChangedSlot& slot);

private:
    using Signal = boost::signals2::signal<void(DocView::Parameter)>;

    PreferencesManager() = default;
    bool GetLocked(const std::string& key, DocView::Parameter& value) const;

    mutable std::recursive_mutex mutex;
    std::map<std::string, std::shared_ptr<Signal>> signals;
    std::optional<Platform::RegistryKey> registry;
};

}  // namespace OV::CFW::DocViewUtils
