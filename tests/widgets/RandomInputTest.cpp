// Random input over a layout of all classes: nothing may crash, leave its states or eat memory.
// Under the sanitisers it also shows that nothing leaves its storage.

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "widgets/Button.h"
#include "widgets/Combobox.h"
#include "widgets/TabWindow.h"
#include "widgets/Textbox.h"

#include <algorithm>
#include <malloc.h>
#include <random>

#ifdef __SANITIZE_ADDRESS__
// The sanitiser's own, whose header GCC's package leaves out.
extern "C" std::size_t
__sanitizer_get_current_allocated_bytes(); // NOLINT(clang-diagnostic-reserved-identifier)
#endif

namespace tamor::test
{
namespace
{
constexpr std::string_view themeFile =
    "1 1 1\n1 0.7 0.2\n0.6 0.6 0.6\n0 0 0\n1\n0.8\n2\n0.005\n0.1\n"
    "0\n0.04 0.05\n0.7 1\n0.01 -0.01 0\n0.08\nNULL\n1\n";

constexpr std::string_view layout = R"(
CONF gui.conf
THEM default.theme x
CADD Win main NULL -1.2 -0.8 1 A window to drag
CADD Label label main 0 1.2 A label %d %s
CADD Butt button main 0 1.1 Press
CADD Butt image main 0.3 1.1 TEX 0.1 0.1
CADD Slide across main 0 1 0.6 0
CADD Slide down main 0.7 0.5 0 0.5
CADD Check check main 0 0.9 Check
CADD Combo combo main 0 0.75
TEXT combo One
TEXT combo The second
TEXT combo Three
CADD Text text main 0 0.3 12 4
CADD Win inner main 0 0 1 Inner
CADD Frame frame main 0.8 0 1
CADD Opt first frame 0 0 First
CADD Opt second frame 0 0.1 Second
CADD Text note frame 0 0.25 6 1
CADD TWin tabs NULL 0.2 -0.5
NTAB tabs 0 One
NTAB tabs 1 Two
NTAB tabs 2 Three
TADD 0 tabs Slide tabslide 0 0.1 0.4 0
TADD 1 tabs Opt tabopt 0 0.1 Option
TADD 1 tabs Opt tabopt2 0 0.2 Option
TADD 2 tabs Text tabtext 0 0 10 3
CADD Combo top NULL 0.3 0.8
TEXT top Alone
SOLID
)";

#ifdef __SANITIZE_ADDRESS__
// A byte an event would be 90,000.
constexpr std::size_t slack = 4000;
std::size_t allocatedBytes()
{
    return __sanitizer_get_current_allocated_bytes();
}
#else
// glibc counts what it keeps for a thread after it was freed: 7 pieces of each size up to 1032
// bytes.
constexpr std::size_t slack = 240000;
std::size_t allocatedBytes()
{
    return mallinfo2().uordblks;
}
#endif

class RandomInputGLTest : public GuiGLTest
{
protected:
    void SetUp() override
    {
        GuiGLTest::SetUp();
        for (const char* file :
             {"default.theme", "combo_button.theme", "tabwin_button.theme", "messagebox.theme"})
            directory.write(file, themeFile);
        directory.write("gui.conf", TAMOR_TEST_FONT
                        "\n-\n"
                        "0 0 0.2 1\n0.2 0 0.4 1\n0.4 0 0.6 1\n0.6 0 0.8 1\n0.8 0 1 1\n"
                        "0.004\n");
        directory.write("my.gui", layout);
        GLWidget::themes.clear();
        GLWidget::loadLayout("my.gui");
    }

    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned int>(limit)); }

    /// One event of the pointer, the buttons or the keys, as the application passes it on.
    void makeEvent()
    {
        if (below(4) == 0) {
            // Mostly characters and the keys that edit, now and then any.
            static constexpr int editing[] = {8, 13, 127, 273, 274, 275, 276, 278, 279};
            std::array<std::uint8_t, 512> pressed{};
            for (int count = below(4); count > 0; --count) {
                const int choice = below(10);
                const int key = choice == 0  ? below(512)
                                : choice < 4 ? editing[below(9)]
                                             : 32 + below(94);
                pressed[static_cast<std::size_t>(key)] = 1;
            }
            GLWidget::keysChanged(pressed.data());
            return;
        }
        if (below(3) == 0)
            left = !left;
        // Small motions drag; large ones reach every widget.
        const bool isJump = below(4) == 0;
        x = isJump ? below(800) : std::clamp(x + below(41) - 20, -50, 850);
        y = isJump ? below(600) : std::clamp(y + below(41) - 20, -50, 650);
        GLWidget::mouseMoved(Vector(static_cast<float>(x), static_cast<float>(y)));
        GLWidget::mouseButtons(left, below(10) == 0, below(10) == 0);
        if (below(8) == 0)
            GLWidget::updateAll(below(40));
    }

    template <class Widget>
    static Widget& named(const char* name)
    {
        return dynamic_cast<Widget&>(*GLWidget::find(name));
    }

    static void expectStatesInTheTables()
    {
        for (const char* name : {"across", "down", "tabslide"}) {
            const float value = GLWidget::find(name)->getValue();
            ASSERT_TRUE(value > 0.0F && value < 1.0F) << name << " " << value;
        }
        for (const char* name : {"combo", "top"}) {
            auto& box = named<Combobox>(name);
            ASSERT_NE(box.selectedText(), "");
            ASSERT_EQ(box.getDepth(), box.open ? -1.0F : 0.0F);
            ASSERT_GE(box.highlight, -1);
            ASSERT_LE(box.highlight, 2);
        }
        for (const char* name : textboxes) {
            auto& box = named<Textbox>(name);
            const std::string& text = seen(box).text;
            ASSERT_EQ(text, box.beforeCursor + box.afterCursor);
            ASSERT_LE(std::count(text.begin(), text.end(), '\n') + 1, box.maxRows);
        }
        ASSERT_FALSE(GLWidget::find("first")->isActive() && GLWidget::find("second")->isActive());
        const auto& tabs = named<TabWindow>("tabs");
        ASSERT_TRUE(tabs.currentTab >= 0 && tabs.currentTab < 3);
        ASSERT_EQ(seen(*GLWidget::find("tabs")).children,
                  tabs.tabs[static_cast<std::size_t>(tabs.currentTab)].widgets);
    }

    /// What is allocated apart from what is typed: a text has no end as long as new text stands in
    /// front of it, and a string keeps the room that it once had.
    static std::size_t bytesWithoutTexts()
    {
        std::size_t bytes = allocatedBytes();
        for (const char* name : textboxes) {
            auto& box = named<Textbox>(name);
            const std::string* const texts[] = {&box.beforeCursor, &box.afterCursor,
                                                &seen(box).text};
            for (const std::string* text : texts)
                bytes -= text->capacity();
        }
        return bytes;
    }

    static constexpr const char* textboxes[] = {"text", "note", "tabtext"};

    const CapturedErrors errors;
    TemporaryDirectory directory;

