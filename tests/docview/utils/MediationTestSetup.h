#pragma once

// A document, a MAF profile over it, a MAF context, and an engine door that records what reaches
// it, for the tests of the audio mediation.
#include "docview/datafilter/FloatRange.h"
#include "docview/interfaces/MAFContext.h"
#include "docview/interfaces/MAFWrapper.h"
#include "docview/utils/BasicDocument.h"
#include "docview/utils/BasicDocumentProfile.h"
#include "docview/utils/BasicMAFProfile.h"
#include "docview/utils/BasicProperties.h"
#include "docview/utils/ExchangeRing.h"

#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace OV::CFW::DocViewUtils::TestDoubles {

using DocView::Parameter;
using DocView::ParameterInfo;

// Rows: a few of each kind, a transient output, an unmediated row, and 40 band rows.
class MediatedDocumentProfile : public BasicDocumentProfile {
public:
    enum Row { Gain = 0, Mode = 1, Active = 2, Level = 3, Free = 4, Bypass = 5, FirstBand = 6 };
    static constexpr int bands = 40;

    MediatedDocumentProfile()
    {
        using DataFilter::MakeRange;
        SetParameter(Gain, ParameterInfo::MakeFloat("Gain", 0.0f, *MakeRange(-15.0f, 15.0f), ParameterInfo::Serializable));
        SetParameter(Mode, ParameterInfo::MakeEnum("Mode", {"A", "B", "C"}, 1, ParameterInfo::Serializable));
        SetParameter(Active, ParameterInfo::MakeBool("Active", false, ParameterInfo::Serializable));
        SetParameter(Level, ParameterInfo::MakeFloat("Level", 0.0f, *MakeRange(0.0f, 100.0f), ParameterInfo::Transient));
        SetParameter(Free, ParameterInfo::MakeFloat("Free", 0.0f, *MakeRange(0.0f, 1.0f), ParameterInfo::Serializable));
        SetParameter(Bypass, ParameterInfo::MakeBool("Bypass", false, 0));
        for (int band = 0; band < bands; ++band)
            SetParameter(FirstBand + band, ParameterInfo::MakeFloat("Band" + std::to_string(band), static_cast<float>(band),
                                                                    *MakeRange(0.0f, 1000.0f), ParameterInfo::Serializable));
    }
};

// Gain drives two engine parameters; Level comes back from the engine; Free has none.
class MediatedMAFProfile : public BasicMAFProfile {
public:
    MediatedMAFProfile() : BasicMAFProfile("Test")
    {
        using Row = MediatedDocumentProfile;
        AddCreator(std::make_unique<MAFParamMediatorFloat::Creator>(Row::Gain, "Gain"));
        AddCreator(std::make_unique<MAFParamMediatorFloat::Creator>(Row::Gain, "GainCopy"));
        AddCreator(std::make_unique<MAFParamMediatorEnum::Creator>(Row::Mode, "Mode", std::vector<float>{10, 20, 30}));
        AddCreator(std::make_unique<MAFParamMediatorBool::Creator>(Row::Active, "Active", std::string("Off"), std::string("On")));
        AddCreator(std::make_unique<MAFParamMediatorFloat::Creator>(Row::Level, "Level"));
        AddCreator(std::make_unique<MAFParamMediatorProcess::Creator>(-1, Row::Bypass, -1));
        for (int band = 0; band < Row::bands; ++band)
            AddCreator(std::make_unique<MAFParamMediatorFloat::Creator>(Row::FirstBand + band, "Band" + std::to_string(band)));
    }
    using BasicMAFProfile::AddCreator;
};

// A document whose batches a test can open.
class BatchDocument : public BasicDocument {
public:
    using BasicDocument::BasicDocument;
    template <typename Work>
    void Batch(Work&& work)
    {
        InBatch([&] {
            work();
            return 0;
        });
    }
};

