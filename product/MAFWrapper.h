#pragma once

#include "docview/interfaces/MAFWrapper.h"
#include "engine/ModuleHostEngine.h"

#include <memory>

namespace OV::Products::VN4 {

// The door to the product's engine: owns the ModuleHostEngine and reaches its root's names.
// Transactions hold at most 1000 writes before growing, run without fades and without a reset
// on commit, so they only make writes land together between two internal blocks.
class MAFWrapper : public CFW::DocView::MAFWrapper {
public:
    MAFWrapper();
    ~MAFWrapper() override;

    void SetSampleRate(float rate) override;
    void SetTransport(float, double, double) override {}
    void ProcessBlock(float** inputs, float** outputs, int frames) override;
    void Reset() override;
    void SetStringParameter(const std::string& name, const std::string& value) override;
    void SetFloatParameter(const std::string& name, float value) override;
    float GetFloatParameter(ResolvedName& name) override;
    float ReadParameter(const std::string& name) override;
    float GetStateValue(const std::string& name, const std::string& state) override;
    float GetParameterMinimum(const std::string& name) override;
    float GetParameterMaximum(const std::string& name) override;
    void ReadDataBlock(ResolvedName& name, std::vector<float>& out) override;
    void ReadDataBlockByName(const std::string& name, std::vector<float>& out) override;
    void ResolveName(ResolvedName& out, const std::string& name) override;
    bool BeginTransaction() override { return engine->BeginTransaction(); }
    void CommitTransaction() override { engine->CommitTransaction(); }
    bool IsInTransaction() const override { return engine->IsInTransaction(); }
    bool ReadBetweenChanges(const std::function<void()>& read) override;

    AudioEngine::VN4::ModuleHostEngine& GetEngine() const { return *engine; }

private:
    std::unique_ptr<AudioEngine::VN4::ModuleHostEngine> engine;
    float sampleRate = 0.0f;
};

}  // namespace OV::Products::VN4
