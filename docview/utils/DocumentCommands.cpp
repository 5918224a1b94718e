#include "docview/utils/DocumentCommands.h"

#include "docview/interfaces/Document.h"

namespace OV::CFW::DocViewUtils {

void SetParameter::Execute()
{
    if (const std::shared_ptr<DocView::Document> target = document.lock())
        target->SetParameter(index, parameter, source);
    // The weak reference goes here, on the worker, so that taking a command on the audio
    // thread never drops the last reference to anything.
    document.reset();
    pool->Release(this);
}

void SetBPM::Execute()
{
    if (const std::shared_ptr<DocView::Document> target = document.lock())
        target->SetBPM(bpm, source);
    document.reset();
    pool->Release(this);
}

DocView::Command* LockingDocumentCommandFactory::MakeSetParameter(const std::weak_ptr<DocView::Document>& document,
                                                                  int index, DocView::Parameter value, int source)
{
    SetParameter* command = parameters.Acquire();
    if (command == nullptr)
        return nullptr;
    command->document = document;
    command->index = index;
    command->parameter = value;
    command->source = source;
    return command;
}

DocView::Command* LockingDocumentCommandFactory::MakeSetBPM(const std::weak_ptr<DocView::Document>& document,
                                                            float bpm, int source)
{
    SetBPM* command = tempos.Acquire();
    if (command == nullptr)
        return nullptr;
    command->document = document;
    command->bpm = bpm;
    command->source = source;
    return command;
}

}  // namespace OV::CFW::DocViewUtils
