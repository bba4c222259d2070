// How the time of an operation grows with its work.
//
//   tamor-growth-benchmarks [--benchmark_filter=REGEX]   a table of all rows, or of those
//
// Each size has a process of its own, and its time is the least of several. "slope" is the power of the
// size that the time grows by between two lines: 1 is in proportion, 2 is quadratic. Small sizes may
// show what an operation costs that does nothing, and large ones memory that the caches no longer hold.
// Blocks of 32 MB and more are new memory in each call; they are not with
//
//   GLIBC_TUNABLES=glibc.malloc.mmap_max=0:glibc.malloc.trim_threshold=17179869184
//
// Run by scripts/bench, or by hand under a display.

#include "benchmarks/growth/Row.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <regex>
#include <string>

namespace tamor::bench
{
namespace
{
using Clock = std::chrono::steady_clock;

/// The least time of one call, in seconds: calls are made for half a second, at least three and at most
/// a thousand.
double leastTime(const Row& row, std::size_t size)
{
    const std::function<bool()> work = row.prepare(size);
    const Clock::time_point begin = Clock::now();
    double least = 1e9;
    for (int calls = 0;
         calls < 3 || (calls < 1000 && Clock::now() - begin < std::chrono::milliseconds(500));
         ++calls) {
        const Clock::time_point start = Clock::now();
        if (!work())
            return -1.0;
        least = std::min(least, std::chrono::duration<double>(Clock::now() - start).count());
    }
    return least;
}

/// The same in a process of its own, which leaves nothing to the next size.
double leastTimeOfOwnProcess(const Row& row, std::size_t size)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        std::abort();
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        const double least = leastTime(row, size);
        const bool isWritten = write(ends[1], &least, sizeof least) == sizeof least;
        _exit(isWritten ? 0 : 1);
    }
    close(ends[1]);
    double least = -1.0;
    const bool isRead = read(ends[0], &least, sizeof least) == sizeof least;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    if (!isRead || least < 0.0) {
        std::fprintf(stderr, "%s of %zu does not do its work\n", row.name, size);
        std::exit(1);
    }
    return least;
}

void measure(const Row& row)
{
    double previousTime = 0.0;
    std::size_t previousSize = 0;
    for (const std::size_t size : row.sizes) {
        const double time = leastTimeOfOwnProcess(row, size);
        std::printf("%-22s %10zu %-10s %12.3f us %10.2f ns each", row.name, size, row.unit,
                    time * 1e6, time * 1e9 / static_cast<double>(size));
        if (previousSize > 0)
            std::printf("   slope %.2f", std::log(time / previousTime) /
                                             std::log(static_cast<double>(size) /
                                                      static_cast<double>(previousSize)));
        std::puts("");
        previousTime = time;
        previousSize = size;
    }
}
} // namespace
} // namespace tamor::bench

int main(int count, char** words)
{
    using namespace tamor::bench;
    std::regex filter;
    const std::string option = "--benchmark_filter=";
    for (int number = 1; number < count; ++number) {
        const std::string argument = words[number];
        if (argument.starts_with(option))
            filter = argument.substr(option.size());
    }
    for (const Row& row : rows())
        if (count < 2 || std::regex_search(row.name, filter))
            measure(row);
}
