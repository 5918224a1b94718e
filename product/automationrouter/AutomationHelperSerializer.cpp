#include "product/automationrouter/AutomationHelperSerializer.h"

#include "product/automationrouter/Publication.h"

#include <tinyxml.h>

#include <string>

namespace OV::Comp::AutomationRouter {

namespace {

std::string SlotAttribute(int slot)
{
    return "Slot" + std::to_string(slot);
}

}  // namespace

AutomationHelperSerializer::AutomationHelperSerializer(MapStore& store, const char* elementName)
    : store(store), elementName(elementName)
{
}

void AutomationHelperSerializer::Save(TiXmlElement& element)
{
    const std::shared_ptr<const Map> map = store.GetNewest();
    if (map == nullptr)
        return;
    TiXmlElement automation(elementName);
    automation.SetAttribute("Slots", map->GetSize());
    for (int slot = 0; slot < map->GetSize(); ++slot) {
        const Target* target = map->GetTarget(slot);
        if (target == nullptr)
            continue;
        if (const std::string* path = FindTargetPath(store.GetRoot(), target))
            automation.SetAttribute(SlotAttribute(slot), *path);
    }
    element.InsertEndChild(automation);
}

void AutomationHelperSerializer::Load(const TiXmlElement& element)
{
    const TiXmlElement* automation = element.FirstChildElement(elementName);
    if (automation == nullptr)
        return;
    int slots = 0;
    automation->QueryIntAttribute("Slots", &slots);
    // More slots than any host of this product has is no map this product wrote: it is ignored
    // as unreadable state, rather than allocated.
    if (slots <= 0 || slots > Publication::fallbackSize)
        return;
    auto map = std::make_shared<Map>(slots);
    for (int slot = 0; slot < slots; ++slot) {
        const char* path = automation->Attribute(SlotAttribute(slot).c_str());
        if (path != nullptr && *path != '\0')
            map->Assign(slot, FindTarget(store.GetRoot(), path));
    }
    store.Install(std::move(map));
}

}  // namespace OV::Comp::AutomationRouter
