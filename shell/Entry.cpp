// The library's two exports and its static objects.
#include "shell/framework/PlugIn.h"
#include "shell/include/varnel4/hla2.h"

namespace OV::CFW::HLAFramework {

PlugIn& ThePlugIn()
{
    // Built on first use, after the product's configuration that it reads.
    static PlugIn plugIn(ProductConfig());
    return plugIn;
}

}  // namespace OV::CFW::HLAFramework

namespace {

// Acquires not yet released; main thread only, as the host's calls are.
int instanceCount = 0;

// Built during static initialisation, like the plug-in object itself.
[[maybe_unused]] const bool constructed = (OV::CFW::HLAFramework::ThePlugIn(), true);

}  // namespace

extern "C" HLA2PlugIn* HLA2Acquire(int version, int* outVersion)
{
    if (version != HLA2_INTERFACE_VERSION)
        return nullptr;
    if (outVersion != nullptr)
        *outVersion = HLA2_INTERFACE_VERSION;
    OV::CFW::HLAFramework::PlugIn& plugIn = OV::CFW::HLAFramework::ThePlugIn();
    if (instanceCount < 1 && !plugIn.StartUp())
        return nullptr;
    ++instanceCount;
    return plugIn.Table();
}

extern "C" void HLA2Release()
{
    if (instanceCount < 1 || --instanceCount > 0)
        return;
    OV::CFW::HLAFramework::ThePlugIn().TearDown();
}
