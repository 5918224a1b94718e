#pragma once

#include "engine/containers/MapPointer.h"
#include "engine/containers/Port.h"
#include "engine/core/Handler.h"

#include <iosfwd>

namespace AudioEngine {

class Environment;

// What every module constructor passes up.
struct ModuleInfo {
    enum Flags {
        InPlace = 1,      // may run in place
        InPlaceRefine = 4 // refines the in-place choice
    };
    unsigned flags;
    std::string name;
    std::string description;
};

// A node of the signal graph, with its named parameters, data blocks and ports.
//
// Order of calls from the root: constructor; Setup; Connect, ResolvePorts, BindPorts,
// ApplyDefaults; then Process per block with SetParameter between blocks; SampleRateChanged and
// Reset as needed. Set-up may allocate; Process, SetParameter, SampleRateChanged and Reset run
// on the audio thread and never allocate.
class Module : public ParameterHandler, public DataBlockHandler {
public:
    using Inputs = AudioContainers::MapPointer<AudioContainers::OrderedTraits<AudioContainers::Input>>;
    using Outputs = AudioContainers::MapPointer<AudioContainers::OrderedTraits<AudioContainers::Output>>;

    explicit Module(ModuleInfo info);

    const ModuleInfo& GetInfo() const { return info; }
    AudioContainers::Input* GetInput(const std::string& name) const { return inputs.Find(name); }
    AudioContainers::Output* GetOutput(const std::string& name) const { return outputs.Find(name); }
    const Inputs& GetInputs() const { return inputs; }
    const Outputs& GetOutputs() const { return outputs; }

    virtual void Setup(Environment* environment) = 0;
    virtual void Process() = 0;
    virtual void Connect() = 0;
    virtual void ResolvePorts() = 0;
    // Caches the port pointers the module reads in Process.
    virtual void BindPorts() = 0;
    // One line per port (name and buffer), children below under their path.
    virtual void Dump(std::ostream& stream, const std::string& prefix) const;
    // Puts every parameter's default through SetParameter, so that reactions run.
    virtual void ApplyDefaults();
    virtual void SampleRateChanged() {}
    // Clears all signal state.
    virtual void Reset() {}

protected:
    virtual void CreateInputs() = 0;
    virtual void CreateOutputs() = 0;
    virtual void CreateParameters() = 0;
    virtual void FinishSetup() {}
    virtual void SetEnvironment(Environment* environment) = 0;

    AudioContainers::Input& AddInput(const std::string& name, const std::string& description = "");
    AudioContainers::Output& AddOutput(std::unique_ptr<AudioContainers::Output> output);
    void ResolveInputs();
    void ResolveOutputs();
    void DumpOwnPorts(std::ostream& stream, const std::string& prefix) const;

private:
    ModuleInfo info;
    Inputs inputs;
    Outputs outputs;
};

}  // namespace AudioEngine
