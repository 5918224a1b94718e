#pragma once

#include "hosts/render/AudioFile.h"

#include <memory>
#include <string>

namespace OV::Hosts::Render {

// Where the audio of a render comes from: a file, or the demo.
class Source {
public:
    virtual ~Source() = default;
    virtual std::string GetName() const = 0;
    virtual int GetChannels() const = 0;
    virtual int GetSampleRate() const = 0;
    // Frames in all, as far as known in advance (for progress).
    virtual long long GetFrames() const = 0;
    // libsndfile's format code, which an output keeps by default.
    virtual int GetFormat() const = 0;
    // Up to `frames` interleaved frames; fewer only at the end.
    virtual long long Read(float* interleaved, long long frames) = 0;
};

// Throws HostError(BadInput).
std::unique_ptr<Source> OpenFile(const std::string& path);

// The built-in demo: eight seconds of stereo at 48 kHz, made in code: bursts of pink noise,
// a chord, a bass line, then a sweep from 20 Hz to 20 kHz, all at moderate level.
std::unique_ptr<Source> MakeDemo();

}  // namespace OV::Hosts::Render
