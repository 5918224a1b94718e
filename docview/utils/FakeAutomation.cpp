#include "docview/utils/FakeAutomation.h"

#include <algorithm>
#include <numeric>

namespace OV::CFW::DocViewUtils {

namespace {

std::vector<int> Identity(const DocView::AutomationProfile* profile)
{
    std::vector<int> map(static_cast<std::size_t>(profile != nullptr ? profile->GetSlotCount() : 0));
    std::iota(map.begin(), map.end(), 0);
    return map;
}

}  // namespace

FakeAutomation::FakeAutomation(const DocView::AutomationProfile* profile) : FakeAutomation(profile, Identity(profile)) {}

FakeAutomation::FakeAutomation(const DocView::AutomationProfile* profile, std::vector<int> map)
    : profile(profile), slotMap(std::move(map)), values(std::make_unique<Value[]>(slotMap.size()))
{
    const int highest = slotMap.empty() ? -1 : *std::max_element(slotMap.begin(), slotMap.end());
    reverseMap.assign(static_cast<std::size_t>(highest + 1), -1);
    for (std::size_t own = 0; own < slotMap.size(); ++own) {
        if (slotMap[own] >= 0)
            reverseMap[static_cast<std::size_t>(slotMap[own])] = static_cast<int>(own);
    }
}

FakeAutomation::~FakeAutomation()
{
    SetTarget(nullptr);
}

void FakeAutomation::SetTarget(DocView::Automation* next)
{
    const std::lock_guard<std::mutex> lock(targetWriter);
    DocView::Automation* old = target.Peek();
    if (old == next)
        return;
    if (old != nullptr)
        old->SetListener(nullptr);
    target.Replace(next);
    if (next != nullptr)
        next->SetListener(this);
}

DocView::Automation* FakeAutomation::GetTarget() const
{
    return target.Read().Get();
}

void FakeAutomation::SetListener(Listener* newListener)
{
    listener.store(newListener);
    if (newListener == nullptr)
        return;
    for (std::size_t slot = 0; slot < slotMap.size(); ++slot)
        newListener->OnSlotChanged(static_cast<int>(slot), values[slot].plain.load(), values[slot].normalised.load(),
                                   DocView::SourceInternal);
}

void FakeAutomation::GetDisplay(std::string& text, int slot)
{
    const auto reading = target.Read();
    if (reading.Get() != nullptr && Valid(slot))
        reading.Get()->GetDisplay(text, slotMap[static_cast<std::size_t>(slot)]);
    else
        text.clear();
}

void FakeAutomation::GetDisplayFor(std::string& text, int slot, float value)
{
    const auto reading = target.Read();
    if (reading.Get() != nullptr && Valid(slot))
        reading.Get()->GetDisplayFor(text, slotMap[static_cast<std::size_t>(slot)], value);
    else
        text.clear();
}

float FakeAutomation::ToNormalized(int slot, float plain)
{
    const auto reading = target.Read();
    if (reading.Get() != nullptr && Valid(slot))
        return reading.Get()->ToNormalized(slotMap[static_cast<std::size_t>(slot)], plain);
    return plain;
}

float FakeAutomation::GetValue(int slot)
{
    return Valid(slot) ? values[static_cast<std::size_t>(slot)].plain.load() : 0.0f;
}

float FakeAutomation::GetNormalized(int slot)
{
    return Valid(slot) ? values[static_cast<std::size_t>(slot)].normalised.load() : 0.0f;
}

template <typename Writer>
bool FakeAutomation::Write(int slot, float value, bool normalised, Writer&& write)
{
    if (!Valid(slot))
        return false;
    Value& kept = values[static_cast<std::size_t>(slot)];
    (normalised ? kept.normalised : kept.plain).store(value);
    const auto reading = target.Read();
    DocView::Automation* to = reading.Get();
    if (to == nullptr) {
        // Nothing to convert with: the number stands for both halves until a target comes.
        (normalised ? kept.plain : kept.normalised).store(value);
        return true;
    }
    const int mapped = slotMap[static_cast<std::size_t>(slot)];
    const bool accepted = write(*to, mapped);
    // The target converts: both halves as it now sees them.
    kept.plain.store(to->GetValue(mapped));
    kept.normalised.store(to->GetNormalized(mapped));
    return accepted;
}

void FakeAutomation::SetValue(int slot, float plain)
{
    Write(slot, plain, false, [plain](DocView::Automation& to, int mapped) {
        to.SetValue(mapped, plain);
        return true;
    });
}

void FakeAutomation::SetNormalized(int slot, float normalised)
{
    Write(slot, normalised, true, [normalised](DocView::Automation& to, int mapped) {
        to.SetNormalized(mapped, normalised);
        return true;
    });
}

bool FakeAutomation::QueueValue(int slot, float plain)
{
    return Write(slot, plain, false, [plain](DocView::Automation& to, int mapped) { return to.QueueValue(mapped, plain); });
}

bool FakeAutomation::QueueNormalized(int slot, float normalised)
{
    return Write(slot, normalised, true,
                 [normalised](DocView::Automation& to, int mapped) { return to.QueueNormalized(mapped, normalised); });
}

void FakeAutomation::OnSlotChanged(int slot, float plain, float normalised, int source)
{
    if (slot < 0 || slot >= static_cast<int>(reverseMap.size()))
        return;
    const int own = reverseMap[static_cast<std::size_t>(slot)];
    if (own < 0)
        return;
    values[static_cast<std::size_t>(own)].plain.store(plain);
    values[static_cast<std::size_t>(own)].normalised.store(normalised);
    if (Listener* told = listener.load())
        told->OnSlotChanged(own, plain, normalised, source);
}

}  // namespace OV::CFW::DocViewUtils
