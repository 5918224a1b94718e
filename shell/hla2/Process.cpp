#include "shell/hla2/Process.h"

#include "shell/hla2/Boundary.h"

namespace OV::HLA2 {

namespace {

Process* Self(HLA2Process* table)
{
    return static_cast<Process*>(table->object);
}

}  // namespace

Process::Process(HLA2Host* host) : table{}, host(host)
{
    HLA2Process& t = table;
    t.GetName = [](HLA2Process* p, char* b, int s) { Guarded([&] { Self(p)->GetName(b, s); }); };
    t.GetVendor = [](HLA2Process* p, char* b, int s) { Guarded([&] { Self(p)->GetVendor(b, s); }); };
    t.GetPlugInType = [](HLA2Process* p) { return Guarded(0, [&] { return Self(p)->GetPlugInType(); }); };
    t.GetInputCount = [](HLA2Process* p) { return Guarded(0, [&] { return Self(p)->GetInputCount(); }); };
    t.GetOutputCount = [](HLA2Process* p) { return Guarded(0, [&] { return Self(p)->GetOutputCount(); }); };
    t.SetHostInputCount = [](HLA2Process* p, int n) { Guarded([&] { Self(p)->SetHostInputCount(n); }); };
    t.SetHostOutputCount = [](HLA2Process* p, int n) { Guarded([&] { Self(p)->SetHostOutputCount(n); }); };
    t.Start = [](HLA2Process* p) { Guarded([&] { Self(p)->Start(); }); };
    t.Stop = [](HLA2Process* p) { return Guarded(0, [&] { return Self(p)->Stop() ? 1 : 0; }); };
    t.SetBlockSize = [](HLA2Process* p, unsigned n) { Guarded([&] { Self(p)->SetBlockSize(n); }); };
    t.SetSampleRate = [](HLA2Process* p, float r) { return Guarded(0, [&] { return Self(p)->SetSampleRate(r); }); };
    t.Resume = [](HLA2Process* p) { return Guarded(0, [&] { return Self(p)->Resume() ? 1 : 0; }); };
    t.Suspend = [](HLA2Process* p) { Guarded([&] { Self(p)->Suspend(); }); };
    t.GetLatency = [](HLA2Process* p) { return Guarded(0, [&] { return Self(p)->GetLatency(); }); };
    t.ProcessReplacing = [](HLA2Process* p, float** c, int n, void* x) {
        Guarded([&] { Self(p)->ProcessReplacing(c, n, x); });
    };
    t.ProcessSeparate = [](HLA2Process* p, float** i, float** o, int n, void* x) {
        Guarded([&] { Self(p)->ProcessSeparate(i, o, n, x); });
    };
    t.SendMIDI = [](HLA2Process* p, const void* e, int n) { return Guarded(0, [&] { return Self(p)->SendMIDI(e, n); }); };
    t.GetParameterCount = [](HLA2Process* p) { return Guarded(0, [&] { return Self(p)->GetParameterCount(); }); };
    t.GetParameterName = [](HLA2Process* p, int i, char* b, int s) {
        Guarded([&] { Self(p)->GetParameterName(i, b, s); });
    };
    t.GetParameterDisplay = [](HLA2Process* p, int i, char* b, int s) {
        Guarded([&] { Self(p)->GetParameterDisplay(i, b, s); });
    };
    t.GetParameterDisplayFor = [](HLA2Process* p, int i, float v, char* b, int s) {
        Guarded([&] { Self(p)->GetParameterDisplayFor(i, v, b, s); });
    };
    t.ToNormalized = [](HLA2Process* p, int i, float v) {
        return Guarded(0.0f, [&] { return Self(p)->ToNormalized(i, v); });
    };
    t.GetParameterValue = [](HLA2Process* p, int i) {
        return Guarded(0.0f, [&] { return Self(p)->GetParameterValue(i); });
    };
    t.GetParameterNormalized = [](HLA2Process* p, int i) {
        return Guarded(0.0f, [&] { return Self(p)->GetParameterNormalized(i); });
    };
    t.SetParameterValue = [](HLA2Process* p, int i, float v) {
        return Guarded(0, [&] { return Self(p)->SetParameterValue(i, v); });
    };
    t.SetParameterNormalized = [](HLA2Process* p, int i, float v) {
        return Guarded(0, [&] { return Self(p)->SetParameterNormalized(i, v); });
    };
    t.SetBankChunk = [](HLA2Process* p, const void* x, int n) { Guarded([&] { Self(p)->SetBankChunk(x, n); }); };
    t.GetBankChunk = [](HLA2Process* p, void** x) { return Guarded(0, [&] { return Self(p)->GetBankChunk(x); }); };
    t.FreeBankChunk = [](HLA2Process* p) { Guarded([&] { Self(p)->FreeBankChunk(); }); };
    t.SetProgramChunk = [](HLA2Process* p, const void* x, int n) { Guarded([&] { Self(p)->SetProgramChunk(x, n); }); };
    t.GetProgramChunk = [](HLA2Process* p, void** x) { return Guarded(0, [&] { return Self(p)->GetProgramChunk(x); }); };
    t.FreeProgramChunk = [](HLA2Process* p) { Guarded([&] { Self(p)->FreeProgramChunk(); }); };
    t.GetProgramCount = [](HLA2Process* p) { return Guarded(0, [&] { return Self(p)->GetProgramCount(); }); };
    t.SetProgram = [](HLA2Process* p, int i) { return Guarded(0, [&] { return Self(p)->SetProgram(i); }); };
    t.GetProgram = [](HLA2Process* p) { return Guarded(0, [&] { return Self(p)->GetProgram(); }); };
    t.SetProgramName = [](HLA2Process* p, int i, const char* n) { Guarded([&] { Self(p)->SetProgramName(i, n); }); };
    t.GetProgramName = [](HLA2Process* p, int i, char* b, int s) {
        Guarded([&] { Self(p)->GetProgramName(i, b, s); });
    };
    t.CopyProgram = [](HLA2Process* p, int a, int b) { return Guarded(0, [&] { return Self(p)->CopyProgram(a, b); }); };
    t.GetExtension = [](HLA2Process* p, void* w) {
        return Guarded<void*>(nullptr, [&] { return Self(p)->GetExtension(w); });
    };
    t.object = this;
}

}  // namespace OV::HLA2
