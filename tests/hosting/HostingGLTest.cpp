#include "tests/support/ChildProcess.h"
#include "tests/support/Picture.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace tamor::test
{
namespace
{
/// What became of a listing: its streams, and two pixels of what it drew.
struct Outcome
{
    std::string output;
    std::string errors;
    Pixel middle{};
    Pixel corner{};
};

Pixel readPixel(std::ifstream& file)
{
    Pixel pixel{};
    for (std::uint8_t& channel : pixel) {
        int value = -1;
        file >> value;
        channel = static_cast<std::uint8_t>(value);
    }
    return pixel;
}

/// Runs a listing in the current directory, with the other files of the manual beside it.
Outcome runListing(const std::string& name)
{
    useTestDisplay();
    for (const char* const file : {"tint.vert", "tint.frag", "greet.script"})
        std::filesystem::copy_file(std::string(LISTINGS) + file, file);
    ChildProcess listing({std::string(LISTINGS) + "tamor-listing-" + name});
    const ProcessEnd end = listing.wait();
    EXPECT_FALSE(end.timedOut);
    EXPECT_EQ(end.status, 0);

    Outcome outcome{listing.output(), listing.errors(), {}, {}};
    std::ifstream pixels("middle-and-corner.txt");
    if (pixels.is_open()) {
        outcome.middle = readPixel(pixels);
        outcome.corner = readPixel(pixels);
    }
    return outcome;
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
    EXPECT_EQ(outcome.middle, (Pixel{255, 255, 255}));
    EXPECT_EQ(outcome.corner, (Pixel{51, 102, 153}));
}

TEST(HostingGLTest, TheModelIsLit)
{
    const TemporaryDirectory directory;

    const Outcome outcome = runListing("model");

    EXPECT_EQ(outcome.errors, "");
    EXPECT_GT(brightness(outcome.middle), 200);
    EXPECT_EQ(outcome.corner, (Pixel{51, 51, 51}));
}

TEST(HostingGLTest, TheTerrainIsLitUnderTheSky)
{
    const TemporaryDirectory directory;

    const Outcome outcome = runListing("terrain");

    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.corner, (Pixel{168, 199, 230}));
    EXPECT_EQ(outcome.middle[0], outcome.middle[2]); // the ground is grey
    EXPECT_GT(brightness(outcome.middle), 100);
}

TEST(HostingGLTest, TheShaderTintsItsSquare)
{
    const TemporaryDirectory directory;

    const Outcome outcome = runListing("shader");

    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.middle, (Pixel{255, 102, 51}));
    EXPECT_EQ(outcome.corner, (Pixel{51, 51, 51}));
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
