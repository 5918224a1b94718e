#pragma once

#include <stdexcept>
#include <vector>

namespace OV::CFW::DocViewUtils {

// A vector of non-owned pointers that refuses null.
template <typename T>
class PointerVector {
public:
    void push_back(T* pointer)
    {
        if (pointer == nullptr)
            throw std::invalid_argument("Null pointer in 'push_back()'");
        items.push_back(pointer);
    }
    int size() const { return static_cast<int>(items.size()); }
    T* operator[](int index) const { return items[static_cast<std::size_t>(index)]; }
    typename std::vector<T*>::const_iterator begin() const { return items.begin(); }
    typename std::vector<T*>::const_iterator end() const { return items.end(); }

private:
    std::vector<T*> items;
};

// The first item whose GetType() equals `type`, or null: a linear search over a few roles.
template <typename T>
T* FindByType(const PointerVector<T>& items, const std::type_info& type)
{
    for (T* item : items) {
        if (item->GetType() == type)
            return item;
    }
    return nullptr;
}

}  // namespace OV::CFW::DocViewUtils
