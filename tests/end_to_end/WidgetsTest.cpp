#include "tests/end_to_end/Demonstration.h"
#include "tests/end_to_end/Goldens.h"
#include "tests/end_to_end/Places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
/// The whole window, but for the frame rate, which is another in each run.
Picture wholeWindow(const Demonstration& demo)
{
    Picture all = demo.picture({0, 0}, 800, 600);
    for (int y = rateCorner.y; y < rateCorner.y + rateHeight; y++) {
        const auto row = all.bytes.begin() + (y * 800 + rateCorner.x) * 3;
        std::fill(row, row + rateWidth * 3, std::uint8_t{0});
    }
    return all;
}

/// Waits, since lights fade in and out, until the window shows what the golden picture does.
testing::AssertionResult comesToShow(Demonstration& demo, const std::string& name)
{
    demo.moveTo(freePlace);
    Picture last;
    demo.shows([&] {
        const Picture now = wholeWindow(demo);
        const bool stands = now.bytes == last.bytes;
        last = now;
        return stands && demo.waitForFrames(8) && wholeWindow(demo).bytes == now.bytes;
    });
    return showsTheSame(last, name);
}

struct Answer
{
    const char* name;
    Place opener;
    Place button;
    const char* status;
};

void PrintTo(const Answer& answer, std::ostream* out)
{
    *out << answer.name;
}

class AMessageBoxGLTest : public testing::TestWithParam<Answer>
{};

TEST_P(AMessageBoxGLTest, OpensAtItsButtonAndItsAnswerIsShown)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());
    const Place inTheBox{250, 320};
    const Pixel clear = demo.pixel(inTheBox);

    demo.click(GetParam().opener);
    ASSERT_TRUE(demo.shows([&] { return demo.pixel(inTheBox) != clear; }));
    demo.click(GetParam().button);

    EXPECT_TRUE(demo.shows([&] { return demo.pixel(inTheBox) == clear; }));
    EXPECT_TRUE(showsTheSame(demo.picture(statusCorner, statusWidth, statusHeight),
                             std::string("status-") + GetParam().status));
}

INSTANTIATE_TEST_SUITE_P(Each, AMessageBoxGLTest,
                         testing::Values(Answer{"RedOk", redButton, okOfTwo, "ok"},
                                         Answer{"RedCancel", redButton, cancelOfTwo, "cancel"},
                                         Answer{"GreenYes", greenButton, yesOfTwo, "yes"},
                                         Answer{"GreenNo", greenButton, noOfTwo, "no"},
                                         Answer{"BlueYes", blueButton, yesOfThree, "yes"},
                                         Answer{"BlueNo", blueButton, noOfThree, "no"},
                                         Answer{"BlueCancel", blueButton, cancelOfThree, "cancel"},
                                         Answer{"QuillOk", quillButton, onlyOk, "ok"}),
                         [](const testing::TestParamInfo<Answer>& row) { return row.param.name; });

TEST(TheWindowGLTest, IsWhatItWasDesignedToBeInEveryState)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());
    EXPECT_TRUE(comesToShow(demo, "window-sliders"));

    demo.click(optionsTab);
    EXPECT_TRUE(comesToShow(demo, "window-options"));
    demo.click(checksTab);
    EXPECT_TRUE(comesToShow(demo, "window-checks"));
    demo.click(listBox);
    EXPECT_TRUE(comesToShow(demo, "window-list"));
    demo.click(listBox);

    demo.click(quillButton);
    EXPECT_TRUE(comesToShow(demo, "window-box-ok"));
    demo.click(onlyOk);
    demo.click(redButton);
    EXPECT_TRUE(comesToShow(demo, "window-box-ok-cancel"));
    demo.click(okOfTwo);
    demo.click(blueButton);
    EXPECT_TRUE(comesToShow(demo, "window-box-yes-no-cancel"));
}

TEST(TheTabsGLTest, LeaveWhatIsOnOtherPagesAlone)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());

    // A check's place on the page of the sliders holds nothing.
    demo.click(iconOfRow(3));
    demo.click(checksTab);

    EXPECT_TRUE(comesToShow(demo, "window-checks"));
}

/// The red of one pixel in each new frame until it stands still at something new.
std::vector<int> watchChange(Demonstration& demo, Place place)
{
    std::vector<int> seen{demo.pixel(place)[0]};
    int still = 0;
    demo.shows([&] {
        demo.waitForFrames(1);
        const int now = demo.pixel(place)[0];
        still = now == seen.back() ? still + 1 : 0;
        if (still == 0)
            seen.push_back(now);
        return still > 60;
    });
    return seen;
}

