/// \file
/// The time from the start of the process to the first frame, of the demonstration and of a bare
/// window. Font, textures, themes and layout are in the demonstration's time.
///
/// With 1 swap the first frame is presented, which is empty in both programs. With 2 the first one
/// that was drawn is, and most of the difference is the driver's, which compiles code for each way
/// of drawing that it meets.
///
/// Run `tamor-app-benchmarks` with a display, the more repetitions the better, and divide the
/// medians of real time: `BM_start_demonstration` by `BM_start_bareWindow`.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace
{
/// Runs a program until it has swapped that often. Ends this one if it did not.
void runToSwap(std::int64_t swaps, const char* program, const char* directory)
{
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDERR_FILENO);
        setenv("LD_PRELOAD", TAMOR_FIRST_FRAME, 1);
        setenv("TAMOR_SWAPS", std::to_string(swaps).c_str(), 1);
        if (chdir(directory) == 0)
            execl(program, program, static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        std::abort();
}

void BM_start_demonstration(benchmark::State& state)
{
    for (auto _ : state)
        runToSwap(state.range(0), TAMOR_DEMO, TAMOR_DEMO_DATA);
}
BENCHMARK(BM_start_demonstration)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->ArgName("swaps")
    ->Arg(1)
    ->Arg(2);

void BM_start_bareWindow(benchmark::State& state)
{
    for (auto _ : state)
        runToSwap(state.range(0), TAMOR_BARE_WINDOW, "/");
}
BENCHMARK(BM_start_bareWindow)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->ArgName("swaps")
    ->Arg(1)
    ->Arg(2);
} // namespace
