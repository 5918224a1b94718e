#include "tests/support/TestHost.h"

#include <boost/filesystem.hpp>

namespace OV::Testing {

TestHost::TestHost() : callbacks{}
{
    callbacks.user = this;
    callbacks.GetTransport = [](HLA2Host* host, float* bpm, double* positionA, double* positionB) {
        TestHost& self = Owner(host);
        std::lock_guard<std::mutex> guard(self.mutex);
        ++self.transportRequests;
        *bpm = self.tempo;
        *positionA = 0.0;
        *positionB = 0.0;
    };
    callbacks.NotifyParameter = [](HLA2Host* host, int slot, float plain, float normalised) {
        TestHost& self = Owner(host);
        std::lock_guard<std::mutex> guard(self.mutex);
        self.notifications.push_back({slot, plain, normalised});
    };
    callbacks.GetCapabilityFlag = [](HLA2Host* host) {
        TestHost& self = Owner(host);
        std::lock_guard<std::mutex> guard(self.mutex);
        ++self.capabilityRequests;
        return self.capability ? 1 : 0;
    };
}

void TestHost::SetTempo(float bpm)
{
    std::lock_guard<std::mutex> guard(mutex);
    tempo = bpm;
}

std::vector<TestHost::Notification> TestHost::Notifications() const
{
    std::lock_guard<std::mutex> guard(mutex);
    return notifications;
}

int TestHost::TransportRequests() const
{
    std::lock_guard<std::mutex> guard(mutex);
    return transportRequests;
}

int TestHost::CapabilityRequests() const
{
    std::lock_guard<std::mutex> guard(mutex);
    return capabilityRequests;
}

std::string BuiltLibraryPath()
{
    return VARNEL4_LIBRARY_PATH;
}

LibraryCopy::LibraryCopy(bool withDefaults)
{
    namespace fs = boost::filesystem;
    const fs::path built(BuiltLibraryPath());
    const fs::path copy = fs::path(folder.Path()) / built.filename();
    fs::copy_file(built, copy);
    if (withDefaults)
        fs::copy_file(built.parent_path() / "../share/varnel4/varnel4-registry.xml",
                      fs::path(folder.Path()) / "varnel4-registry.xml");
    library = std::make_unique<Hosts::PlugInLibrary>(copy.string());
}

HLA2PlugIn* LibraryCopy::Acquire() const
{
    int version = 0;
    return library->Acquire(HLA2_INTERFACE_VERSION, &version);
}

}  // namespace OV::Testing
