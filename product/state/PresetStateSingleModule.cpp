#include "product/state/PresetStateSingleModule.h"

#include "platform/DebugOutput.h"
#include "platform/Messages.h"
#include "platform/XmlParse.h"
#include "product/MainDocument.h"
#include "product/state/FileSystem.h"

namespace OV::Products::VN4::State {

PresetStateSingleModule::PresetStateSingleModule(MainDocumentSingleModule& mainDocument, Directory& folders)
    : document(mainDocument), directory(folders), navigator(std::make_unique<DirectoryNavigator>()),
      commands(mainDocument.GetScheduler())
{
    try {
        directory.Rescan();
    } catch (const FileSystemError&) {
        // An unreadable preset folder leaves the tree empty; the panel still works.
    }
    UseTree();
}

void PresetStateSingleModule::UseTree()
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    directoryTree = directory.GetTree();
    navigator->SetTree(directoryTree);
}

boost::signals2::connection PresetStateSingleModule::ConnectPresetChanged(const std::function<void()>& slot)
{
    return presetChanged.connect(slot);
}

void PresetStateSingleModule::SelectAndLoad(const std::function<bool(DirectoryNavigator&)>& select)
{
    {
        std::lock_guard<std::recursive_mutex> guard(mutex);
        if (!select(*navigator))
            return;
        const std::shared_ptr<const Directory::Node> selected = navigator->GetSelected();
        if (!selected)
            return;
        std::string text;
        TiXmlDocument file;
        if (FileSystem::ReadText(selected->GetPath(), text) && Platform::ParseXml(file, text.data(), text.size()))
            document.Load(*file.RootElement());
    }
    presetChanged();
}

void PresetStateSingleModule::LoadNext()
{
    commands.Post([this] { SelectAndLoad([](DirectoryNavigator& navigator) { return navigator.Next(); }); });
}

void PresetStateSingleModule::LoadPrevious()
{
    commands.Post([this] { SelectAndLoad([](DirectoryNavigator& navigator) { return navigator.Previous(); }); });
}

void PresetStateSingleModule::LoadPreset(const std::string& path)
{
    commands.Post([this, path] { SelectAndLoad([&path](DirectoryNavigator& navigator) { return navigator.Select(path); }); });
}

void PresetStateSingleModule::WritePreset(const std::string& path)
{
    TiXmlDocument file;
    file.InsertEndChild(TiXmlDeclaration("1.0", "", ""));
    TiXmlElement root("Preset");
    document.SaveModulePreset(root);
    file.InsertEndChild(root);
    TiXmlPrinter printer;
    file.Accept(&printer);
    FileSystem::WriteAtomically(path, printer.Str());
}

void PresetStateSingleModule::SavePreset(const std::string& path)
{
    commands.Post([this, path] {
        {
            std::lock_guard<std::recursive_mutex> guard(mutex);
            const bool listed = navigator->Select(path);
            try {
                WritePreset(path);
            } catch (const FileSystemError& error) {
                Platform::ShowMessage(error.what(), "Save preset error", Platform::MessagePlain);
                return;
            }
            // The preset is saved; a folder that cannot be read again only leaves the list as
            // it was.
            if (!listed) {
                try {
                    directory.Rescan();
                    UseTree();
                    navigator->Select(path);
                } catch (const FileSystemError& error) {
                    Platform::DebugOutput(std::string("Preset folders not read again: ") + error.what());
                }
            }
        }
        presetChanged();
    });
}

void PresetStateSingleModule::Delete(const std::string& path)
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    if (FileSystem::Exists(path)) {
        FileSystem::IsDirectory(path);
        FileSystem::Remove(path);
    }
    directory.Rescan();
    UseTree();
}

void PresetStateSingleModule::Rescan()
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    directory.Rescan();
    UseTree();
}

std::shared_ptr<const Directory::Tree> PresetStateSingleModule::GetTree() const
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    return directoryTree;
}

int PresetStateSingleModule::GetSelectedIndex() const
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    return navigator->GetIndex();
}

void PresetStateSingleModule::ClearSelection()
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    navigator->Clear();
}

std::shared_ptr<const Directory::Node> PresetStateSingleModule::GetSelected() const
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    return navigator->GetSelected();
}

std::shared_ptr<PresetStateSingleModule::Snapshot> PresetStateSingleModule::TakeSnapshot()
{
    auto snapshot = std::make_shared<Snapshot>();
    commands.Post([this, snapshot] {
        snapshot->document.InsertEndChild(TiXmlDeclaration("1.0", "", ""));
        TiXmlElement root("Preset");
        document.Save(root);
        snapshot->document.InsertEndChild(root);
        std::lock_guard<std::recursive_mutex> guard(mutex);
        const std::shared_ptr<const Directory::Node> selected = navigator->GetSelected();
        snapshot->path = selected ? selected->GetPath() : std::string();
    });
    return snapshot;
}

void PresetStateSingleModule::RestoreSnapshot(const std::shared_ptr<Snapshot>& snapshot, bool keepMetering)
{
    commands.Post([this, snapshot, keepMetering] {
        if (!keepMetering)
            document.SkipMeteringOnNextLoad();
        if (const TiXmlElement* root = snapshot->document.RootElement())
            document.Load(*root);
        std::lock_guard<std::recursive_mutex> guard(mutex);
        if (!snapshot->path.empty())
            navigator->Select(snapshot->path);
    });
}

void PresetStateSingleModule::LoadDefaults(bool keepMetering)
{
    commands.Post([this, keepMetering] {
        if (!keepMetering)
            document.SkipMeteringOnNextLoad();
        document.Reset();
    });
}

}  // namespace OV::Products::VN4::State
