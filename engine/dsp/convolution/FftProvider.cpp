#include "engine/dsp/convolution/FftProvider.h"

#include "platform/DebugOutput.h"

#include <atomic>

#include <dlfcn.h>

#include <fftw3.h>

namespace AudioEngine::Convolution {
namespace {

std::atomic<unsigned> plannerFlags{FFTW_ESTIMATE};

fftwf_complex* AsComplex(float* x) { return reinterpret_cast<fftwf_complex*>(x); }

// FFTW keeps its planner's memory in globals for the life of the library. A plug-in that is
// unloaded would take libfftw3f with it, and that memory would be lost; so the library stays
// loaded (it may be shared with the host, whose plans must not be disturbed either).
void KeepPlannerLoaded()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&fftwf_plan_dft_r2c_1d), &info) != 0 && info.dli_fname != nullptr)
        dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}

}  // namespace

std::mutex& FftProvider::PlanLock()
{
    static std::mutex lock;
    return lock;
}

unsigned FftProvider::SetPlannerFlags(unsigned flags) { return plannerFlags.exchange(flags); }

bool FftProvider::Create(int n)
{
    Free();
    if (n < 2 || n % 2 != 0) {
        OV::Platform::DebugOutput("FAIL: Create Descriptor");
        return false;
    }
    bool allocated = false;
    bool committed = false;
    {
        const std::lock_guard<std::mutex> guard(PlanLock());
        static const bool kept = (KeepPlannerLoaded(), true);
        static_cast<void>(kept);
        // Planned on a scratch buffer of FFTW's own alignment, which measuring planners may
        // overwrite; buffers of any other alignment get the unaligned pair.
        float* scratch = fftwf_alloc_real(static_cast<std::size_t>(n) + 2);
        allocated = scratch != nullptr;
        if (allocated) {
            const unsigned flags = plannerFlags.load();
            forward = fftwf_plan_dft_r2c_1d(n, scratch, AsComplex(scratch), flags);
            backward = fftwf_plan_dft_c2r_1d(n, AsComplex(scratch), scratch, flags);
            forwardUnaligned = fftwf_plan_dft_r2c_1d(n, scratch, AsComplex(scratch), flags | FFTW_UNALIGNED);
            backwardUnaligned = fftwf_plan_dft_c2r_1d(n, AsComplex(scratch), scratch, flags | FFTW_UNALIGNED);
            fftwf_free(scratch);
            committed = forward != nullptr && backward != nullptr && forwardUnaligned != nullptr
                && backwardUnaligned != nullptr;
            if (!committed)
                DestroyPlans();
        }
    }
    // Told outside the lock; one line, whichever step failed.
    if (!allocated || !committed) {
        OV::Platform::DebugOutput(allocated ? "FAIL: Commit Descriptor" : "FAIL: Create Descriptor");
        return false;
    }
    size = n;
    scale = 1.0f / static_cast<float>(n);
    return true;
}

void FftProvider::Forward(float* x) const
{
    if (forward == nullptr)
        return;
    fftwf_execute_dft_r2c(fftwf_alignment_of(x) == 0 ? forward : forwardUnaligned, x, AsComplex(x));
}

void FftProvider::Backward(float* x) const
{
    if (backward == nullptr)
        return;
    fftwf_execute_dft_c2r(fftwf_alignment_of(x) == 0 ? backward : backwardUnaligned, AsComplex(x), x);
    for (int i = 0; i < size; ++i)
        x[i] *= scale;
}

void FftProvider::Free()
{
    if (forward == nullptr && backward == nullptr && forwardUnaligned == nullptr && backwardUnaligned == nullptr)
        return;
    const std::lock_guard<std::mutex> guard(PlanLock());
    DestroyPlans();
    size = 0;
}

void FftProvider::DestroyPlans()
{
    for (Plan* plan : {&forward, &backward, &forwardUnaligned, &backwardUnaligned}) {
        if (*plan != nullptr)
            fftwf_destroy_plan(*plan);
        *plan = nullptr;
    }
}

}  // namespace AudioEngine::Convolution
