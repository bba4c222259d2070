#include "tests/end_to_end/Demonstration.h"
#include "tests/end_to_end/Places.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <map>
#include <memory>
#include <ostream>
#include <string>

namespace tamor::test
{
namespace
{
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

TEST(TheStartGLTest, OpensAWindowOf800By600WithItsTitle)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);

    ASSERT_TRUE(demo.opens());

    EXPECT_EQ(demo.title(), "Tamor Application");
    const Picture last = demo.picture({799, 599}, 1, 1);
    EXPECT_EQ(last.bytes.size(), 3U);
    EXPECT_TRUE(demo.picture({800, 0}, 1, 1).bytes.empty());
}

TEST(TheStartGLTest, PrintsWhatItLoadsInTheOrderOfTheLayout)
{
    const WorkingDirectory directory;
    directory.write("my.gui",
                    "CONF gui.conf\nTHEM default.theme x\nCADD Win main NULL 0 0 1 Hello\n"
                    "CADD Butt one main 0 0 One\nSOLID\n");
    directory.write("default.theme",
                    "1 0 0 text\n0 1 0 edge\n0 0 1\n0.3 0.3 0.3\n1\n0.5\n2\n0.25\n0.125\n0.5\n"
                    "0.04 0.05\n0.7 1\n0.005 -0.005 0\n0.1\nNULL\n1\n");
    Demonstration demo(directory);

    ASSERT_TRUE(demo.opens());

    const std::string theme = "reading theme default.theme\n(1, 0, 0, 1)\n(0, 1, 0, 1)\n(0, 0, 1, "
                              "1)\n(0.3, 0.3, 0.3, 1)\n"
                              "1\n0.5\n2\n0.25\n0.125\n0.5\n(0.04, 0.05, 0, 1)\n0.7 1\n(0.005, "
                              "-0.005, 0, 1)\n0.1\nNULL\n1\n"
                              "read theme default.theme\n";
    const std::string font = directory.read("gui.conf");
    EXPECT_EQ(demo.errors(), theme + "Loading " + font.substr(0, font.find('\n')) + "\nLoaded.\n" +
                                 theme + "adding a 'Win' - main\nadding window main 1\n" +
                                 "adding a 'Butt' - one\n");
}

TEST(TheStartGLTest, EndsQuietlyWithStatus0WhenThereIsNoDisplay)
{
    const WorkingDirectory directory;
    ChildProcess program({TAMOR_DEMO_PROGRAM}, directory.path(),
                         {{"DISPLAY", ":no-such-display"}, {"SDL_VIDEODRIVER", "x11"}});

    const ProcessEnd end = program.wait();

    EXPECT_EQ(end.status, 0);
    EXPECT_THAT(program.errors(), HasSubstr("SDL_Init() failed. SDL Error: "));
    EXPECT_THAT(program.errors(), EndsWith("Error sending openwindow event\n"));
}

TEST(TheEndGLTest, ComesWithStatus0WhenEscapeIsHeld)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());

    demo.holdKey("Escape");

    EXPECT_EQ(demo.end().status, 0) << demo.errors();
    EXPECT_THAT(demo.errors(), Not(HasSubstr("Error")));
}

TEST(TheEndGLTest, ComesWithStatus0WhenTheWindowIsClosed)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());

    demo.closeWindow();

    EXPECT_EQ(demo.end().status, 0) << demo.errors();
    EXPECT_THAT(demo.errors(), Not(HasSubstr("Error")));
}

// These two ends close the video first, which unloads the driver: what that has kept can then no
// longer be told from a leak of the program's own.
const std::map<std::string, std::string> withoutLeakCheck = {{"ASAN_OPTIONS", "detect_leaks=0"}};

// Its end is Xlib's, which exits with the status 1. The driver is still at work then, and now and
// then a signal is faster. The test's own process has no connection to this display, which would
// end it, too.
TEST(TheEndGLTest, IsNoGoodOneWhenTheDisplayGoesAway)
{
    const WorkingDirectory directory;
    auto display = std::make_unique<VirtualDisplay>();
    std::map<std::string, std::string> environment = withoutLeakCheck;
    environment["DISPLAY"] = display->name();
    ChildProcess program({TAMOR_DEMO_PROGRAM}, directory.path(), environment);
    ASSERT_TRUE(becomesTrue([&] {
        return program.errors().find("adding a 'Frame' - programcorner") != std::string::npos;
    }));

    display.reset();

    const ProcessEnd end = program.wait();
    EXPECT_FALSE(end.timedOut);
    EXPECT_NE(end.status, 0) << program.errors();
}

TEST(TheEndGLTest, ComesWithStatus0WhenTheExitButtonIsPressed)
{
    const WorkingDirectory directory;
    Demonstration demo(directory, {}, withoutLeakCheck);
    ASSERT_TRUE(demo.opens());
    demo.moveTo(exitButton);
    ASSERT_TRUE(demo.isRunning());

    demo.press();

    EXPECT_EQ(demo.end().status, 0) << demo.errors();
    EXPECT_THAT(demo.errors(), Not(HasSubstr("Error")));
}

TEST(TheEndGLTest, ComesWithStatus0WhenTheFourthEntryOfTheListIsChosen)
{
    const WorkingDirectory directory;
    Demonstration demo(directory, {}, withoutLeakCheck);
    ASSERT_TRUE(demo.opens());
    demo.click(listBox);
    demo.moveTo(listRow(3));
    ASSERT_TRUE(demo.isRunning());

    demo.press();

    EXPECT_EQ(demo.end().status, 0) << demo.errors();
}

struct CaughtSignal
{
    int number;
    const char* line;
};

void PrintTo(const CaughtSignal& caught, std::ostream* out)
{
    *out << caught.number;
}

class ACaughtSignalGLTest : public testing::TestWithParam<CaughtSignal>
{};

// The handler ends the process from wherever the signal found it, often in the middle of a request
// to the display, whose lock is then never given back.
TEST_P(ACaughtSignalGLTest, IsNamedAndEndsTheProgramWithStatus1)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());

    demo.signal(GetParam().number);

    EXPECT_EQ(demo.end().status, 1);
    EXPECT_THAT(demo.errors(), EndsWith(std::string(GetParam().line) + "\nStack Trace:\n"));
}

TEST_P(ACaughtSignalGLTest, EndsTheWaitForAMissingLayout)
{
    const WorkingDirectory directory;
    directory.remove("my.gui");
    Demonstration demo(directory);
    ASSERT_TRUE(demo.prints("read theme default.theme\n"));

    demo.signal(GetParam().number);

    EXPECT_EQ(demo.end().status, 1);
    EXPECT_THAT(demo.errors(), EndsWith(std::string(GetParam().line) + "\nStack Trace:\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Each, ACaughtSignalGLTest,
    testing::Values(CaughtSignal{SIGINT, "Caught signal SIGINT - Terminal interrupt (ANSI)"},
                    CaughtSignal{SIGHUP, "Caught signal SIGHUP - Hangup (POSIX)"},
                    CaughtSignal{SIGQUIT, "Caught signal SIGQUIT - Terminal quit (POSIX)"}));

TEST(TheEndGLTest, ComesWithStatus0OnATerminateSignalWhichTheWindowLibraryTakesForAClosing)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());

    demo.signal(SIGTERM);

    EXPECT_EQ(demo.end().status, 0) << demo.errors();
    EXPECT_THAT(demo.errors(), Not(HasSubstr("Caught signal")));
}
} // namespace
} // namespace tamor::test
