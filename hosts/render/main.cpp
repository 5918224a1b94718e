// varnel4-render: audio files through the equaliser, loaded as any host loads it.
#include "hosts/common/PlugInLibrary.h"
#include "hosts/render/AudioFile.h"
#include "hosts/render/LatencyLevel.h"
#include "hosts/render/Options.h"
#include "hosts/render/Progress.h"
#include "hosts/common/HostError.h"
#include "hosts/render/Response.h"

#include <csignal>
#include <cmath>
#include <cstdio>
#include <optional>
#include <thread>

#include <boost/filesystem.hpp>

namespace OV::Hosts::Render {

namespace {

namespace fs = boost::filesystem;

const char* const demoPreset = "Mastering/Gentle Smile";
const char* const demoOutput = "varnel4-demo.wav";

std::atomic<bool> interrupted{false};

void Interrupt(int)
{
    interrupted.store(true);
}

// One file to render: where from, where to, in which format.
struct Job {
    Job(std::string from, std::string to, bool mayReplace, std::unique_ptr<Source> audio)
        : input(std::move(from)), output(std::move(to)), replace(mayReplace), source(std::move(audio))
    {
    }

    std::string input;  // empty: the demo
    std::string output;
    bool replace;
    std::unique_ptr<Source> source;
    int format = 0;
    std::optional<RenderResult> result;
    std::optional<HostError> error;
};

std::string OutputName(const std::string& input, const Options& options)
{
    fs::path name = fs::path(input).filename();
    if (!options.container.empty())
        name.replace_extension(options.container);
    return (fs::path(options.outputFolder) / name).string();
}

bool SameFile(const std::string& a, const std::string& b)
{
    boost::system::error_code error;
    return fs::equivalent(a, b, error) && !error;
}

std::vector<Job> PlanJobs(const Options& options)
{
    std::vector<Job> jobs;
    if (options.inputs.empty()) {
        // The demo's own file is replaced without asking; a file the user names is not.
        jobs.emplace_back("", options.output.empty() ? demoOutput : options.output, options.force || options.output.empty(),
                          MakeDemo());
    } else {
        if (!options.outputFolder.empty() && !fs::is_directory(options.outputFolder))
            throw HostError(BadOutput, "'" + options.outputFolder + "' is not a folder");
        for (const std::string& input : options.inputs) {
            const std::string output = options.output.empty() ? OutputName(input, options) : options.output;
            jobs.emplace_back(input, output, options.force, OpenFile(input));
        }
    }
    for (Job& job : jobs) {
        if (!job.input.empty() && SameFile(job.input, job.output))
            throw HostError(BadOutput, "'" + job.output + "' is the input itself");
        if (!job.replace && fs::exists(job.output))
            throw HostError(BadOutput, "'" + job.output + "' exists (--force replaces it)");
        try {
            job.format = OutputFormat(job.output, options.container, options.depth, job.source->GetFormat());
        } catch (const std::invalid_argument& error) {
            throw HostError(BadArgument, error.what());
        }
    }
    return jobs;
}

// Renders the jobs, up to `parallel` at once, each on a process of its own.
void RunJobs(std::vector<Job>& jobs, RenderContext context, int parallel)
{
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t index; (index = next.fetch_add(1)) < jobs.size();) {
            Job& job = jobs[index];
            RenderContext own = context;
            own.force = job.replace;
            try {
                job.result = Render(own, *job.source, job.output, job.format);
            } catch (const HostError& error) {
                job.error = error;
            }
            job.source.reset();
        }
    };
    std::vector<std::thread> threads;
    for (int i = 1; i < parallel && i < static_cast<int>(jobs.size()); ++i)
        threads.emplace_back(work);
    work();
    for (std::thread& thread : threads)
        thread.join();
}

std::string Decibels(float peak)
{
    char text[32];
    if (peak <= 0.0f)
        return "silent";
    std::snprintf(text, sizeof text, "%.2f dBFS", 20.0 * std::log10(peak));
    return text;
}

void PrintSummary(const Job& job, bool aligned)
{
    const RenderResult& result = *job.result;
    const double audio = static_cast<double>(result.frames) / result.sampleRate;
    std::printf("%s -> %s\n", job.input.empty() ? "demo" : job.input.c_str(), job.output.c_str());
    std::printf("  %lld frames (%.2f s) at %d Hz, %s; %.1fx realtime\n", result.frames, audio, result.sampleRate,
                result.channels == 1 ? "mono" : "stereo", result.seconds > 0.0 ? audio / result.seconds : 0.0);
    std::printf("  latency %d samples%s; peak", result.latency, aligned ? " (removed)" : "");
    for (std::size_t c = 0; c < result.peaks.size(); ++c)
        std::printf("%s %s", c == 0 ? "" : ",", Decibels(result.peaks[c]).c_str());
    std::printf("\n");
}

