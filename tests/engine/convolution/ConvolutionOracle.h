#pragma once

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {

// y[i] = sum of taps[j] * x[i - j] in double, from silence.
inline std::vector<double> DirectConvolution(const std::vector<float>& taps, const std::vector<float>& x)
{
    std::vector<double> y(x.size(), 0.0);
    for (std::size_t i = 0; i < x.size(); ++i)
        for (std::size_t j = 0; j < taps.size() && j <= i; ++j)
            y[i] += static_cast<double>(taps[j]) * x[i - j];
    return y;
}

inline std::vector<float> Noise(std::mt19937& random, std::size_t count, float level = 1.0f)
{
    std::uniform_real_distribution<float> value(-level, level);
    std::vector<float> x(count);
    for (float& v : x)
        v = value(random);
    return x;
}

// Runs `process(out, in, n)` over x in blocks of random lengths 1 to maxBlock.
template <typename Process>
std::vector<float> InRandomBlocks(std::mt19937& random, const std::vector<float>& x, int maxBlock, Process process)
{
    std::uniform_int_distribution<int> length(1, maxBlock);
    std::vector<float> y(x.size());
    for (std::size_t done = 0; done < x.size();) {
        const std::size_t n = std::min(x.size() - done, static_cast<std::size_t>(length(random)));
        process(y.data() + done, x.data() + done, static_cast<int>(n));
        done += n;
    }
    return y;
}

// Largest |y[i] - expected[i - delay]|, where the first `delay` outputs should be 0.
inline double MaxError(const std::vector<float>& y, const std::vector<double>& expected, std::size_t delay = 0)
{
    double worst = 0.0;
    for (std::size_t i = 0; i < y.size(); ++i)
        worst = std::max(worst, std::fabs(y[i] - (i >= delay ? expected[i - delay] : 0.0)));
    return worst;
}

// The largest output for inputs within -1 to 1; float rounding is a small fraction of it.
inline double AbsoluteSum(const std::vector<float>& taps)
{
    return std::accumulate(taps.begin(), taps.end(), 0.0, [](double sum, float t) { return sum + std::fabs(t); });
}

}  // namespace OV::Testing
