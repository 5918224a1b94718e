#pragma once

#include <boost/noncopyable.hpp>

namespace OV::CFW::DocView {

// A unit of work for the scheduler's worker thread. Commands are made up front (usually by a
// pool) and linked through `next`, so queuing one never allocates; a command is in at most one
// queue at a time.
class Command : boost::noncopyable {
public:
    virtual ~Command() = default;
    // Worker thread. Must not throw. A pooled command gives itself back to its pool here, as its
    // last act: whoever runs it reads `next` before the call and never touches it afterwards.
    virtual void Execute() = 0;

    Command* next = nullptr;
};

}  // namespace OV::CFW::DocView
