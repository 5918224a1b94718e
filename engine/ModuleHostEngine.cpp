#include "engine/ModuleHostEngine.h"

#include "platform/DebugOutput.h"

namespace AudioEngine::VN4 {

ModuleHostEngine::ModuleHostEngine()
{
    // The vector instruction set the kernels are chosen for, told on the debug output.
    OV::Platform::DebugOutput(__builtin_cpu_supports("sse4.1") ? "Blend Optimizaions" : "Katmai Optimizaions");
}

}  // namespace AudioEngine::VN4
