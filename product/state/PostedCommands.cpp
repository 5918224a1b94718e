#include "product/state/PostedCommands.h"

#include "docview/interfaces/Scheduler.h"

namespace OV::Products::VN4::State {

class PostedCommands::Command : public CFW::DocView::Command {
public:
    Command(PostedCommands& owner, std::function<void()> work) : owner(owner), work(std::move(work)) {}
    void Execute() override
    {
        work();
        owner.Finished(this);
    }

private:
    PostedCommands& owner;
    std::function<void()> work;
};

PostedCommands::~PostedCommands()
{
    for (Command* command : pending)
        delete command;
}

void PostedCommands::Post(std::function<void()> work)
{
    auto command = std::make_unique<Command>(*this, std::move(work));
    {
        std::lock_guard<std::mutex> guard(mutex);
        pending.insert(command.get());
    }
    scheduler->Enqueue(command.release());
}

void PostedCommands::Finished(Command* command)
{
    {
        std::lock_guard<std::mutex> guard(mutex);
        pending.erase(command);
    }
    delete command;
}

}  // namespace OV::Products::VN4::State
