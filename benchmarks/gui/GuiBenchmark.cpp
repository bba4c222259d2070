// What the GUI itself costs, apart from the OpenGL calls that it has to make.
//
//   BM_frame/N    a frame of N widgets: pointer, buttons, time and drawing
//   BM_replay/N   the OpenGL calls of that same frame from a list, and nothing else
//   BM_load/N     loading the layout of N widgets from a file
//   BM_loadIntoOneParent/N    the same of N labels in one window
//
// All runs on Mesa's no-op driver, which takes every call and draws nothing. Run by scripts/bench,
// or by hand under a display. Read BM_frame against BM_replay of the same N: the ratio is what the
// widgets add. "per_widget" of the same name over N shows the growth.
//
// FrameInstructions.cpp counts what the engine itself does, with the driver left out.

#include "benchmarks/gui/Scene.h"
#include "benchmarks/support/CallList.h"
#include "gui/GLWidget.h"

#include <benchmark/benchmark.h>

#include <string>

namespace tamor::bench
{
namespace
{
void tellPerWidget(benchmark::State& state)
{
    state.counters["per_widget"] = benchmark::Counter(
        static_cast<double>(state.range(0)),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_frame(benchmark::State& state)
{
    loadScene(layoutOf(static_cast<int>(state.range(0))));
    if (GLWidget::widgets.size() != static_cast<std::size_t>(state.range(0))) {
        state.SkipWithError("the layout did not load");
        return;
    }
    for (int frame = 0; frame < 100; ++frame)
        drawFrame();
    if (!isSceneDrawn()) {
        state.SkipWithError("this is another frame");
        return;
    }

    while (state.KeepRunning())
        drawFrame();
    tellPerWidget(state);
}
BENCHMARK(BM_frame)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

#ifdef TAMOR_FRAME_RECORDER
void BM_replay(benchmark::State& state)
{
    const CallList list = CallList::ofFrame(TAMOR_FRAME_RECORDER, state.range(0));
    if (list.size() == 0) {
        state.SkipWithError("the recorder did not record the frame");
        return;
    }

    while (state.KeepRunning())
        list.play();
    tellPerWidget(state);
    state.counters["calls"] = static_cast<double>(list.size());
}
BENCHMARK(BM_replay)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
#endif

void load(benchmark::State& state, const std::string& layout)
{
    loadScene(layout);
    if (GLWidget::widgets.size() != static_cast<std::size_t>(state.range(0))) {
        state.SkipWithError("the layout did not load");
        return;
    }

    while (state.KeepRunning())
        loadScene(layout);
    tellPerWidget(state);
}

void BM_load(benchmark::State& state)
{
    load(state, layoutOf(static_cast<int>(state.range(0))));
}
// As often as that no more than 100,000 widgets are left behind.
BENCHMARK(BM_load)->Arg(100)->Iterations(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_load)->Arg(1000)->Iterations(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_load)->Arg(10000)->Iterations(10)->Unit(benchmark::kMicrosecond);

void BM_loadIntoOneParent(benchmark::State& state)
{
    std::string layout = "CADD Win window NULL 0 0 1 Window\n";
    for (int number = 1; number < state.range(0); ++number)
        layout += "CADD Label label" + std::to_string(number) + " window 0 0 a label\n";
    load(state, layout);
    if (GLWidget::topLevel.size() != 1)
        state.SkipWithError("not all have one parent");
}
BENCHMARK(BM_loadIntoOneParent)->Arg(100)->Iterations(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_loadIntoOneParent)->Arg(1000)->Iterations(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_loadIntoOneParent)->Arg(10000)->Iterations(10)->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace tamor::bench

int main(int argumentCount, char** arguments)
{
    tamor::bench::openScene();
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
