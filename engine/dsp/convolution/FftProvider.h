#pragma once

#include <mutex>

struct fftwf_plan_s;

namespace AudioEngine::Convolution {

// A real, single-precision, one-dimensional transform of n points, in place on n + 2 floats, in
// conjugate-even packed order: Re0, Im0 (0), Re1, Im1, ..., Re(n/2), Im(n/2) (0). Forward scales
// by 1, Backward by 1/n. Backed by FFTW, whose planner is not thread-safe: plans are made and
// destroyed under one process-wide lock, while executing them is safe from any thread.
//
// Failures are told as "FAIL: ..." lines on the debug output, once, at Create; the provider then
// has no plan and Forward and Backward leave the data as they are.
class FftProvider {
public:
    FftProvider() = default;
    FftProvider(const FftProvider&) = delete;
    FftProvider& operator=(const FftProvider&) = delete;
    ~FftProvider() { Free(); }

    // Set-up only: allocates, takes the plan lock. n even, at least 2. False on failure.
    bool Create(int n);
    // Audio thread: no allocation, no lock. x holds n + 2 floats; any alignment.
    void Forward(float* x) const;
    void Backward(float* x) const;
    // Set-up only: takes the plan lock.
    void Free();

    int GetSize() const { return size; }
    bool IsCommitted() const { return forward != nullptr; }

    // FFTW planner flags for plans made from now on; returns the previous ones. FFTW_ESTIMATE by
    // default: the same plan, and so the same results to the last bit, on every run. Planning
    // never touches the caller's buffers whatever the flags.
    static unsigned SetPlannerFlags(unsigned flags);
    // Anything else in the process that plans with FFTW takes this lock too.
    static std::mutex& PlanLock();

private:
    using Plan = fftwf_plan_s*;

    void DestroyPlans();

    // The first pair serves buffers aligned as the planner's scratch was, the second any other.
    Plan forward = nullptr;
    Plan backward = nullptr;
    Plan forwardUnaligned = nullptr;
    Plan backwardUnaligned = nullptr;
    int size = 0;
    float scale = 1.0f;
};

}  // namespace AudioEngine::Convolution
