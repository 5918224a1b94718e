#include "hosts/render/Progress.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>

namespace OV::Hosts::Render {

Progress::Progress(const std::atomic<long long>& done, long long total, double totalSeconds, bool show)
    : framesDone(done), frames(total), seconds(totalSeconds)
{
    if (!show || total <= 0 || isatty(STDERR_FILENO) == 0)
        return;
    drawer = std::thread([this] {
        const auto started = std::chrono::steady_clock::now();
        std::unique_lock<std::mutex> lock(mutex);
        while (!wake.wait_for(lock, std::chrono::milliseconds(200), [this] { return finished; }))
            Draw(std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
        std::fputs("\r\033[K", stderr);
    });
}

Progress::~Progress()
{
    {
        const std::lock_guard<std::mutex> guard(mutex);
        finished = true;
    }
    wake.notify_all();
    if (drawer.joinable())
        drawer.join();
}

void Progress::Draw(double elapsed) const
{
    constexpr int width = 30;
    const double share = std::min(1.0, static_cast<double>(framesDone.load()) / static_cast<double>(frames));
    const int filled = static_cast<int>(share * width);
    const std::string bar = std::string(static_cast<std::size_t>(filled), '#') + std::string(static_cast<std::size_t>(width - filled), '-');
    const double speed = elapsed > 0.0 ? share * seconds / elapsed : 0.0;
    std::fprintf(stderr, "\r[%s] %3d%%  %.1fx realtime", bar.c_str(), static_cast<int>(share * 100.0), speed);
    std::fflush(stderr);
}

}  // namespace OV::Hosts::Render
