#pragma once

#include "docview/interfaces/Command.h"
#include "docview/interfaces/Programs.h"
#include "docview/thread/LockingPool.h"

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

#include <boost/thread/mutex.hpp>
#include <tinyxml.h>

namespace OV::CFW::DocView {
class ComponentContext;
class Document;
}  // namespace OV::CFW::DocView

namespace OV::CFW::DocViewUtils {

class BasicPrograms;

// Makes a stored program live in the document, on the scheduler's worker.
class SetProgramCommand : public DocView::Command {
public:
    void Execute() override;

    Thread::LockingPool<SetProgramCommand, boost::mutex>* pool = nullptr;
    BasicPrograms* programs = nullptr;
    int index = 0;
};

// Brings a stored program up to date from the document, on the worker, and wakes the waiter.
class GetProgramCommand : public DocView::Command {
public:
    void Execute() override;

    Thread::LockingPool<GetProgramCommand, boost::mutex>* pool = nullptr;
    BasicPrograms* programs = nullptr;
    int index = 0;
};

// The host's programs: a fixed number of stored "Program" elements, one of which is live in the
// document. Only the worker touches the document: a switch is queued, and reading the live
// program hands over to the worker and waits for it.
//
// Main thread only (never the worker: SaveProgram and Copy wait for it).
class BasicPrograms : public DocView::Programs {
public:
    static constexpr std::size_t poolSize = 20;

    BasicPrograms(const DocView::ProgramsProfile* profile, DocView::ComponentContext* context,
                  DocView::Document* document);
    ~BasicPrograms() override;

    const DocView::ProgramsProfile* GetProfile() const override { return profile; }
    void SetCurrent(int index) override;
    int GetCurrent() const override { return current; }
    void SetName(int index, const std::string& name) override;
    std::string GetName(int index) const override;
    void LoadProgram(int index, const TiXmlElement& element) override;
    void SaveProgram(int index, TiXmlElement& element) override;
    void LoadBank(const TiXmlElement& element) override;
    void SaveBank(TiXmlElement& element) override;
    void Copy(int source, int target) override;

    // Worker: saves the outgoing program and loads `index` into the document.
    void Activate(int index);
    // Worker: the document into the stored program, then wakes the waiting thread.
    void Refresh(int index);

protected:
    // Set-up: the names and contents the programs start with.
    std::vector<std::string> names;
    std::vector<TiXmlElement> programs;

private:
    bool Valid(int index) const { return index >= 0 && index < static_cast<int>(programs.size()); }
    void Queue(int index);
    // Waits until the worker has saved program `index` from the document; false when no
    // command was free, and the stored element stands as it is.
    bool SynchronousRefresh(int index);

    const DocView::ProgramsProfile* profile;
    DocView::ComponentContext* context;
    DocView::Document* document;
    int current = 0;
    mutable std::mutex mutex;
    int loaded = 0;
    // A counted barrier with a generation: the waiter and the worker meet.
    std::mutex barrierMutex;
    std::condition_variable barrier;
    unsigned generation = 0;
    Thread::LockingPool<SetProgramCommand, boost::mutex> setPool;
    Thread::LockingPool<GetProgramCommand, boost::mutex> getPool;
};

}  // namespace OV::CFW::DocViewUtils
