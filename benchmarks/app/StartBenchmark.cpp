/// \file
/// The time from the start of the process to the first frame on the screen, of the demonstration
/// and of a bare window. Font, textures, themes and layout are in the demonstration's time.
///
/// Run `tamor-app-benchmarks` with a display, the more repetitions the better, and divide the
/// medians of real time: `BM_start_demonstration` by `BM_start_bareWindow`.
#include <benchmark/benchmark.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fcntl.h>

namespace
{
/// Runs a program until its first frame is shown. Ends this one if there was none.
void runToFirstFrame(const char* program, const char* directory)
{
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDERR_FILENO);
        setenv("LD_PRELOAD", TAMOR_FIRST_FRAME, 1);
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
        runToFirstFrame(TAMOR_DEMO, TAMOR_DEMO_DATA);
}
BENCHMARK(BM_start_demonstration)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_start_bareWindow(benchmark::State& state)
{
    for (auto _ : state)
        runToFirstFrame(TAMOR_BARE_WINDOW, "/");
}
BENCHMARK(BM_start_bareWindow)->Unit(benchmark::kMillisecond)->UseRealTime();
} // namespace
