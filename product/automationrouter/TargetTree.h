#pragma once

#include "platform/Guid.h"
#include "product/automationrouter/Target.h"

#include <memory>
#include <string>
#include <vector>

#include <boost/noncopyable.hpp>

namespace OV::Comp::AutomationRouter {

// The automatable parameters of a component tree, for finding a target by name. Built on the
// main thread when the instance is made; read-only after: any thread.
class TargetTree : boost::noncopyable {
public:
    virtual ~TargetTree() = default;
    virtual const std::string& GetName() const = 0;
    // Null in a node.
    virtual std::shared_ptr<Target> GetTarget() const = 0;
    virtual int GetChildCount() const = 0;
    // No bound check.
    virtual std::shared_ptr<TargetTree> GetChild(int index) const = 0;
};

// A named group of subtrees, in the order they were added.
class TargetTreeNode : public TargetTree {
public:
    explicit TargetTreeNode(std::string name);

    const std::string& GetName() const override { return name; }
    std::shared_ptr<Target> GetTarget() const override { return nullptr; }
    int GetChildCount() const override { return static_cast<int>(children.size()); }
    std::shared_ptr<TargetTree> GetChild(int index) const override { return children[static_cast<std::size_t>(index)]; }
    // Set-up only.
    void AddChild(std::shared_ptr<TargetTree> child);

private:
    std::string name;
    std::vector<std::shared_ptr<TargetTree>> children;
};

// A target under its path, which is the name a saved map keeps.
class TargetTreeLeaf : public TargetTree {
public:
    TargetTreeLeaf(std::string name, std::shared_ptr<Target> target);

    const std::string& GetName() const override { return name; }
    std::shared_ptr<Target> GetTarget() const override { return target; }
    int GetChildCount() const override { return 0; }
    // A leaf has no children: throws std::logic_error.
    std::shared_ptr<TargetTree> GetChild(int index) const override;

private:
    std::string name;
    std::shared_ptr<Target> target;
};

// A target's path: the owning component's GUID in lower-case text, ":", the slot's short name,
// and ":" and `path` when `path` is not empty ("f8fd5639-...-e1e0e7272048:Band 1 Gain").
std::string MakeTargetPath(const Platform::Guid& component, const std::string& shortName, const std::string& path);

// Depth-first in child order: the target of the first leaf named exactly `name`, or null.
std::shared_ptr<Target> FindTarget(const TargetTree& tree, const std::string& name);

// Depth-first in child order: the name of the first leaf holding `target`, or null.
const std::string* FindTargetPath(const TargetTree& tree, const Target* target);

}  // namespace OV::Comp::AutomationRouter
