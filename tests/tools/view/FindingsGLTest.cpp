#include "tests/tools/view/View.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
constexpr Place nothing{400, 320};

const std::string anError = "my.gui:2:27: error: \"wide\" stands in the place of the x of CADD, a "
                            "number: the program waits for ever [layout-field]\n";
const std::string brokenLayout = "THEM default.theme -\n"
                                 "CADD Label hello NULL     wide 0 Hello\n";

/// What a panel at the bottom does not cover: three quarters of the window.
std::vector<std::uint8_t> upperPart(const Picture& picture)
{
    return {picture.bytes.begin(), picture.bytes.begin() + 800 * 450 * 3};
}

TEST(ViewFindingsGLTest, KeepsTheOldPictureUnderThePanelWhenALayoutHasErrors)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    const Picture before = view.whole();

    directory.write("my.gui", brokenLayout);

    ASSERT_TRUE(view.says(anError));
    EXPECT_EQ(
        view.picture({0, 0}, 800, 450).bytes,
        std::vector<std::uint8_t>(before.bytes.begin(), before.bytes.begin() + 800 * 450 * 3));
    EXPECT_TRUE(matchesGolden(view.whole(), TAMOR_DOCS "/view-findings.png"));
}

TEST(ViewFindingsGLTest, TakesThePanelAwayWhenTheErrorsAreMended)
{
    const WorkingDirectory directory;
    const std::string layout = directory.read("my.gui");
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    const Picture before = view.whole();
    directory.write("my.gui", brokenLayout);
    ASSERT_TRUE(view.says(anError));

    directory.write("my.gui", layout);

    ASSERT_TRUE(view.saysTimes("my.gui: read in", 2));
    EXPECT_EQ(view.whole().bytes, before.bytes);
}

TEST(ViewFindingsGLTest, WaitsForAThemeThatIsNotThereYet)
{
    const WorkingDirectory directory;
    const std::string theme = directory.read("default.theme");
    directory.write("small.gui", "CONF gui.conf\nTHEM later.theme -\nCADD Label a NULL 0 0 Here\n");
    View view({"small.gui"});
    ASSERT_TRUE(view.opens());
    ASSERT_TRUE(view.says("small.gui:2:6: error: there is no \"later.theme\""));

    directory.write("later.theme", theme);

    EXPECT_TRUE(view.says("small.gui: read in"));
}

TEST(ViewFindingsGLTest, NoticesThatALayoutWasRemoved)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    const Picture before = view.whole();

    directory.remove("my.gui");

    ASSERT_TRUE(view.says("my.gui: no such file\n"));
    EXPECT_EQ(view.picture({0, 0}, 800, 450).bytes, upperPart(before));
    EXPECT_NE(view.whole().bytes, before.bytes) << "there is a panel";
}

TEST(ViewFindingsGLTest, PrintsWarningsAndShowsTheNewLayout)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));

    directory.write("my.gui", "CONF gui.conf\nTHEM default.theme -\n"
                              "CADD Label b NULL 0 0 %d\n");

    ASSERT_TRUE(view.says("warning:"));
    EXPECT_TRUE(view.saysTimes("my.gui: read in", 2));
}

TEST(ViewFindingsGLTest, NamesFilesAsTheUserDid)
{
    const WorkingDirectory directory;
    std::filesystem::create_directory("part");
    directory.write("part/my.gui", brokenLayout);

    const ViewRun run = runView({"--screenshot", "my.png", "part/my.gui"}, {{"DISPLAY", ""}});

    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.output.find("part/" + anError), std::string::npos) << run.output;
    EXPECT_EQ(run.errors.find("my.gui"), std::string::npos) << "the engine has not read it";
    EXPECT_FALSE(std::filesystem::exists("my.png"));
}
} // namespace
} // namespace tamor::test
