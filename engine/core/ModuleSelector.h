#pragma once

#include "engine/core/Environment.h"
#include "engine/core/Module.h"
#include "engine/core/ModuleStructured.h"

#include <boost/unordered_map.hpp>

namespace AudioEngine {

namespace ModuleSelectorDetails {

class ModuleCreatorBase {
public:
    virtual ~ModuleCreatorBase() = default;
    virtual std::unique_ptr<Module> Create() const = 0;
};

template <typename T>
class ModuleCreator : public ModuleCreatorBase {
public:
    std::unique_ptr<Module> Create() const override { return std::make_unique<T>(); }
};

// Named creators in insertion order.
using ModuleCreators = ModuleStructuredDetails::ModuleMap<ModuleCreatorBase>;

}  // namespace ModuleSelectorDetails

// Holds one module per creator, all built and set up; "Ratio" picks the one that runs. The
// outer ports and links survive a switch: only their sources and targets move. Every
// operation goes to the current module, except SampleRateChanged, which reaches all of them so
// that an idle module is ready when it is picked.
template <typename Creators>
class ModuleSelector : public Module, public EnvironmentLocal {
public:
    ModuleSelector();

    void Setup(Environment* environment) override;
    void Process() override { current->Process(); }
    void Connect() override;
    void ResolvePorts() override;
    void BindPorts() override { current->BindPorts(); }
    void Dump(std::ostream& stream, const std::string& prefix) const override;
    void ApplyDefaults() override;
    void SampleRateChanged() override;
    void Reset() override { current->Reset(); }
    // Audio thread, between blocks: a change of "Ratio" switches modules at once.
    void SetParameter(const std::string& name, float value) override;

    Module& GetCurrent() const { return *current; }

protected:
    void CreateInputs() override;
    void CreateOutputs() override;
    void CreateParameters() override;
    void SetEnvironment(Environment* environment) override { parent = environment; }

private:
    void Select(int index);
    void SaveValues();
    void RestoreValues();
    void Relink();

    Creators creators;
    const std::string selectorName = "Ratio";
    Module* current = nullptr;
    std::vector<std::unique_ptr<Module>> modules;
    boost::unordered_map<std::string, float> saved;
};

template <typename Creators>
ModuleSelector<Creators>::ModuleSelector() : Module(ModuleInfo{0, "ModuleSelector", ""})
{
    saved.max_load_factor(1.0f);
    saved.rehash(50);
}

template <typename Creators>
void ModuleSelector<Creators>::Setup(Environment* environment)
{
    SetEnvironment(environment);
    for (const auto& entry : creators) {
        modules.push_back(entry.second->Create());
        modules.back()->Setup(this);
    }
    current = modules.front().get();
    CreateParameters();
    CreateInputs();
    CreateOutputs();
    Connect();
    FinishSetup();
    // Room for every saved value, so a switch on the audio thread does not allocate.
    for (const auto& entry : GetParameters())
        saved[entry.first] = 0.0f;
}

template <typename Creators>
void ModuleSelector<Creators>::CreateParameters()
{
    if (GetParameterCount() == 0) {
        std::vector<std::string> names;
        for (const auto& entry : creators)
            names.push_back(entry.first);
        AddParameter(std::make_unique<Parameter>(selectorName, "", names, names.front(), 0));
    }
    for (const auto& entry : current->GetParameters())
        AddParameter(std::make_unique<ParameterLinked>(*current, entry.first, entry.first));
    for (const auto& entry : current->GetDataBlocks())
        AddDataBlock(std::make_unique<DataBlockLinked>(*current, entry.first, entry.first));
}

template <typename Creators>
void ModuleSelector<Creators>::CreateInputs()
{
    for (const auto& entry : current->GetInputs())
        AddInput(entry.first, entry.second->GetDescription());
}

template <typename Creators>
void ModuleSelector<Creators>::CreateOutputs()
{
    for (const auto& entry : current->GetOutputs())
        AddOutput(std::make_unique<AudioContainers::OutputConnectable>(entry.first, entry.second->GetDescription()));
}

// The current module's inputs take the selector's; the selector's outputs take its outputs.
template <typename Creators>
void ModuleSelector<Creators>::Connect()
{
    for (const auto& entry : current->GetInputs()) {
        if (AudioContainers::Input* outer = GetInput(entry.first))
            entry.second->SetSource(outer);
    }
    for (const auto& entry : GetOutputs()) {
        if (AudioContainers::Output* inner = current->GetOutput(entry.first))
            entry.second->SetSource(inner);
    }
    current->Connect();
}

template <typename Creators>
void ModuleSelector<Creators>::ResolvePorts()
{
    ResolveInputs();
    current->ResolvePorts();
    ResolveOutputs();
}

template <typename Creators>
void ModuleSelector<Creators>::Dump(std::ostream& stream, const std::string& prefix) const
{
    DumpOwnPorts(stream, prefix);
    current->Dump(stream, prefix + ".Current");
}

template <typename Creators>
void ModuleSelector<Creators>::ApplyDefaults()
{
    current->ApplyDefaults();
    Module::ApplyDefaults();
}

template <typename Creators>
void ModuleSelector<Creators>::SampleRateChanged()
{
    for (const auto& module : modules)
        module->SampleRateChanged();
}

template <typename Creators>
void ModuleSelector<Creators>::SetParameter(const std::string& name, float value)
{
    ParameterBase* selector = GetParameter(selectorName);
    const int before = static_cast<int>(selector->GetValue());
    Module::SetParameter(name, value);
    const int after = static_cast<int>(selector->GetValue());
    if (name == selectorName && after != before)
        Select(after);
}

template <typename Creators>
void ModuleSelector<Creators>::Select(int index)
{
    SaveValues();
    current = modules[static_cast<std::size_t>(index)].get();
    if (GetTransactionState() == 0)
        current->Reset();
    Relink();
    RestoreValues();
    FinishSetup();
    Connect();
    ResolvePorts();
    BindPorts();
}

template <typename Creators>
void ModuleSelector<Creators>::SaveValues()
{
    for (const auto& entry : GetParameters()) {
        if (entry.first != selectorName)
            saved[entry.first] = entry.second->GetValue();
    }
}

template <typename Creators>
void ModuleSelector<Creators>::RestoreValues()
{
    for (const auto& entry : GetParameters()) {
        if (entry.first != selectorName)
            entry.second->SetValue(saved[entry.first]);
    }
}

template <typename Creators>
void ModuleSelector<Creators>::Relink()
{
    for (const auto& entry : GetParameters()) {
        if (auto* link = dynamic_cast<ParameterLinked*>(entry.second.get()))
            link->Retarget(*current);
    }
    for (const auto& entry : GetDataBlocks()) {
        if (auto* link = dynamic_cast<DataBlockLinked*>(entry.second.get()))
            link->Retarget(*current);
    }
}

}  // namespace AudioEngine
