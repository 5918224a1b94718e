#include "docview/utils/BasicDocument.h"

#include "docview/interfaces/Properties.h"
#include "docview/interfaces/Scheduler.h"
#include "docview/utils/PreferencesManager.h"

#include <tinyxml.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace OV::CFW::DocViewUtils {

using DocView::Parameter;
using DocView::ParameterInfo;

namespace {

// Floats are written so that they read back to the same float.
std::string FloatText(float value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
    return text;
}

}  // namespace

BasicDocument::BasicDocument(const DocView::DocumentProfile* documentProfile, DocView::DocumentContext* documentContext)
    : profile(documentProfile), context(documentContext),
      values(static_cast<std::size_t>(documentProfile->GetParameterCount())),
      self(this, [](DocView::Document*) {})
{
    // Rows that a reset leaves alone start at their defaults too.
    for (int i = 0; i < profile->GetParameterCount(); ++i)
        values[static_cast<std::size_t>(i)].store(profile->GetParameterInfo(i).GetDefault().As(profile->GetParameterInfo(i).type).payload);
    if (context != nullptr) {
        DocView::Properties& properties = context->GetProperties();
        try {
            if (!properties.Has(editedProperty))
                properties.Add(editedProperty, Parameter::FromBool(false));
        } catch (const DocView::AlreadyAddedError&) {
        }
    }
    BasicDocument::DoReset();
}

BasicDocument::~BasicDocument()
{
    DropBindings();
    self.reset();
}

void BasicDocument::ApplyPendingPreferences()
{
    std::map<int, Parameter> pending;
    {
        std::lock_guard<std::mutex> guard(pendingMutex);
        pending.swap(pendingPreferences);
    }
    for (const auto& [index, value] : pending)
        SetParameter(index, value, DocView::SourceInternal);
}

void BasicDocument::DropBindings()
{
    preferenceTick.disconnect();
    preferenceBindings.clear();
    propertyBindings.clear();
}

void BasicDocument::Reset()
{
    InBatch([this] { DoReset(); });
}

bool BasicDocument::Load(const TiXmlElement& element)
{
    return InBatch([&] { return DoLoad(element); });
}

Parameter BasicDocument::Stored(int index) const
{
    return {profile->GetParameterInfo(index).type, values[static_cast<std::size_t>(index)].load(std::memory_order_relaxed)};
}

Parameter BasicDocument::GetParameter(int index) const
{
    return IsValidIndex(index) ? Stored(index) : Parameter();
}

bool BasicDocument::StoreValue(int index, Parameter value)
{
    const ParameterInfo& row = profile->GetParameterInfo(index);
    Parameter limited = value.As(row.type);
    if (const ParameterInfo::EnumInfo* details = row.AsEnum()) {
        limited.payload = std::min<std::uint32_t>(limited.payload, static_cast<std::uint32_t>(details->names.size() - 1));
    } else if (const ParameterInfo::FloatInfo* details = row.AsFloat()) {
        const float number = limited.AsFloat();
        if (std::isnan(number))
            return false;
        limited = Parameter::FromFloat(details->range->Constrain(number));
    }
    std::atomic<std::uint32_t>& cell = values[static_cast<std::size_t>(index)];
    if (cell.load(std::memory_order_relaxed) == limited.payload)
        return false;
    cell.store(limited.payload, std::memory_order_relaxed);
    if ((row.flags & ParameterInfo::Serializable) != 0 && (row.flags & ParameterInfo::Transient) == 0 && context != nullptr) {
        try {
            context->GetProperties().Set(editedProperty, Parameter::FromBool(true));
        } catch (const DocView::NotAvailableError&) {
        }
    }
    return true;
}

void BasicDocument::SetParameter(int index, Parameter value, int source)
{
    if (!IsValidIndex(index))
        return;
    if ((profile->GetParameterInfo(index).flags & ParameterInfo::Transient) != 0)
        StoreValue(index, value);
    else
        DoSetParameter(index, value, source);
}

void BasicDocument::DoSetParameter(int index, Parameter value, int source)
{
    if (!StoreValue(index, value))
        return;
    const Parameter stored = Stored(index);
    parameterChanged(*this, index, stored, source);
    const ParameterInfo& row = profile->GetParameterInfo(index);
    if ((row.flags & ParameterInfo::Property) != 0 && context != nullptr) {
        try {
            context->GetProperties().Set(row.name, stored);
        } catch (const std::exception&) {
        }
    }
    if ((row.flags & ParameterInfo::Preference) != 0)
        PreferencesManager::Instance().Set(row.name, stored);
}

