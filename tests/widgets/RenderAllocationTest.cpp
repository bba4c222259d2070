// Drawing a frame takes no memory: all text is drawn from where it stands.

#include "tests/support/CapturedErrors.h"
#include "tests/widgets/WidgetTest.h"
#include "widgets/Button.h"
#include "widgets/Checkbox.h"
#include "widgets/Combobox.h"
#include "widgets/Frame.h"
#include "widgets/GLWindow.h"
#include "widgets/Label.h"
#include "widgets/Optionbox.h"
#include "widgets/Slider.h"
#include "widgets/TabWindow.h"
#include "widgets/Textbox.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{
std::atomic<int> allocations = 0;
} // namespace

// What C++ code takes from here on is counted; the driver's own memory is not. Not to be inlined,
// or the compiler sees a `new` that is answered by a `free`.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size != 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

namespace tamor::test
{
namespace
{
using RenderAllocationGLTest = WidgetGLTest;

TEST_F(RenderAllocationGLTest, IsNoneInAFrameOfAllClasses)
{
    const std::string text = "longer than a string keeps in itself";
    {
        const CapturedErrors errors;
        auto& box = make<Combobox>("combo", nullptr, Vector());
        box.addText(text);
        box.open = true;
        box.highlight = 0;
        auto& typed = make<Textbox>("text", nullptr, Vector(), 20, 3);
        typed.text = text + "\n" + text;
        typed.beforeCursor = typed.text;
        typed.hover = true;
        auto& tabs = make<TabWindow>("tabs", nullptr, Vector());
        tabs.addTab(0, text);
        auto& inside = make<Label>("inside", &tabs, Vector(), text + "\n" + text);
        tabs.addToTab(0, &inside);
        tabs.fitChildren();
        auto& frame = make<Frame>("frame", nullptr, Vector(), true);
        auto& button = make<Button>("button", &frame, Vector(), text);
        frame.addChild(&button);
        GLWidget::topLevel = {&box,
                              &typed,
                              &tabs,
                              &frame,
                              &make<Checkbox>("check", nullptr, Vector(), text),
                              &make<Optionbox>("option", nullptr, Vector(), text),
                              &make<Slider>("slider", nullptr, Vector(), Vector(1.0F, 0.0F)),
                              &make<GLWindow>("window", nullptr, Vector(), text, true)};
    }
    for (int frame = 0; frame < 3; ++frame)
        GLWidget::renderAll();

    const int before = allocations;
    for (int frame = 0; frame < 10; ++frame)
        GLWidget::renderAll();

    EXPECT_EQ(allocations - before, 0);
}
} // namespace
} // namespace tamor::test
