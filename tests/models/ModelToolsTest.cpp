#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <string>

using namespace tamor::test;

namespace
{
std::string readBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(MakeTeapot, PrintsTheTablesThatAreKept)
{
    ChildProcess tool({TAMOR_MAKE_TEAPOT});

    EXPECT_EQ(tool.wait().status, 0);

    EXPECT_TRUE(tool.output() == readBytes(TAMOR_SOURCE "/models/internal/TeapotTables.cpp"))
        << "make them anew: tamor-make-teapot > models/internal/TeapotTables.cpp";
}

TEST(MakeExampleModels, WritesTheFilesThatAreKept)
{
    const TemporaryDirectory directory;
    ChildProcess tool({TAMOR_MAKE_EXAMPLE_MODELS, directory.path().string()});

    EXPECT_EQ(tool.wait().status, 0);

    for (const std::string name :
         {"crater.tga", "fish.ms3d", "fish.tga", "vase.ms3d", "vase.tga"}) {
        EXPECT_TRUE(readBytes(directory.path() / name) ==
                    readBytes(TAMOR_SOURCE "/examples/models/" + name))
            << name << ": make it anew: tamor-make-example-models examples/models";
    }
}

TEST(MakeExampleModels, WantsADirectory)
{
    ChildProcess tool({TAMOR_MAKE_EXAMPLE_MODELS});

    EXPECT_EQ(tool.wait().status, 2);
    EXPECT_EQ(tool.errors(), "usage: tamor-make-example-models DIRECTORY\n");
}

#ifdef TAMOR_VIEW_MODEL
TEST(ViewModelGLTest, WritesAPictureAndEnds)
{
    const TemporaryDirectory directory;
    useTestDisplay();
    const std::map<std::string, std::string> software = {{"LIBGL_ALWAYS_SOFTWARE", "1"}};
    for (const std::string model : {"teapot", "cube", TAMOR_SOURCE "/examples/models/fish.ms3d",
                                    TAMOR_SOURCE "/examples/models/vase.ms3d"}) {
        ChildProcess viewer({TAMOR_VIEW_MODEL, model, "--screenshot", "picture.ppm"}, "", software);

        EXPECT_EQ(viewer.wait().status, 0) << viewer.errors();

        const std::string picture = readBytes("picture.ppm");
        EXPECT_EQ(picture.size(), 15U + 800 * 600 * 3) << model;
        EXPECT_TRUE(picture.starts_with("P6\n800 600\n255\n")) << model;
        // The middle is not the background.
        const std::size_t middle = 15 + (300 * 800 + 400) * 3;
        EXPECT_NE(picture.substr(middle, 3), picture.substr(15, 3)) << model;
    }
}

TEST(ViewModel, WantsAModel)
{
    ChildProcess viewer({TAMOR_VIEW_MODEL});

    EXPECT_EQ(viewer.wait().status, 2);
    EXPECT_EQ(viewer.errors(), "usage: tamor-view-model MODEL [--screenshot FILE]\n");
}
#endif
} // namespace
