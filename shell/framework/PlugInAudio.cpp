#include "shell/framework/PlugInAudio.h"

#include <memory>
#include <mutex>

namespace OV::CFW::HLAFramework {

namespace {

std::mutex& SingletonLock()
{
    static std::mutex lock;
    return lock;
}

}  // namespace

PlugInAudio& PlugInAudio::Instance()
{
    static std::unique_ptr<PlugInAudio> instance;
    std::lock_guard<std::mutex> guard(SingletonLock());
    if (!instance)
        instance.reset(new PlugInAudio);
    return *instance;
}

void PlugInAudio::NotifyAudioOn()
{
    std::lock_guard<std::mutex> guard(SingletonLock());
    audioChanged(true);
}

void PlugInAudio::NotifyAudioOff()
{
    std::lock_guard<std::mutex> guard(SingletonLock());
    audioChanged(false);
}

}  // namespace OV::CFW::HLAFramework
