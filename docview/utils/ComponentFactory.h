#pragma once

#include "docview/interfaces/Component.h"
#include "docview/interfaces/Context.h"

#include <memory>
#include <vector>

namespace OV::CFW::DocViewUtils {

// Makes one kind of component.
class ComponentCreator {
public:
    virtual ~ComponentCreator() = default;
    // The component's process-wide profile.
    virtual const DocView::ComponentProfile& GetProfile() const = 0;
    // A new component in `context`. Main or scheduler thread: allocates.
    virtual std::unique_ptr<DocView::Component> Create(DocView::ComponentContext* context) const = 0;
};

template <typename T>
class GenericCreator : public ComponentCreator {
public:
    const DocView::ComponentProfile& GetProfile() const override { return T::Profile(); }
    std::unique_ptr<DocView::Component> Create(DocView::ComponentContext* context) const override
    {
        return std::make_unique<T>(context);
    }
};

// The kinds of component a host of modules can make, by index.
class ComponentFactory {
public:
    void Add(std::unique_ptr<ComponentCreator> creator) { creators.push_back(std::move(creator)); }
    int GetCount() const { return static_cast<int>(creators.size()); }
    // No bound check.
    const DocView::ComponentProfile& GetProfile(int index) const { return creators[static_cast<std::size_t>(index)]->GetProfile(); }
    // Null for an index out of range.
    std::unique_ptr<DocView::Component> Create(int index, DocView::ComponentContext* context) const
    {
        if (index < 0 || index >= GetCount())
            return nullptr;
        return creators[static_cast<std::size_t>(index)]->Create(context);
    }

private:
    std::vector<std::unique_ptr<ComponentCreator>> creators;
};

}  // namespace OV::CFW::DocViewUtils
