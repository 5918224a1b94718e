#pragma once

#include "docview/interfaces/Command.h"

#include <functional>
#include <memory>
#include <mutex>
#include <set>

namespace OV::CFW::DocView {
class Scheduler;
}

namespace OV::Products::VN4::State {

// Runs functions on the document's worker as one-off commands. The commands a stopped worker
// never ran are deleted with this object. Posting: main thread; allocates.
class PostedCommands {
public:
    explicit PostedCommands(CFW::DocView::Scheduler* scheduler) : scheduler(scheduler) {}
    ~PostedCommands();
    PostedCommands(const PostedCommands&) = delete;
    PostedCommands& operator=(const PostedCommands&) = delete;

    void Post(std::function<void()> work);

private:
    class Command;
    void Finished(Command* command);

    CFW::DocView::Scheduler* scheduler;
    std::mutex mutex;
    std::set<Command*> pending;
};

}  // namespace OV::Products::VN4::State
