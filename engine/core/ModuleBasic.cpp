#include "engine/core/ModuleBasic.h"

namespace AudioEngine {

using namespace AudioContainers;

void ModuleBasic::Setup(Environment* newEnvironment)
{
    SetEnvironment(newEnvironment);
    CreateParameters();
    CreateInputs();
    CreateOutputs();
    FinishSetup();
}

void ModuleBasic::SetEnvironment(Environment* newEnvironment)
{
    environment = newEnvironment;
    maxBlockSize = environment->GetMaxBlockSize();
}

void ModuleBasic::ResolvePorts()
{
    ResolveInputs();
    ResolveOutputs();
}

void ModuleBasic::CreateOutputs()
{
    const unsigned flags = GetInfo().flags;
    const bool inPlace = (flags & ModuleInfo::InPlace) != 0;
    bool buffered = true;
    switch (environment->GetBufferPolicy()) {
    case 1:
        buffered = !inPlace || (flags & ModuleInfo::InPlaceRefine) == 0;
        break;
    case 2:
    case 3:
        buffered = !inPlace;
        break;
    default:
        break;
    }
    if (buffered)
        CreateOutputsBuffered();
    else
        CreateOutputsInPlace();
}

Output& ModuleBasic::AddOutputBuffered(const std::string& name, const std::string& description)
{
    return AddOutput(std::make_unique<OutputBuffered>(name, description, static_cast<unsigned>(maxBlockSize)));
}

Output& ModuleBasic::AddOutputShared(const std::string& name, const std::string& inputName)
{
    return AddOutput(std::make_unique<OutputInPlace>(name, "", GetInput(inputName)));
}

}  // namespace AudioEngine
