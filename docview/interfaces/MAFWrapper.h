#pragma once

#include <functional>
#include <string>
#include <vector>

#include <boost/noncopyable.hpp>

namespace OV::CFW::DocView {

// The door to one audio engine: all traffic between the framework and the engine goes through
// it, and engine values are addressed by name.
//
// Threads: SetSampleRate and Reset run on the main thread while no block is processed.
// ProcessBlock, SetStringParameter, SetFloatParameter, GetFloatParameter, ResolveName and the
// transaction operations run on the audio thread and must neither allocate, lock nor wait
// (ResolveName: as long as `out.name` already has the capacity for the name). The others are
// for the main thread and may allocate; the reads may also run there, beside the audio.
class MAFWrapper : boost::noncopyable {
public:
    // A name looked up once: `handle` is the engine's object for it (opaque here, null when the
    // engine has none) and `kind` says what it is; `stamp` is the engine's counter when it was
    // looked up, so that the wrapper can tell a stale handle and renew it.
    struct ResolvedName {
        enum Kind { None, Parameter, DataBlock };
        std::string name;
        void* handle = nullptr;
        unsigned stamp = 0;
        Kind kind = None;
    };

    virtual ~MAFWrapper() = default;
    // Hz.
    virtual void SetSampleRate(float rate) = 0;
    virtual void SetTransport(float bpm, double positionA, double positionB) = 0;
    // One host block; `inputs` and `outputs` hold one buffer per channel of `frames` samples.
    virtual void ProcessBlock(float** inputs, float** outputs, int frames) = 0;
    // Clears the audio state.
    virtual void Reset() = 0;
    // A state's text, turned into its value by the engine.
    virtual void SetStringParameter(const std::string& name, const std::string& value) = 0;
    virtual void SetFloatParameter(const std::string& name, float value) = 0;
    // The fast read through a resolved name; may renew the handle and stamp in place. 0 when
    // the engine has no such parameter.
    virtual float GetFloatParameter(ResolvedName& name) = 0;
    // The slow reads by plain name.
    virtual float ReadParameter(const std::string& name) = 0;
    virtual float GetStateValue(const std::string& name, const std::string& state) = 0;
    virtual float GetParameterMinimum(const std::string& name) = 0;
    virtual float GetParameterMaximum(const std::string& name) = 0;
    // A data block's floats into `out` through a resolved name, renewed like GetFloatParameter;
    // `out` empty when there is none.
    virtual void ReadDataBlock(ResolvedName& name, std::vector<float>& out) = 0;
    virtual void ReadDataBlockByName(const std::string& name, std::vector<float>& out) = 0;
    // Kept for the order of operations; does nothing.
    virtual void Reserved(void* /*first*/, void* /*second*/) {}
    // Fills `out` in place with the engine's name, handle and stamp for `name`.
    virtual void ResolveName(ResolvedName& out, const std::string& name) = 0;
    // The engine's transactions, forwarded.
    virtual bool BeginTransaction() = 0;
    virtual void CommitTransaction() = 0;
    virtual bool IsInTransaction() const = 0;
    // Runs `read`, made of the reads above, so that it sees the engine's values as they stood
    // between two of the audio thread's changes; false when changes kept overlapping it, and
    // what it read is then to be dropped. Off the audio thread; never holds the audio up.
    virtual bool ReadBetweenChanges(const std::function<void()>& read) = 0;
};

}  // namespace OV::CFW::DocView
