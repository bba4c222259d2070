#include "tests/examples/Example.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/SDLWords.h"
#include "tests/support/TemporaryDirectory.h"
#include "textures/TextureRegistry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
const std::string goldens = std::filesystem::absolute(".").string() + "/";

TEST(MakeTextureGLTest, BlendsCloudsIntoTheSkyAndShowsThem)
{
    const TemporaryDirectory directory;
    EXPECT_EQ(runExample({EXAMPLE_MAKE_TEXTURE, "noise.tga", "256", "perlin", "6", "0.23", "1",
                          "0.5", "0.55", "normalise"}),
              0);

    EXPECT_EQ(
        runExample({EXAMPLE_MAKE_TEXTURE, "sky.tga", "256", "scroll", "256", "0", "0.25", "0.5",
                    "0.9", "1", "blend", "8", "7", "noise.tga", "--screenshot", "sky.ppm"}),
        0);

    EXPECT_TRUE(matchesGolden(readScreenshot("sky.ppm"), goldens + "make_texture-sky.png"));
}

TEST(MakeTextureGLTest, WritesATGAFileThatTheEngineReadsBack)
{
    const TemporaryDirectory directory;

    EXPECT_EQ(runExample({EXAMPLE_MAKE_TEXTURE, "colour.tga", "3", "scroll", "3", "0", "0.2", "0.4",
                          "0.6", "0.8"}),
              0);

    Image image;
    EXPECT_TRUE(loadImage(image, {"colour.tga", 0}));
    EXPECT_EQ(image.width, 3);
    EXPECT_EQ(image.height, 3);
    EXPECT_FLOAT_EQ(image.pixels[32], 0.2F);
    EXPECT_FLOAT_EQ(image.pixels[33], 0.4F);
    EXPECT_FLOAT_EQ(image.pixels[34], 0.6F);
    EXPECT_FLOAT_EQ(image.pixels[35], 0.8F);
}

TEST(MakeTextureGLTest, RunsEveryProcedure)
{
    const TemporaryDirectory directory;

    // White, blurred, then clamped: white still. A column of red comes in from the left.
    EXPECT_EQ(runExample({EXAMPLE_MAKE_TEXTURE, "out.tga", "2", "invert", "blur", "2", "clamp",
                          "scroll", "1", "0", "1", "0", "0", "1"}),
              0);

    Image image;
    EXPECT_TRUE(loadImage(image, {"out.tga", 0}));
    ASSERT_EQ(image.pixelCount(), 4U);
    const std::vector<float> row(image.pixels, image.pixels + 8);
    EXPECT_EQ(row, (std::vector<float>{1, 0, 0, 1, 1, 1, 1, 1}));
}

TEST(MakeTextureGLTest, FailsWhereNoWindowOpens)
{
    const TemporaryDirectory directory;
    // As without a display, a driver that has no OpenGL.
    ChildProcess example({EXAMPLE_MAKE_TEXTURE, "out.tga", "2", "invert", "--preview"}, "",
                         {{"SDL_VIDEODRIVER", "dummy"}});

    EXPECT_EQ(example.wait().status, 1);
    EXPECT_EQ(example.errors(), std::string("SDL_SetVideoMode() Failed. SDL_Error: ") +
                                    wordsOfNoOpenGL() + "\nError sending openwindow event\n");
}

TEST(MakeTextureGLTest, SaysThatItsFileCannotBeWritten)
{
    const TemporaryDirectory directory;

    EXPECT_EQ(runExample({EXAMPLE_MAKE_TEXTURE, "none/out.tga", "2", "invert"},
                         "none/out.tga cannot be written\n"),
              1);
}

TEST(MakeTextureGLTest, RefusesAnUnknownProcedure)
{
    const TemporaryDirectory directory;

    EXPECT_EQ(runExample({EXAMPLE_MAKE_TEXTURE, "out.tga", "2", "sharpen"},
                         "no such procedure: sharpen\n"),
              1);
}
} // namespace
} // namespace tamor::test
