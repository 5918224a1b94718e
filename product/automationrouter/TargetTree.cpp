#include "product/automationrouter/TargetTree.h"

#include <stdexcept>

namespace OV::Comp::AutomationRouter {

TargetTreeNode::TargetTreeNode(std::string name) : name(std::move(name)) {}

void TargetTreeNode::AddChild(std::shared_ptr<TargetTree> child)
{
    if (child == nullptr)
        throw std::invalid_argument("Null pointer in 'push_back()'");
    children.push_back(std::move(child));
}

TargetTreeLeaf::TargetTreeLeaf(std::string name, std::shared_ptr<Target> target) : name(std::move(name)), target(std::move(target))
{
}

std::shared_ptr<TargetTree> TargetTreeLeaf::GetChild(int) const
{
    throw std::logic_error("Automation target '" + name + "' has no children");
}

std::string MakeTargetPath(const Platform::Guid& component, const std::string& shortName, const std::string& path)
{
    std::string text = Platform::FormatGuid(component) + ":" + shortName;
    if (!path.empty())
        text += ":" + path;
    return text;
}

std::shared_ptr<Target> FindTarget(const TargetTree& tree, const std::string& name)
{
    if (std::shared_ptr<Target> target = tree.GetTarget())
        return tree.GetName() == name ? target : nullptr;
    for (int i = 0; i < tree.GetChildCount(); ++i) {
        if (std::shared_ptr<Target> found = FindTarget(*tree.GetChild(i), name))
            return found;
    }
    return nullptr;
}

const std::string* FindTargetPath(const TargetTree& tree, const Target* target)
{
    if (const std::shared_ptr<Target> own = tree.GetTarget())
        return own.get() == target ? &tree.GetName() : nullptr;
    for (int i = 0; i < tree.GetChildCount(); ++i) {
        if (const std::string* found = FindTargetPath(*tree.GetChild(i), target))
            return found;
    }
    return nullptr;
}

}  // namespace OV::Comp::AutomationRouter
