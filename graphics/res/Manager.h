#pragma once

#include "graphics/res/Provider.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace OV::CFW::Res {

// Resources of one type, shared by name and counted: each acquire is matched by one release.
template <typename T>
class Manager {
public:
    virtual ~Manager() = default;
    // The resource, loaded on first use; null when no search path holds the name. Load errors
    // (Image::LoadError, gzip_error, ResourceError) pass through, and nothing is kept then.
    virtual T* acquire(const std::string& name) = 0;
    // Destroys the resource at its last release. A pointer that is not loaded is ignored.
    virtual void release(T* resource) = 0;
};

// A manager that loads through a factory with `T* create(std::istream&, std::size_t length)`
// and `void destroy(T*)`. Its lock is held for a whole load, and the provider's is taken inside
// it, never the other way round.
template <typename T, typename Factory>
class ManagerGeneric : public Manager<T> {
public:
    ManagerGeneric(std::shared_ptr<Provider> provider, Factory& factory)
        : provider(std::move(provider)), factory(factory)
    {
    }
    ManagerGeneric(const ManagerGeneric&) = delete;
    ManagerGeneric& operator=(const ManagerGeneric&) = delete;

    // Destroys whatever is still loaded, whatever the counts say.
    ~ManagerGeneric() override
    {
        for (auto& entry : loaded)
            factory.destroy(entry.second.first);
    }

    T* acquire(const std::string& name) override
    {
        std::lock_guard<std::mutex> guard(lock);
        const auto found = loaded.find(name);
        if (found != loaded.end()) {
            ++found->second.second;
            return found->second.first;
        }
        T* resource = nullptr;
        openResource(*provider, name, [&](std::istream& stream, std::size_t length) { resource = factory.create(stream, length); });
        if (resource == nullptr)
            return nullptr;
        try {
            loaded.emplace(name, std::make_pair(resource, 1));
        } catch (...) {
            factory.destroy(resource);
            throw;
        }
        return resource;
    }

    void release(T* resource) override
    {
        std::lock_guard<std::mutex> guard(lock);
        for (auto entry = loaded.begin(); entry != loaded.end(); ++entry) {
            if (entry->second.first != resource)
                continue;
            if (--entry->second.second == 0) {
                factory.destroy(resource);
                loaded.erase(entry);
            }
            return;
        }
    }

private:
    std::mutex lock;
    std::shared_ptr<Provider> provider;
    Factory& factory;
    std::map<std::string, std::pair<T*, int>> loaded; // resource and its count
};

}  // namespace OV::CFW::Res
