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
const std::string shaders = goldens + "../../examples/shade_model/";

TEST(ShadeModelGLTest, GlazesATeapot)
{
    const TemporaryDirectory directory;

    EXPECT_EQ(runExample({EXAMPLE_SHADE_MODEL, "teapot", shaders + "glaze.vert",
                          shaders + "glaze.frag", "--screenshot", "teapot.ppm"}),
              0);

    EXPECT_TRUE(matchesGolden(readScreenshot("teapot.ppm"), goldens + "shade_model-teapot.png"));
}

TEST(ShadeModelGLTest, SaysWhichUniformAProgramLacks)
{
    const TemporaryDirectory directory;
    directory.write("plain.vert", "void main() { gl_Position = ftransform(); }\n");
    directory.write("plain.frag", "uniform float time;\n"
                                  "void main() { gl_FragColor = vec4(time / 4.0); }\n");

    EXPECT_EQ(runExample({EXAMPLE_SHADE_MODEL, "cube", "plain.vert", "plain.frag", "--screenshot",
                          "cube.ppm"},
                         "no such uniform: light\n"),
              0);

    // The picture is of second 2.
    const Picture picture = readScreenshot("cube.ppm");
    ASSERT_EQ(picture.width, 800);
    const Pixel colour = picture.at(400, 360);
    EXPECT_NEAR(colour[0], 128, 1);
}
} // namespace
} // namespace tamor::test
