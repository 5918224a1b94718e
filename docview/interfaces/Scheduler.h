#pragma once

#include "docview/interfaces/Command.h"

#include <functional>

#include <boost/noncopyable.hpp>
#include <boost/signals2/connection.hpp>

namespace OV::CFW::DocView {

// Runs commands on one worker thread per component tree, and ticks that thread's listeners.
class Scheduler : boost::noncopyable {
public:
    // Any thread. `slot` is called on the worker after each batch of commands, and at least
    // about every 100 ms while there is nothing to do.
    virtual boost::signals2::connection ConnectTick(const std::function<void()>& slot) = 0;
    // Any thread, the audio thread included: no allocation, the lock is held for a few pointer
    // moves. Null is ignored. The command runs on the worker, unless the scheduler is stopped
    // first; then it is never run and stays with whoever owns it.
    virtual void Enqueue(Command* command) = 0;
    // Any thread but the worker; waits for the batch that is running, and no command runs
    // afterwards. Calling it again does nothing.
    virtual void Stop() = 0;
    virtual ~Scheduler() = default;
};

}  // namespace OV::CFW::DocView
