#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace OV::Hosts::Render {

// A bar on standard error while files render: the share done and the speed as a multiple of
// real time. It draws from a thread of its own, five times a second, only on a terminal.
class Progress {
public:
    // `frames` and `seconds`: all the audio to render, in frames and in seconds.
    Progress(const std::atomic<long long>& framesDone, long long frames, double seconds, bool show);
    // Clears the bar.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    void Draw(double elapsed) const;

    const std::atomic<long long>& framesDone;
    long long frames;
    double seconds;
    std::mutex mutex;
    std::condition_variable wake;
    bool finished = false;
    std::thread drawer;
};

}  // namespace OV::Hosts::Render
