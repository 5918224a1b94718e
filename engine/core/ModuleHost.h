#pragma once

#include "engine/core/EnvironmentHostTransactional.h"
#include "engine/core/Module.h"
#include "engine/core/ParametersManager.h"

#include <atomic>
#include <cmath>
#include <memory>
#include <ostream>

namespace AudioEngine {

// Joins one root module to the host: re-framing, transactions and the queue of parameter
// changes. Traits name the root (`Root`), the queue (`Manager`) and the ramp time in seconds
// (`rampTime`).
//
// Threads: ProcessHostBlock, the queue (GetParametersManager().Enqueue) and the transaction
// operations run on the audio thread; construction, SetSampleRate and the root's
// SampleRateChanged run while audio is stopped.
template <typename Traits>
class ModuleHost : public EnvironmentHostTransactional<64, 4, 20> {
    using Base = EnvironmentHostTransactional<64, 4, 20>;

public:
    using Root = typename Traits::Root;
    using Manager = typename Traits::Manager;

    ModuleHost();
    ~ModuleHost() override = default;

    // Environment.
    float GetSampleRate() const override { return sampleRate; }
    int GetBufferPolicy() const override { return 0; }
    void Tick() override { ticks.store(ticks.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed); }

    void ProcessHostBlock(float** in, float** out, int count) override;

    Root& GetRoot() const { return *root; }
    Manager& GetParametersManager() { return *manager; }
    // Hz; the caller then runs the root's SampleRateChanged.
    void SetSampleRate(float rate) { sampleRate = rate; }
    // Internal blocks processed so far. Any thread.
    unsigned GetTickCount() const { return ticks.load(std::memory_order_relaxed); }

    bool IsInTransaction() const { return manager->IsTransactionOpen() || state != Running; }
    // Applies what the ring holds and opens a transaction; false while one is open or running.
    bool BeginTransaction();
    // With no records: closes. Otherwise the records land: faded (fades on) or at the next
    // internal block (fades off).
    void CommitTransaction();
    void CancelTransaction();
    void SetTransactionCapacity(int capacity) { manager->SetTransactionCapacity(capacity); }
    int GetOccupancy() const { return manager->Occupancy(); }
    void SetFadeEnabled(bool enabled) { fadeEnabled = enabled; }
    bool GetFadeEnabled() const { return fadeEnabled; }
    void SetResetOnCommit(bool reset) { manager->SetResetOnCommit(reset); }
    bool GetResetOnCommit() const { return manager->GetResetOnCommit(); }

    // Root parameters and data blocks by name; null when there is none.
    ParameterBase* ReadParameter(const std::string& name) const { return root->GetParameter(name); }
    DataBlockBase* ReadDataBlock(const std::string& name) const { return root->GetDataBlock(name); }
    void Dump(std::ostream& stream) const { root->Dump(stream, root->GetInfo().name); }
    void DrainChanges(int count, float seconds) { manager->Drain(count, seconds); }

protected:
    int GetInputCount() const override { return root->GetInputs().Size(); }
    int GetOutputCount() const override { return root->GetOutputs().Size(); }
    float* GetOutputBuffer(int index) const override { return outputBuffers[static_cast<std::size_t>(index)]->GetBuffer(); }
    void RunBlock() override;
    bool InternalBlock() override;

private:
    void BuildHostPorts();

    float sampleRate = 44100.0f;
    std::atomic<unsigned> ticks{0}; // written by the audio thread only
    std::unique_ptr<Root> root;
    std::vector<AudioContainers::Output*> outputBuffers; // the root's outputs in name order
    std::unique_ptr<Manager> manager;
    bool fadeEnabled = true;
};

template <typename Traits>
ModuleHost<Traits>::ModuleHost() : root(std::make_unique<Root>())
{
    static_cast<Module&>(*root).Setup(this);
    manager = std::make_unique<Manager>(*root, Traits::rampTime);
    BuildHostPorts();
}

template <typename Traits>
void ModuleHost<Traits>::BuildHostPorts()
{
    Module& tree = *root;
    for (const auto& entry : tree.GetInputs()) {
        hostOutputs.push_back(std::make_unique<EnvironmentHostDetails::HostOutput>());
        entry.second->SetSource(hostOutputs.back().get());
    }
    for (const auto& entry : tree.GetOutputs())
        outputBuffers.push_back(entry.second.get());
    tree.Connect();
    tree.ResolvePorts();
    tree.BindPorts();
    tree.ApplyDefaults();
}

template <typename Traits>
void ModuleHost<Traits>::RunBlock()
{
    const float seconds = static_cast<float>(GetBlockSize()) / sampleRate;
    DrainChanges(manager->Occupancy(), seconds);
    static_cast<Module&>(*root).Process();
    Tick();
}

template <typename Traits>
bool ModuleHost<Traits>::InternalBlock()
{
    if (state == Muted && !fadeEnabled) {
        // Unpaced: every record lands before this block, which runs as usual.
        manager->Replay(manager->TransactionRecords());
        manager->ClearTransaction();
        state = Running;
        RunBlock();
        return true;
    }
    return Base::InternalBlock();
}

template <typename Traits>
void ModuleHost<Traits>::ProcessHostBlock(float** in, float** out, int count)
{
    if (state == Muted && fadeEnabled && manager->IsTransactionOpen()) {
        // Paced: the records land within 10 ms of sound, whatever their number.
        const double records = manager->TransactionRecords();
        const int budget = static_cast<int>(std::ceil(count * records / (sampleRate * 0.01)));
        if (manager->Replay(budget)) {
            if (manager->GetResetOnCommit())
                static_cast<Module&>(*root).Reset();
            manager->ClearTransaction();
            state = Flushing;
        }
    }
    Base::ProcessHostBlock(in, out, count);
}

template <typename Traits>
bool ModuleHost<Traits>::BeginTransaction()
{
    if (manager->IsTransactionOpen() || state != Running)
        return false;
    manager->Flush();
    manager->OpenTransaction();
    return true;
}

template <typename Traits>
void ModuleHost<Traits>::CommitTransaction()
{
    if (manager->TransactionRecords() == 0) {
        manager->ClearTransaction();
        return;
    }
    state = fadeEnabled ? FadingOut : Muted;
}

template <typename Traits>
void ModuleHost<Traits>::CancelTransaction()
{
    state = fadeEnabled ? FadingIn : Running;
    manager->ClearTransaction();
}

}  // namespace AudioEngine
