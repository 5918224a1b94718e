#include "tests/support/RunProgram.h"

#include "tests/support/ScratchFolder.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace OV::Testing {

ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& arguments, const std::string& folder,
                      void (*started)(int pid, void* context), void* context)
{
    const ScratchFolder capture;
    const std::string outPath = capture.Path() + "/out";
    const std::string errPath = capture.Path() + "/err";
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    const pid_t pid = fork();
    if (pid < 0)
        throw std::runtime_error("cannot fork");
    if (pid == 0) {
        const int out = open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int err = open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (out < 0 || err < 0 || dup2(out, 1) < 0 || dup2(err, 2) < 0 || (!folder.empty() && chdir(folder.c_str()) != 0))
            _exit(126);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    if (started != nullptr)
        started(pid, context);
    int status = 0;
    rusage usage{};
    if (wait4(pid, &status, 0, &usage) != pid)
        throw std::runtime_error("lost the child process");
    ProgramRun run;
    run.code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.out = ReadFile(outPath);
    run.err = ReadFile(errPath);
    run.peakKilobytes = usage.ru_maxrss;
    return run;
}

}  // namespace OV::Testing
