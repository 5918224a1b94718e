// varnel4-edit as its users run it, on the test's X server: the editor's window comes up at the
// editor's size, closing it (from the window manager or by a signal) writes the program's state,
// a later run starts from that state, and the renderer takes the file.
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/XHostWindow.h"
#include "tests/support/XScreenshot.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <thread>

#include <gtest/gtest.h>
// After GoogleTest, whose names Xlib's macros would take.
#include <X11/Xlib.h>

namespace OV::Testing {
namespace {

const char* const title = "Varnel4 Lin Phase EQ";

// While varnel4-edit runs: waits for its window, keeps what it shows, then ends it the way
// `close` says.
struct Session {
    enum Close { WindowManager, Terminate };
    Close close;
    Screenshot shown;
    bool windowCame = false;
    bool hung = false;

    static void Run(int pid, void* context)
    {
        auto& session = *static_cast<Session*>(context);
        Display* display = XOpenDisplay(nullptr);
        if (display == nullptr) {
            kill(pid, SIGKILL);
            return;
        }
        const unsigned long window = WaitForWindow(display, title, 30.0);
        session.windowCame = window != 0;
        if (window != 0)
            session.shown = TakeScreenshot(display, window);
        if (window != 0 && session.close == WindowManager)
            RequestClose(display, window);
        else
            kill(pid, window != 0 ? SIGTERM : SIGKILL);
        XCloseDisplay(display);
        // A program that does not end is killed, so that the test fails instead of hanging.
        for (int wait = 0; wait < 3000 && Running(pid); ++wait)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        if (Running(pid)) {
            session.hung = true;
            kill(pid, SIGKILL);
        }
    }

    // Not yet ended: a program that has ended is a zombie until its parent reaps it.
    static bool Running(int pid)
    {
        std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
        std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
        const std::size_t state = text.rfind(')');
        return state != std::string::npos && state + 2 < text.size() && text[state + 2] != 'Z';
    }
};

ProgramRun Edit(const std::vector<std::string>& arguments, const ScratchFolder& folder, Session* session = nullptr)
{
    return RunProgram(VARNEL4_EDIT_PATH, arguments, folder.Path(), session ? &Session::Run : nullptr, session);
}

TEST(EditTest, TheWindowComesUpAndClosingKeepsTheState)
{
    const ScratchFolder folder;
    Session first{Session::WindowManager, {}, false, false};
    const ProgramRun run = Edit({"state.chunk"}, folder, &first);
    ASSERT_TRUE(first.windowCame) << run.err;
    EXPECT_FALSE(first.hung) << "the close button did not end the program";
    EXPECT_EQ(0, run.code) << run.err;
    // The editor's size: no layout yet, so the empty editor's 100 x 100.
    EXPECT_EQ(100, first.shown.width);
    EXPECT_EQ(100, first.shown.height);
    const std::string saved = ReadFile(folder.Path() + "/state.chunk");
    ASSERT_NE(std::string::npos, saved.find("<Program ")) << saved.substr(0, 200);

    // A later run starts from the file: a band changed in it comes back out, after a signal.
    const std::string edited = std::regex_replace(saved, std::regex("LM_Band3Gain=\"[^\"]*\""), "LM_Band3Gain=\"4.5\"");
    ASSERT_NE(saved, edited);
    folder.Write("state.chunk", edited);
    Session second{Session::Terminate, {}, false, false};
    const ProgramRun again = Edit({"state.chunk"}, folder, &second);
    ASSERT_TRUE(second.windowCame) << again.err;
    EXPECT_FALSE(second.hung) << "SIGTERM did not end the program";
    EXPECT_EQ(0, again.code) << again.err;
    EXPECT_NE(std::string::npos, ReadFile(folder.Path() + "/state.chunk").find("LM_Band3Gain=\"4.5\""));

    const ProgramRun render = RunProgram(VARNEL4_RENDER_PATH, {"--chunk", "state.chunk", "-o", "demo.wav", "-q"}, folder.Path());
    EXPECT_EQ(0, render.code) << render.err;
}

TEST(EditTest, BadArgumentsAndFilesAreTold)
{
    const ScratchFolder folder;
    EXPECT_EQ(0, Edit({"--help"}, folder).code);
    const struct {
        std::vector<std::string> arguments;
        int code;
        const char* message;
    } cases[] = {
        {{"--frobnicate"}, 2, "unknown option: --frobnicate"},
        {{"a.chunk", "b.chunk"}, 2, "one chunk file only"},
        {{"--library"}, 2, "--library needs a path"},
        {{"--library", "/nonexistent/libvarnel4.so"}, 1, "/nonexistent/libvarnel4.so"},
    };
    for (const auto& c : cases) {
        const ProgramRun run = Edit(c.arguments, folder);
        EXPECT_EQ(c.code, run.code) << c.message;
        EXPECT_NE(std::string::npos, run.err.find(c.message)) << run.err;
    }
    // What is not a program is refused before any window opens, and stays as it was: closing
    // would have written a program over it.
    for (const std::string text : {"not xml at all", "<Bank><Program/></Bank>", "<Program"}) {
        folder.Write("other.chunk", text);
        const ProgramRun run = Edit({"other.chunk"}, folder);
        EXPECT_EQ(4, run.code) << text;
        EXPECT_NE(std::string::npos, run.err.find("is not a program chunk")) << run.err;
        EXPECT_EQ(text, ReadFile(folder.Path() + "/other.chunk"));
    }
}

}  // namespace
}  // namespace OV::Testing
