#include "platform/DebugOutput.h"
#include "platform/Messages.h"
#include "tests/support/ScratchFolder.h"

#include <tuple>

#include <gtest/gtest.h>

namespace OV::Platform {
namespace {

TEST(MessagesTest, DefaultAnswersWhatChangesNothingOnOneLine)
{
    const std::tuple<int, bool, const char*> cases[] = {
        {MessagePlain, true, "Caption: Text\n"},
        {MessageOkCancel, false, "Caption: Text [Cancel]\n"},
        {MessageYesNo, false, "Caption: Text [No]\n"},
    };
    for (const auto& [kind, expected, line] : cases) {
        bool answer = !expected;
        EXPECT_EQ(line, Testing::CaptureStandardError([&] { answer = ShowMessage("Text", "Caption", kind); })) << kind;
        EXPECT_EQ(expected, answer) << kind;
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
    EXPECT_EQ("", Testing::CaptureStandardError([] {
        EXPECT_TRUE(ShowMessage("Replace?", "", MessageYesNo));
        EXPECT_FALSE(ShowMessage("Note", "Title", MessagePlain));
    }));
    EXPECT_EQ((std::vector<std::string>{"|Replace?|2", "Title|Note|0"}), seen);

    EXPECT_TRUE(SetMessageHandler(nullptr));
    EXPECT_EQ("Default: Back\n", Testing::CaptureStandardError([] { EXPECT_TRUE(ShowMessage("Back", "Default", MessagePlain)); }));
    EXPECT_EQ(2u, seen.size());
}

TEST(MessagesTest, DebugOutputWritesWholeLines)
{
    EXPECT_EQ("FAIL: first\n\n", Testing::CaptureStandardError([] { DebugOutput("FAIL: first"); DebugOutput(""); }));
}

}  // namespace
}  // namespace OV::Platform
