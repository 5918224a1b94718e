#pragma once

namespace AudioEngine {

// What a module asks of the world. Audio thread, and set-up.
class Environment {
public:
    virtual ~Environment() = default;
    // 0 running; 1 to 4 the phases of a transaction.
    virtual int GetTransactionState() const = 0;
    virtual void SetTransactionState(int state) = 0;
    // Samples, at the rate the module runs at.
    virtual int GetMaxBlockSize() const = 0;
    // Hz.
    virtual float GetSampleRate() const = 0;
    // How leaf outputs are made: 0 always buffered.
    virtual int GetBufferPolicy() const = 0;
    // Samples of the block in progress.
    virtual int GetBlockSize() const = 0;
    // Once per processed internal block.
    virtual void Tick() = 0;
};

// The environment a structured module gives its children: by default its own parent's answers.
class EnvironmentLocal : public Environment {
public:
    int GetTransactionState() const override { return parent->GetTransactionState(); }
    void SetTransactionState(int) override {}
    int GetMaxBlockSize() const override { return parent->GetMaxBlockSize(); }
    float GetSampleRate() const override { return parent->GetSampleRate(); }
    int GetBufferPolicy() const override { return parent->GetBufferPolicy(); }
    int GetBlockSize() const override { return parent->GetBlockSize(); }
    void Tick() override {}

protected:
    Environment* parent = nullptr;
};

}  // namespace AudioEngine
