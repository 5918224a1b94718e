#pragma once

#include "shell/framework/HLAConfig.h"

namespace OV::Products::VN4 {

// The module's own name; while installed stand-alone it is also the product's name.
constexpr const char* moduleName = "Varnel4 Lin Phase EQ";

// The product: its name, version and how a process and an editor are made.
class HLAConfig : public CFW::HLAFramework::HLAConfig {
public:
    bool Initialise() override;
    void Finalise() override {}
    const char* GetProductName() const override;
    void GetVersionStrings(std::string& version, std::string& build) const override;
    int GetProcessCount() const override { return 1; }
    HLA2::Process* CreateProcess(HLA2Host* host, int kind) override;
    HLA2::GUI* CreateGUI(HLA2::Process* process, void* unused) override;

private:
    // Installed on its own rather than as part of the suite.
    bool standalone = true;
};

}  // namespace OV::Products::VN4
