#include "engine/dsp/convolution/SplitTaps.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace AudioEngine::Convolution {

SplitTaps::SplitTaps(const float* taps, int count, int h) : length(count)
{
    if (count < 1 || h < 1)
        throw std::invalid_argument("SplitTaps needs taps and a head");
    headLength = std::min(h, count);
    head = pool.Allocate(static_cast<std::size_t>(headLength));
    std::memcpy(head, taps, sizeof(float) * static_cast<std::size_t>(headLength));
    tail = std::make_unique<TailPartitions>(pool, taps + headLength, count - headLength, h);
}

}  // namespace AudioEngine::Convolution