void ListSlots(HostedProcess& probe)
{
    std::printf("%4s  %-22s %-24s %s\n", "slot", "name", "range", "value");
    for (int slot = 0; slot < probe.GetSlotCount(); ++slot) {
        const std::string range = probe.GetSlotDisplayFor(slot, 0.0f) + " .. " + probe.GetSlotDisplayFor(slot, 1.0f);
        std::printf("%4d  %-22s %-24s %s\n", slot, probe.GetSlotName(slot).c_str(), range.c_str(),
                    probe.GetSlotDisplay(slot).c_str());
    }
}

int Run(const Options& options)
{
    std::optional<LatencyLevel> latency;
    if (!options.latency.empty())
        latency.emplace(options.latency);

    std::unique_ptr<PlugInLibrary> library;
    try {
        library = std::make_unique<PlugInLibrary>(options.library.empty() ? PlugInLibrary::DefaultPath() : options.library);
    } catch (const std::runtime_error& error) {
        throw HostError(Failed, error.what());
    }
    int version = 0;
    HLA2PlugIn* plugIn = library->Acquire(HLA2_INTERFACE_VERSION, &version);
    if (plugIn == nullptr)
        throw HostError(Failed, "the library refused interface version " + std::to_string(HLA2_INTERFACE_VERSION));
    struct Release {
        const PlugInLibrary& library;
        ~Release() { library.Release(); }
    } release{*library};

    const PresetFolders folders = PresetFolders::FromRegistry();
    Options effective = options;
    const bool listing = options.listSlots || options.listPresets;
    const bool demo = options.inputs.empty() && options.response.empty() && !listing;
    if (demo && effective.preset.empty())
        effective.preset = demoPreset;

    Settings settings;
    {
        // A process of its own to check the settings on; making it also seeds the preset folder.
        HostedProcess probe(plugIn, 48000.0f, options.block, 2);
        if (options.listSlots)
            ListSlots(probe);
        if (options.listPresets) {
            for (const std::string& name : folders.List())
                std::printf("%s\n", name.c_str());
        }
        settings = Settings::Resolve(effective, folders, probe);
    }

    std::mutex mainThread;
    std::atomic<long long> framesDone{0};
    const RenderContext context{plugIn, &mainThread, &settings, options.block, options.align, options.force,
                                &framesDone, &interrupted};
    std::vector<Job> jobs = (demo || !options.inputs.empty()) ? PlanJobs(effective) : std::vector<Job>();

    if (!options.response.empty()) {
        const float rate = jobs.empty() ? 48000.0f : static_cast<float>(jobs.front().source->GetSampleRate());
        WriteResponse(MeasureResponse(context, rate), options.response, options.force);
        if (!options.quiet)
            std::printf("response -> %s\n", options.response.c_str());
    }
    if (jobs.empty())
        return Done;

    long long frames = 0;
    double seconds = 0.0;
    for (const Job& job : jobs) {
        frames += job.source->GetFrames();
        seconds += static_cast<double>(job.source->GetFrames()) / job.source->GetSampleRate();
    }
    const int parallel = options.jobs > 0 ? options.jobs : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    {
        const Progress progress(framesDone, frames, seconds, !options.quiet);
        RunJobs(jobs, context, parallel);
    }

    ExitCode code = Done;
    for (const Job& job : jobs) {
        if (job.error) {
            std::fprintf(stderr, "varnel4-render: %s\n", job.error->what());
            if (code == Done)
                code = job.error->GetCode();
        } else if (!options.quiet) {
            PrintSummary(job, options.align);
        }
    }
    if (demo && code == Done && !options.quiet)
        std::printf("The demo, through the preset \"%s\", is in %s\n", effective.preset.c_str(),
                    fs::absolute(jobs.front().output).string().c_str());
    return code;
}

}  // namespace

}  // namespace OV::Hosts::Render

int main(int argc, char** argv)
{
    using namespace OV::Hosts;
    using namespace OV::Hosts::Render;
    std::signal(SIGINT, Interrupt);
    std::signal(SIGTERM, Interrupt);
    Options options;
    try {
        options = ParseOptions(argc, argv);
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "varnel4-render: %s\n(--help tells the options)\n", error.what());
        return BadArgument;
    }
    if (options.help) {
        std::fputs(usageText, stdout);
        return Done;
    }
    try {
        return Run(options);
    } catch (const HostError& error) {
        std::fprintf(stderr, "varnel4-render: %s\n", error.what());
        return error.GetCode();
    }
}
