#include "product/MAFWrapper.h"

namespace OV::Products::VN4 {

using AudioEngine::DataBlockBase;
using AudioEngine::ParameterBase;

MAFWrapper::MAFWrapper() : engine(std::make_unique<AudioEngine::VN4::ModuleHostEngine>())
{
    engine->SetTransactionCapacity(1000);
    engine->SetFadeEnabled(false);
    engine->SetResetOnCommit(false);
}

MAFWrapper::~MAFWrapper() = default;

void MAFWrapper::SetSampleRate(float rate)
{
    if (rate == sampleRate)
        return;
    sampleRate = rate;
    const AudioEngine::ChangeSequence::Pass pass(engine->GetParametersManager().GetChanges());
    engine->SetSampleRate(rate);
    static_cast<AudioEngine::Module&>(engine->GetRoot()).SampleRateChanged();
}

void MAFWrapper::ProcessBlock(float** inputs, float** outputs, int frames)
{
    engine->ProcessHostBlock(inputs, outputs, frames);
}

void MAFWrapper::Reset()
{
    engine->ClearPads();
    static_cast<AudioEngine::Module&>(engine->GetRoot()).Reset();
}

void MAFWrapper::SetStringParameter(const std::string& name, const std::string& value)
{
    engine->GetParametersManager().Enqueue(name, GetStateValue(name, value));
}

void MAFWrapper::SetFloatParameter(const std::string& name, float value)
{
    engine->GetParametersManager().Enqueue(name, value);
}

float MAFWrapper::GetFloatParameter(ResolvedName& name)
{
    if (name.kind != ResolvedName::Parameter || name.stamp != engine->GetTickCount()) {
        ParameterBase* parameter = engine->ReadParameter(name.name);
        name.kind = parameter != nullptr ? ResolvedName::Parameter : ResolvedName::None;
        name.handle = parameter;
        name.stamp = engine->GetTickCount();
    }
    return name.handle != nullptr ? static_cast<ParameterBase*>(name.handle)->GetValue() : 0.0f;
}

float MAFWrapper::ReadParameter(const std::string& name)
{
    ParameterBase* parameter = engine->ReadParameter(name);
    return parameter != nullptr ? parameter->GetValue() : 0.0f;
}

float MAFWrapper::GetStateValue(const std::string& name, const std::string& state)
{
    const ParameterBase* parameter = engine->ReadParameter(name);
    if (parameter == nullptr)
        return 0.0f;
    const auto found = parameter->GetStates().find(state);
    return found != parameter->GetStates().end() ? found->second : 0.0f;
}

float MAFWrapper::GetParameterMinimum(const std::string& name)
{
    const ParameterBase* parameter = engine->ReadParameter(name);
    return parameter != nullptr ? parameter->GetMin() : 0.0f;
}

float MAFWrapper::GetParameterMaximum(const std::string& name)
{
    const ParameterBase* parameter = engine->ReadParameter(name);
    return parameter != nullptr ? parameter->GetMax() : 0.0f;
}

void MAFWrapper::ReadDataBlock(ResolvedName& name, std::vector<float>& out)
{
    if (name.kind != ResolvedName::DataBlock || name.stamp != engine->GetTickCount()) {
        DataBlockBase* block = engine->ReadDataBlock(name.name);
        name.kind = block != nullptr ? ResolvedName::DataBlock : ResolvedName::None;
        name.handle = block;
        name.stamp = engine->GetTickCount();
    }
    if (name.handle != nullptr)
        static_cast<DataBlockBase*>(name.handle)->GetData(out);
    else
        out.clear();
}

void MAFWrapper::ReadDataBlockByName(const std::string& name, std::vector<float>& out)
{
    if (const DataBlockBase* block = engine->ReadDataBlock(name))
        block->GetData(out);
    else
        out.clear();
}

bool MAFWrapper::ReadBetweenChanges(const std::function<void()>& read)
{
    return engine->GetParametersManager().GetChanges().ReadStable(read);
}

void MAFWrapper::ResolveName(ResolvedName& out, const std::string& name)
{
    out.name.assign(name);
    out.stamp = engine->GetTickCount();
    if (ParameterBase* parameter = engine->ReadParameter(name)) {
        out.kind = ResolvedName::Parameter;
        out.handle = parameter;
    } else if (DataBlockBase* block = engine->ReadDataBlock(name)) {
        out.kind = ResolvedName::DataBlock;
        out.handle = block;
    } else {
        out.kind = ResolvedName::None;
        out.handle = nullptr;
    }
}

}  // namespace OV::Products::VN4
