#pragma once

#include "engine/ModuleEngineSingle.h"
#include "engine/core/ModuleHost.h"
#include "engine/core/ParametersManager.h"

namespace AudioEngine::VN4 {

struct EngineTraits {
    using Root = ModuleEngineSingle;
    using Manager = ParametersManager;
    static constexpr float rampTime = 0.1f; // seconds for a plain parameter's whole range
};

// The whole engine of the product behind the host layer. Construction allocates everything;
// afterwards nothing on the audio path allocates.
class ModuleHostEngine : public ModuleHost<EngineTraits> {
public:
    ModuleHostEngine();
};

}  // namespace AudioEngine::VN4
