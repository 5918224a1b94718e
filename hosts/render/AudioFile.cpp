#include "hosts/render/AudioFile.h"

#include <stdexcept>

#include <boost/algorithm/string/case_conv.hpp>

namespace OV::Hosts::Render {

namespace {

int ContainerFor(const std::string& name)
{
    struct Container {
        const char* name;
        int format;
    };
    static const Container containers[] = {
        {"wav", SF_FORMAT_WAV}, {"flac", SF_FORMAT_FLAC}, {"aiff", SF_FORMAT_AIFF},
        {"aif", SF_FORMAT_AIFF}, {"ogg", SF_FORMAT_OGG}, {"oga", SF_FORMAT_OGG},
    };
    for (const Container& container : containers) {
        if (name == container.name)
            return container.format;
    }
    return 0;
}

int EncodingFor(const std::string& depth)
{
    if (depth == "16")
        return SF_FORMAT_PCM_16;
    if (depth == "24")
        return SF_FORMAT_PCM_24;
    if (depth == "32")
        return SF_FORMAT_PCM_32;
    if (depth == "float")
        return SF_FORMAT_FLOAT;
    throw std::invalid_argument("unknown bit depth '" + depth + "' (16, 24, 32 or float)");
}

bool Writable(int format)
{
    SF_INFO info{};
    info.samplerate = 48000;
    info.channels = 2;
    info.format = format;
    return sf_format_check(&info) != 0;
}

}  // namespace

AudioReader::AudioReader(const std::string& filePath) : path(filePath), info{}
{
    file = sf_open(path.c_str(), SFM_READ, &info);
    if (file == nullptr)
        throw AudioFileError("cannot read '" + path + "': " + sf_strerror(nullptr));
}

AudioReader::~AudioReader()
{
    sf_close(file);
}

long long AudioReader::Read(float* interleaved, long long frames)
{
    const sf_count_t read = sf_readf_float(file, interleaved, frames);
    if (read < frames && sf_error(file) != SF_ERR_NO_ERROR)
        throw AudioFileError("cannot read '" + path + "': " + sf_strerror(file));
    return read;
}

AudioWriter::AudioWriter(const std::string& path, int format, int sampleRate, int channels) : output(path)
{
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = channels;
    info.format = format;
    file = sf_open_fd(output.GetDescriptor(), SFM_WRITE, &info, SF_FALSE);
    if (file == nullptr)
        throw AudioFileError("cannot write '" + path + "': " + sf_strerror(nullptr));
    if ((format & SF_FORMAT_TYPEMASK) == SF_FORMAT_OGG) {
        double quality = 0.9;  // Vorbis quality from 0 to 1: near transparent
        sf_command(file, SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    }
}

AudioWriter::~AudioWriter()
{
    if (file != nullptr)
        sf_close(file);
}

void AudioWriter::Write(const float* interleaved, long long frames)
{
    if (sf_writef_float(file, interleaved, frames) != frames)
        throw AudioFileError("cannot write '" + output.GetPath() + "': " + sf_strerror(file));
}

void AudioWriter::Commit(bool replace)
{
    const int closed = sf_close(file);
    file = nullptr;
    if (closed != 0)
        throw AudioFileError("cannot write '" + output.GetPath() + "': " + sf_error_number(closed));
    output.Commit(replace);
}

int OutputFormat(const std::string& path, const std::string& container, const std::string& depth, int inputFormat)
{
    int type = 0;
    if (!container.empty()) {
        type = ContainerFor(boost::algorithm::to_lower_copy(container));
        if (type == 0)
            throw std::invalid_argument("unknown format '" + container + "' (wav, flac, aiff or ogg)");
    } else {
        const std::string::size_type dot = path.rfind('.');
        const std::string::size_type slash = path.rfind('/');
        if (dot != std::string::npos && (slash == std::string::npos || dot > slash))
            type = ContainerFor(boost::algorithm::to_lower_copy(path.substr(dot + 1)));
        if (type == 0)
            throw std::invalid_argument("cannot tell the format of '" + path
                                        + "' from its name (.wav, .flac, .aiff or .ogg, or --format)");
    }

    if (type == SF_FORMAT_OGG) {
        if (!depth.empty())
            throw std::invalid_argument("Ogg Vorbis has no bit depth");
        return SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    }
    if (!depth.empty()) {
        const int format = type | EncodingFor(depth);
        if (!Writable(format))
            throw std::invalid_argument("this format cannot hold " + depth + "-bit samples");
        return format;
    }
    // The input's encoding where the container holds it; else 24-bit for FLAC and floats
    // for the others, so that nothing is lost.
    const int kept = type | (inputFormat & SF_FORMAT_SUBMASK);
    if (Writable(kept))
        return kept;
    return type | (type == SF_FORMAT_FLAC ? SF_FORMAT_PCM_24 : SF_FORMAT_FLOAT);
}

}  // namespace OV::Hosts::Render
