#pragma once

#include <string>
#include <vector>

namespace AudioEngine {

class DataBlockHandler;

// A bulk value of floats, addressed by name.
class DataBlockBase {
public:
    virtual ~DataBlockBase() = default;
    // Audio thread: no allocation while the size stays.
    virtual void SetData(const std::vector<float>& data) = 0;
    virtual const std::vector<float>& GetData() const = 0;
    virtual const std::string& GetName() const = 0;
    virtual const std::string& GetDescription() const = 0;
};

class DataBlock : public DataBlockBase {
public:
    DataBlock(std::string name, std::string description, std::size_t size = 0)
        : name(std::move(name)), description(std::move(description)), data(size, 0.0f)
    {
    }

    void SetData(const std::vector<float>& values) override { data.assign(values.begin(), values.end()); }
    const std::vector<float>& GetData() const override { return data; }
    const std::string& GetName() const override { return name; }
    const std::string& GetDescription() const override { return description; }
    // Writes in place; the size is the block's.
    float* Values() { return data.data(); }

private:
    std::string name;
    std::string description;
    std::vector<float> data;
};

// Re-exports a data block of another handler under a name of its own.
class DataBlockLinked : public DataBlockBase {
public:
    DataBlockLinked(DataBlockHandler& target, const std::string& targetName, std::string linkName);

    void SetData(const std::vector<float>& data) override;
    const std::vector<float>& GetData() const override;
    const std::string& GetName() const override { return linkName; }
    const std::string& GetDescription() const override { return description; }
    virtual void Retarget(DataBlockHandler& handler);

private:
    DataBlockHandler* targetHandler;
    DataBlockBase* targetBlock;
    std::string targetName;
    std::string linkName;
    std::string description;
};

}  // namespace AudioEngine
