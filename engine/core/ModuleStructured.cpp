#include "engine/core/ModuleStructured.h"

#include <ostream>

namespace AudioEngine {

using namespace AudioContainers;

void ModuleStructured::Setup(Environment* environment)
{
    SetEnvironment(environment);
    CreateChildren();
    for (const auto& entry : children)
        entry.second->Setup(this);
    CreateParameters();
    CreateInputs();
    CreateOutputs();
    FinishSetup();
}

void ModuleStructured::Process()
{
    for (const auto& entry : children)
        entry.second->Process();
}

void ModuleStructured::Connect()
{
    ConnectChildren();
    for (const auto& entry : children)
        entry.second->Connect();
}

void ModuleStructured::ResolvePorts()
{
    ResolveInputs();
    for (const auto& entry : children)
        entry.second->ResolvePorts();
    ResolveOutputs();
}

void ModuleStructured::BindPorts()
{
    for (const auto& entry : children)
        entry.second->BindPorts();
}

void ModuleStructured::Dump(std::ostream& stream, const std::string& prefix) const
{
    DumpOwnPorts(stream, prefix);
    for (const auto& [name, child] : children)
        child->Dump(stream, prefix + "." + name);
}

void ModuleStructured::ApplyDefaults()
{
    for (const auto& entry : children)
        entry.second->ApplyDefaults();
    Module::ApplyDefaults();
}

void ModuleStructured::SampleRateChanged()
{
    for (const auto& entry : children)
        entry.second->SampleRateChanged();
}

void ModuleStructured::Reset()
{
    for (const auto& entry : children)
        entry.second->Reset();
}

void ModuleStructured::CreateParameters()
{
    for (const auto& [childName, child] : children) {
        for (const auto& entry : child->GetParameters())
            AddParameter(std::make_unique<ParameterLinked>(*child, entry.first, entry.first + "_" + childName));
        for (const auto& entry : child->GetDataBlocks())
            AddDataBlock(std::make_unique<DataBlockLinked>(*child, entry.first, entry.first + "_" + childName));
    }
}

void ModuleStructured::LinkChildEntries(Module& child)
{
    for (const auto& entry : child.GetParameters())
        AddParameter(std::make_unique<ParameterLinked>(child, entry.first, entry.first));
    for (const auto& entry : child.GetDataBlocks())
        AddDataBlock(std::make_unique<DataBlockLinked>(child, entry.first, entry.first));
}

Output& ModuleStructured::AddOutputHierarchic(const std::string& name, Port* inner)
{
    return AddOutput(std::make_unique<OutputHierarchic>(name, "", inner));
}

namespace {

// Sets each input's source to the output at the same position in name order.
template <typename Sources>
void ConnectPairwise(const Module::Inputs& inputs, const Sources& sources)
{
    auto source = sources.begin();
    for (auto input = inputs.begin(); input != inputs.end() && source != sources.end(); ++input, ++source)
        input->second->SetSource(source->second.get());
}

}  // namespace

void ModuleStructured::ConnectChildren()
{
    Module* previous = nullptr;
    for (const auto& entry : children) {
        Module& child = *entry.second;
        if (previous == nullptr)
            ConnectPairwise(child.GetInputs(), GetInputs());
        else
            ConnectPairwise(child.GetInputs(), previous->GetOutputs());
        previous = &child;
    }
    if (previous == nullptr)
        return;
    auto source = previous->GetOutputs().begin();
    for (auto output = GetOutputs().begin();
         output != GetOutputs().end() && source != previous->GetOutputs().end(); ++output, ++source)
        output->second->SetSource(source->second.get());
}

}  // namespace AudioEngine

