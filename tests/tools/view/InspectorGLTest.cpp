#include "tests/tools/view/View.h"

#include <gtest/gtest.h>

#include <string>

namespace tamor::test
{
namespace
{
constexpr Place nothing{400, 320};
constexpr Place list{600, 90};
constexpr Place listButton{512, 90};
constexpr Place checksTab{336, 21};
constexpr Place exitButton{755, 572};

constexpr Pixel chosenColour{255, 158, 38};

class ViewInspectorGLTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(view.opensWithPointerAt(nothing)); }

    /// The line that a click in the inspector prints.
    std::string lineAt(Place place)
    {
        const std::size_t before = view.output().size();
        view.click(place);
        EXPECT_TRUE(view.shows([&] { return view.output().size() > before; }));
        return view.output().substr(before);
    }

    const WorkingDirectory directory;
    View view{{"my.gui"}};
};

TEST_F(ViewInspectorGLTest, OutlinesTheWidgetUnderThePointerAndTellsOfIt)
{
    view.type("F1");
    view.moveTo(list);

    EXPECT_EQ(view.pixel({499, 90}), chosenColour);
    EXPECT_TRUE(matchesGolden(view.whole(), TAMOR_DOCS "/view-inspector.png"));
}

TEST_F(ViewInspectorGLTest, StandsWhereThePointerIsNot)
{
    view.type("F1");
    view.moveTo(list);
    const Pixel onTheLeft = view.pixel({120, 150});
    view.moveTo({36, 500});

    EXPECT_EQ(view.pixel({680, 150}), onTheLeft);
    EXPECT_NE(view.pixel({120, 250}), onTheLeft);
}

TEST_F(ViewInspectorGLTest, PrintsTheLineOfTheWidgetThatIsClicked)
{
    view.type("F1");

    EXPECT_EQ(lineAt(list), "my.gui:49\n");
    EXPECT_EQ(lineAt(listButton), "my.gui:49\n") << "a part has the line of the whole";
    EXPECT_EQ(lineAt(checksTab), "my.gui:28\n") << "a tab has that of its NTAB";
    EXPECT_EQ(lineAt(exitButton), "my.gui:73\n");
}

TEST_F(ViewInspectorGLTest, LeavesTheWidgetsUnclickedWhileItIsOpen)
{
    const Picture before = view.whole();
    view.type("F1");
    view.click(list);
    view.type("F1");
    view.moveTo(nothing);

    view.rest();
    EXPECT_EQ(view.whole().bytes, before.bytes);
}

TEST_F(ViewInspectorGLTest, OutlinesAllWidgets)
{
    view.type("F2");

    EXPECT_TRUE(matchesGolden(view.whole(), TAMOR_DOCS "/view-outlines.png"));
}

TEST_F(ViewInspectorGLTest, DrawsAGridInGUIUnits)
{
    view.type("F3");

    // A tenth of a unit is 30 pixels; between two lines there is nothing.
    const Picture row = view.picture({405, 345}, 50, 1);
    int lines = 0;
    for (int x = 0; x < row.width; x++)
        lines += row.at(x, 0) != row.at(10, 0) ? 1 : 0;
    EXPECT_EQ(lines, 1);
    EXPECT_TRUE(matchesGolden(view.whole(), TAMOR_DOCS "/view-grid.png"));
}

TEST_F(ViewInspectorGLTest, ClosesAgain)
{
    const Picture before = view.whole();
    for (const char* key : {"F1", "F2", "F3", "F3", "F2", "F1"})
        view.type(key);

    EXPECT_EQ(view.whole().bytes, before.bytes);
}
} // namespace
} // namespace tamor::test
