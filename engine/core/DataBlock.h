#pragma once

#include <atomic>
#include <string>
#include <vector>

namespace AudioEngine {

class DataBlockHandler;

// A bulk value of floats, addressed by name. Written on the audio thread between blocks; read
// from any thread, consistently through the queue's ChangeSequence.
class DataBlockBase {
public:
    virtual ~DataBlockBase() = default;
    // Audio thread: no allocation, no lock.
    virtual void SetData(const std::vector<float>& data) = 0;
    // Any thread: the values into `out`, which allocates only while it grows.
    virtual void GetData(std::vector<float>& out) const = 0;
    virtual const std::string& GetName() const = 0;
    virtual const std::string& GetDescription() const = 0;
};

// Its size is fixed when it is made, so that a write never moves what a reader copies.
class DataBlock : public DataBlockBase {
public:
    DataBlock(std::string name, std::string description, std::size_t size = 0)
        : name(std::move(name)), description(std::move(description)), data(size)
    {
    }

    // Takes as many values as the block holds; the rest stay.
    void SetData(const std::vector<float>& values) override { Store(values.data(), values.size()); }
    void GetData(std::vector<float>& out) const override;
    const std::string& GetName() const override { return name; }
    const std::string& GetDescription() const override { return description; }
    // Audio thread: the first `count` values, at most the block's size. No allocation, no lock.
    void Store(const float* values, std::size_t count);

private:
    std::string name;
    std::string description;
    std::vector<std::atomic<float>> data; // relaxed: read by other threads
};

// Re-exports a data block of another handler under a name of its own.
class DataBlockLinked : public DataBlockBase {
public:
    DataBlockLinked(DataBlockHandler& target, const std::string& targetName, std::string linkName);

    void SetData(const std::vector<float>& data) override;
    void GetData(std::vector<float>& out) const override;
    const std::string& GetName() const override { return linkName; }
    const std::string& GetDescription() const override { return description; }
    virtual void Retarget(DataBlockHandler& handler);

private:
    DataBlockHandler* targetHandler;
    std::atomic<DataBlockBase*> targetBlock; // relaxed: moved on the audio thread, read anywhere
    std::string targetName;
    std::string linkName;
    std::string description;
};

}  // namespace AudioEngine
