// What memory is taken and given back: drawing a frame takes none, since all text is drawn from where
// it stands, and what is deleted by rule is deleted.

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
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
std::atomic<int> pieces = 0; ///< taken and not yet given back
} // namespace

// What C++ code takes from here on is counted; the driver's own memory is not. Not to be inlined,
// or the compiler sees a `new` that is answered by a `free`.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++allocations;
    ++pieces;
    if (void* const memory = std::malloc(size != 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    if (memory != nullptr)
        --pieces;
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    operator delete(memory);
}

namespace tamor::test
{
namespace
{
using RenderAllocationGLTest = GuiGLTest;
using Deletion = GuiTest;

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

TEST_F(Deletion, OfTheButtonsThatARowIsBuiltAnewFrom)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    for (const char* title : {"First", "Second"})
        window.addTab(0, title);
    window.addTab(2, "Third");
    const int before = pieces;

    window.addTab(2, "Third");
    window.addTab(0, "Second");

    EXPECT_EQ(pieces, before);
}

TEST_F(Deletion, OfTheWindowAndTheButtonsOfABox)
{
    const TemporaryDirectory directory;
    directory.write("messagebox.theme", "1 1 1\n1 1 1\n1 1 1\n0 0 0\n1\n1\n2\n0.0625\n0.125\n0\n"
                                        "0.125 0.25\n0.5 1\n0 0 0\n0.5\nNULL\n1\n");
    struct Row
    {
        std::int32_t flags;
        const char* button;
        int kept; ///< theme, label and its text; frame and its list of children
    };
    const auto answer = [](std::int32_t flags, const char* button) {
        const CapturedErrors errors;
        GLWidget::messageBox("A text longer than a string keeps in itself", flags);
        seen(*GLWidget::find(button)).clicked = true;
        GLWidget::updateAll(1);
    };
    // Some standard libraries keep the label's name in the string itself.
    const std::string labelName = "__msgbox_message";
    const int longNames = labelName.capacity() > std::string().capacity() ? 1 : 0;
    // All names have their entries from here on.
    answer(14, "__msgbox_no");
    answer(1, "__msgbox_ok");
    for (const Row& row : {Row{1, "__msgbox_ok", 3}, Row{3, "__msgbox_ok", 5},
                           Row{12, "__msgbox_yes", 5}, Row{14, "__msgbox_cancel", 5}}) {
        const int before = pieces;

        answer(row.flags, row.button);

        EXPECT_EQ(pieces - before, row.kept + longNames) << row.flags;
    }
}
} // namespace
} // namespace tamor::test
