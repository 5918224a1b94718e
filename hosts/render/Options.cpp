#include "hosts/render/Options.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace OV::Hosts::Render {

const char* const usageText =
    "usage: varnel4-render [options] [INPUT...]\n"
    "Runs audio files through the Varnel4 Lin Phase EQ. With no input it renders a built-in\n"
    "demo through a factory preset.\n"
    "\n"
    "  -o, --output FILE        the output of one input or of the demo\n"
    "  -d, --output-dir DIR     the outputs of several inputs, under their own names\n"
    "  -p, --preset PRESET      a preset file (.vn4m, .vn4p) or a preset's name (\"Vocals/Air\")\n"
    "  -c, --chunk FILE         a state chunk: a saved program or bank\n"
    "  -s, --set SLOT=VALUE     a slot by name or number at a plain value (\"Band 1 Gain=6\")\n"
    "  -n, --set-normalized SLOT=VALUE   a slot at a normalised value, 0 to 1\n"
    "  -l, --latency LEVEL      low, mid or high (mid and high oversample; high is linear phase)\n"
    "  -m, --channel-mode MODE  lr (left/right) or ms (mid/side)\n"
    "  -a, --align              remove the latency: the output lines up with the input\n"
    "      --format TYPE        wav, flac, aiff or ogg (default: from the output's name)\n"
    "      --bits DEPTH         16, 24, 32 or float (default: the input's)\n"
    "      --response FILE      write the magnitude response, 20 Hz to 20 kHz, as CSV\n"
    "      --block FRAMES       the host block size (default 1024)\n"
    "  -j, --jobs N             files rendered at once (default: one per core)\n"
    "  -f, --force              replace existing output files\n"
    "  -q, --quiet              no progress and no summary\n"
    "      --list-slots         the automation slots, their ranges and values\n"
    "      --list-presets       the presets in the preset folders\n"
    "      --library PATH       another build of the plug-in library\n"
    "  -h, --help               this text\n"
    "\n"
    "Settings apply in this order: chunk, preset, channel mode, slots.\n"
    "Exit codes: 0 done; 1 failed; 2 bad argument, unknown slot or value out of range;\n"
    "3 unreadable input; 4 bad preset or chunk file; 5 unwritable or existing output.\n";

namespace {

int Count(const std::string& option, const std::string& text, int least)
{
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || errno != 0 || value < least || value > 1 << 20)
        throw std::invalid_argument(option + " needs a whole number from " + std::to_string(least) + ", not '" + text + "'");
    return static_cast<int>(value);
}

Options::SlotSetting Setting(const std::string& option, const std::string& text, bool normalised)
{
    const std::string::size_type equals = text.rfind('=');
    if (equals == std::string::npos || equals == 0 || equals + 1 == text.size())
        throw std::invalid_argument(option + " needs SLOT=VALUE, not '" + text + "'");
    return {text.substr(0, equals), text.substr(equals + 1), normalised};
}

}  // namespace

Options ParseOptions(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const auto value = [&]() -> std::string {
            if (i + 1 >= argc)
                throw std::invalid_argument(argument + " needs a value");
            return argv[++i];
        };
        if (argument == "-o" || argument == "--output")
            options.output = value();
        else if (argument == "-d" || argument == "--output-dir")
            options.outputFolder = value();
        else if (argument == "-p" || argument == "--preset")
            options.preset = value();
        else if (argument == "-c" || argument == "--chunk")
            options.chunk = value();
        else if (argument == "-s" || argument == "--set")
            options.settings.push_back(Setting(argument, value(), false));
        else if (argument == "-n" || argument == "--set-normalized")
            options.settings.push_back(Setting(argument, value(), true));
        else if (argument == "-l" || argument == "--latency")
            options.latency = value();
        else if (argument == "-m" || argument == "--channel-mode")
            options.channelMode = value();
        else if (argument == "-a" || argument == "--align")
            options.align = true;
        else if (argument == "--format")
            options.container = value();
        else if (argument == "--bits")
            options.depth = value();
        else if (argument == "--response")
            options.response = value();
        else if (argument == "--block")
            options.block = Count(argument, value(), 1);
        else if (argument == "-j" || argument == "--jobs")
            options.jobs = Count(argument, value(), 1);
        else if (argument == "-f" || argument == "--force")
            options.force = true;
        else if (argument == "-q" || argument == "--quiet")
            options.quiet = true;
        else if (argument == "--list-slots")
            options.listSlots = true;
        else if (argument == "--list-presets")
            options.listPresets = true;
        else if (argument == "--library")
            options.library = value();
        else if (argument == "-h" || argument == "--help")
            options.help = true;
        else if (argument == "--") {
            options.inputs.insert(options.inputs.end(), argv + i + 1, argv + argc);
            break;
        } else if (!argument.empty() && argument[0] == '-')
            throw std::invalid_argument("unknown option '" + argument + "'");
        else
            options.inputs.push_back(argument);
    }
    if (options.inputs.size() > 1 && !options.output.empty())
        throw std::invalid_argument("several inputs go to a folder: use --output-dir, not --output");
    if (options.inputs.size() == 1 && options.output.empty() && options.outputFolder.empty())
        throw std::invalid_argument("where to? give --output FILE or --output-dir DIR");
    if (options.inputs.size() > 1 && options.outputFolder.empty())
        throw std::invalid_argument("several inputs need --output-dir DIR");
    return options;
}

}  // namespace OV::Hosts::Render
