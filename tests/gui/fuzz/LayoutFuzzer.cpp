// Feeds the reader of layouts with any bytes, and draws and moves what it has built. Some layouts are
// never done with, by design: LayoutWalk.h finds those beforehand, and they are left out, as are those
// that lead to other folders or take their time. With libFuzzer's own main this is the fuzzer; with
// ReplayCorpus.cpp it runs the kept corpus, as ctest does.
#include "gui/GLWidget.h"
#include "tests/gui/LayoutWalk.h"
#include "tests/gui/fuzz/FuzzGui.h"
#include "tests/support/FuzzFile.h"

#include <array>
#include <cstdint>
#include <string>

using namespace tamor;
using namespace tamor::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(data, data + size);
    const LayoutWalk walk = walkLayout(text);
    if (!walk.ends || walk.leavesFolder || !walk.isModest())
        return 0;

    enterGuiFolder();
    const Unprinted unprinted;
    const FuzzFile file(text);
    GLWidget::loadLayout(file.path());
    GLWidget::viewport = {0, 0, 800, 600};
    const std::array<std::uint8_t, 512> pressed{};
    for (const float x : {0.0F, 400.0F, 799.0F}) {
        GLWidget::mouseMoved(Vector(x, 300.0F));
        GLWidget::mouseButtons(true, false, false);
        GLWidget::keysChanged(pressed.data());
        GLWidget::mouseButtons(false, false, false);
        GLWidget::updateAll(20);
        GLWidget::renderAll();
    }
    deleteGui();
    return 0;
}
