#include "product/state/ProgramDocument.h"

#include <tinyxml.h>

#include <algorithm>

namespace OV::Products::VN4::State {

ProgramDocument::ProgramDocument(CFW::DocView::Document& wrapped) : document(wrapped) {}

void ProgramDocument::RemoveSerializable(Serializable* item)
{
    serializables.erase(std::remove(serializables.begin(), serializables.end(), item), serializables.end());
}

std::string ProgramDocument::GetPresetName() const
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    return presetName;
}

void ProgramDocument::SetPresetName(const std::string& name)
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    presetName = name;
}

boost::signals2::connection ProgramDocument::ConnectProgramChanged(const std::function<void()>& slot)
{
    return programChanged.connect(slot);
}

bool ProgramDocument::Save(TiXmlElement& element)
{
    const bool saved = document.Save(element);
    std::lock_guard<std::recursive_mutex> guard(mutex);
    element.SetAttribute("PresetName", presetName);
    for (Serializable* item : serializables)
        item->Save(element);
    return saved;
}

bool ProgramDocument::Load(const TiXmlElement& element)
{
    const bool loaded = document.Load(element);
    {
        std::lock_guard<std::recursive_mutex> guard(mutex);
        const char* name = element.Attribute("PresetName");
        presetName = name != nullptr ? name : "";
        for (Serializable* item : serializables)
            item->Load(element);
    }
    // Outside the lock: the listeners take locks of their own that are held around calls here.
    programChanged();
    return loaded;
}

}  // namespace OV::Products::VN4::State