/// Whether the values fall a little and then rise for good. A tick fades in with its colour and its
/// opacity together, so it first darkens the ground: with half of both it gives a quarter of itself
/// and takes half of the ground.
bool dipsAndRises(const std::vector<int>& values)
{
    // Colour and opacity are rounded one by one, so that a step may come out two too low.
    constexpr int rounding = 2;
    const auto lowest = std::min_element(values.begin(), values.end());
    int highest = *lowest;
    for (auto value = lowest; value != values.end(); ++value) {
        if (*value < highest - rounding)
            return false;
        highest = std::max(highest, *value);
    }
    return values.front() - *lowest < 40 && lowest - values.begin() < values.end() - lowest;
}

// A fade that takes more than a second, so that a slow machine sees it too.
constexpr const char* slowFade = "0.0008";

WorkingDirectory& slowlyFading(WorkingDirectory& directory)
{
    std::string text = directory.read("gui.conf");
    text.replace(text.find("0.004 "), 5, slowFade);
    directory.write("gui.conf", text);
    return directory;
}

TEST(ACheckGLTest, FadesItsTickInAndOut)
{
    WorkingDirectory directory;
    Demonstration demo(slowlyFading(directory));
    ASSERT_TRUE(demo.opens());
    demo.click(checksTab);
    // Where the two strokes of the tick meet, 10.8 pixels right and 8.6 above the icon's corner.
    const Place tick{iconOfRow(0).x - 12 + 10, iconOfRow(0).y + 12 - 9};
    demo.moveTo(iconOfRow(0));
    watchChange(demo, tick);

    demo.press();
    const std::vector<int> in = watchChange(demo, tick);
    demo.letGo();
    demo.press();
    const std::vector<int> out = watchChange(demo, tick);
    demo.letGo();

    // The ground is dark, and the tick as red as its theme's body colour can be.
    EXPECT_LT(in.front(), 120);
    EXPECT_GT(in.size(), 4U);
    EXPECT_TRUE(dipsAndRises(in)) << testing::PrintToString(in);
    EXPECT_GT(in.back(), 250);
    EXPECT_GT(out.front(), 150);
    EXPECT_GT(out.size(), 4U);
    EXPECT_TRUE(dipsAndRises({out.rbegin(), out.rend()})) << testing::PrintToString(out);
    EXPECT_LT(out.back(), 120);
}

TEST(TheOptionsGLTest, HaveOneChosenAtATime)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());
    demo.click(optionsTab);
    const auto isChosen = [&](int row) { return demo.pixel(iconOfRow(row))[0] > 180; };
    const auto chosen = [&](int row) {
        return demo.shows([&] {
            for (int i = 0; i < 4; i++) {
                if (isChosen(i) != (i == row))
                    return false;
            }
            return true;
        });
    };
    EXPECT_TRUE(chosen(0));

    demo.click(iconOfRow(2));
    EXPECT_TRUE(chosen(2));
    demo.click(iconOfRow(2));
    EXPECT_TRUE(chosen(2));
    demo.click(iconOfRow(1));
    EXPECT_TRUE(chosen(1));
}

/// What the list's box shows, and whether the list below it is open.
Picture boxOf(const Demonstration& demo)
{
    return demo.picture({500, 78}, 188, 25);
}

bool listIsOpen(const Demonstration& demo)
{
    // The plate of the panel against that of the list, right of all texts.
    return demo.pixel({685, 150}) != demo.pixel({700, 150});
}

TEST(TheListGLTest, ChoosesByAPressOnItsBoxAndASecondPressOnARow)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());
    ASSERT_FALSE(listIsOpen(demo));

    demo.click(listBox);
    EXPECT_TRUE(listIsOpen(demo));
    demo.click(listRow(1));

    EXPECT_FALSE(listIsOpen(demo));
    EXPECT_TRUE(showsTheSame(boxOf(demo), "list-look-around"));
}

TEST(TheListGLTest, ChoosesByPressingOnItsBoxAndLettingGoOverARow)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());

    demo.moveTo(listBox);
    demo.press();
    demo.moveTo({listBox.x + 2, listBox.y});
    demo.moveTo(listRow(2));
    EXPECT_TRUE(listIsOpen(demo));
    demo.letGo();

    EXPECT_FALSE(listIsOpen(demo));
    EXPECT_TRUE(showsTheSame(boxOf(demo), "list-write-a-letter"));
}

