#include "platform/DebugOutput.h"
#include "platform/Messages.h"
#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace OV::Platform {
namespace {

TEST(MessagesTest, DefaultAnswersWhatChangesNothingOnOneLine)
{
    struct Case {
        int kind;
        bool answer;
        const char* line;
    };
    const Case cases[] = {
        {MessagePlain, true, "Caption: Text\n"},
        {MessageOkCancel, false, "Caption: Text [Cancel]\n"},
        {MessageYesNo, false, "Caption: Text [No]\n"},
    };
    for (const Case& c : cases) {
        bool answer = !c.answer;
        const std::string printed
            = Testing::CaptureStandardError([&] { answer = ShowMessage("Text", "Caption", c.kind); });
        EXPECT_EQ(c.answer, answer) << c.kind;
        EXPECT_EQ(c.line, printed) << c.kind;
    }
}

TEST(MessagesTest, InstalledHandlerAnswersUntilRemoved)
{
    std::vector<std::string> seen;
    const MessageHandler previous = SetMessageHandler([&](const std::string& text, const std::string& caption, int kind) {
        seen.push_back(caption + "|" + text + "|" + std::to_string(kind));
        return kind == MessageYesNo;
    });
    EXPECT_FALSE(previous);
    std::string printed = Testing::CaptureStandardError([] {
        EXPECT_TRUE(ShowMessage("Replace?", "", MessageYesNo));
        EXPECT_FALSE(ShowMessage("Note", "Title", MessagePlain));
    });
    EXPECT_EQ("", printed);
    EXPECT_EQ((std::vector<std::string>{"|Replace?|2", "Title|Note|0"}), seen);

    EXPECT_TRUE(SetMessageHandler(nullptr));
    printed = Testing::CaptureStandardError([] { EXPECT_TRUE(ShowMessage("Back", "Default", MessagePlain)); });
    EXPECT_EQ("Default: Back\n", printed);
    EXPECT_EQ(2u, seen.size());
}

TEST(MessagesTest, DebugOutputWritesWholeLines)
{
    const std::string printed = Testing::CaptureStandardError([] {
        DebugOutput("FAIL: first");
        DebugOutput("");
    });
    EXPECT_EQ("FAIL: first\n\n", printed);
}

}  // namespace
}  // namespace OV::Platform
