#include "engine/core/Module.h"

#include <ostream>

namespace AudioEngine {

using namespace AudioContainers;

Module::Module(ModuleInfo moduleInfo) : ParameterHandler(moduleInfo.name), info(std::move(moduleInfo)) {}

void Module::Dump(std::ostream& stream, const std::string& prefix) const
{
    DumpOwnPorts(stream, prefix);
}

void Module::DumpOwnPorts(std::ostream& stream, const std::string& prefix) const
{
    for (const auto& [name, input] : inputs)
        stream << prefix << "." << name << " " << static_cast<const void*>(input->GetBuffer()) << "\n";
    for (const auto& [name, output] : outputs)
        stream << prefix << "." << name << " " << static_cast<const void*>(output->GetBuffer()) << "\n";
}

void Module::ApplyDefaults()
{
    for (const auto& [name, parameter] : GetParameters())
        SetParameter(name, parameter->GetDefault());
}

Input& Module::AddInput(const std::string& name, const std::string& description)
{
    return inputs.Add(name, std::make_unique<Input>(name, description));
}

Output& Module::AddOutput(std::unique_ptr<Output> output)
{
    const std::string name = output->GetName();
    return outputs.Add(name, std::move(output));
}

void Module::ResolveInputs()
{
    for (const auto& entry : inputs)
        entry.second->Resolve();
}

void Module::ResolveOutputs()
{
    for (const auto& entry : outputs)
        entry.second->Resolve();
}

}  // namespace AudioEngine
