// The editor's side of a document: widget changes queued as the editor's with retries of the
// newest value, and widgets shown from the document by the row's type.
#include "docview/utils/GUIMediator.h"
#include "tests/docview/utils/AutomationTestSetup.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocViewUtils::GUIMediator;
using Row = SlotDocumentProfile::Row;

// Records what the document shows it, as "row:Setter value".
class RecordingMediator : public CFW::DocView::GUIWidgetMediator {
public:
    RecordingMediator(int row, std::vector<std::string>& log) : row(row), log(log) {}
    int GetParameter() const override { return row; }
    void SetBool(bool value) override { Record("Bool", value ? "1" : "0"); }
    void SetInteger(int value) override { Record("Integer", std::to_string(value)); }
    void SetEnum(int value) override { Record("Enum", std::to_string(value)); }
    void SetFloat(float value) override { Record("Float", std::to_string(value)); }

private:
    void Record(const char* setter, const std::string& value) { log.push_back(std::to_string(row) + ":" + setter + " " + value); }

    int row;
    std::vector<std::string>& log;
};

std::string Describe(const SpyDocument::Queued& queued)
{
    return std::to_string(queued.index) + "=" + std::to_string(queued.value.type) + ":" + std::to_string(queued.value.ToNumber()) +
           " from " + std::to_string(queued.source);
}

std::vector<std::string> Describe(const std::vector<SpyDocument::Queued>& queued)
{
    std::vector<std::string> texts;
    for (const auto& q : queued)
        texts.push_back(Describe(q));
    return texts;
}

TEST(GUIMediatorTest, ChangesAreQueuedAsTheEditorsAndARefusedRowRetriesItsNewestValue)
{
    SpyDocument document;
    GUIMediator mediator(document);
    // Each number becomes the row's type: a bool row takes 0 or 1, a float row keeps the value.
    mediator.OnFloat(Row::Gain, 3.5f);
    mediator.OnBool(Row::Active, true);
    mediator.OnInteger(Row::Mix, 40);
    mediator.OnFloat(99, 1.0f); // no such row
    EXPECT_EQ((std::vector<std::string>{"0=4:3.500000 from 2", "2=1:1.000000 from 2", "3=4:40.000000 from 2"}),
              Describe(document.TakeQueued()));

    document.refuse = true;
    mediator.OnFloat(Row::Gain, 4.0f);
    mediator.OnFloat(Row::Gain, 5.0f);
    mediator.OnFloat(Row::Q, 2.0f);
    document.TakeQueued();
    mediator.Update(); // still refused: tried again, and kept
    EXPECT_EQ((std::vector<std::string>{"0=4:5.000000 from 2", "1=4:2.000000 from 2"}), Describe(document.TakeQueued()));
    document.refuse = false;
    mediator.Update();
    EXPECT_EQ((std::vector<std::string>{"0=4:5.000000 from 2", "1=4:2.000000 from 2"}), Describe(document.TakeQueued()));
    mediator.Update(); // accepted: nothing waits any more
    EXPECT_TRUE(document.TakeQueued().empty());
}

TEST(GUIMediatorTest, WidgetsShowTheDocumentByTheRowsTypeAndATouchedRowAtOnce)
{
    SpyDocument document;
    std::vector<std::string> log;
    GUIMediator mediator(document);
    mediator.Add(std::make_unique<RecordingMediator>(Row::Gain, log));
    mediator.Add(std::make_unique<RecordingMediator>(Row::Active, log));
    mediator.Add(std::make_unique<RecordingMediator>(42, log)); // a row the document lacks is never shown
    document.SetParameter(Row::Gain, Parameter::FromFloat(-6.0f), CFW::DocView::SourceHost);
    document.SetParameter(Row::Active, Parameter::FromBool(true), CFW::DocView::SourceHost);
    mediator.Update();
    EXPECT_EQ((std::vector<std::string>{"0:Float -6.000000", "2:Bool 1"}), log);

    log.clear();
    mediator.NotifyParameter(Row::Active); // a press on the widget: the document tells who shows it
    EXPECT_EQ((std::vector<std::string>{"2:Bool 1"}), log);
}

}  // namespace
}  // namespace OV::Testing
