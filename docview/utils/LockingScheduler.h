#pragma once

#include "docview/interfaces/Scheduler.h"
#include "docview/thread/LockingQueue.h"
#include "docview/thread/NullMutex.h"

#include <chrono>
#include <memory>

#include <boost/signals2/signal.hpp>
#include <boost/thread/condition_variable.hpp>
#include <boost/thread/mutex.hpp>
#include <boost/thread/thread.hpp>

namespace OV::CFW::DocViewUtils {

// The scheduler of a component context: a worker thread, started by the constructor, that takes
// every queued command at once, runs them in order, then emits `tick`; it wakes at least every
// 100 ms when nothing is queued. The destructor stops it first if Stop has not run.
class LockingScheduler : public DocView::Scheduler {
public:
    LockingScheduler();
    ~LockingScheduler() override;

    boost::signals2::connection ConnectTick(const std::function<void()>& slot) override;
    void Enqueue(DocView::Command* command) override;
    void Stop() override;

private:
    void Run();

    boost::signals2::signal<void()> tick;
    std::unique_ptr<boost::thread> worker;
    // Only touched under `mutex`, hence the null mutex of its own.
    Thread::LockingQueue<DocView::Command, Thread::NullMutex> commands;
    boost::mutex mutex;
    boost::condition_variable wakeup;
    bool stopping = false;  // under `mutex`
    const std::chrono::steady_clock::time_point startTime;  // when built; nothing reads it
};

}  // namespace OV::CFW::DocViewUtils
