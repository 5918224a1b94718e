#include "engine/core/Handler.h"

#include <algorithm>

namespace AudioEngine {

void ParameterHandler::SetParameter(const std::string& parameter, float value)
{
    if (ParameterBase* found = parameters.Find(parameter))
        found->SetValue(value);
}

ParameterBase& ParameterHandler::AddParameter(std::unique_ptr<ParameterBase> parameter)
{
    const std::string key = parameter->GetName();
    return parameters.Add(key, std::move(parameter));
}

void DataBlockHandler::SetDataBlock(const std::string& block, const std::vector<float>& data)
{
    if (DataBlockBase* found = dataBlocks.Find(block))
        found->SetData(data);
}

DataBlockBase& DataBlockHandler::AddDataBlock(std::unique_ptr<DataBlockBase> block)
{
    const std::string key = block->GetName();
    return dataBlocks.Add(key, std::move(block));
}

void DataBlock::Store(const float* values, std::size_t count)
{
    count = std::min(count, data.size());
    for (std::size_t i = 0; i < count; ++i)
        data[i].store(values[i], std::memory_order_relaxed);
}

void DataBlock::GetData(std::vector<float>& out) const
{
    out.resize(data.size());
    for (std::size_t i = 0; i < data.size(); ++i)
        out[i] = data[i].load(std::memory_order_relaxed);
}

DataBlockLinked::DataBlockLinked(DataBlockHandler& target, const std::string& targetName,
                                 std::string linkName)
    : targetHandler(&target), targetBlock(target.GetDataBlock(targetName)), targetName(targetName),
      linkName(std::move(linkName)),
      description(targetBlock.load() != nullptr ? targetBlock.load()->GetDescription() : std::string())
{
}

void DataBlockLinked::SetData(const std::vector<float>& data)
{
    targetHandler->SetDataBlock(targetName, data);
}

void DataBlockLinked::GetData(std::vector<float>& out) const
{
    if (const DataBlockBase* target = targetBlock.load(std::memory_order_relaxed))
        target->GetData(out);
    else
        out.clear();
}

void DataBlockLinked::Retarget(DataBlockHandler& handler)
{
    targetHandler = &handler;
    targetBlock.store(handler.GetDataBlock(targetName), std::memory_order_relaxed);
}

}  // namespace AudioEngine
