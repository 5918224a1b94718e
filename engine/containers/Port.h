#pragma once

#include "engine/containers/Buffer.h"

#include <string>

namespace AudioEngine::AudioContainers {

// A named end of a connection. A port owns no samples (except OutputBuffered); it forwards to
// its source, so that a tree of modules runs with one buffer per real signal. GetBuffer is valid
// for the block in progress and may change when the tree is rewired: fetch it every block.
class Port {
public:
    Port(std::string name, std::string description)
        : description(std::move(description)), name(std::move(name))
    {
    }
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    virtual ~Port() = default;

    const std::string& GetName() const { return name; }
    const std::string& GetDescription() const { return description; }
    // Collapses one transparent hop: a source that only forwards is replaced by its source.
    void Resolve();
    virtual bool IsTransparent() const { return true; }
    virtual float* GetBuffer() const { return source != nullptr ? source->GetBuffer() : nullptr; }
    Port* GetSource() const { return source; }

protected:
    Port* source = nullptr;

private:
    std::string description;
    std::string name;
};

class Input : public Port {
public:
    using Port::Port;
    void SetSource(Port* port) { source = port; }
};

class Output : public Port {
public:
    using Port::Port;
    // Returns the source it replaces.
    virtual Port* SetSource(Port* port)
    {
        Port* old = source;
        source = port;
        return old;
    }
    virtual void ClearSource() {}
};

// A structured module's outer output over an inner one.
class OutputHierarchic : public Output {
public:
    OutputHierarchic(std::string name, std::string description, Port* inner)
        : Output(std::move(name), std::move(description))
    {
        source = inner;
    }
};

// An output whose samples are those of an input of the same module.
class OutputShared : public Output {
public:
    OutputShared(std::string name, std::string description, Input* shared)
        : Output(std::move(name), std::move(description))
    {
        source = shared;
    }
};

// A shared output whose module writes its result into the shared buffer.
class OutputInPlace : public OutputShared {
public:
    using OutputShared::OutputShared;
};

// An output whose source can be switched and switched back; a selector's outer output.
class OutputConnectable : public Output {
public:
    using Output::Output;
    bool IsTransparent() const override { return false; }
    Port* SetSource(Port* port) override
    {
        saved = source;
        source = port;
        return saved;
    }
    void ClearSource() override { source = saved; }

private:
    Port* saved = nullptr;
};

// An output that owns its samples: own buffer, a connected source, or the shared silence.
class OutputBuffered : public Output {
public:
    enum Mode { Own = 0, Connected = 1, Silent = 2 };

    // Set-up only: allocates `size` samples and makes sure the silence is as long.
    OutputBuffered(std::string name, std::string description, unsigned size);
    ~OutputBuffered() override;

    bool IsTransparent() const override { return false; }
    float* GetBuffer() const override;
    // Non-null connects; null silences.
    Port* SetSource(Port* port) override;
    void ClearSource() override { mode = Own; }
    Mode GetMode() const { return mode; }
    unsigned Size() const { return buffer.Size(); }

private:
    Buffer buffer;
    Mode mode = Own;
};

// The process-wide zeros that silenced outputs read: never shorter than the longest output
// buffer built so far. Set-up thread only.
float* SilenceBuffer();

}  // namespace AudioEngine::AudioContainers
