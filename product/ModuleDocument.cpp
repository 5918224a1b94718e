#include "product/ModuleDocument.h"

#include "product/ModuleRegistry.h"

#include <tinyxml.h>

#include <algorithm>

namespace OV::Products::VN4 {

using CFW::DocView::Parameter;
using CFW::DocView::ParameterInfo;

const ModuleDocumentProfile& ModuleDocumentProfile::Instance()
{
    static const ModuleDocumentProfile profile;
    return profile;
}

ModuleDocumentProfile::ModuleDocumentProfile()
{
    SetParameter(Stop, ParameterInfo::MakeBool("Stop", false, 0));
    SetParameter(Bypass, ParameterInfo::MakeBool("Bypass", false, ParameterInfo::Serializable));
    SetParameter(Mute, ParameterInfo::MakeBool("Mute", false, ParameterInfo::Serializable));
    SetParameter(Model, ParameterInfo::MakeEnum("Model", Info::Instance().GetModelNames(), 0, ParameterInfo::Serializable));
}

ModuleDocument::ModuleDocument(CFW::DocView::DocumentContext* documents, CFW::DocView::ComponentContext* slotContext)
    : BasicDocument(&ModuleDocumentProfile::Instance(), documents), context(slotContext)
{
    CreateChild();
}

ModuleDocument::~ModuleDocument()
{
    if (CFW::DocView::Document* document = GetChildDocument())
        document->DropBindings();
    child.reset();
}

CFW::DocView::Document* ModuleDocument::GetChildDocument() const
{
    return child ? CFW::DocView::FindInterface<CFW::DocView::Document>(*child) : nullptr;
}

void ModuleDocument::RemoveChildListener(ChildListener* listener)
{
    listeners.erase(std::remove(listeners.begin(), listeners.end(), listener), listeners.end());
}

void ModuleDocument::CreateChild()
{
    if (child) {
        // Everyone lets go of the old child before it and its context go.
        for (ChildListener* listener : listeners)
            listener->OnChildChanged(nullptr);
        if (CFW::DocView::Document* document = GetChildDocument())
            document->DropBindings();
        child.reset();
    }
    childContext = context->CreateLocal(context);
    const int model = static_cast<int>(GetParameter(ModuleDocumentProfile::Model).AsEnum());
    child = Info::Instance().GetFactory().Create(model, childContext.get());
    for (ChildListener* listener : listeners)
        listener->OnChildChanged(child);
}

void ModuleDocument::PassBypass()
{
    if (CFW::DocView::Document* document = GetChildDocument())
        document->SetParameter(0, Parameter::FromBool(GetParameter(ModuleDocumentProfile::Bypass).AsBool()),
                               CFW::DocView::SourceInternal);
}

void ModuleDocument::DoSetParameter(int index, Parameter value, int source)
{
    const Parameter before = GetParameter(index);
    BasicDocument::DoSetParameter(index, value, source);
    if (GetParameter(index) == before)
        return;
    if (index == ModuleDocumentProfile::Model) {
        InBatch([this] {
            CreateChild();
            PassBypass();
        });
    } else if (index == ModuleDocumentProfile::Bypass) {
        PassBypass();
    }
}

void ModuleDocument::DoReset()
{
    InBatch([this] {
        BasicDocument::DoReset();
        if (CFW::DocView::Document* document = GetChildDocument())
            document->Reset();
    });
}

bool ModuleDocument::DoSave(TiXmlElement& element)
{
    BasicDocument::DoSave(element);
    if (CFW::DocView::Document* document = GetChildDocument()) {
        TiXmlElement module("Module");
        document->Save(module);
        element.InsertEndChild(module);
    }
    return true;
}

bool ModuleDocument::LoadModule(const TiXmlElement& element)
{
    // Through the older-state reader: an unknown model name takes the first model.
    std::vector<Unresolved> ignored;
    ReadAttributes(element, &ignored);
    if (CFW::DocView::Document* document = GetChildDocument()) {
        if (const TiXmlElement* module = element.FirstChildElement("Module"))
            document->Load(*module);
        else
            document->Reset();
    }
    return true;
}

bool ModuleDocument::DoLoad(const TiXmlElement& element)
{
    const char* model = element.Attribute("Model");
    const int index = model != nullptr ? Info::Instance().FindModel(model) : -1;
    if (index != static_cast<int>(GetParameter(ModuleDocumentProfile::Model).AsEnum()))
        return InBatch([&] { return LoadModule(element); });
    return LoadModule(element);
}

}  // namespace OV::Products::VN4
