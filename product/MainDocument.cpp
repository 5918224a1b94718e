#include "product/MainDocument.h"

#include "docview/datafilter/FloatRange.h"
#include "platform/Guid.h"
#include "product/ModuleDocument.h"
#include "product/state/ProgramDocument.h"

#include <tinyxml.h>

namespace OV::Products::VN4 {

using CFW::DocView::Parameter;
using CFW::DocView::ParameterInfo;
using Row = MainDocumentProfile;

const MainDocumentProfile& MainDocumentProfile::Instance()
{
    static const MainDocumentProfile profile;
    return profile;
}

MainDocumentProfile::MainDocumentProfile()
{
    const auto level = CFW::DataFilter::MakeRange(-15.0f, 15.0f);
    SetParameter(PresetForModule, ParameterInfo::MakeBool("PresetForModule", false, 0));
    SetParameter(CurrentSlot, ParameterInfo::MakeEnum("CurrentSlot", {"1A", "1B", "2A", "2B", "3A", "3B", "4A", "4B", "5", "6", "7", "8"}, 0, 0));
    SetParameter(Compare, ParameterInfo::MakeBool("Compare", false, 0));
    SetParameter(CompareWhat, ParameterInfo::MakeEnum("CompareWhat", {"Out", "In"}, 1, 0));
    SetParameter(CompareLevelOn, ParameterInfo::MakeFloat("CompareLevelOn", 0.0f, *level, 0));
    SetParameter(CompareLevelOff, ParameterInfo::MakeFloat("CompareLevelOff", 0.0f, *level, 0));
    SetParameter(CurrentABCD, ParameterInfo::MakeEnum("CurrentABCD", {"A", "B", "C", "D"}, 0, 0));
    SetParameter(CompareMAF, ParameterInfo::MakeBool("CompareMAF", false, 0));
    SetParameter(CompareLevelOnMAF, ParameterInfo::MakeFloat("CompareLevelOnMAF", 0.0f, *level, 0));
    SetParameter(CompareLevelOffMAF, ParameterInfo::MakeFloat("CompareLevelOffMAF", 0.0f, *level, 0));
    SetParameter(LatencyLevel, ParameterInfo::MakeEnum("Main.LatencyLevel", {"Low", "Med", "High"}, 0, ParameterInfo::Preference));
}

MainDocumentSingleModule::MainDocumentSingleModule(CFW::DocView::DocumentContext* context, ModuleDocument* module,
                                                   const std::string& presetPath, const std::string& factoryPath)
    : BasicDocument(&MainDocumentProfile::Instance(), context), moduleDocument(module),
      programDocument(std::make_unique<State::ProgramDocument>(*this)),
      stateManager(std::make_unique<State::ManagerSingleModule>(*this, *programDocument, presetPath, factoryPath)),
      latencyLevel(GetParameter(Row::LatencyLevel).AsEnum())
{
}

MainDocumentSingleModule::~MainDocumentSingleModule() = default;

void MainDocumentSingleModule::AddSerializable(State::Serializable* item)
{
    programDocument->AddSerializable(item);
}

void MainDocumentSingleModule::RemoveSerializable(State::Serializable* item)
{
    programDocument->RemoveSerializable(item);
}

void MainDocumentSingleModule::SetParameter(int index, Parameter value, int source)
{
    BasicDocument::SetParameter(index, value, source);
    switch (index) {
    case Row::LatencyLevel: {
        const std::uint32_t level = GetParameter(index).AsEnum();
        if (level != latencyLevel) {
            latencyLevel = level;
            latencyChanged.store(1);
        }
        break;
    }
    case Row::Compare:
        ApplyCompare(GetParameter(Row::Compare).AsBool(), GetParameter(Row::CompareWhat).AsEnum());
        break;
    case Row::CompareWhat:
        ApplyCompare(GetParameter(Row::Compare).AsBool(), GetParameter(Row::CompareWhat).AsEnum());
        break;
    case Row::CompareLevelOn:
        SetParameterInternal(Row::CompareLevelOnMAF, GetParameter(Row::Compare).AsBool() ? GetParameter(index) : Parameter::FromFloat(0.0f));
        break;
    case Row::CompareLevelOff:
        SetParameterInternal(Row::CompareLevelOffMAF, GetParameter(Row::Compare).AsBool() ? GetParameter(index) : Parameter::FromFloat(0.0f));
        break;
    default:
        break;
    }
}

// Compare reaches the audio side only with "In" selected.
void MainDocumentSingleModule::ApplyCompare(bool active, std::uint32_t what)
{
    if (active) {
        SetParameterInternal(Row::CompareLevelOnMAF, GetParameter(Row::CompareLevelOn));
        SetParameterInternal(Row::CompareLevelOffMAF, GetParameter(Row::CompareLevelOff));
        SetParameterInternal(Row::CompareMAF, Parameter::FromBool(what != 0));
    } else {
        SetParameterInternal(Row::CompareLevelOnMAF, Parameter::FromFloat(0.0f));
        SetParameterInternal(Row::CompareLevelOffMAF, Parameter::FromFloat(0.0f));
        SetParameterInternal(Row::CompareMAF, Parameter::FromBool(false));
    }
}

bool MainDocumentSingleModule::TakeLatencyChanged()
{
    int expected = 1;
    return latencyChanged.compare_exchange_strong(expected, 0);
}

// A reset leaves the memory selection where it was.
void MainDocumentSingleModule::DoReset()
{
    const Parameter memory = GetParameter(Row::CurrentABCD);
    InBatch([&] {
        BasicDocument::DoReset();
        if (moduleDocument != nullptr)
            moduleDocument->Reset();
        SetParameterInternal(Row::CurrentABCD, memory);
    });
}

namespace {

void WriteHeader(TiXmlElement& element, const char* format)
{
    element.SetDoubleAttribute("Version", 1.0);
    element.SetAttribute("Format", format);
    element.SetAttribute("GUID", Platform::FormatGuid(Platform::CreateGuid()));
}

void AddModuleChild(TiXmlElement& element, const char* name, CFW::DocView::Document& module)
{
    TiXmlElement child(name);
    module.Save(child);
    element.InsertEndChild(child);
}

}  // namespace

bool MainDocumentSingleModule::DoSave(TiXmlElement& element)
{
    WriteHeader(element, "vn4p");
    BasicDocument::DoSave(element);
    if (moduleDocument != nullptr) {
        // The twelve slots of the chain all carry the one module's state.
        for (int n = 0; n < 12; ++n)
            AddModuleChild(element, ("Slot" + std::to_string(n)).c_str(), *moduleDocument);
        AddModuleChild(element, "Metering", *moduleDocument);
    }
    return true;
}

void MainDocumentSingleModule::SaveModulePreset(TiXmlElement& element)
{
    WriteHeader(element, "vn4m");
    if (moduleDocument != nullptr)
        AddModuleChild(element, "Slot", *moduleDocument);
}

void MainDocumentSingleModule::LoadSlot(const TiXmlElement* slot)
{
    if (moduleDocument == nullptr)
        return;
    if (slot != nullptr)
        moduleDocument->Load(*slot);
    else
        moduleDocument->Reset();
}

bool MainDocumentSingleModule::DoLoad(const TiXmlElement& element)
{
    const char* format = element.Attribute("Format");
    if (format == nullptr)
        return false;
    const std::string form = format;
    if (form == "vn4m") {
        LoadSlot(element.FirstChildElement("Slot"));
        return true;
    }
    if (form != "vn4p")
        return false;
    ReadAttributes(element, nullptr);
    for (int n = 0; n < 12; ++n)
        LoadSlot(element.FirstChildElement(("Slot" + std::to_string(n)).c_str()));
    if (loadMetering)
        LoadSlot(element.FirstChildElement("Metering"));
    else
        loadMetering = true;
    return true;
}

}  // namespace OV::Products::VN4
