#include "product/state/ManagerSingleModule.h"

#include "platform/Guid.h"
#include "product/MainDocument.h"
#include "product/ModuleRegistry.h"
#include "product/state/ProgramDocument.h"

#include <boost/filesystem.hpp>

namespace OV::Products::VN4::State {

namespace {

std::string ModelText()
{
    const Info& info = Info::Instance();
    return info.GetFactory().GetCount() > 0 ? Platform::FormatGuid(info.GetFactory().GetProfile(0).GetId()) : std::string();
}

}  // namespace

void SeedPresetFolder(const std::string& presetPath, const std::string& factoryPath)
{
    namespace fs = boost::filesystem;
    boost::system::error_code error;
    if (presetPath.empty() || factoryPath.empty() || fs::exists(presetPath, error) || !fs::is_directory(factoryPath, error))
        return;
    // Best effort: whatever cannot be copied is simply not offered.
    fs::create_directories(presetPath, error);
    for (fs::recursive_directory_iterator entry(factoryPath, error), end; !error && entry != end; entry.increment(error)) {
        boost::system::error_code ignored;
        const fs::path target = fs::path(presetPath) / fs::relative(entry->path(), factoryPath, ignored);
        if (fs::is_directory(entry->path(), ignored))
            fs::create_directories(target, ignored);
        else
            fs::copy_file(entry->path(), target, fs::copy_options::skip_existing, ignored);
    }
}

ManagerSingleModule::ManagerSingleModule(MainDocumentSingleModule& mainDocument, ProgramDocument& program,
                                         const std::string& presetPath, const std::string& factoryPath)
    : programDocument(program), directory(presetPath, ModelText())
{
    SeedPresetFolder(presetPath, factoryPath);
    presetState = std::make_unique<PresetStateSingleModule>(mainDocument, directory);
    presetConnection = presetState->ConnectPresetChanged([this] { OnPresetChanged(); });
    programConnection = programDocument.ConnectProgramChanged([this] { OnProgramChanged(); });
}

ManagerSingleModule::~ManagerSingleModule() = default;

boost::signals2::connection ManagerSingleModule::ConnectStateChanged(const std::function<void()>& slot)
{
    return stateChanged.connect(slot);
}

std::string ManagerSingleModule::GetDisplayName() const
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    return name;
}

int ManagerSingleModule::GetKind() const
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    return kind;
}

void ManagerSingleModule::OnPresetChanged()
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    kind = PresetFile;
    const std::shared_ptr<const Directory::Node> selected = presetState->GetSelected();
    name = selected ? selected->GetName() : std::string();
    programDocument.SetPresetName(name);
    stateChanged();
}

void ManagerSingleModule::OnProgramChanged()
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    kind = HostProgram;
    name = programDocument.GetPresetName();
    stateChanged();
}

std::shared_ptr<ManagerSingleModule::Snapshot> ManagerSingleModule::TakeSnapshot()
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    return std::make_shared<Snapshot>(Snapshot{kind, name, presetState->TakeSnapshot()});
}

void ManagerSingleModule::RestoreSnapshot(const std::shared_ptr<Snapshot>& snapshot)
{
    std::lock_guard<std::recursive_mutex> guard(mutex);
    kind = snapshot->kind;
    name = snapshot->name;
    presetState->RestoreSnapshot(snapshot->state, false);
    stateChanged();
}

void ManagerSingleModule::LoadDefaults(bool keepMetering)
{
    presetState->LoadDefaults(keepMetering);
}

}  // namespace OV::Products::VN4::State
