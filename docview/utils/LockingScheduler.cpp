#include "docview/utils/LockingScheduler.h"

#include <boost/date_time/posix_time/posix_time_duration.hpp>

namespace OV::CFW::DocViewUtils {

namespace {

// The longest the worker sleeps with nothing queued, and so the slowest `tick` rate.
constexpr long idleWakeMilliseconds = 100;

}  // namespace

LockingScheduler::LockingScheduler() : startTime(std::chrono::steady_clock::now())
{
    // Started last, once every member the worker touches exists.
    worker = std::make_unique<boost::thread>([this] { Run(); });
}

LockingScheduler::~LockingScheduler()
{
    Stop();
}

boost::signals2::connection LockingScheduler::ConnectTick(const std::function<void()>& slot)
{
    return tick.connect(slot);
}

void LockingScheduler::Enqueue(DocView::Command* command)
{
    boost::lock_guard<boost::mutex> lock(mutex);
    commands.Push(command);
    wakeup.notify_one();
}

void LockingScheduler::Stop()
{
    {
        boost::lock_guard<boost::mutex> lock(mutex);
        if (stopping)
            return;
        stopping = true;
        // Only to end the idle wait early; the worker checks `stopping` after its batch.
        wakeup.notify_one();
    }
    worker->join();
}

void LockingScheduler::Run()
{
    for (;;) {
        DocView::Command* command = nullptr;
        {
            boost::unique_lock<boost::mutex> lock(mutex);
            if (stopping)
                return;
            // A spurious or early return is harmless. (A relative timed_wait waits on the
            // monotonic clock and, unlike wait_for, needs no Boost.Chrono library.)
            if (commands.IsEmpty())
                wakeup.timed_wait(lock, boost::posix_time::milliseconds(idleWakeMilliseconds));
            command = commands.TakeAll();
        }
        // A command may go back to its pool, and from there into a queue again, inside Execute:
        // read `next` first.
        while (command != nullptr) {
            DocView::Command* following = command->next;
            command->Execute();
            command = following;
        }
        tick();
    }
}

}  // namespace OV::CFW::DocViewUtils
