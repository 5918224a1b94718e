#pragma once

#include "docview/interfaces/MAFWrapper.h"

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace OV::CFW::DocViewUtils::TestDoubles {

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
    void SetStringParameter(const std::string& name, const std::string& value) override
    {
        Record(SetString, name.c_str(), 0.0f, value.c_str(), nullptr);
    }
    void SetFloatParameter(const std::string& name, float value) override
    {
        Record(SetFloat, name.c_str(), value, "", nullptr);
    }
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
    bool ReadBetweenChanges(const std::function<void()>& read) override
    {
        read();
        return true;
    }

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
