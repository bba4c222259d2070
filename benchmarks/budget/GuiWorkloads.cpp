#include "benchmarks/budget/Workload.h"
#include "benchmarks/gui/Scene.h"
#include "gui/GLWidget.h"
#include "widgets/Textbox.h"

#include <array>
#include <memory>
#include <string>

namespace tamor::bench
{
namespace
{
using Work = std::function<bool()>;

constexpr std::size_t widgets = 1000;

/// What is looked for by name and not found has an entry, too.
bool isSceneThere()
{
    return GLWidget::widgets.size() >= widgets;
}

Work layoutLoad()
{
    openScene();
    return [] {
        loadScene(layoutOf(widgets));
        return isSceneThere();
    };
}

Work frame()
{
    layoutLoad()();
    drawFrame();
    return [] {
        drawFrame();
        return isSceneThere();
    };
}

/// A thousand keys, each typed and deleted again, in the middle of a text of 40 rows.
Work typing()
{
    layoutLoad()();
    auto box = std::make_shared<Textbox>("box", nullptr, Vector(-1.0F, -1.0F),
                                         GLWidget::themes["default"], 511, 100);
    box->onMouseMove(400.0F, 300.0F);
    box->onMouseButtons(true, false, false);
    for (int row = 0; row < 20; ++row) {
        box->beforeCursor += std::string(49, 'a') + '\n';
        box->afterCursor += std::string(49, 'a') + '\n';
    }
    return [box] {
        std::array<std::uint8_t, 512> pressed{};
        constexpr std::size_t backspace = 8;
        bool typed = true;
        for (int count = 0; count < 1000; ++count) {
            for (const std::size_t key : {std::size_t{'x'}, backspace}) {
                pressed[key] = 1;
                box->onKeys(pressed.data());
                pressed[key] = 0;
                typed = typed && (key == backspace || box->beforeCursor.back() == 'x');
            }
        }
        return typed;
    };
}

const Workload workloads[] = {
    {"gui.loadLayout", layoutLoad},
    {"gui.frame", frame},
    {"gui.typing", typing},
};
} // namespace

std::span<const Workload> guiWorkloads()
{
    return workloads;
}
} // namespace tamor::bench
