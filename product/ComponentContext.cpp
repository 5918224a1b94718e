#include "product/ComponentContext.h"

namespace OV::Products::VN4 {

ComponentContext::ComponentContext(CFW::Res::ResourceSet* resources)
    : document(this), gui(this, resources), automation(this), programs(this), maf(this), audio(this)
{
    AddChild(&document);
    AddChild(&gui);
    AddChild(&automation);
    AddChild(&programs);
    AddChild(&maf);
    AddChild(&audio);
}

// The worker may still run commands that reach the role contexts: it stops before they go.
ComponentContext::~ComponentContext()
{
    GetScheduler()->Stop();
}

}  // namespace OV::Products::VN4
