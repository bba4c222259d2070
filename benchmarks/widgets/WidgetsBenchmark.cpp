// What the widgets of all ten classes cost, apart from the OpenGL calls that they have to make.
//
//   BM_frame/N         a frame of N widgets of all classes: pointer, buttons, time and drawing
//   BM_replay/N        the OpenGL calls of that same frame from a list, and nothing else
//   BM_guichanFrame/N  a frame of a like set of Guichan's widgets, drawn with OpenGL too
//   BM_keyPress/L      a key typed and deleted again in a text box of L characters in rows of 50
//   BM_rowChange/L     Down and Up between two rows of half of L characters each
//
// All runs on Mesa's no-op driver, which takes every call and draws nothing. Run by scripts/bench,
// or by hand under a display. Read BM_frame against BM_replay and BM_guichanFrame of the same N.
// The text box's cost is to grow no faster than its text: compare the times over L.

#include "benchmarks/gui/Scene.h"
#include "benchmarks/support/CallList.h"
#include "benchmarks/support/NoOpWindow.h"
#include "gui/GLWidget.h"
#include "textures/Font.h"
#include "widgets/Textbox.h"
#ifdef TAMOR_HAS_GUICHAN
#include "benchmarks/widgets/GuichanScene.h"
#endif

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <string>

namespace tamor::bench
{
namespace
{
void BM_frame(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    loadScene(layoutOf(static_cast<int>(count)));
    if (GLWidget::widgets.size() != count) {
        state.SkipWithError("the layout did not load");
        return;
    }
    for (int frame = 0; frame < 100; ++frame)
        drawFrame();
    if (!isSceneDrawn()) {
        state.SkipWithError("this is another frame");
        return;
    }

    for (auto each : state)
        drawFrame();
}
BENCHMARK(BM_frame)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

#ifdef TAMOR_FRAME_RECORDER
void BM_replay(benchmark::State& state)
{
    const CallList list = CallList::ofFrame(TAMOR_FRAME_RECORDER, state.range(0));
    if (list.size() == 0) {
        state.SkipWithError("the recorder did not record the frame");
        return;
    }

    for (auto each : state)
        list.play();
    state.counters["calls"] = static_cast<double>(list.size());
}
BENCHMARK(BM_replay)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
#endif

#ifdef TAMOR_HAS_GUICHAN
void BM_guichanFrame(benchmark::State& state)
{
    GuichanScene scene(static_cast<int>(state.range(0)));
    for (int frame = 0; frame < 10; ++frame)
        scene.drawFrame();
    if (feedbackOf([&scene] { scene.drawFrame(); }).empty()) {
        state.SkipWithError("nothing was drawn");
        return;
    }

    for (auto each : state)
        scene.drawFrame();
}
BENCHMARK(BM_guichanFrame)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
#endif

constexpr int keyBackspace = 8;
constexpr int keyUp = 273;
constexpr int keyDown = 274;

/// A focused text box that any row fits in.
class WideBox
{
public:
    WideBox(const std::string& before, const std::string& after)
    {
        box.onMouseMove(400.0F, 300.0F);
        box.onMouseButtons(true, false, false);
        box.beforeCursor = before;
        box.afterCursor = after;
        press('x');
        press(keyBackspace);
    }

    void press(int key)
    {
        pressed[static_cast<std::size_t>(key)] = 1;
        box.onKeys(pressed.data());
        pressed[static_cast<std::size_t>(key)] = 0;
    }

    Textbox box{"box", nullptr, Vector(-1.0F, -1.0F), GLWidget::themes["default"], 511, 100};

private:
    std::array<std::uint8_t, 512> pressed{};
};

void BM_keyPress(benchmark::State& state)
{
    loadScene("SOLID\n");
    std::string text;
    while (text.size() < static_cast<std::size_t>(state.range(0)))
        text += std::string(49, 'a') + '\n';
    const std::size_t middle = text.size() / 2;
    WideBox wide(text.substr(0, middle), text.substr(middle));
    wide.press('x');
    if (wide.box.beforeCursor.size() != middle + 1) {
        state.SkipWithError("nothing was typed");
        return;
    }
    wide.press(keyBackspace);

    for (auto each : state) {
        wide.press('x');
        wide.press(keyBackspace);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_keyPress)->RangeMultiplier(2)->Range(250, 4000)->Complexity(benchmark::oN);

void BM_rowChange(benchmark::State& state)
{
    loadScene("SOLID\n");
    const std::string row(static_cast<std::size_t>(state.range(0)) / 2, 'a');
    WideBox wide(row, "\n" + row);
    wide.press(keyDown);
    if (wide.box.afterCursor.size() == row.size()) {
        state.SkipWithError("the cursor did not move along the row");
        return;
    }
    wide.press(keyUp);

    for (auto each : state) {
        wide.press(keyDown);
        wide.press(keyUp);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_rowChange)->RangeMultiplier(2)->Range(250, 4000)->Complexity(benchmark::oN);
} // namespace
} // namespace tamor::bench

int main(int argumentCount, char** arguments)
{
    tamor::bench::openScene();
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
