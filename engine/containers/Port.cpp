#include "engine/containers/Port.h"

#include <atomic>
#include <memory>
#include <vector>

namespace AudioEngine::AudioContainers {

void Port::Resolve()
{
    if (source != nullptr && source->source != nullptr && source->IsTransparent())
        source = source->source;
}

namespace {

// The silence grows and is never replaced while an output lives, so an audio thread that read
// the pointer of another instance's silence never reads freed memory.
struct Silence {
    std::vector<std::unique_ptr<Buffer>> blocks; // set-up thread only; the last is current
    std::atomic<float*> current{nullptr};        // what audio threads read
    int outputs = 0;
};

Silence& TheSilence()
{
    static Silence silence;
    return silence;
}

}  // namespace

float* SilenceBuffer()
{
    return TheSilence().current.load(std::memory_order_acquire);
}

OutputBuffered::OutputBuffered(std::string name, std::string description, unsigned size)
    : Output(std::move(name), std::move(description)), buffer(size)
{
    Silence& silence = TheSilence();
    ++silence.outputs;
    if (size > 0 && (silence.blocks.empty() || silence.blocks.back()->Size() < size)) {
        silence.blocks.push_back(std::make_unique<Buffer>(size));
        silence.current.store(silence.blocks.back()->Data(), std::memory_order_release);
    }
}

OutputBuffered::~OutputBuffered()
{
    Silence& silence = TheSilence();
    if (--silence.outputs == 0) {
        silence.current.store(nullptr, std::memory_order_release);
        silence.blocks.clear();
    }
}

float* OutputBuffered::GetBuffer() const
{
    switch (mode) {
    case Connected:
        return source->GetBuffer();
    case Silent:
        return SilenceBuffer();
    default:
        return buffer.Data();
    }
}

Port* OutputBuffered::SetSource(Port* port)
{
    Port* old = source;
    source = port;
    mode = port != nullptr ? Connected : Silent;
    return old;
}

}  // namespace AudioEngine::AudioContainers
