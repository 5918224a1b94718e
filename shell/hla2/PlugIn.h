#pragma once

#include "shell/include/varnel4/hla2.h"

namespace OV::HLA2 {

class Process;
class GUI;
class PlugInAudio;

// The plug-in as the host sees it: a table whose entries forward to the virtual operations.
class PlugIn {
public:
    PlugIn();
    PlugIn(const PlugIn&) = delete;
    PlugIn& operator=(const PlugIn&) = delete;

    virtual int GetProcessCount() = 0;
    virtual Process* CreateProcess(HLA2Host* host, int kind) = 0;
    virtual void DestroyProcess(Process* process) = 0;
    virtual GUI* GetGUI(Process* process) = 0;
    virtual PlugInAudio* GetPlugInAudio() = 0;
    virtual void GetVersionStrings(char* version, char* build) = 0;
    virtual ~PlugIn() = default;

    HLA2PlugIn* Table() { return &table; }

private:
    HLA2PlugIn table;
};

}  // namespace OV::HLA2
