// Loads the plug-in library as a host does and tells what it is.
#include "hosts/common/PlugInLibrary.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace {

const char* const usage = "usage: varnel4-info [--library PATH]\n"
                         "Prints the plug-in's name, vendor, version and latency.\n";

int Usage(const std::string& problem)
{
    std::fprintf(stderr, "varnel4-info: %s\n%s", problem.c_str(), usage);
    return 2;
}

}  // namespace

int main(int argc, char** argv)
{
    std::string libraryPath = OV::Hosts::PlugInLibrary::DefaultPath();
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--library") == 0 && i + 1 < argc)
            libraryPath = argv[++i];
        else if (std::strcmp(argv[i], "--help") == 0)
            return std::fputs(usage, stdout) < 0 ? 1 : 0;
        else if (std::strcmp(argv[i], "--library") == 0)
            return Usage("--library needs a path");
        else
            return Usage("unknown argument: " + std::string(argv[i]));
    }

    try {
        const OV::Hosts::PlugInLibrary library(libraryPath);
        int version = 0;
        HLA2PlugIn* plugIn = library.Acquire(HLA2_INTERFACE_VERSION, &version);
        if (plugIn == nullptr) {
            std::fprintf(stderr, "varnel4-info: the library refused interface version %d\n",
                         HLA2_INTERFACE_VERSION);
            return 1;
        }
        char versionText[HLA2_VERSION_STRING_SIZE] = {};
        char buildText[HLA2_VERSION_STRING_SIZE] = {};
        plugIn->GetVersionStrings(plugIn, versionText, buildText);

        HLA2Host host = {};
        HLA2Process* process = plugIn->CreateProcess(plugIn, &host, 0);
        char name[256] = {};
        char vendor[256] = {};
        int latency = 0;
        if (process != nullptr) {
            process->GetName(process, name, sizeof name);
            process->GetVendor(process, vendor, sizeof vendor);
            process->SetSampleRate(process, 48000.0f);
            process->SetBlockSize(process, 512);
            latency = process->GetLatency(process);
            plugIn->DestroyProcess(plugIn, process);
        }
        std::printf("Product: %s\nVendor:  %s\nVersion: %s (build %s)\nLatency: %d samples\n",
                    name, vendor, versionText, buildText, latency);
        library.Release();
        return process != nullptr ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "varnel4-info: %s\n", error.what());
        return 1;
    }
}
