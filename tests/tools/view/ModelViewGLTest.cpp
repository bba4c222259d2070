#include "tests/tools/view/View.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tamor::test
{
namespace
{
constexpr Place middle{400, 300};

const std::string models = TAMOR_SOURCES "/examples/models/";

class ViewModelGLTest : public testing::Test
{
protected:
    ViewModelGLTest()
    {
        for (const char* name : {"fish.ms3d", "fish.tga"})
            std::filesystem::copy_file(models + name, directory.path() / name);
    }

    const TemporaryDirectory directory;
};

TEST_F(ViewModelGLTest, ShowsATeapotWithItsBoundsAndCounts)
{
    View view({"teapot"});
    ASSERT_TRUE(view.opensWithPointerAt(middle));

    EXPECT_TRUE(view.says("teapot: read in"));
    EXPECT_NE(view.output().find("301 vertices, 576 faces, 0 bones\n"), std::string::npos);
    EXPECT_TRUE(matchesGolden(view.whole(), TAMOR_DOCS "/view-teapot.png"));
}

TEST_F(ViewModelGLTest, TurnsByThePointerAndZoomsByTheWheelAndTheKeys)
{
    View view({"cube"});
    ASSERT_TRUE(view.opensWithPointerAt(middle));
    view.type("F1");
    const Picture before = view.whole();
    view.drag(middle, {middle.x + 80, middle.y + 40});
    const Picture turned = view.whole();
    EXPECT_NE(turned.bytes, before.bytes);

    view.turnWheel(true);
    const Picture nearer = view.whole();
    EXPECT_NE(nearer.bytes, turned.bytes);

    view.turnWheel(false);
    EXPECT_EQ(view.whole().bytes, turned.bytes);
    view.type("equal");
    EXPECT_EQ(view.whole().bytes, nearer.bytes);
    view.type("minus");
    EXPECT_EQ(view.whole().bytes, turned.bytes);
}

TEST_F(ViewModelGLTest, PausesStepsAndPlaysTheAnimation)
{
    View view({"fish.ms3d"});
    ASSERT_TRUE(view.opensWithPointerAt(middle));
    view.type("space");
    const Picture paused = view.whole();
    view.waitForFrames(20);
    EXPECT_EQ(view.whole().bytes, paused.bytes);

    view.type("period");
    view.type("comma");
    const Picture before = view.whole();
    view.type("period");
    EXPECT_NE(view.whole().bytes, before.bytes);
    view.type("comma");
    EXPECT_EQ(view.whole().bytes, before.bytes);

    view.type("space");
    EXPECT_TRUE(view.shows([&] { return view.whole().bytes != before.bytes; }));
}

TEST_F(ViewModelGLTest, DrawsWireframeBonesAndNormals)
{
    View view({"fish.ms3d"});
    ASSERT_TRUE(view.opensWithPointerAt(middle));
    view.type("space");
    for (const char* key : {"w", "b", "n"}) {
        const Picture before = view.whole();
        view.type(key);
        EXPECT_NE(view.whole().bytes, before.bytes) << key;
    }
}

TEST_F(ViewModelGLTest, TakesAScreenshotOfTheFirstFrame)
{
    EXPECT_EQ(runView({"--screenshot", "fish.png", "fish.ms3d"}, {{"DISPLAY", ""}}).status, 0);

    EXPECT_TRUE(matchesGolden(readPicture("fish.png"), TAMOR_VIEW_GOLDENS "/fish.png"));
}

TEST_F(ViewModelGLTest, ReadsAChangedModelAndKeepsTheMoment)
{
    View view({"fish.ms3d"});
    ASSERT_TRUE(view.opensWithPointerAt(middle));
    view.type("space");
    const Picture before = view.whole();

    std::filesystem::copy_file(models + "fish.ms3d", "new.ms3d");
    std::filesystem::rename("new.ms3d", "fish.ms3d");

    ASSERT_TRUE(view.saysTimes("fish.ms3d: read in", 2));
    EXPECT_EQ(view.whole().bytes, before.bytes);
}
} // namespace
} // namespace tamor::test