TEST(TheListGLTest, ChoosesAtOnceWhenThePressedPointerIsNextSeenOverARow)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());

    demo.moveTo(listBox);
    demo.press();
    demo.moveTo(listRow(1));

    EXPECT_FALSE(listIsOpen(demo));
    EXPECT_TRUE(showsTheSame(boxOf(demo), "list-look-around"));
}

TEST(TheListGLTest, StaysOpenAtAPressElsewhereAndShutsAtAPressOnItsBox)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());

    demo.click(listBox);
    demo.click(freePlace);
    EXPECT_TRUE(listIsOpen(demo));
    demo.click(listBox);
    EXPECT_FALSE(listIsOpen(demo));
}

/// The page and its surroundings.
Picture pageOf(Demonstration& demo)
{
    demo.waitForFrames();
    return demo.picture({146, 448}, 322, 132);
}

/// A demonstration whose lights change at once, so that only the text changes the page.
WorkingDirectory& changingAtOnce(WorkingDirectory& directory)
{
    std::string text = directory.read("paper.theme");
    text.replace(text.rfind("\n1 ") + 1, 1, "0");
    directory.write("paper.theme", text);
    return directory;
}

/// The environment of a program for which time passes a hundred times slower: a key that is held for
/// 0.7 seconds repeats, and a busy machine may take longer than that between press and release.
// The clock comes before the sanitiser's library, which is harmless here.
const std::map<std::string, std::string> slowClock = {{"LD_PRELOAD", TAMOR_SLOW_CLOCK},
                                                      {"ASAN_OPTIONS", "verify_asan_link_order=0"}};

TEST(ThePageGLTest, TakesNoKeysBeforeItIsPressed)
{
    WorkingDirectory directory;
    Demonstration demo(changingAtOnce(directory), {}, slowClock);
    ASSERT_TRUE(demo.opens());
    const Picture empty = pageOf(demo);

    demo.typeAll("ab");

    EXPECT_EQ(pageOf(demo).bytes, empty.bytes);
}

TEST(ThePageGLTest, MovesAWordThatDoesNotFitToANewRow)
{
    WorkingDirectory directory;
    Demonstration demo(changingAtOnce(directory), {}, slowClock);
    ASSERT_TRUE(demo.opens());
    demo.click(notebook);

    demo.typeAll("we sailed at dawn and saw no land until the third day");

    EXPECT_TRUE(showsTheSame(pageOf(demo), "page-wrapped"));
}

TEST(ThePageGLTest, IsEditedWithAllItsKeys)
{
    WorkingDirectory directory;
    Demonstration demo(changingAtOnce(directory), {}, slowClock);
    ASSERT_TRUE(demo.opens());
    demo.click(notebook);

    demo.typeAll("first");
    demo.type("Return");
    demo.typeAll("second row");
    EXPECT_TRUE(showsTheSame(pageOf(demo), "page-two-rows"));
    demo.type("Up");
    EXPECT_TRUE(showsTheSame(pageOf(demo), "page-up"));
    demo.type("Left");
    demo.typeAll("x");
    demo.type("Down");
    EXPECT_TRUE(showsTheSame(pageOf(demo), "page-down"));
    demo.type("Home");
    demo.type("Right");
    demo.type("Delete");
    EXPECT_TRUE(showsTheSame(pageOf(demo), "page-deleted"));
    demo.type("End");
    demo.type("BackSpace");
    EXPECT_TRUE(showsTheSame(pageOf(demo), "page-backspaced"));
    // From the end back over the line end, which joins the rows.
    for (int i = 0; i < 10; i++)
        demo.type("BackSpace");
    EXPECT_TRUE(showsTheSame(pageOf(demo), "page-joined"));
}

TEST(ThePageGLTest, GetsTheKeyAndNotTheCharacterFromARealKeyboard)
{
    WorkingDirectory directory;
    Demonstration demo(changingAtOnce(directory), {}, slowClock);
    ASSERT_TRUE(demo.opens());
    demo.click(notebook);
    demo.type("a");
    const Picture small = pageOf(demo);
    demo.type("BackSpace");

    demo.holdKey("Shift_L");
    demo.type("a");
    demo.letGoOfKey("Shift_L");

    EXPECT_EQ(pageOf(demo).bytes, small.bytes);
}
} // namespace
} // namespace tamor::test
