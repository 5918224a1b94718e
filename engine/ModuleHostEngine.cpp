#include "engine/ModuleHostEngine.h"

#include "engine/dsp/equaliser/CascadeKernels.h"
#include "platform/DebugOutput.h"

namespace AudioEngine::VN4 {

ModuleHostEngine::ModuleHostEngine()
{
    // The vector instruction set the kernels are chosen for, told on the debug output; the
    // choice is made here, off the audio thread.
    OV::Platform::DebugOutput(__builtin_cpu_supports("sse4.1") ? "Blend Optimizaions" : "Katmai Optimizaions");
    AudioAlgorithm::Cascade();
}

}  // namespace AudioEngine::VN4
