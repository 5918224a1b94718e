#pragma once

#include <map>
#include <memory>
#include <string>

#include <boost/unordered_map.hpp>

namespace AudioEngine::AudioContainers {

// Name to owned object. The traits pick the container: ordered by name for ports, so "first"
// and "next" mean name order; hashed for parameters and data blocks.
template <typename Traits>
class MapPointer {
public:
    using Value = typename Traits::Value;
    using Container = typename Traits::template Container<std::unique_ptr<Value>>;

    MapPointer() { Traits::Prepare(items); }
    MapPointer(const MapPointer&) = delete;
    MapPointer& operator=(const MapPointer&) = delete;

    // Null for a missing name. No allocation.
    Value* Find(const std::string& name) const
    {
        const auto found = items.find(name);
        return found == items.end() ? nullptr : found->second.get();
    }
    // Stores under `name`, replacing (and deleting) what was there.
    Value& Add(const std::string& name, std::unique_ptr<Value> value)
    {
        Value& stored = *value;
        items[name] = std::move(value);
        return stored;
    }
    bool Remove(const std::string& name) { return items.erase(name) > 0; }
    int Size() const { return static_cast<int>(items.size()); }
    typename Container::const_iterator begin() const { return items.begin(); }
    typename Container::const_iterator end() const { return items.end(); }

private:
    Container items;
};

template <typename T>
struct OrderedTraits {
    using Value = T;
    template <typename V>
    using Container = std::map<std::string, V>;
    static void Prepare(Container<std::unique_ptr<T>>&) {}
};

// 50 buckets at the start, at most one entry per bucket on average.
template <typename T>
struct HashedTraits {
    using Value = T;
    template <typename V>
    using Container = boost::unordered_map<std::string, V>;
    static void Prepare(Container<std::unique_ptr<T>>& items)
    {
        items.max_load_factor(1.0f);
        items.rehash(50);
    }
};

}  // namespace AudioEngine::AudioContainers
