#pragma once

#include "hosts/common/PlugInLibrary.h"
#include "tests/support/ScratchFolder.h"

#include <memory>
#include <mutex>
#include <vector>

namespace OV::Testing {

// The host side of the callback table: a settable tempo, a recorder of NotifyParameter calls
// and the capability flag. Callbacks may arrive on any thread.
class TestHost {
public:
    struct Notification {
        int slot;
        float plain;
        float normalised;
    };

    TestHost();
    TestHost(const TestHost&) = delete;
    TestHost& operator=(const TestHost&) = delete;

    HLA2Host* Callbacks() { return &callbacks; }
    void SetTempo(float bpm);
    void SetCapability(bool capable) { capability = capable; }
    std::vector<Notification> Notifications() const;
    int TransportRequests() const;
    int CapabilityRequests() const;

private:
    static TestHost& Owner(HLA2Host* host) { return *static_cast<TestHost*>(host->user); }

    HLA2Host callbacks;
    mutable std::mutex mutex;
    float tempo = 120.0f;
    bool capability = false;
    int transportRequests = 0;
    int capabilityRequests = 0;
    std::vector<Notification> notifications;
};

// A private copy of the built library in a scratch folder, loaded on its own, so each test
// starts from the library's static state. With `withDefaults` the copy has the build's registry
// defaults beside it, as a fresh build does.
class LibraryCopy {
public:
    explicit LibraryCopy(bool withDefaults = true);

    const Hosts::PlugInLibrary& Library() const { return *library; }
    HLA2PlugIn* Acquire() const;

private:
    ScratchFolder folder;
    std::unique_ptr<Hosts::PlugInLibrary> library;
};

// The built library and its defaults file.
std::string BuiltLibraryPath();

}  // namespace OV::Testing
