#pragma once

#include "docview/interfaces/GUIWidgetMediator.h"
#include "docview/interfaces/Parameter.h"

#include <memory>
#include <utility>
#include <vector>

#include <boost/signals2/connection.hpp>

namespace OV::CFW::DocView {
class Document;
}

namespace OV::CFW::DocViewUtils {

// Binds an editor's widget mediators to a document. The user's changes are queued to the
// document as the editor's (a refused queue keeps the newest value of the row and tries again
// on the next Update); the widgets follow the document by polling in Update, so no document
// signal ever touches a widget. Main thread only.
class GUIMediator : public DocView::GUIWidgetMediator::Listener {
public:
    explicit GUIMediator(DocView::Document& document);
    ~GUIMediator() override;
    GUIMediator(const GUIMediator&) = delete;
    GUIMediator& operator=(const GUIMediator&) = delete;

    // Takes the mediator, which reports to this object.
    void Add(std::unique_ptr<DocView::GUIWidgetMediator> mediator);
    // Retries what the queue refused, then shows every row's value in its widgets.
    void Update();

    const DocView::ParameterInfo& GetParameterInfo(int row) override;
    void OnBool(int row, bool value) override;
    void OnInteger(int row, int value) override;
    void OnEnum(int row, int value) override;
    void OnFloat(int row, float value) override;
    void NotifyParameter(int row) override;

private:
    void Queue(int row, DocView::Parameter value);
    // A widget's number as the row's type, queued; rows the document lacks are ignored.
    void QueueNumber(int row, float number);
    // Shows the row's value in `mediator` by the setter of the row's type.
    void Show(DocView::GUIWidgetMediator& mediator);

    DocView::Document* document;
    std::vector<std::pair<bool, DocView::Parameter>> pending; // by row: waiting, and the value
    bool anyPending = false;
    std::vector<std::unique_ptr<DocView::GUIWidgetMediator>> mediators;
    boost::signals2::scoped_connection touchedConnection;
};

}  // namespace OV::CFW::DocViewUtils
