#include "widgets/Label.h"

#include "tests/gui/GuiTest.h"
#include "tests/widgets/RenderedCalls.h"

namespace tamor::test
{
namespace
{
using LabelSize = GuiTest;
using LabelState = GuiTest;
using LabelDrawingGLTest = GuiGLTest;

struct LabelHeight
{
    const char* text;
    float height;
    float width;
};

TEST_F(LabelSize, FollowsTheNumberOfLineEnds)
{
    const LabelHeight rows[] = {
        {"", 0.375F, 0.125F},         // no line counts as one
        {"abc", 0.375F, 0.3125F},     // and so does one line
        {"a\nb\nc", 0.75F, 0.1875F},  // two line ends
        {"ab\n\n\nc", 1.125F, 0.25F}, // three
    };
    for (const LabelHeight& row : rows) {
        const auto& label = make<Label>("l", nullptr, Vector(), std::string(row.text));
        EXPECT_EQ(label.dimensions.y, row.height) << row.text;
        EXPECT_EQ(label.dimensions.x, row.width) << row.text;
    }
}

TEST_F(LabelSize, TwoLinesAreAsHighAsOne)
{
    const auto& label = make<Label>("l", nullptr, Vector(), std::string("a\nb"));

    EXPECT_EQ(label.dimensions.y, 0.375F);
}

TEST_F(LabelSize, StaysWhenTheTextChanges)
{
    auto& label = make<Label>("l", nullptr, Vector(), std::string("abc"));

    label.setCaption("a much longer text\nof two lines\nor three");

    EXPECT_EQ(label.dimensions.x, 0.3125F);
    EXPECT_EQ(label.dimensions.y, 0.375F);
}

TEST_F(LabelState, AnswersTrueToEverythingAndDoesNothing)
{
    auto& label = make<Label>("l", nullptr, Vector(), std::string("abc"));
    label.onPointer(0.1F, 0.1F);

    EXPECT_TRUE(label.onMouseButtons(true, false, false));
    EXPECT_TRUE(label.deselect(nullptr));

    EXPECT_EQ(label.typeName(), "Label");
    EXPECT_FALSE(label.isExclusive());
    EXPECT_TRUE(label.hover) << "it has the pointer like any widget";
    EXPECT_EQ(label.mouse.x, 0.1F);
    EXPECT_FALSE(label.active);
    EXPECT_FALSE(label.clicked);
    EXPECT_FALSE(label.prevLeft) << "it stores no buttons";
}

TEST_F(LabelDrawingGLTest, MakesTheseCalls)
{
    auto& label = make<Label>("l", nullptr, Vector(1.0F, 2.0F), std::string("ab\nc"));
    // Neither of them is seen.
    label.hover = true;
    label.glow = 1.0F;

    EXPECT_EQ(callsOfRender(label), R"(
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glEnable(GL_BLEND)
glDisable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
glTranslatef(1.125, 2.1875, 0)
glColor3f(0.5, 0.25, 1)
glTranslatef(-0.0625, -0.104167, 0)
print "ab/c"
glPopMatrix()
)");
}
} // namespace
} // namespace tamor::test
