#include "engine/dsp/equaliser/ReversedBlockFilter.h"

#include <algorithm>
#include <cmath>

namespace AudioEngine::AudioAlgorithm {

namespace {

std::vector<float> FadeWindow()
{
    std::vector<float> window(ReversedBlockFilter::N);
    for (int i = 0; i < ReversedBlockFilter::N; ++i)
        window[static_cast<std::size_t>(i)] = static_cast<float>((std::cos(i * M_PI / ReversedBlockFilter::N) + 1) * 0.5);
    return window;
}

}  // namespace

ReversedBlockFilter::ReversedBlockFilter(EqChain& reversed, EqChain& forward)
    : chainA(reversed), chainB(forward), scratch(N), inWrite(N), inRead(N), accA(N), accB(N),
      outWrite(N), outRead(N), zero(N), window(FadeWindow())
{
}

void ReversedBlockFilter::Clear()
{
    for (std::vector<float>* buffer : {&scratch, &inWrite, &inRead, &accA, &accB, &outWrite, &outRead})
        std::fill(buffer->begin(), buffer->end(), 0.0f);
    const int speedInt = static_cast<int>(speed);
    revPos = std::min(pos, H) * speedInt % N;
    addPos = std::clamp(pos - H, 0, L - H) * speedInt % N;
}

void ReversedBlockFilter::Process(float* out, const float* in, int count)
{
    while (true) {
        const int chunk = std::min(count, N - pos);
        const int end = pos + chunk;
        const int a = std::max(std::min(end, H) - pos, 0);
        const int b = std::max(std::min(end, L) - std::max(pos, H), 0);
        const int rest = chunk - a - b;
        const int rev = std::min(static_cast<int>(std::ceil(static_cast<float>(a) * speed)), N - revPos);
        const int add = std::min(static_cast<int>(std::ceil(static_cast<float>(b) * speed)), N - addPos);

        std::copy(in, in + chunk, inWrite.begin() + pos);

        if (rev > 0) {
            for (int i = 0; i < rev; ++i)
                scratch[static_cast<std::size_t>(i)] = inRead[static_cast<std::size_t>(N - revPos - 1 - i)];
            chainA.Process(scratch.data(), accB.data() + revPos, rev);
            revPos = (revPos + rev) % N;
        }
        if (add > 0) {
            chainA.Process(zero.data(), scratch.data(), add);
            for (int i = 0; i < add; ++i) {
                const int j = addPos + i;
                float ringOut = scratch[static_cast<std::size_t>(i)];
                if (fade)
                    ringOut *= window[static_cast<std::size_t>(j)];
                outWrite[static_cast<std::size_t>(N - 1 - j)] = accA[static_cast<std::size_t>(j)] + ringOut;
            }
            addPos += add;
        }
        if (addPos == N) {
            addPos = 0;
            std::swap(accA, accB);
            chainA.Reset();
        }
        float* target = out;
        if (a + b > 0) {
            chainB.Process(outRead.data() + N + pos - L, target, a + b);
            target += a + b;
        }
        if (rest > 0)
            chainB.Process(outWrite.data() + std::max(pos - L, 0), target, rest);

        pos += chunk;
        if (pos < N)
            return;
        pos = 0;
        std::swap(inWrite, inRead);
        std::swap(outWrite, outRead);
        count -= chunk;
        if (count <= 0)
            return;
        in += chunk;
        out += chunk;
    }
}

}  // namespace AudioEngine::AudioAlgorithm
