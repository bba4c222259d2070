// The first call of a fresh process, which a program's start is made of, beside a peer's.
//
//   tamor-cold-benchmarks [--benchmark_filter=REGEX]   a table of all, or of those operations
//
// Each is done by 31 processes, in turn with 31 of the peer. The table has the median and the worst of
// the middle nine in ten, in milliseconds; page faults and system calls; and the memory that the
// process held at most while it worked, beside what the result must hold. Run by scripts/bench, or by
// hand under a display.

#include "benchmarks/cold/Operation.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace tamor::bench
{
namespace
{
constexpr int processes = 31;

/// What one process saw of its own work.
struct Sample
{
    double milliseconds = 0.0;
    long faults = 0;
    long peakKilobytes = 0; ///< above what it held before
    std::size_t held = 0;
    std::size_t leftBy = 0;
};

/// In kilobytes.
long memoryOf(const std::string& field)
{
    std::ifstream file("/proc/self/status");
    std::string line;
    while (std::getline(file, line))
        if (line.starts_with(field))
            return std::atol(line.c_str() + field.size());
    return 0;
}

long minorFaults()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

/// Does the work, and says on the output stream what it took. System calls are counted from the call
/// of getppid in front of it to the one behind it.
int work(const Preparation& prepare)
{
    const auto operation = prepare();
    std::ofstream("/proc/self/clear_refs") << 5; // the peak begins anew
    const long before = memoryOf("VmRSS:");
    const long faultsBefore = minorFaults();
    syscall(SYS_getppid);
    const auto start = std::chrono::steady_clock::now();
    const Outcome outcome = operation();
    const auto end = std::chrono::steady_clock::now();
    syscall(SYS_getppid);
    const long faults = minorFaults() - faultsBefore;
    if (!outcome.isRight)
        return 1;
    std::printf("%f %ld %ld %zu %zu\n",
                std::chrono::duration<double, std::milli>(end - start).count(), faults,
                memoryOf("VmHWM:") - before, outcome.held, outcome.leftBy);
    return 0;
}

/// Starts this program once more, to do one operation.
pid_t startOperation(std::size_t number, const char* whose, int output, bool isTraced)
{
    const pid_t child = fork();
    if (child == 0) {
        dup2(output, STDOUT_FILENO);
        if (isTraced)
            ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        const std::string text = std::to_string(number);
        execl("/proc/self/exe", "tamor-cold-benchmarks", "--operation", text.c_str(), whose,
              static_cast<char*>(nullptr));
        _exit(127);
    }
    return child;
}

Sample sample(std::size_t number, const char* whose)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        std::abort();
    const pid_t child = startOperation(number, whose, ends[1], false);
    close(ends[1]);
    std::FILE* const stream = fdopen(ends[0], "r");
    Sample result;
    const int read =
        std::fscanf(stream, "%lf %ld %ld %zu %zu", &result.milliseconds, &result.faults,
                    &result.peakKilobytes, &result.held, &result.leftBy);
    std::fclose(stream);
    waitpid(child, nullptr, 0);
    if (read != 5) {
        std::fprintf(stderr, "%s (%s) does not do its work\n", operations()[number].name, whose);
        std::exit(1);
    }
    return result;
}

long countSystemCalls(std::size_t number, const char* whose)
{
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    const pid_t child = startOperation(number, whose, nowhere, true);
    close(nowhere);
    long calls = 0;
    int marks = 0;
    int status = 0;
    waitpid(child, &status, 0); // it stops when the program begins
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    while (waitpid(child, &status, 0) == child && WIFSTOPPED(status)) {
        __ptrace_syscall_info info = {};
        ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info);
        if (info.op == PTRACE_SYSCALL_INFO_ENTRY) {
            if (info.entry.nr == SYS_getppid)
                ++marks;
            else if (marks == 1)
                ++calls;
        }
        const bool isSignal = info.op == PTRACE_SYSCALL_INFO_NONE && WSTOPSIG(status) != SIGTRAP;
        ptrace(PTRACE_SYSCALL, child, nullptr, isSignal ? WSTOPSIG(status) : 0);
    }
    return calls;
}

struct Row
{
    double median = 0.0;
    double worst = 0.0;
};

Row timesOf(std::vector<Sample>& samples)
{
    std::ranges::sort(samples, {}, &Sample::milliseconds);
    const std::size_t outside = samples.size() / 20;
    return {samples[samples.size() / 2].milliseconds,
            samples[samples.size() - 1 - outside].milliseconds};
}

void printRow(const char* name, const char* who, const Row& times, const Sample& figures,
              long calls)
{
    std::printf("%-18s %-22s %8.3f %8.3f %8ld %7ld %9ld", name, who, times.median, times.worst,
                figures.faults, calls, figures.peakKilobytes);
    if (figures.held > 0) {
        const double result = static_cast<double>(figures.held) / 1024.0;
        const double left = static_cast<double>(figures.leftBy) / 1024.0;
        std::printf(" %9.0f %7.0f %6.2f", result, left,
                    (static_cast<double>(figures.peakKilobytes) - left) / result);
    }
}

void measure(std::size_t number)
{
    const Operation& operation = operations()[number];
    std::vector<Sample> ours;
    std::vector<Sample> peers;
    for (int count = 0; count < processes; ++count) {
        ours.push_back(sample(number, "ours"));
        if (operation.peer != nullptr)
            peers.push_back(sample(number, "peers"));
    }
    const Row times = timesOf(ours);
    printRow(operation.name, "Tamor", times, ours[processes / 2], countSystemCalls(number, "ours"));
    std::puts("");
    if (operation.peer == nullptr)
        return;
    const Row peersTimes = timesOf(peers);
    printRow("", operation.peer, peersTimes, peers[processes / 2],
             countSystemCalls(number, "peers"));
    std::printf("   %.2f times our time\n", peersTimes.median / times.median);
}

/// What the machine does with memory, on which first calls depend.
void printMachine()
{
    for (const char* const name : {"/sys/kernel/mm/transparent_hugepage/enabled",
                                   "/sys/kernel/mm/transparent_hugepage/defrag",
                                   "/sys/module/page_reporting/parameters/page_reporting_order"}) {
        std::string text = "not told";
        std::ifstream file(name);
        std::getline(file, text);
        std::printf("%s: %s\n", name, text.c_str());
    }
    std::printf("%-18s %-22s %8s %8s %8s %7s %9s %9s %7s %6s\n", "", "", "median", "worst",
                "faults", "calls", "peak kB", "result", "left", "ratio");
}
} // namespace
} // namespace tamor::bench

int main(int count, char** words)
{
    using namespace tamor::bench;
    const std::vector<std::string> arguments(words + 1, words + count);
    if (arguments.size() == 3 && arguments[0] == "--operation") {
        const Operation& operation = operations()[std::stoul(arguments[1])];
        return work(arguments[2] == "ours" ? operation.ours : operation.peers);
    }

    std::regex filter;
    const std::string option = "--benchmark_filter=";
    for (const std::string& argument : arguments)
        if (argument.starts_with(option))
            filter = argument.substr(option.size());
    printMachine();
    for (std::size_t number = 0; number < operations().size(); ++number)
        if (arguments.empty() || std::regex_search(operations()[number].name, filter))
            measure(number);
}
