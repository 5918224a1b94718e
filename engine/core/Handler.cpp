#include "engine/core/Handler.h"

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

DataBlockLinked::DataBlockLinked(DataBlockHandler& target, const std::string& targetName,
                                 std::string linkName)
    : targetHandler(&target), targetBlock(target.GetDataBlock(targetName)), targetName(targetName),
      linkName(std::move(linkName)),
      description(targetBlock != nullptr ? targetBlock->GetDescription() : std::string())
{
}

void DataBlockLinked::SetData(const std::vector<float>& data)
{
    targetHandler->SetDataBlock(targetName, data);
}

const std::vector<float>& DataBlockLinked::GetData() const
{
    return targetBlock->GetData();
}

void DataBlockLinked::Retarget(DataBlockHandler& handler)
{
    targetHandler = &handler;
    targetBlock = handler.GetDataBlock(targetName);
}

}  // namespace AudioEngine