private:
    std::mt19937 random{2024};
    bool left = false;
    int x = 400;
    int y = 300;
};

TEST_F(RandomInputGLTest, LeavesAllStatesInTheirTablesAndMemoryFlat)
{
    std::size_t bytesBefore = 0;
    for (int event = 0; event < 100000; ++event) {
        if (event == 10000)
            bytesBefore = bytesWithoutTexts();
        makeEvent();
        if (event < 10000 && event % 20 == 0)
            GLWidget::renderAll();
        if (event % 10 == 0) {
            ASSERT_NO_FATAL_FAILURE(expectStatesInTheTables()) << "after event " << event;
        }
    }

    EXPECT_LT(bytesWithoutTexts(), bytesBefore + slack);
}

TEST_F(RandomInputGLTest, ClosesMessageBoxesAndDrawsAllTheTime)
{
    constexpr std::int32_t flags[] = {1, 3, 12, 14};
    int answers = 0;
    for (int event = 0; event < 5000; ++event) {
        if (event % 50 == 0)
            GLWidget::messageBox("Go on?\n100%", flags[event / 50 % 4]);
        makeEvent();
        if (event % 10 == 0)
            GLWidget::renderAll();
        if (GLWidget::takeMessageResult() != 0)
            ++answers;
    }

    EXPECT_GT(answers, 0);
    EXPECT_NO_FATAL_FAILURE(expectStatesInTheTables());
}
} // namespace
} // namespace tamor::test
