#pragma once

#include "engine/core/Environment.h"
#include "engine/core/Module.h"

namespace AudioEngine {

// A leaf that does sample work in ProcessBlock, over BlockSize() samples of its ports.
class ModuleBasic : public Module {
public:
    using Module::Module;

    void Setup(Environment* environment) override;
    void Process() override { (this->*processEntry)(); }
    void Connect() override {}
    void ResolvePorts() override;

    Environment* GetEnvironment() const { return environment; }
    float GetSampleRate() const { return environment->GetSampleRate(); }
    int GetBlockSize() const { return environment->GetBlockSize(); }
    int GetMaxBlockSize() const { return maxBlockSize; }

protected:
    using ProcessEntry = void (ModuleBasic::*)();

    // Buffered or in place, by the environment's buffer policy and the module's flags.
    void CreateOutputs() override;
    void FinishSetup() override { SelectProcess(); }
    void SetEnvironment(Environment* environment) override;
    virtual void SelectProcess() { processEntry = &ModuleBasic::ProcessBlock; }
    virtual void CreateOutputsBuffered() = 0;
    // Only modules flagged to run in place are asked; by default they buffer all the same.
    virtual void CreateOutputsInPlace() { CreateOutputsBuffered(); }
    virtual void ProcessBlock() = 0;

    // An output owning the environment's maximum block of samples.
    AudioContainers::Output& AddOutputBuffered(const std::string& name, const std::string& description = "");
    // An output over the input of that name, written in place.
    AudioContainers::Output& AddOutputShared(const std::string& name, const std::string& inputName);
    template <typename Derived>
    void SetProcessEntry(void (Derived::*entry)())
    {
        processEntry = static_cast<ProcessEntry>(entry);
    }

private:
    Environment* environment = nullptr;
    ProcessEntry processEntry = &ModuleBasic::ProcessBlock;
    int maxBlockSize = 0;
};

}  // namespace AudioEngine