class TestMAFContext : public DocView::MAFContext {
public:
    const DocView::Properties& GetProperties() const override { return properties; }
    DocView::Properties& GetProperties() override { return properties; }
    std::shared_ptr<DocView::InterfaceContext> CreateLocal(DocView::ComponentContext*) override { return nullptr; }
    DocView::ComponentContext* GetParent() const override { return nullptr; }
    ExchangeRing& GetExchangeRing() override { return ring; }

    BasicProperties properties;
    ExchangeRing ring;
};

// An engine door that records what reaches it, into storage reserved up front, so that the
// audio path under test is the only thing that could allocate or lock. Engine values to be
// read back are set in `values` before the first read.
class RecordingWrapper : public DocView::MAFWrapper {
public:
    enum Kind { SetFloat, SetString, Read, Block };
    struct Call {
        Kind kind;
        char name[64];
        float value;     // SetFloat: the value; Read: what was returned; Block: frames
        char text[32];   // SetString
        void* handle;    // Read: the handle it was given
    };

    explicit RecordingWrapper(std::size_t capacity = 4096) { calls.reserve(capacity); }

    void SetSampleRate(float) override {}
    void SetTransport(float, double, double) override {}
    void ProcessBlock(float**, float**, int frames) override { Record(Block, "", static_cast<float>(frames), "", nullptr); }
    void Reset() override {}
    void SetStringParameter(const std::string& name, const std::string& value) override { Record(SetString, name.c_str(), 0.0f, value.c_str(), nullptr); }
    void SetFloatParameter(const std::string& name, float value) override { Record(SetFloat, name.c_str(), value, "", nullptr); }
    float GetFloatParameter(ResolvedName& name) override
    {
        const float value = name.handle != nullptr ? *static_cast<float*>(name.handle) : 0.0f;
        Record(Read, name.name.c_str(), value, "", name.handle);
        return value;
    }
    float ReadParameter(const std::string&) override { return 0.0f; }
    float GetStateValue(const std::string&, const std::string&) override { return 0.0f; }
    float GetParameterMinimum(const std::string&) override { return 0.0f; }
    float GetParameterMaximum(const std::string&) override { return 0.0f; }
    void ReadDataBlock(ResolvedName&, std::vector<float>& out) override { out.clear(); }
    void ReadDataBlockByName(const std::string&, std::vector<float>& out) override { out.clear(); }
    void ResolveName(ResolvedName& out, const std::string& name) override
    {
        ++resolves;
        out.name.assign(name);
        const auto found = values.find(name);
        out.handle = found != values.end() ? &found->second : nullptr;
        out.stamp = static_cast<unsigned>(resolves);
    }
    bool BeginTransaction() override { return false; }
    void CommitTransaction() override {}
    bool IsInTransaction() const override { return false; }
    bool ReadBetweenChanges(const std::function<void()>& read) override { return read(), true; }

    // Test side, allocates: "F name=value", "S name=text", "R name=value", "B frames".
    std::vector<std::string> Log() const
    {
        std::vector<std::string> lines;
        for (const Call& call : calls) {
            char line[128];
            if (call.kind == SetString)
                std::snprintf(line, sizeof line, "S %s=%s", call.name, call.text);
            else if (call.kind == Block)
                std::snprintf(line, sizeof line, "B %g", static_cast<double>(call.value));
            else
                std::snprintf(line, sizeof line, "%c %s=%g", call.kind == Read ? 'R' : 'F', call.name, static_cast<double>(call.value));
            lines.emplace_back(line);
        }
        return lines;
    }
    void Clear() { calls.clear(); }

    std::vector<Call> calls;
    std::map<std::string, float> values;
    int resolves = 0;
    bool overflow = false; // more calls than the reserved storage holds

private:
    void Record(Kind kind, const char* name, float value, const char* text, void* handle)
    {
        if (calls.size() == calls.capacity()) {
            overflow = true;
            return;
        }
        Call call{kind, {}, value, {}, handle};
        std::strncpy(call.name, name, sizeof call.name - 1);
        std::strncpy(call.text, text, sizeof call.text - 1);
        calls.push_back(call);
    }
};

}  // namespace OV::CFW::DocViewUtils::TestDoubles
