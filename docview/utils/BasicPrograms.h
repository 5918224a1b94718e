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

// Brings the live program up to date from the document, on the worker, and marks its ticket
// done.
class GetProgramCommand : public DocView::Command {
public:
    void Execute() override;

    Thread::LockingPool<GetProgramCommand, boost::mutex>* pool = nullptr;
    BasicPrograms* programs = nullptr;
    unsigned long long ticket = 0;
};

// The host's programs: a fixed number of stored "Program" elements, one of which is live in the
// document. Only the worker touches the document: a switch is queued, and reading a program
// hands over to the worker and waits until it has run everything queued before, so that the
// stored programs are up to date. The worker only ever saves the document into the program
// loaded in it, and the stored programs are touched under one lock that no one holds while
// waiting for the worker.
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
    // Worker: the document into the program loaded in it, then `ticket` is done.
    void Refresh(unsigned long long ticket);

protected:
    // Called once a hand-over is queued, before the wait: tests hold the worker until then.
    virtual void HandedOver() {}

    // Set-up: the names and contents the programs start with.
    std::vector<std::string> names;
    std::vector<TiXmlElement> programs;

private:
    bool Valid(int index) const { return index >= 0 && index < static_cast<int>(programs.size()); }
    void Queue(int index);
    // Waits until the worker has run what was queued before and saved the live program; false
    // when no command was free or the worker did not come, and the stored programs stand.
    bool SynchronousRefresh();

    const DocView::ProgramsProfile* profile;
    DocView::ComponentContext* context;
    DocView::Document* document;
    int current = 0;
    mutable std::mutex mutex;  // names, programs and loaded
    int loaded = 0;
    // Hand-overs are numbered; a waiter waits for its own number, so a late one from a wait that
    // gave up wakes no one else.
    std::mutex handOverMutex;
    std::condition_variable handedOver;
    unsigned long long requested = 0;  // main thread
    unsigned long long completed = 0;  // under handOverMutex
    Thread::LockingPool<SetProgramCommand, boost::mutex> setPool;
    Thread::LockingPool<GetProgramCommand, boost::mutex> getPool;
};

}  // namespace OV::CFW::DocViewUtils
