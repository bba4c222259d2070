#include "tests/examples/Example.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/Picture.h"
#include "tests/support/SDLWords.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
/// What became of a listing: its streams, and what it drew.
struct Outcome
{
    Pixel middle() const { return window.at(window.width / 2, window.height / 2); }
    Pixel corner() const { return window.at(window.width - 1, 0); }

    std::string output;
    std::string errors;
    Picture window;
};

/// Runs a listing in the current directory, with the other files of the manual beside it.
Outcome runListing(const std::string& name, std::vector<std::string> arguments = {})
{
    useTestDisplay();
    for (const char* const file : {"settings.gui", "tint.vert", "tint.frag", "greet.script"})
        std::filesystem::copy_file(std::string(LISTINGS) + file, file,
                                   std::filesystem::copy_options::skip_existing);
    arguments.insert(arguments.begin(), std::string(LISTINGS) + "tamor-listing-" + name);
    ChildProcess listing(arguments);
    const ProcessEnd end = listing.wait();
    EXPECT_FALSE(end.timedOut);
    EXPECT_EQ(end.status, 0);
    return {listing.output(), listing.errors(), readScreenshot("window.ppm")};
}

int brightness(Pixel pixel)
{
    return pixel[0] + pixel[1] + pixel[2];
}

TEST(HostingGLTest, TheWindowShowsItsSquare)
{
    const TemporaryDirectory directory;

    const Outcome outcome = runListing("window");

    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.middle(), (Pixel{255, 255, 255}));
    EXPECT_EQ(outcome.corner(), (Pixel{51, 102, 153}));
}

TEST(HostingGLTest, AWindowThatDoesNotOpenIsAFailureOfTheProgram)
{
    // Arrange: as without a display, a driver that has no OpenGL.
    ChildProcess listing({LISTINGS "tamor-listing-window"}, "", {{"SDL_VIDEODRIVER", "dummy"}});

    const ProcessEnd end = listing.wait();

    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(listing.errors(), std::string("SDL_SetVideoMode() Failed. SDL_Error: ") +
                                    wordsOfNoOpenGL() + "\nError sending openwindow event\n");
}

/// The demonstration's themes, configuration and pictures in the current directory, and a user.
void prepareGui(const std::string& input)
{
    std::filesystem::copy(TAMOR_DATA, ".");
    std::ofstream("input.txt") << input;
}

/// Drags the slider and opens the list, of which the second row is chosen.
const std::string changesBoth = "move 181 246 press move 223 246 release "
                                "move 77 328 press release move 110 379 press release ";

TEST(HostingGLTest, TheGuiShowsItsBox)
{
    const TemporaryDirectory directory;
    prepareGui(changesBoth + "move 94 417 press release move 400 312 wait wait");

    const Outcome outcome = runListing("gui");

    EXPECT_EQ(outcome.output, "");
    EXPECT_TRUE(matchesGolden(outcome.window, TAMOR_DOCS "hosting-gui.png"));
}

TEST(HostingGLTest, TheGuiTellsWhatIsToBeKept)
{
    const TemporaryDirectory directory;
    prepareGui(changesBoth + "move 94 417 press release move 317 341 press");

    const Outcome outcome = runListing("gui");

    EXPECT_EQ(outcome.output, "0.7 1\n");
}

TEST(HostingGLTest, TheModelIsLit)
{
    const TemporaryDirectory directory;

    const Outcome outcome = runListing("model");

    EXPECT_EQ(outcome.errors, "");
    EXPECT_GT(brightness(outcome.middle()), 200);
    EXPECT_EQ(outcome.corner(), (Pixel{51, 51, 51}));
}

TEST(HostingGLTest, TheTerrainIsLitUnderTheSky)
{
    const TemporaryDirectory directory;

    const Outcome outcome = runListing("terrain");

    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.corner(), (Pixel{168, 199, 230}));
    EXPECT_EQ(outcome.middle()[0], outcome.middle()[2]); // the ground is grey
    EXPECT_GT(brightness(outcome.middle()), 100);
}

TEST(HostingGLTest, TheShaderTintsItsSquare)
{
    const TemporaryDirectory directory;

    const Outcome outcome = runListing("shader");

    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.middle(), (Pixel{255, 102, 51}));
    EXPECT_EQ(outcome.corner(), (Pixel{51, 51, 51}));
}

TEST(HostingGLTest, TheRecordedRunIsPlayedAgain)
{
    const TemporaryDirectory directory;
    // Arrange: the pointer goes to the right, and comes back a bit.
    std::ofstream("input.txt") << "move 400 300 wait move 600 300 wait wait move 500 300 wait";
    const Outcome recorded = runListing("follow", {"--record", "run.input"});
    // Nobody does anything while the run is played, in as many frames.
    std::ofstream("input.txt") << "wait wait wait wait wait wait wait";

    const Outcome played = runListing("follow", {"--play", "run.input"});

    EXPECT_EQ(recorded.errors, "");
    EXPECT_EQ(played.errors, "");
    EXPECT_EQ(recorded.window.at(420, 300), (Pixel{255, 255, 255}));
    EXPECT_EQ(recorded.window.at(330, 300), (Pixel{0, 0, 255}));
    EXPECT_EQ(played.window.bytes, recorded.window.bytes);
}

TEST(HostingGLTest, TheWrittenRunIsPlayed)
{
    const TemporaryDirectory directory;
    std::filesystem::copy_file(LISTINGS "run.input", "run.input");

    const Outcome played = runListing("follow", {"--play", "run.input"});

    EXPECT_EQ(played.errors, "");
}

TEST(HostingGLTest, TheImageIsWritten)
{
    const TemporaryDirectory directory;

    const Outcome outcome = runListing("image");

    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(std::filesystem::file_size("marble.ppm"), 15U + 256 * 256 * 3);
}

TEST(HostingGLTest, TheScriptShoutsAndHandsBackItsValue)
{
    const TemporaryDirectory directory;

    const Outcome outcome = runListing("script");

    EXPECT_EQ(outcome.output, "apples! 42! \n42\n");
    EXPECT_EQ(outcome.errors, "");
}
} // namespace
} // namespace tamor::test
