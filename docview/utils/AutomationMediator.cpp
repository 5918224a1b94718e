#include "docview/utils/AutomationMediator.h"

namespace OV::CFW::DocViewUtils {

using DocView::Parameter;

namespace {

// Marks the calling thread in `flag` for a scope, and gives back what was there.
class ThreadMark {
public:
    explicit ThreadMark(std::atomic<std::thread::id>& flag)
        : flag(flag), previous(flag.exchange(std::this_thread::get_id()))
    {
    }
    ~ThreadMark() { flag.store(previous); }
    ThreadMark(const ThreadMark&) = delete;
    ThreadMark& operator=(const ThreadMark&) = delete;

private:
    std::atomic<std::thread::id>& flag;
    std::thread::id previous;
};

bool IsMarked(const std::atomic<std::thread::id>& flag)
{
    return flag.load() == std::this_thread::get_id();
}

}  // namespace

AutomationMediator::AutomationMediator(const BasicAutomationProfile& profile, DocView::Document& document)
    : document(document), byRow(static_cast<std::size_t>(document.GetProfile()->GetParameterCount()), nullptr)
{
    for (int slot = 0; slot < profile.GetSlotCount(); ++slot) {
        slots.push_back(profile.GetCreator(slot).Create(document));
        byRow[static_cast<std::size_t>(slots.back()->GetParameter())] = slots.back().get();
    }
    parameterChanged = document.ConnectParameterChanged([this](DocView::Document&, int row, Parameter value, int source) {
        OnParameterChanged(row, value, source);
    });
}

AutomationMediator::~AutomationMediator() = default;

const AutomationSlotMediator* AutomationMediator::Find(int slot) const
{
    return slot >= 0 && slot < static_cast<int>(slots.size()) ? slots[static_cast<std::size_t>(slot)].get() : nullptr;
}

void AutomationMediator::SetListener(DocView::Automation::Listener* newListener)
{
    listener.store(newListener);
    if (newListener == nullptr)
        return;
    for (const std::unique_ptr<AutomationSlotMediator>& slot : slots)
        newListener->OnSlotChanged(slot->GetSlot(), slot->GetValue(), slot->GetNormalized(), DocView::SourceInternal);
}

void AutomationMediator::GetDisplay(std::string& text, int slot) const
{
    if (const AutomationSlotMediator* mediator = Find(slot))
        mediator->GetDisplay(text);
    else
        text.clear();
}

void AutomationMediator::GetDisplayFor(std::string& text, int slot, float normalised) const
{
    if (const AutomationSlotMediator* mediator = Find(slot))
        mediator->GetDisplayFor(text, normalised);
    else
        text.clear();
}

float AutomationMediator::ToNormalized(int slot, float plain) const
{
    const AutomationSlotMediator* mediator = Find(slot);
    return mediator != nullptr ? mediator->ToNormalized(plain) : 0.0f;
}

float AutomationMediator::GetValue(int slot) const
{
    const AutomationSlotMediator* mediator = Find(slot);
    return mediator != nullptr ? mediator->GetValue() : 0.0f;
}

float AutomationMediator::GetNormalized(int slot) const
{
    const AutomationSlotMediator* mediator = Find(slot);
    return mediator != nullptr ? mediator->GetNormalized() : 0.0f;
}

bool AutomationMediator::FromHost(int slot, float value, bool normalised, bool queued)
{
    if (Find(slot) == nullptr)
        return false;
    // A listener writing back what it is being told: already in the document.
    if (IsMarked(settingFromDocument))
        return true;
    AutomationSlotMediator& mediator = *slots[static_cast<std::size_t>(slot)];
    if (!(normalised ? mediator.SetNormalized(value) : mediator.SetValue(value)))
        return true;
    const Parameter parameter = mediator.GetParameterValue();
    if (queued)
        return document.QueueSetParameter(mediator.GetParameter(), parameter, DocView::SourceHost);
    const ThreadMark mark(settingFromHost);
    document.SetParameter(mediator.GetParameter(), parameter, DocView::SourceHost);
    return true;
}

void AutomationMediator::OnParameterChanged(int row, Parameter value, int source)
{
    if (row < 0 || row >= static_cast<int>(byRow.size()) || byRow[static_cast<std::size_t>(row)] == nullptr)
        return;
    if (IsMarked(settingFromHost))
        return;
    const ThreadMark mark(settingFromDocument);
    AutomationSlotMediator& mediator = *byRow[static_cast<std::size_t>(row)];
    if (!mediator.SetFromDocument(value))
        return;
    if (DocView::Automation::Listener* told = listener.load())
        told->OnSlotChanged(mediator.GetSlot(), mediator.GetValue(), mediator.GetNormalized(), source);
}

}  // namespace OV::CFW::DocViewUtils
