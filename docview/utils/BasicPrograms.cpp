#include "docview/utils/BasicPrograms.h"

#include "docview/interfaces/Context.h"
#include "docview/interfaces/Document.h"
#include "docview/interfaces/Scheduler.h"

#include <chrono>

namespace OV::CFW::DocViewUtils {

void SetProgramCommand::Execute()
{
    programs->Activate(index);
    pool->Release(this);
}

void GetProgramCommand::Execute()
{
    // The pool first: the waiter may go on and be destroyed as soon as it is woken.
    BasicPrograms* owner = programs;
    const unsigned long long number = ticket;
    pool->Release(this);
    owner->Refresh(number);
}

BasicPrograms::BasicPrograms(const DocView::ProgramsProfile* programsProfile, DocView::ComponentContext* componentContext,
                             DocView::Document* programDocument)
    : profile(programsProfile), context(componentContext), document(programDocument), setPool(poolSize), getPool(poolSize)
{
}

BasicPrograms::~BasicPrograms() = default;

void BasicPrograms::Queue(int index)
{
    SetProgramCommand* command = setPool.Acquire();
    if (command == nullptr)
        return;
    command->programs = this;
    command->index = index;
    context->GetScheduler()->Enqueue(command);
}

void BasicPrograms::SetCurrent(int index)
{
    if (index == current || !Valid(index))
        return;
    current = index;
    Queue(index);
}

void BasicPrograms::SetName(int index, const std::string& name)
{
    std::lock_guard<std::mutex> guard(mutex);
    if (index >= 0 && index < static_cast<int>(names.size()))
        names[static_cast<std::size_t>(index)] = name;
}

std::string BasicPrograms::GetName(int index) const
{
    std::lock_guard<std::mutex> guard(mutex);
    return index >= 0 && index < static_cast<int>(names.size()) ? names[static_cast<std::size_t>(index)] : std::string();
}

namespace {

// A document saves into a fresh "Program" element, not on top of what was there.
void SaveInto(DocView::Document& document, TiXmlElement& program)
{
    program = TiXmlElement("Program");
    document.Save(program);
}

// The longest a main-thread caller waits for the worker; it only runs out when the worker
// is stopped or waits for the caller, and then the stored program is used as it stands.
constexpr std::chrono::seconds handOverLimit(5);

}  // namespace

void BasicPrograms::Activate(int index)
{
    std::lock_guard<std::mutex> guard(mutex);
    if (loaded != index)
        SaveInto(*document, programs[static_cast<std::size_t>(loaded)]);
    document->Load(programs[static_cast<std::size_t>(index)]);
    loaded = index;
}

void BasicPrograms::Refresh(unsigned long long ticket)
{
    {
        std::lock_guard<std::mutex> guard(mutex);
        SaveInto(*document, programs[static_cast<std::size_t>(loaded)]);
    }
    std::lock_guard<std::mutex> lock(handOverMutex);
    completed = ticket;
    handedOver.notify_all();
}

bool BasicPrograms::SynchronousRefresh()
{
    GetProgramCommand* command = getPool.Acquire();
    if (command == nullptr)
        return false;
    const unsigned long long ticket = ++requested;
    command->programs = this;
    command->ticket = ticket;
    context->GetScheduler()->Enqueue(command);
    HandedOver();
    std::unique_lock<std::mutex> lock(handOverMutex);
    return handedOver.wait_for(lock, handOverLimit, [&] { return completed >= ticket; });
}

void BasicPrograms::LoadProgram(int index, const TiXmlElement& element)
{
    if (std::string(element.Value()) != "Program" || !Valid(index))
        return;
    {
        std::lock_guard<std::mutex> guard(mutex);
        programs[static_cast<std::size_t>(index)] = element;
    }
    if (index == current)
        Queue(index);
}

void BasicPrograms::SaveProgram(int index, TiXmlElement& element)
{
    element = TiXmlElement("Program");
    if (!Valid(index))
        return;
    SynchronousRefresh();
    std::lock_guard<std::mutex> guard(mutex);
    element = programs[static_cast<std::size_t>(index)];
}

void BasicPrograms::LoadBank(const TiXmlElement& element)
{
    if (std::string(element.Value()) != "Bank")
        return;
    int index = 0;
    for (const TiXmlElement* child = element.FirstChildElement("Program");
         child != nullptr && index < static_cast<int>(programs.size()); child = child->NextSiblingElement("Program"))
        LoadProgram(index++, *child);
}

void BasicPrograms::SaveBank(TiXmlElement& element)
{
    element.SetValue("Bank");
    SynchronousRefresh();
    std::lock_guard<std::mutex> guard(mutex);
    for (const TiXmlElement& program : programs)
        element.InsertEndChild(program);
}

void BasicPrograms::Copy(int source, int target)
{
    if (source == target || !Valid(source) || !Valid(target))
        return;
    SynchronousRefresh();
    {
        std::lock_guard<std::mutex> guard(mutex);
        programs[static_cast<std::size_t>(target)] = programs[static_cast<std::size_t>(source)];
    }
    // The live program is the document's: it takes the copy too.
    if (target == current)
        Queue(target);
}

}  // namespace OV::CFW::DocViewUtils
