#include "equaliser/VN4ModuleBaseDocument.h"

#include <tinyxml.h>

namespace OV::Comp::VN4ModuleBase {

using CFW::DocView::Parameter;

Document::Document(const DocumentProfile* profile, CFW::DocView::DocumentContext* context)
    : BasicDocument(profile, context), firstChannelParameter(profile->GetFirstChannelParameter()),
      lastChannelParameter(profile->GetLastChannelParameter()),
      channelParameterCount(profile->GetChannelParameterCount())
{
}

Document::~Document() = default;

void Document::SetParameter(int index, Parameter value, int source)
{
    if (source == CFW::DocView::SourceEngine) {
        // A stopped engine's outputs are stale: they are not kept for later either.
        if (GetParameter(DocumentProfile::EngineStopped).AsBool())
            return;
    } else if (source == CFW::DocView::SourceHost && index >= firstChannelParameter && index <= lastChannelParameter) {
        BasicDocument::SetParameter(index + channelParameterCount, value, source);
        BasicDocument::SetParameter(index + 2 * channelParameterCount, value, source);
        return;
    }
    BasicDocument::SetParameter(index, value, source);
}

void Document::DoReset()
{
    undoData.reset();
    BasicDocument::DoReset();
}

void Document::PressReset()
{
    // The undo is held outside the field while the document changes, so that the sets and the
    // load on the way cannot drop it.
    InBatch([this] {
        if (std::unique_ptr<TiXmlElement> saved = std::move(undoData)) {
            DoLoad(*saved);
            return;
        }
        auto saved = std::make_unique<TiXmlElement>("UndoData");
        DoSave(*saved);
        DoReset();
        undoData = std::move(saved);
    });
}

void Document::DoSetParameter(int index, Parameter value, int source)
{
    BasicDocument::DoSetParameter(index, value, source);
    if (GetProfile()->GetParameterInfo(index).flags != 0)
        undoData.reset();
}

bool Document::LoadKeepingUndoClear(const TiXmlElement& element)
{
    const bool complete = BasicDocument::DoLoad(element);
    undoData.reset();
    return complete;
}

}  // namespace OV::Comp::VN4ModuleBase
