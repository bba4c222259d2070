#include "tests/examples/Example.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tamor::test
{
namespace
{
const std::string goldens = std::filesystem::absolute(".").string() + "/";

/// The terrain of a command line, drawn once.
Picture terrain(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), EXAMPLE_VIEW_TERRAIN);
    arguments.insert(arguments.end(), {"--screenshot", "terrain.ppm"});
    EXPECT_EQ(runExample(arguments), 0);
    return readScreenshot("terrain.ppm");
}

TEST(ViewTerrainGLTest, ShowsAFractalBySeed)
{
    const TemporaryDirectory directory;

    EXPECT_TRUE(matchesGolden(terrain({"fractal", "3"}), goldens + "view_terrain-fractal.png"));
}

TEST(ViewTerrainGLTest, ShowsNoise)
{
    const TemporaryDirectory directory;

    EXPECT_TRUE(matchesGolden(terrain({"noise"}), goldens + "view_terrain-noise.png"));
}

TEST(ViewTerrainGLTest, ShowsAHeightMap)
{
    const TemporaryDirectory directory;
    EXPECT_EQ(runExample({EXAMPLE_MAKE_TEXTURE, "map.tga", "128", "perlin", "5", "0.3", "1", "0.5",
                          "0.5", "normalise"}),
              0);

    EXPECT_TRUE(matchesGolden(terrain({"image", "map.tga"}), goldens + "view_terrain-image.png"));
}

TEST(ViewTerrainGLTest, SaysHowItIsUsed)
{
    EXPECT_EQ(runExample({EXAMPLE_VIEW_TERRAIN},
                         "usage: tamor-view-terrain fractal SEED | image PATH | noise "
                         "[--screenshot FILE]\n"),
              2);
}
} // namespace
} // namespace tamor::test
