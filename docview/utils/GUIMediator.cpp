#include "docview/utils/GUIMediator.h"

#include "docview/interfaces/Document.h"

namespace OV::CFW::DocViewUtils {

using DocView::Parameter;

GUIMediator::GUIMediator(DocView::Document& document)
    : document(&document), pending(static_cast<std::size_t>(document.GetProfile()->GetParameterCount()))
{
    touchedConnection = document.ConnectParameterTouched([this](DocView::Document&, int row) {
        for (const auto& mediator : mediators) {
            if (mediator->GetParameter() == row)
                Show(*mediator);
        }
    });
}

// The mediators go first: they hold connections to their widgets.
GUIMediator::~GUIMediator()
{
    touchedConnection.disconnect();
    mediators.clear();
}

void GUIMediator::Add(std::unique_ptr<DocView::GUIWidgetMediator> mediator)
{
    mediators.push_back(std::move(mediator));
}

void GUIMediator::Update()
{
    if (anyPending) {
        anyPending = false;
        for (std::size_t row = 0; row < pending.size(); ++row) {
            if (pending[row].first)
                Queue(static_cast<int>(row), pending[row].second);
        }
    }
    for (const auto& mediator : mediators)
        Show(*mediator);
}

void GUIMediator::Show(DocView::GUIWidgetMediator& mediator)
{
    const int row = mediator.GetParameter();
    if (row < 0 || row >= document->GetProfile()->GetParameterCount())
        return;
    const Parameter value = document->GetParameter(row);
    switch (document->GetProfile()->GetParameterInfo(row).type) {
    case Parameter::Bool:
        mediator.SetBool(value.AsBool());
        break;
    case Parameter::Integer:
        mediator.SetInteger(value.AsInteger());
        break;
    case Parameter::Enum:
        mediator.SetEnum(static_cast<int>(value.AsEnum()));
        break;
    case Parameter::Float:
        mediator.SetFloat(value.AsFloat());
        break;
    default:
        break;
    }
}

// A refused value waits in `pending`, replacing any older one of the row.
void GUIMediator::Queue(int row, Parameter value)
{
    const bool queued = document->QueueSetParameter(row, value, DocView::SourceEditor);
    pending[static_cast<std::size_t>(row)] = {!queued, value};
    if (!queued)
        anyPending = true;
}

void GUIMediator::QueueNumber(int row, float number)
{
    if (row >= 0 && static_cast<std::size_t>(row) < pending.size())
        Queue(row, Parameter::FromFloat(number).As(document->GetProfile()->GetParameterInfo(row).type));
}

const DocView::ParameterInfo& GUIMediator::GetParameterInfo(int row)
{
    return document->GetProfile()->GetParameterInfo(row);
}

void GUIMediator::OnBool(int row, bool value)
{
    QueueNumber(row, value ? 1.0f : 0.0f);
}

void GUIMediator::OnInteger(int row, int value)
{
    QueueNumber(row, static_cast<float>(value));
}

void GUIMediator::OnEnum(int row, int value)
{
    QueueNumber(row, static_cast<float>(value));
}

void GUIMediator::OnFloat(int row, float value)
{
    QueueNumber(row, value);
}

void GUIMediator::NotifyParameter(int row)
{
    document->NotifyParameter(row);
}

}  // namespace OV::CFW::DocViewUtils
