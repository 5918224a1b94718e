#pragma once

#include "hosts/render/OutputFile.h"

#include <sndfile.h>

#include <stdexcept>
#include <string>

namespace OV::Hosts::Render {

// A failure reading or writing an audio file; the message names the file.
class AudioFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// An audio file read in frames of interleaved floats.
class AudioReader {
public:
    // Throws AudioFileError when the file cannot be opened as audio.
    explicit AudioReader(const std::string& path);
    ~AudioReader();
    AudioReader(const AudioReader&) = delete;
    AudioReader& operator=(const AudioReader&) = delete;

    int GetChannels() const { return info.channels; }
    int GetSampleRate() const { return info.samplerate; }
    long long GetFrames() const { return static_cast<long long>(info.frames); }
    // The container and sample format, as libsndfile codes them.
    int GetFormat() const { return info.format; }
    // Up to `frames` frames into `interleaved`; fewer only at the end. Throws on a read error.
    long long Read(float* interleaved, long long frames);

private:
    std::string path;
    SF_INFO info;
    SNDFILE* file;
};

// An audio file written in frames of interleaved floats, through an OutputFile: the target
// is either complete or absent.
class AudioWriter {
public:
    // Throws AudioFileError when libsndfile cannot write this format with this rate and
    // channel count, and HostError(BadOutput) when the file cannot be made.
    AudioWriter(const std::string& path, int format, int sampleRate, int channels);
    ~AudioWriter();
    AudioWriter(const AudioWriter&) = delete;
    AudioWriter& operator=(const AudioWriter&) = delete;

    // Throws AudioFileError on a write error (a full disk).
    void Write(const float* interleaved, long long frames);
    // Finishes the file and puts it in place (OutputFile::Commit).
    void Commit(bool replace);

private:
    OutputFile output;
    SNDFILE* file;
};

// The libsndfile format for an output path: the container from the extension (".wav",
// ".flac", ".aif"/".aiff", ".ogg"/".oga"), or `container` when given ("wav", "flac", "aiff",
// "ogg"); the sample encoding from `depth` ("16", "24", "32", "float") or, when empty, the
// input's own where the container can hold it. Throws std::invalid_argument with the reason.
int OutputFormat(const std::string& path, const std::string& container, const std::string& depth, int inputFormat);

}  // namespace OV::Hosts::Render
