#pragma once

#include <random>
#include <vector>

namespace OV::Bench {

// Pink noise by the Voss-McCartney sum of held random rows.
inline std::vector<float> PinkNoise(std::size_t length, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> value(-1.0f, 1.0f);
    float rows[16] = {};
    float sum = 0.0f;
    std::vector<float> signal(length);
    for (std::size_t i = 0; i < length; ++i) {
        const int row = __builtin_ctz(static_cast<unsigned>(i) | 0x10000u);
        sum -= rows[row];
        rows[row] = value(random);
        sum += rows[row];
        signal[i] = sum / 16.0f;
    }
    return signal;
}

}  // namespace OV::Bench
