#include "tests/support/ChildProcess.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <thread>

#ifdef TAMOR_COUNTS_LINES
// Of the compiler's library: what scripts/coverage reads is written now and not at an exit.
extern "C" void __gcov_dump(); // NOLINT(bugprone-reserved-identifier)
#endif

namespace tamor::test
{
namespace
{
constexpr auto pollInterval = std::chrono::milliseconds(5);

int openUnnamedFile()
{
    char path[] = "/tmp/tamor-child-XXXXXX";
    const int file = mkstemp(path);
    unlink(path);
    return file;
}

std::string contents(int file)
{
    struct stat status
    {};
    fstat(file, &status);
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t count = pread(file, text.data(), text.size(), 0);
    text.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return text;
}
} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments, const std::string& directory,
                           const std::map<std::string, std::string>& environment)
    : outputFile(openUnnamedFile()), errorFile(openUnnamedFile())
{
    process = fork();
    if (process != 0)
        return;
    keepStreams();
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    if (directory.empty() || chdir(directory.c_str()) == 0)
        execvp(words[0], words.data());
    std::perror(words[0]);
    _exit(127);
}

ChildProcess::ChildProcess(const std::function<int()>& body)
    : outputFile(openUnnamedFile()), errorFile(openUnnamedFile())
{
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
    process = fork();
    if (process != 0)
        return;
    keepStreams();
    const int status = body();
    std::cout.flush();
    std::fflush(nullptr);
#ifdef TAMOR_COUNTS_LINES
    __gcov_dump();
#endif
    // Not exit: what this copy holds of the parent's tests is the parent's to end.
    _exit(status);
}

ChildProcess::~ChildProcess()
{
    if (isRunning())
        wait(std::chrono::milliseconds(0));
    close(outputFile);
    close(errorFile);
}

void ChildProcess::keepStreams() const
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(outputFile, STDOUT_FILENO);
    dup2(errorFile, STDERR_FILENO);
}

void ChildProcess::signal(int number) const
{
    kill(process, number);
}

bool ChildProcess::isRunning()
{
    if (ended)
        return false;
    int status = 0;
    if (waitpid(process, &status, WNOHANG) == 0)
        return true;
    ended = true;
    if (WIFEXITED(status))
        end.status = WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        end.signal = WTERMSIG(status);
    return false;
}

ProcessEnd ChildProcess::wait(std::chrono::milliseconds limit)
{
    if (!becomesTrue([this] { return !isRunning(); }, limit)) {
        end.timedOut = true;
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        ended = true;
    }
    return end;
}

std::string ChildProcess::output() const
{
    return contents(outputFile);
}

std::string ChildProcess::errors() const
{
    return contents(errorFile);
}

bool runsForEver(const std::function<void()>& body)
{
    ChildProcess child([&body] {
        const rlimit limit = {1, 1};
        setrlimit(RLIMIT_CPU, &limit);
        body();
        return 0;
    });
    const int signal = child.wait().signal;
    return signal == SIGXCPU || signal == SIGKILL;
}

bool becomesTrue(const std::function<bool()>& condition, std::chrono::milliseconds limit)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(pollInterval);
    }
    return true;
}
} // namespace tamor::test
