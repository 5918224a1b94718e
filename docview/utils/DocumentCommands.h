#pragma once

#include "docview/interfaces/Command.h"
#include "docview/interfaces/DocumentContext.h"
#include "docview/interfaces/Parameter.h"
#include "docview/thread/LockingPool.h"

#include <memory>

#include <boost/thread/mutex.hpp>

namespace OV::CFW::DocViewUtils {

// Sets one parameter of a document on the worker, if the document still lives, then goes back
// to its pool.
class SetParameter : public DocView::Command {
public:
    void Execute() override;

    Thread::LockingPool<SetParameter, boost::mutex>* pool = nullptr;
    std::weak_ptr<DocView::Document> document;
    int index = 0;
    DocView::Parameter parameter;
    int source = 0;
};

// Sets a document's tempo on the worker, if the document still lives.
class SetBPM : public DocView::Command {
public:
    void Execute() override;

    Thread::LockingPool<SetBPM, boost::mutex>* pool = nullptr;
    std::weak_ptr<DocView::Document> document;
    float bpm = 0.0f;
    int source = 0;
};

// The commands of one document context: 200 parameter changes and 20 tempo changes in flight.
class LockingDocumentCommandFactory : public DocView::DocumentCommandFactory {
public:
    static constexpr std::size_t parameterCommands = 200;
    static constexpr std::size_t tempoCommands = 20;

    LockingDocumentCommandFactory() : parameters(parameterCommands), tempos(tempoCommands) {}

    DocView::Command* MakeSetParameter(const std::weak_ptr<DocView::Document>& document, int index,
                                       DocView::Parameter value, int source) override;
    DocView::Command* MakeSetBPM(const std::weak_ptr<DocView::Document>& document, float bpm, int source) override;

private:
    Thread::LockingPool<SetParameter, boost::mutex> parameters;
    Thread::LockingPool<SetBPM, boost::mutex> tempos;
};

}  // namespace OV::CFW::DocViewUtils
