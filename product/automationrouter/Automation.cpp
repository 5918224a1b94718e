#include "product/automationrouter/Automation.h"

#include "docview/interfaces/Scheduler.h"

#include <algorithm>
#include <map>

namespace OV::Comp::AutomationRouter {

using CFW::DocView::Scheduler;

AssignMapToAutomation::AssignMapToAutomation(Automation& automation, std::shared_ptr<const Map> map)
    : automation(automation), map(std::move(map))
{
}

void AssignMapToAutomation::Execute()
{
    automation.Assign(map);
    automation.Retire(this);  // deletes this: the last act
}

Automation::Automation(const CFW::DocView::AutomationProfile* profile, CFW::DocView::AutomationContext* context)
    : profile(profile), context(context), published(std::make_unique<Publication>())
{
}

Automation::~Automation()
{
    published->connections.clear();
}

void Automation::InstallNow(std::shared_ptr<const Map> next)
{
    Assign(next);
}

void Automation::PostInstall(std::shared_ptr<const Map> next)
{
    Scheduler* scheduler = context != nullptr && context->GetParent() != nullptr ? context->GetParent()->GetScheduler() : nullptr;
    if (scheduler == nullptr) {
        Assign(next);
        return;
    }
    auto command = std::make_unique<AssignMapToAutomation>(*this, std::move(next));
    AssignMapToAutomation* posted = command.get();
    {
        const std::lock_guard<std::mutex> lock(pendingMutex);
        pending.push_back(std::move(command));
    }
    scheduler->Enqueue(posted);
}

void Automation::Retire(AssignMapToAutomation* command)
{
    const std::lock_guard<std::mutex> lock(pendingMutex);
    const auto found = std::find_if(pending.begin(), pending.end(),
                                    [command](const std::unique_ptr<AssignMapToAutomation>& item) { return item.get() == command; });
    if (found != pending.end())
        pending.erase(found);
}

void Automation::Assign(const std::shared_ptr<const Map>& next)
{
    if (next != nullptr) {
        map = next;
        // Published before the targets tell their values, so that a listener that reads a
        // slot back while it is told reads it through the new map.
        published->Publish(next);
    }
    published->connections.clear();
    if (map == nullptr)
        return;

    // Each target automation's slots to host slots; of two host slots on one target, the
    // later one wins.
    std::map<CFW::DocView::Automation*, std::vector<std::int32_t>> slotsOf;
    for (int slot = 0; slot < map->GetSize(); ++slot) {
        const Target* target = map->GetTarget(slot);
        if (target == nullptr || target->automation == nullptr || target->index < 0)
            continue;
        std::vector<std::int32_t>& slotOf = slotsOf[target->automation];
        const CFW::DocView::AutomationProfile* targetProfile = target->automation->GetProfile();
        const int count = std::max(targetProfile != nullptr ? targetProfile->GetSlotCount() : 0, target->index + 1);
        if (static_cast<int>(slotOf.size()) < count)
            slotOf.resize(static_cast<std::size_t>(count), -1);
        slotOf[static_cast<std::size_t>(target->index)] = slot;
    }
    for (auto& [target, slotOf] : slotsOf)
        published->connections.emplace(target, std::make_shared<Connection>(*target, static_cast<Listener*>(this), std::move(slotOf)));
}

void Automation::SetListener(Listener* next)
{
    if (listener.exchange(next) == next || next == nullptr)
        return;
    PostInstall(nullptr);
}

void Automation::OnSlotChanged(int slot, float plain, float normalised, int source)
{
    if (Listener* told = listener.load())
        told->OnSlotChanged(slot, plain, normalised, source);
}

template <typename Routed, typename Unrouted>
auto Automation::Route(int slot, Routed&& routed, Unrouted&& unrouted) const
{
    const Publication::Reading reading = published->Read();
    const Map* present = reading.Get();
    const Target* target = present != nullptr ? present->GetTarget(slot) : nullptr;
    if (target != nullptr && target->automation != nullptr)
        return routed(*target);
    return unrouted(present != nullptr);
}

void Automation::GetDisplay(std::string& text, int slot)
{
    Route(
        slot, [&](const Target& target) { target.automation->GetDisplay(text, target.index); }, [&](bool) { text.clear(); });
}

void Automation::GetDisplayFor(std::string& text, int slot, float value)
{
    Route(
        slot, [&](const Target& target) { target.automation->GetDisplayFor(text, target.index, value); },
        [&](bool) { text.clear(); });
}

float Automation::ToNormalized(int slot, float plain)
{
    return Route(
        slot, [&](const Target& target) { return target.automation->ToNormalized(target.index, plain); },
        [&](bool hasMap) { return hasMap ? plain : 0.0f; });
}

float Automation::GetValue(int slot)
{
    return Route(
        slot, [&](const Target& target) { return target.automation->GetValue(target.index); },
        [&](bool) { return published->GetFallback(slot); });
}

float Automation::GetNormalized(int slot)
{
    return Route(
        slot, [&](const Target& target) { return target.automation->GetNormalized(target.index); },
        [&](bool) { return published->GetFallback(slot); });
}

void Automation::SetValue(int slot, float plain)
{
    Route(
        slot, [&](const Target& target) { target.automation->SetValue(target.index, plain); },
        [&](bool) { published->SetFallback(slot, plain); });
}

void Automation::SetNormalized(int slot, float normalised)
{
    Route(
        slot, [&](const Target& target) { target.automation->SetNormalized(target.index, normalised); },
        [&](bool) { published->SetFallback(slot, normalised); });
}

bool Automation::QueueValue(int slot, float plain)
{
    return Route(
        slot, [&](const Target& target) { return target.automation->QueueValue(target.index, plain); },
        [&](bool) { return published->SetFallback(slot, plain); });
}

bool Automation::QueueNormalized(int slot, float normalised)
{
    return Route(
        slot, [&](const Target& target) { return target.automation->QueueNormalized(target.index, normalised); },
        [&](bool) { return published->SetFallback(slot, normalised); });
}

}  // namespace OV::Comp::AutomationRouter
