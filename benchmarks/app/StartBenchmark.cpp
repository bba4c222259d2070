/// \file
/// The time from the start of the process to the first frame, of the demonstration, of a bare window,
/// and of a bare window that makes the demonstration's OpenGL calls from a list. Font, textures,
/// themes and layout are in the demonstration's time.
///
/// With 1 swap the first frame is presented, which is empty in all programs. With 2 the first one
/// that was drawn is. What the replayed start takes more than the bare window is the driver's own,
/// which compiles code for each way of drawing that it meets.
///
/// Run `tamor-app-benchmarks` with a display, the more repetitions the better and in random order
/// (`--benchmark_enable_random_interleaving=true`), and divide the medians of real time:
/// `BM_start_demonstration` by `BM_start_bareWindow` and by `BM_start_replayed`.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace
{
/// Runs a program, with an argument or none, until it has swapped that often. Ends this one if it did
/// not.
void runToSwap(std::int64_t swaps, const char* program, const char* directory,
               const char* argument = nullptr)
{
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDERR_FILENO);
        setenv("LD_PRELOAD", TAMOR_FIRST_FRAME, 1);
        setenv("TAMOR_SWAPS", std::to_string(swaps).c_str(), 1);
        if (chdir(directory) == 0)
            execl(program, program, argument, static_cast<char*>(nullptr));
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

#ifdef TAMOR_START_RECORDER
void BM_start_replayed(benchmark::State& state)
{
    const std::string file = std::filesystem::absolute("start.calls").string();
    const std::string command =
        "cd '" TAMOR_DEMO_DATA "' && " TAMOR_START_RECORDER " '" + file + "' >/dev/null 2>&1";
    if (std::system(command.c_str()) != 0) {
        state.SkipWithError("the recorder did not record the start");
        return;
    }
    for (auto _ : state)
        runToSwap(state.range(0), TAMOR_REPLAYED_START, "/", file.c_str());
}
BENCHMARK(BM_start_replayed)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->ArgName("swaps")
    ->Arg(1)
    ->Arg(2);
#endif
} // namespace