void BasicDocument::DoSetBPM(float value, int source)
{
    if (value == bpm.load(std::memory_order_relaxed))
        return;
    bpm.store(value, std::memory_order_relaxed);
    bpmChanged(*this, value, source);
}

void BasicDocument::DoReset()
{
    DropBindings();
    for (int index = 0; index < profile->GetParameterCount(); ++index) {
        const ParameterInfo& row = profile->GetParameterInfo(index);
        if (row.type == Parameter::Undefined)
            continue;
        Parameter value = row.GetDefault();
        bool fromPreference = false;
        if ((row.flags & ParameterInfo::Preference) != 0) {
            Parameter preference = value;
            if (PreferencesManager::Instance().Get(row.name, preference)) {
                value = preference;
                fromPreference = true;
            }
            // Preferences change on any instance's thread: the change comes here through this
            // document's own worker, queued, or at its next tick when the pool is full.
            preferenceBindings.emplace_back(PreferencesManager::Instance().Connect(row.name, [this, index](Parameter changed) {
                if (context == nullptr) {
                    SetParameter(index, changed, DocView::SourceInternal);
                    return;
                }
                std::lock_guard<std::mutex> guard(pendingMutex);
                if (QueueSetParameter(index, changed, DocView::SourceInternal))
                    pendingPreferences.erase(index);  // the queued change is the later one
                else
                    pendingPreferences[index] = changed;
            }));
            if (context != nullptr && !preferenceTick.connected())
                preferenceTick = context->GetParent()->GetScheduler()->ConnectTick([this] { ApplyPendingPreferences(); });
        }
        if ((row.flags & ParameterInfo::Property) != 0 && context != nullptr) {
            DocView::Properties& properties = context->GetProperties();
            if (!properties.Has(row.name))
                properties.Add(row.name, value);
            else if (fromPreference)
                properties.Set(row.name, value);
            else
                value = properties.Get(row.name);
            propertyBindings.emplace_back(properties.Connect(row.name, [this, index](Parameter changed) {
                SetParameter(index, changed, DocView::SourceInternal);
            }));
        }
        if ((row.flags & ParameterInfo::NoDefault) == 0)
            DoSetParameter(index, value, DocView::SourceInternal);
    }
}

