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

namespace {

// One channel's cascade, or two channels' side by side.
template <int C>
void RunChains(EqChain* const (&chains)[C], const float* const (&in)[C], float* const (&out)[C], int count)
{
    if constexpr (C == 1)
        chains[0]->Process(in[0], out[0], count);
    else
        EqChain::ProcessPair(*chains[0], *chains[1], in[0], in[1], out[0], out[1], count);
}

}  // namespace

void ReversedBlockFilter::Process(float* out, const float* in, int count)
{
    Run<1>({this}, {out}, {in}, count);
}

void ReversedBlockFilter::ProcessPair(ReversedBlockFilter& left, ReversedBlockFilter& right, float* outL, float* outR,
                                      const float* inL, const float* inR, int count)
{
    if (left.pos != right.pos || left.revPos != right.revPos || left.addPos != right.addPos) {
        left.Process(outL, inL, count);
        right.Process(outR, inR, count);
        return;
    }
    Run<2>({&left, &right}, {outL, outR}, {inL, inR}, count);
}

// The filters share their positions: they are read from the first and moved in all.
template <int C>
void ReversedBlockFilter::Run(ReversedBlockFilter* const (&filters)[C], float* const (&outs)[C],
                              const float* const (&ins)[C], int count)
{
    ReversedBlockFilter& first = *filters[0];
    float* out[C];
    const float* in[C];
    EqChain* chainsA[C];
    EqChain* chainsB[C];
    for (int c = 0; c < C; ++c) {
        out[c] = outs[c];
        in[c] = ins[c];
        chainsA[c] = &filters[c]->chainA;
        chainsB[c] = &filters[c]->chainB;
    }
    while (true) {
        const int pos = first.pos;
        const int chunk = std::min(count, N - pos);
        const int end = pos + chunk;
        const int a = std::max(std::min(end, H) - pos, 0);
        const int b = std::max(std::min(end, L) - std::max(pos, H), 0);
        const int rest = chunk - a - b;
        const int rev = std::min(static_cast<int>(std::ceil(static_cast<float>(a) * speed)), N - first.revPos);
        const int add = std::min(static_cast<int>(std::ceil(static_cast<float>(b) * speed)), N - first.addPos);

        for (int c = 0; c < C; ++c)
            std::copy(in[c], in[c] + chunk, filters[c]->inWrite.begin() + pos);

        if (rev > 0) {
            const float* sources[C];
            float* targets[C];
            for (int c = 0; c < C; ++c) {
                ReversedBlockFilter& f = *filters[c];
                for (int i = 0; i < rev; ++i)
                    f.scratch[static_cast<std::size_t>(i)] = f.inRead[static_cast<std::size_t>(N - f.revPos - 1 - i)];
                sources[c] = f.scratch.data();
                targets[c] = f.accB.data() + f.revPos;
            }
            RunChains<C>(chainsA, sources, targets, rev);
            for (int c = 0; c < C; ++c)
                filters[c]->revPos = (filters[c]->revPos + rev) % N;
        }
        if (add > 0) {
            const float* sources[C];
            float* targets[C];
            for (int c = 0; c < C; ++c) {
                sources[c] = filters[c]->zero.data();
                targets[c] = filters[c]->scratch.data();
            }
            RunChains<C>(chainsA, sources, targets, add);
            for (int c = 0; c < C; ++c) {
                ReversedBlockFilter& f = *filters[c];
                for (int i = 0; i < add; ++i) {
                    const int j = f.addPos + i;
                    float ringOut = f.scratch[static_cast<std::size_t>(i)];
                    if (f.fade)
                        ringOut *= f.window[static_cast<std::size_t>(j)];
                    f.outWrite[static_cast<std::size_t>(N - 1 - j)] = f.accA[static_cast<std::size_t>(j)] + ringOut;
                }
                f.addPos += add;
            }
        }
        for (int c = 0; c < C; ++c) {
            ReversedBlockFilter& f = *filters[c];
            if (f.addPos == N) {
                f.addPos = 0;
                std::swap(f.accA, f.accB);
                f.chainA.Reset();
            }
        }
        if (a + b > 0) {
            const float* sources[C];
            for (int c = 0; c < C; ++c)
                sources[c] = filters[c]->outRead.data() + N + pos - L;
            RunChains<C>(chainsB, sources, out, a + b);
            for (int c = 0; c < C; ++c)
                out[c] += a + b;
        }
        if (rest > 0) {
            const float* sources[C];
            for (int c = 0; c < C; ++c)
                sources[c] = filters[c]->outWrite.data() + std::max(pos - L, 0);
            RunChains<C>(chainsB, sources, out, rest);
            for (int c = 0; c < C; ++c)
                out[c] += rest;
        }

        for (int c = 0; c < C; ++c)
            filters[c]->pos = pos + chunk;
        if (pos + chunk < N)
            return;
        for (int c = 0; c < C; ++c) {
            ReversedBlockFilter& f = *filters[c];
            f.pos = 0;
            std::swap(f.inWrite, f.inRead);
            std::swap(f.outWrite, f.outRead);
        }
        count -= chunk;
        if (count <= 0)
            return;
        for (int c = 0; c < C; ++c)
            in[c] += chunk;
    }
}

}  // namespace AudioEngine::AudioAlgorithm
