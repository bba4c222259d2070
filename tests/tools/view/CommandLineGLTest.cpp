#include "tests/tools/view/View.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

namespace tamor::test
{
namespace
{
const std::string usage = "Usage: tamor-view [--size WIDTHxHEIGHT] [--no-reload] "
                          "[--screenshot FILE.png] FILE\n";

// A display that no server answers to counts as none.
const std::map<std::string, std::string> noDisplay{{"DISPLAY", ""}};

TEST(ViewCommandLineGLTest, NamesAMisspelledOptionAndTheOneThatWasMeant)
{
    const ViewRun run = runView({"--szie", "800x600", "my.gui"});

    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, "tamor-view: no option '--szie'; did you mean '--size'?\n" + usage);
}

TEST(ViewCommandLineGLTest, NamesAnOptionThatIsLikeNoOther)
{
    EXPECT_EQ(runView({"--loud", "my.gui"}).errors, "tamor-view: no option '--loud'\n" + usage);
}

TEST(ViewCommandLineGLTest, WantsOneFile)
{
    EXPECT_EQ(runView({}).errors, "tamor-view: no file is named\n" + usage);
    EXPECT_EQ(runView({"a.gui", "b.gui"}).errors,
              "tamor-view: more than one file is named\n" + usage);
}

TEST(ViewCommandLineGLTest, WantsASizeInPixels)
{
    EXPECT_EQ(runView({"--size", "large", "my.gui"}).errors,
              "tamor-view: 'large' is no size; write it as 800x600\n" + usage);
    EXPECT_EQ(runView({"--size=0x600", "my.gui"}).status, 2);
    EXPECT_EQ(runView({"--size"}).errors,
              "tamor-view: '--size' needs a value: WIDTHxHEIGHT\n" + usage);
}

TEST(ViewCommandLineGLTest, HelpsAndTellsItsVersion)
{
    const ViewRun help = runView({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.output.find(usage), 0U);
    EXPECT_NE(help.output.find("  --no-reload             do not read the file again"),
              std::string::npos);

    EXPECT_EQ(runView({"--version"}).output, "tamor-view 1.0.0\n");
}

TEST(ViewCommandLineGLTest, SaysThatAFileIsNotThere)
{
    const TemporaryDirectory directory;

    const ViewRun run = runView({"--screenshot", "no.png", "no.gui"}, noDisplay);

    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "tamor-view: no.gui: no such file\n");
}

TEST(ViewCommandLineGLTest, OpensNoWindowWithoutADisplay)
{
    const ViewRun run = runView({"my.gui"}, noDisplay);

    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "tamor-view: there is no display: set DISPLAY, or take a --screenshot\n");
}

TEST(ViewCommandLineGLTest, SaysWhatToInstallForAScreenshotWithoutADisplay)
{
    const ViewRun run =
        runView({"--screenshot", "my.png", "my.gui"}, {{"DISPLAY", ""}, {"PATH", "/nowhere"}});

    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "tamor-view: there is no display, and Xvfb, which would stand in for "
                          "one, is not installed (Debian's package xvfb)\n");
}

// As an X server does that the first signal meets just before it falls asleep.
TEST(ViewCommandLineGLTest, EndsAServerThatDoesNotHeedTheFirstSignal)
{
    const TemporaryDirectory directory;
    const std::string server = directory.write("Xvfb", "#!/bin/bash\n"
                                                       "trap 'trap \"exit 0\" TERM' TERM\n"
                                                       "echo 99 >&$2\n"
                                                       "while true; do sleep 0.01; done\n");
    std::filesystem::permissions(server, std::filesystem::perms::owner_all);
    const std::string path = directory.path().string() + ":" + std::getenv("PATH");

    const ViewRun run =
        runView({"--screenshot", "no.png", "no.gui"}, {{"DISPLAY", ""}, {"PATH", path}});

    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "tamor-view: no.gui: no such file\n");
}

TEST(ViewCommandLineGLTest, TakesAScreenshotWithoutADisplay)
{
    const WorkingDirectory directory;

    const ViewRun run = runView({"--screenshot", "my.png", "my.gui"}, noDisplay);

    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.output.find("41 widgets"), std::string::npos) << run.output;
    EXPECT_TRUE(matchesGolden(readPicture("my.png"), TAMOR_DOCS "/view-layout.png"));
}

TEST(ViewCommandLineGLTest, TakesAScreenshotOfTheSizeThatIsAskedFor)
{
    const WorkingDirectory directory;

    EXPECT_EQ(runView({"--size", "1200x500", "--screenshot", "my.png", "my.gui"}, noDisplay).status,
              0);

    EXPECT_EQ(readPicture("my.png").width, 1200);
    EXPECT_EQ(readPicture("my.png").height, 500);
}

TEST(ViewCommandLineGLTest, SaysThatAScreenshotCannotBeWritten)
{
    const WorkingDirectory directory;

    const ViewRun run = runView({"--screenshot", "none/my.png", "my.gui"}, noDisplay);

    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("none/my.png: No such file or directory\n"), std::string::npos)
        << run.errors;
}
} // namespace
} // namespace tamor::test
