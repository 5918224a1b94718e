#pragma once

#include "docview/interfaces/Context.h"
#include "docview/utils/BasicProperties.h"
#include "docview/utils/LockingScheduler.h"

#include <vector>

namespace OV::CFW::DocViewUtils {

// The context of a component tree: properties, the scheduler with its worker thread (started
// with the context), and the role contexts, which a concrete context makes and owns.
class BasicComponentContext : public DocView::ComponentContext {
public:
    const std::type_info& GetType() const override { return typeid(DocView::ComponentContext); }
    const DocView::Properties& GetProperties() const override { return properties; }
    DocView::Properties& GetProperties() override { return properties; }
    std::shared_ptr<DocView::ComponentContext> CreateLocal(DocView::ComponentContext* owner) override;
    DocView::Scheduler* GetScheduler() override { return &scheduler; }
    int GetChildCount() const override { return static_cast<int>(children.size()); }
    const DocView::InterfaceContext* GetChild(const std::type_info& type) const override;
    DocView::InterfaceContext* GetChild(const std::type_info& type) override;
    DocView::InterfaceContext* GetChild(int index) override { return children[static_cast<std::size_t>(index)]; }
    bool HasChild(const std::type_info& type) const override { return GetChild(type) != nullptr; }

protected:
    void AddChild(DocView::InterfaceContext* child) { children.push_back(child); }

private:
    BasicProperties properties;
    LockingScheduler scheduler;
    std::vector<DocView::InterfaceContext*> children;
};

// A component context's stand-in for a nested component: local properties and local role
// contexts, the same scheduler.
class LocalComponentContext : public DocView::ComponentContext {
public:
    LocalComponentContext(DocView::ComponentContext& base, DocView::ComponentContext* owner);

    const std::type_info& GetType() const override { return base.GetType(); }
    const DocView::Properties& GetProperties() const override { return properties; }
    DocView::Properties& GetProperties() override { return properties; }
    std::shared_ptr<DocView::ComponentContext> CreateLocal(DocView::ComponentContext* owner) override;
    DocView::Scheduler* GetScheduler() override { return base.GetScheduler(); }
    int GetChildCount() const override { return static_cast<int>(children.size()); }
    const DocView::InterfaceContext* GetChild(const std::type_info& type) const override;
    DocView::InterfaceContext* GetChild(const std::type_info& type) override;
    DocView::InterfaceContext* GetChild(int index) override { return children[static_cast<std::size_t>(index)].get(); }
    bool HasChild(const std::type_info& type) const override { return GetChild(type) != nullptr; }
    DocView::ComponentContext* GetOwner() const { return owner; }

private:
    DocView::ComponentContext& base;
    DocView::ComponentContext* owner;
    LocalProperties properties;
    std::vector<std::shared_ptr<DocView::InterfaceContext>> children;
};

}  // namespace OV::CFW::DocViewUtils
