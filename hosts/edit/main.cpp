// Opens the plug-in's editor in a window of its own, as a host does, without a DAW: the library
// is loaded through its two exports, one process is made, and its editor lives in a top-level
// X window that takes mouse and keys itself. On closing, the program's state is written to the
// chunk file, which varnel4-render --chunk or a later varnel4-edit loads.
#include "hosts/common/HostError.h"
#include "hosts/common/HostedProcess.h"
#include "hosts/common/PlugInLibrary.h"
#include "hosts/edit/HostWindow.h"
#include "platform/AtomicFile.h"
#include "platform/XmlParse.h"

#include <boost/filesystem.hpp>
#include <tinyxml.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using namespace OV::Hosts;

const char* const usage =
    "usage: varnel4-edit [--library PATH] [CHUNK]\n"
    "Opens the equaliser's editor in a window. CHUNK (default varnel4-edit.chunk) is loaded\n"
    "when it exists, and the program's state is written to it when the window is closed (or on\n"
    "SIGINT and SIGTERM); varnel4-render --chunk CHUNK renders with it.\n"
    "Exit codes: 0 done; 1 failure; 2 bad argument; 4 unreadable chunk; 5 unwritable chunk.\n";

volatile std::sig_atomic_t stopRequested = 0;

void RequestStop(int)
{
    stopRequested = 1;
}

struct Options {
    std::string library = PlugInLibrary::DefaultPath();
    std::string chunk = "varnel4-edit.chunk";
};

Options Parse(int argc, char** argv)
{
    Options options;
    bool chunkGiven = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--library") {
            if (i + 1 >= argc)
                throw HostError(BadArgument, "--library needs a path");
            options.library = argv[++i];
        } else if (argument.rfind("-", 0) == 0 && argument.size() > 1) {
            throw HostError(BadArgument, "unknown option: " + argument);
        } else if (chunkGiven) {
            throw HostError(BadArgument, "one chunk file only, not also " + argument);
        } else {
            options.chunk = argument;
            chunkGiven = true;
        }
    }
    return options;
}

// The program chunk in `path`. Anything else is refused before the editor opens, since closing
// would write a program over it.
std::string ReadChunk(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file.is_open() || file.bad())
        throw HostError(BadPreset, "cannot read " + path);
    TiXmlDocument document;
    if (!OV::Platform::ParseXml(document, text.c_str(), text.size()) || document.RootElement()->ValueStr() != "Program")
        throw HostError(BadPreset, "'" + path + "' is not a program chunk (a saved Program); it is left as it is");
    return text;
}

// The editor through the library's table: opened in `window`, driven until the window is closed.
void RunEditor(HLA2GUI& gui, HostWindow& window)
{
    gui.SetHostDeliversMouse(&gui, 0);
    gui.SetHostDeliversKeys(&gui, 0);
    gui.Open(&gui, window.Handle());
    // Idle about 50 times a second: the editor pumps its own window from there.
    auto next = std::chrono::steady_clock::now();
    while (stopRequested == 0) {
        // Rounded up: a wait cut to 0 ms would spin until the next idle is due.
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(next - std::chrono::steady_clock::now()).count();
        if (!window.Pump(wait > 0 ? static_cast<int>(wait) : 0))
            break;
        if (std::chrono::steady_clock::now() >= next) {
            gui.Idle(&gui);
            next += std::chrono::milliseconds(20);
        }
    }
    gui.Close(&gui);
}

int Run(const Options& options)
{
    const PlugInLibrary library(options.library);
    int version = 0;
    HLA2PlugIn* plugIn = library.Acquire(HLA2_INTERFACE_VERSION, &version);
    if (plugIn == nullptr)
        throw HostError(Failed, "the library refused interface version " + std::to_string(HLA2_INTERFACE_VERSION));
    struct Release {
        const PlugInLibrary& library;
        ~Release() { library.Release(); }
    } release{library};

    HostedProcess process(plugIn, 48000.0f, 512, 2);
    if (boost::filesystem::exists(options.chunk))
        process.SetProgramChunk(ReadChunk(options.chunk));
    HLA2GUI* gui = plugIn->GetGUI(plugIn, process.Get());
    if (gui == nullptr)
        throw HostError(Failed, "the plug-in has no editor");
    int width = 0;
    int height = 0;
    gui->GetSize(gui, &width, &height);
    {
        HostWindow window("Varnel4 Lin Phase EQ", width, height);
        RunEditor(*gui, window);
    }
    const OV::Platform::AtomicWriteFailure failure = OV::Platform::WriteFileAtomically(options.chunk, process.GetProgramChunk());
    if (failure)
        throw HostError(BadOutput, "cannot write " + options.chunk + " (" + failure.step + ": " + std::strerror(failure.error) + ")");
    std::printf("varnel4-edit: the program's state is in %s\n", options.chunk.c_str());
    return Done;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0)
        return std::fputs(usage, stdout) < 0 ? Failed : Done;
    std::signal(SIGINT, RequestStop);
    std::signal(SIGTERM, RequestStop);
    try {
        return Run(Parse(argc, argv));
    } catch (const HostError& error) {
        std::fprintf(stderr, "varnel4-edit: %s\n", error.what());
        if (error.GetCode() == BadArgument)
            std::fputs(usage, stderr);
        return error.GetCode();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "varnel4-edit: %s\n", error.what());
        return Failed;
    }
}
