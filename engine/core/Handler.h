#pragma once

#include "engine/containers/MapPointer.h"
#include "engine/core/DataBlock.h"
#include "engine/core/Parameter.h"

#include <memory>

namespace AudioEngine {

class Handler {};

// Owns parameters by name. Lookups and sets run on the audio thread and never allocate.
class ParameterHandler : public Handler {
public:
    using Parameters = AudioContainers::MapPointer<AudioContainers::HashedTraits<ParameterBase>>;

    explicit ParameterHandler(std::string name) : name(std::move(name)) {}
    ParameterHandler(const ParameterHandler&) = delete;
    ParameterHandler& operator=(const ParameterHandler&) = delete;
    virtual ~ParameterHandler() = default;

    // Null for a name the handler does not have.
    virtual ParameterBase* GetParameter(const std::string& parameter) const { return parameters.Find(parameter); }
    virtual const Parameters& GetParameters() const { return parameters; }
    // Looks up and sets; an unknown name does nothing. Modules override it to react.
    virtual void SetParameter(const std::string& parameter, float value);
    virtual int GetParameterCount() const { return parameters.Size(); }

    const std::string& GetHandlerName() const { return name; }

protected:
    // Set-up only.
    ParameterBase& AddParameter(std::unique_ptr<ParameterBase> parameter);

private:
    std::string name;
    Parameters parameters;
};

// Owns data blocks by name.
class DataBlockHandler : public Handler {
public:
    using DataBlocks = AudioContainers::MapPointer<AudioContainers::HashedTraits<DataBlockBase>>;

    DataBlockHandler() = default;
    DataBlockHandler(const DataBlockHandler&) = delete;
    DataBlockHandler& operator=(const DataBlockHandler&) = delete;
    virtual ~DataBlockHandler() = default;

    virtual DataBlockBase* GetDataBlock(const std::string& block) const { return dataBlocks.Find(block); }
    virtual const DataBlocks& GetDataBlocks() const { return dataBlocks; }
    virtual void SetDataBlock(const std::string& block, const std::vector<float>& data);
    virtual int GetDataBlockCount() const { return dataBlocks.Size(); }

protected:
    DataBlockBase& AddDataBlock(std::unique_ptr<DataBlockBase> block);

private:
    DataBlocks dataBlocks;
};

}  // namespace AudioEngine
