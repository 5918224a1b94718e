#include "docview/utils/BasicComponentContext.h"

namespace OV::CFW::DocViewUtils {

namespace {

template <typename Children>
DocView::InterfaceContext* FindChild(const Children& children, const std::type_info& type)
{
    for (const auto& child : children) {
        if (child->GetType() == type)
            return &*child;
    }
    return nullptr;
}

}  // namespace

std::shared_ptr<DocView::ComponentContext> BasicComponentContext::CreateLocal(DocView::ComponentContext* owner)
{
    return std::make_shared<LocalComponentContext>(*this, owner);
}

const DocView::InterfaceContext* BasicComponentContext::GetChild(const std::type_info& type) const
{
    return FindChild(children, type);
}

DocView::InterfaceContext* BasicComponentContext::GetChild(const std::type_info& type)
{
    return FindChild(children, type);
}

LocalComponentContext::LocalComponentContext(DocView::ComponentContext& base, DocView::ComponentContext* owner)
    : base(base), owner(owner), properties(base.GetProperties())
{
    for (int i = 0; i < base.GetChildCount(); ++i)
        children.push_back(base.GetChild(i)->CreateLocal(this));
}

std::shared_ptr<DocView::ComponentContext> LocalComponentContext::CreateLocal(DocView::ComponentContext* owner)
{
    return std::make_shared<LocalComponentContext>(*this, owner);
}

const DocView::InterfaceContext* LocalComponentContext::GetChild(const std::type_info& type) const
{
    return FindChild(children, type);
}

DocView::InterfaceContext* LocalComponentContext::GetChild(const std::type_info& type)
{
    return FindChild(children, type);
}

}  // namespace OV::CFW::DocViewUtils