bool BasicDocument::ReadAttributes(const TiXmlElement& element, std::vector<Unresolved>* unresolved)
{
    std::vector<std::uint32_t> scratch(values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        scratch[i] = values[i].load(std::memory_order_relaxed);
    bool complete = true;
    for (int index = 0; index < profile->GetParameterCount(); ++index) {
        const ParameterInfo& row = profile->GetParameterInfo(index);
        if ((row.flags & ParameterInfo::Serializable) == 0)
            continue;
        std::uint32_t& cell = scratch[static_cast<std::size_t>(index)];
        cell = row.GetDefault().As(row.type).payload;
        switch (row.type) {
        case Parameter::Bool:
        case Parameter::Integer: {
            int number = 0;
            if (element.QueryIntAttribute(row.name.c_str(), &number) == TIXML_SUCCESS)
                cell = row.type == Parameter::Bool ? (number != 0 ? 1u : 0u) : static_cast<std::uint32_t>(number);
            break;
        }
        case Parameter::Float: {
            double number = 0.0;
            if (element.QueryDoubleAttribute(row.name.c_str(), &number) == TIXML_SUCCESS)
                cell = Parameter::FromFloat(static_cast<float>(number)).payload;
            break;
        }
        case Parameter::Enum: {
            const char* text = element.Attribute(row.name.c_str());
            if (text == nullptr)
                break;
            const std::vector<std::string>& names = row.AsEnum()->names;
            const auto found = std::find(names.begin(), names.end(), text);
            if (found != names.end()) {
                cell = static_cast<std::uint32_t>(found - names.begin());
            } else {
                complete = false;
                if (unresolved != nullptr)
                    unresolved->push_back({index, text});
            }
            break;
        }
        default:
            break;
        }
    }
    for (int index = 0; index < profile->GetParameterCount(); ++index) {
        const ParameterInfo& row = profile->GetParameterInfo(index);
        if ((row.flags & ParameterInfo::Serializable) != 0)
            DoSetParameter(index, Parameter{row.type, scratch[static_cast<std::size_t>(index)]}, DocView::SourceInternal);
    }
    loaded(*this);
    return complete;
}

bool BasicDocument::DoLoad(const TiXmlElement& element)
{
    return ReadAttributes(element, nullptr);
}

bool BasicDocument::LoadOlderState(const TiXmlElement& element, std::vector<Unresolved>& unresolved)
{
    return InBatch([&] { return ReadAttributes(element, &unresolved); });
}

bool BasicDocument::DoSave(TiXmlElement& element)
{
    for (int index = 0; index < profile->GetParameterCount(); ++index) {
        const ParameterInfo& row = profile->GetParameterInfo(index);
        if ((row.flags & ParameterInfo::Serializable) == 0)
            continue;
        const Parameter value = Stored(index);
        switch (row.type) {
        case Parameter::Bool:
        case Parameter::Integer:
            element.SetAttribute(row.name, value.AsInteger());
            break;
        case Parameter::Enum: {
            const std::vector<std::string>& names = row.AsEnum()->names;
            element.SetAttribute(row.name, names[std::min<std::size_t>(value.AsEnum(), names.size() - 1)]);
            break;
        }
        case Parameter::Float:
            element.SetAttribute(row.name, FloatText(value.AsFloat()));
            break;
        default:
            break;
        }
    }
    return true;
}

Parameter BasicDocument::FromNormalized(int index, float normalized) const
{
    const ParameterInfo& row = profile->GetParameterInfo(index);
    if (const ParameterInfo::FloatInfo* details = row.AsFloat())
        return Parameter::FromFloat(details->converter->ToValue(normalized));
    if (const ParameterInfo::EnumInfo* details = row.AsEnum())
        return Parameter::FromEnum(static_cast<std::uint32_t>(std::max(0.0f, normalized) * static_cast<float>(details->names.size() - 1) + 0.5f));
    return Parameter::FromBool(normalized >= 0.5f);
}

void BasicDocument::SetNormalized(int index, float normalized, int source)
{
    if (IsValidIndex(index))
        SetParameter(index, FromNormalized(index, normalized), source);
}

Parameter BasicDocument::GetNormalized(int index) const
{
    if (!IsValidIndex(index))
        return Parameter::FromFloat(0.0f);
    const ParameterInfo& row = profile->GetParameterInfo(index);
    const Parameter value = Stored(index);
    if (const ParameterInfo::FloatInfo* details = row.AsFloat())
        return Parameter::FromFloat(details->converter->ToNormalized(value.AsFloat()));
    if (const ParameterInfo::EnumInfo* details = row.AsEnum())
        return Parameter::FromFloat(details->names.size() > 1 ? static_cast<float>(value.AsEnum()) / static_cast<float>(details->names.size() - 1) : 0.0f);
    return Parameter::FromFloat(value.ToNumber());
}

bool BasicDocument::QueueSetParameter(int index, Parameter value, int source)
{
    if (context == nullptr || !IsValidIndex(index))
        return false;
    DocView::Command* command = context->GetCommandFactory().MakeSetParameter(self, index, value, source);
    if (command == nullptr)
        return false;
    context->GetParent()->GetScheduler()->Enqueue(command);
    return true;
}

bool BasicDocument::QueueSetNormalized(int index, float normalized, int source)
{
    return IsValidIndex(index) && QueueSetParameter(index, FromNormalized(index, normalized), source);
}

bool BasicDocument::QueueSetBPM(float value, int source)
{
    if (context == nullptr)
        return false;
    DocView::Command* command = context->GetCommandFactory().MakeSetBPM(self, value, source);
    if (command == nullptr)
        return false;
    context->GetParent()->GetScheduler()->Enqueue(command);
    return true;
}

DocView::Scheduler* BasicDocument::GetScheduler() const
{
    return context != nullptr ? context->GetParent()->GetScheduler() : nullptr;
}

boost::signals2::connection BasicDocument::ConnectLoaded(const LoadedSlot& slot)
{
    return loaded.connect(slot);
}

boost::signals2::connection BasicDocument::ConnectParameterChanged(const ParameterChangedSlot& slot)
{
    return parameterChanged.connect(slot);
}

boost::signals2::connection BasicDocument::ConnectParameterTouched(const ParameterTouchedSlot& slot)
{
    return parameterTouched.connect(slot);
}

boost::signals2::connection BasicDocument::ConnectBPMChanged(const BPMChangedSlot& slot)
{
    return bpmChanged.connect(slot);
}

boost::signals2::connection BasicDocument::ConnectBeginBatch(const BatchSlot& slot)
{
    return beginBatch.connect(slot);
}

boost::signals2::connection BasicDocument::ConnectEndBatch(const BatchSlot& slot)
{
    return endBatch.connect(slot);
}

}  // namespace OV::CFW::DocViewUtils
