#pragma once

#include "shell/include/varnel4/hla2.h"

#include <string>

namespace OV::HLA2 {
class GUI;
class Process;
}  // namespace OV::HLA2

namespace OV::CFW::HLAFramework {

// The maker, as the registry key and the install paths name it.
constexpr const char* makerName = "Orvane Studio";

// The one place where a concrete product plugs into the generic shell. Main thread.
struct HLAConfig {
    virtual ~HLAConfig() = default;
    // At the first acquire; false aborts the start-up.
    virtual bool Initialise() = 0;
    // At the last release; undoes Initialise.
    virtual void Finalise() = 0;
    virtual const char* GetProductName() const = 0;
    virtual void GetVersionStrings(std::string& version, std::string& build) const = 0;
    virtual int GetProcessCount() const = 0;
    virtual HLA2::Process* CreateProcess(HLA2Host* host, int kind) = 0;
    virtual HLA2::GUI* CreateGUI(HLA2::Process* process, void* unused) = 0;
};

// The product's configuration; the product's library defines it.
HLAConfig& ProductConfig();

}  // namespace OV::CFW::HLAFramework
