#include "equaliser/Document.h"

#include "equaliser/ScopedFlag.h"

namespace OV::Comp::ModuleLinearPhaseEq {

using CFW::DocView::Parameter;
using CFW::DocView::SourceInternal;
using Rows = DocumentProfile;
using VN4ModuleBase::ScopedFlag;

namespace {

constexpr int firstLeftMid = Rows::FirstChannelRow + Rows::setSize;       // 46
constexpr int lastRightSide = Rows::LastChannelRow + 2 * Rows::setSize;   // 131
constexpr int firstLinked = Rows::FirstChannelRow + 3 * Rows::setSize;    // 132
constexpr int lastLinked = Rows::LastChannelRow + 3 * Rows::setSize;      // 174

}  // namespace

Document::Document(const DocumentProfile* profile, CFW::DocView::DocumentContext* context)
    : VN4ModuleBase::Document(profile, context)
{
    // The reset of the base constructor ran without this class's rules: apply what they would have.
    RefreshCurrentSet(true);
    if (GetEnum(Rows::LatencyLevel) != Rows::LatencyHigh)
        DoSetParameter(Rows::LinearPhase, Parameter::FromBool(false), SourceInternal);
}

bool Document::DoLoad(const TiXmlElement& element)
{
    // Only the channels and the selection are saved: they lead, the set on view follows.
    ScopedFlag raise(propagating);
    return LoadKeepingUndoClear(element);
}

void Document::DoSetParameter(int index, Parameter value, int source)
{
    if (index == Rows::LinearPhase && GetEnum(Rows::LatencyLevel) != Rows::LatencyHigh) {
        VN4ModuleBase::Document::DoSetParameter(index, Parameter::FromBool(false), source);
        return;
    }
    VN4ModuleBase::Document::DoSetParameter(index, value, source);

    if (index >= Rows::FirstChannelRow && index <= Rows::LastChannelRow) {
        // An edit on view goes to the channel(s) on view, whether it changed the view or not.
        if (propagating != 0)
            return;
        switch (GetEnum(Rows::CurrentChannel)) {
        case Rows::ViewLeftMid:
            DoSetParameter(index + Rows::setSize, value, SourceInternal);
            break;
        case Rows::ViewBoth:
            DoSetParameter(index + Rows::setSize, value, SourceInternal);
            DoSetParameter(index + 2 * Rows::setSize, value, SourceInternal);
            DoSetParameter(index + 3 * Rows::setSize, value, SourceInternal);
            break;
        case Rows::ViewRightSide:
            DoSetParameter(index + 2 * Rows::setSize, value, SourceInternal);
            break;
        default:
            break;
        }
    } else if (index >= firstLeftMid && index <= lastRightSide) {
        const bool rightSide = (index - firstLeftMid) / Rows::setSize != 0;
        const std::uint32_t view = GetEnum(Rows::CurrentChannel);
        if (view == Rows::ViewBoth || view == (rightSide ? Rows::ViewRightSide : Rows::ViewLeftMid)) {
            ScopedFlag raise(propagating);
            DoSetParameter((index - firstLeftMid) % Rows::setSize + Rows::FirstChannelRow, value, SourceInternal);
        }
    } else if (index >= firstLinked && index <= lastLinked) {
        if (propagating == 0) {
            DoSetParameter(index - 2 * Rows::setSize, value, SourceInternal);
            DoSetParameter(index - Rows::setSize, value, SourceInternal);
        }
    } else if (index == Rows::CurrentChannel) {
        RefreshCurrentSet(false);
    } else if (index == Rows::LatencyLevel && GetEnum(Rows::LatencyLevel) != Rows::LatencyHigh) {
        DoSetParameter(Rows::LinearPhase, Parameter::FromBool(false), SourceInternal);
    }
}

void Document::RefreshCurrentSet(bool force)
{
    int offset;
    switch (GetEnum(Rows::CurrentChannel)) {
    case Rows::ViewLeftMid:
        offset = Rows::setSize;
        break;
    case Rows::ViewRightSide:
        offset = 2 * Rows::setSize;
        break;
    default:
        if (!force)
            return;
        offset = Rows::setSize;
        break;
    }
    ScopedFlag raise(propagating);
    for (int index = Rows::FirstChannelRow; index <= Rows::LastChannelRow; ++index)
        DoSetParameter(index, GetParameter(index + offset), SourceInternal);
}

}  // namespace OV::Comp::ModuleLinearPhaseEq
