#pragma once

#include "docview/interfaces/Properties.h"

#include <map>
#include <memory>
#include <mutex>

#include <boost/signals2/signal.hpp>

namespace OV::CFW::DocViewUtils {

// The standard property table. The table's lock guards only the lookup; each property has a
// lock of its own for its value and its listeners.
class BasicProperties : public DocView::Properties {
public:
    void Add(const std::string& key, DocView::Parameter value) override;
    void Remove(const std::string& key) override;
    bool Has(const std::string& key) const override;
    void Set(const std::string& key, DocView::Parameter value) override;
    DocView::Parameter Get(const std::string& key) const override;
    boost::signals2::connection Connect(const std::string& key, const ChangedSlot& slot) override;

private:
    // Recursive, so that a listener that writes the same value back finds it unchanged.
    struct Property {
        DocView::Parameter value;
        std::recursive_mutex mutex;
        boost::signals2::signal<void(DocView::Parameter)> changed;
    };

    // Throws NotAvailableError for a missing key.
    std::shared_ptr<Property> Find(const std::string& key) const;

    std::map<std::string, std::shared_ptr<Property>> table;
    mutable std::mutex mutex;
};

// Two levels: additions stay local, reads and writes of a key the local level lacks go to the
// base.
class LocalProperties : public DocView::Properties {
public:
    explicit LocalProperties(DocView::Properties& base) : base(base) {}

    void Add(const std::string& key, DocView::Parameter value) override { own.Add(key, value); }
    void Remove(const std::string& key) override { own.Remove(key); }
    bool Has(const std::string& key) const override { return own.Has(key) || base.Has(key); }
    void Set(const std::string& key, DocView::Parameter value) override;
    DocView::Parameter Get(const std::string& key) const override;
    boost::signals2::connection Connect(const std::string& key, const ChangedSlot& slot) override;

private:
    DocView::Properties& base;
    BasicProperties own;
};

}  // namespace OV::CFW::DocViewUtils
