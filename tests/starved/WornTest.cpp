// A GUI that a host uses for ever: what stays in memory is what is left on purpose, as much with the
// last use as with the first. The bounds are what the allocator of a machine of 64 bits counts, and
// every other one counts less. Ten thousand of each: --gtest_filter='WornGui.*' --gtest_repeat=10.
#include "gui/GLWidget.h"
#include "tests/gui/Seen.h"
#include "tests/gui/fuzz/FuzzGui.h"
#include "tests/support/FuzzFile.h"
#include "tests/support/HeldBytes.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace tamor::test
{
namespace
{
constexpr int uses = 1000;

/// The share of a use in what grows but once, such as a library's buffers, in bytes.
constexpr double madeOnce = 1.0;

/// Does something once, so that what is made only once is there, and then a thousand times.
/// \return the bytes that each time has left on the heap
template <class Action>
double bytesLeftBy(const Action& action)
{
    const Unprinted unprinted;
    action();
    const std::int64_t before = heldBytes();
    for (int i = 0; i < uses; ++i)
        action();
    return static_cast<double>(heldBytes() - before) / uses;
}

constexpr const char* layout = "CONF gui.conf\n"
                               "THEM default.theme -\n"
                               "CADD Win window NULL -1 -0.9 1 Title\n"
                               "CADD Slide slider window 0 0.6 0 1\n"
                               "CADD Butt button window 0 0.5 Go\n"
                               "CADD Combo list window 0 0.2\n"
                               "TEXT list First\n"
                               "CADD Text notes window 0.4 0.2 20 3\n"
                               "CADD Frame frame window 0.3 1.8 1\n"
                               "CADD Opt one frame 0 0 One\n"
                               "CADD TWin pages NULL -0.8 0.2\n"
                               "NTAB pages 0 First\n"
                               "TADD 0 pages Label label 0 0.4 A caption\n"
                               "TADD 0 pages Check check 0 0.4 A caption\n"
                               "SOLID\n";

/// The GUI of a program without a window.
class WornGui : public testing::Test
{
protected:
    void SetUp() override { enterGuiFolder(); }
    void TearDown() override { deleteGui(); }
};

TEST_F(WornGui, KeepsOfABoxItsThemeItsLabelAndItsFrame)
{
    const auto answer = [](std::int32_t flags, const char* button) {
        GLWidget::messageBox("Overwrite?", flags);
        seen(*GLWidget::find(button)).clicked = true;
        GLWidget::updateAll(20);
        GLWidget::takeMessageResult();
    };

    // A theme of 672 bytes, a label of 224 and 32 for its name.
    EXPECT_LT(bytesLeftBy([&] { answer(1, "__msgbox_ok"); }), 928 + madeOnce);
    // Besides, a frame of 240, and 32 or 48 for its list of two or three buttons.
    EXPECT_LE(bytesLeftBy([&] { answer(3, "__msgbox_cancel"); }), 1200 + madeOnce);
    EXPECT_LE(bytesLeftBy([&] { answer(14, "__msgbox_no"); }), 1216 + madeOnce);
}

TEST_F(WornGui, KeepsOfALayoutThatIsForgottenItsThemesAndItsWidgets)
{
    const FuzzFile file(layout);

    const double left = bytesLeftBy([&] {
        GLWidget::topLevel.clear();
        GLWidget::widgets.clear();
        GLWidget::themes.clear();
        GLWidget::loadLayout(file.path());
    });

    // Three themes, ten widgets of the layout, the button of the list and that of the page, and their
    // lists and longer names.
    EXPECT_LT(left, 6592 + madeOnce);
}

TEST_F(WornGui, KeepsNothingOfALayoutThatIsDeleted)
{
    const FuzzFile file(layout);

    const double left = bytesLeftBy([&] {
        deleteGui();
        GLWidget::loadLayout(file.path());
    });

    EXPECT_LT(left, 0 + madeOnce);
}
} // namespace
} // namespace tamor::test
