#include "widgets/Frame.h"

#include "tests/gui/GuiTest.h"
#include "tests/widgets/RenderedCalls.h"
#include "widgets/Combobox.h"
#include "widgets/Label.h"
#include "widgets/Optionbox.h"

namespace tamor::test
{
namespace
{
using FrameState = GuiTest;
using FrameSize = GuiTest;
using FramePointer = GuiTest;
using FrameDrawingGLTest = GuiGLTest;

TEST_F(FrameState, BeginsWithoutASizeAndWithoutHover)
{
    const auto& frame = make<Frame>("f", nullptr, Vector(), true);

    EXPECT_EQ(frame.typeName(), "Frame");
    EXPECT_TRUE(frame.bordered);
    EXPECT_EQ(frame.dimensions.x, 0.0F);
    EXPECT_EQ(frame.dimensions.y, 0.0F);
    EXPECT_FALSE(frame.hover);
    EXPECT_EQ(frame.glow, 0.0F);
    EXPECT_FALSE(frame.isExclusive());
}

TEST_F(FrameState, TakesTheDefaultThemeForANullOne)
{
    const Frame frame("f", nullptr, Vector(), nullptr, false);

    EXPECT_FALSE(frame.bordered);
}

TEST_F(FrameState, PassesDeselectionToEveryChild)
{
    auto& frame = make<Frame>("f", nullptr, Vector(), false);
    auto& option = make<Optionbox>("o", &frame, Vector(), std::string("o"));
    frame.children = {&option};
    option.active = true;

    EXPECT_TRUE(frame.deselect(nullptr));

    EXPECT_FALSE(option.active);
}

TEST_F(FrameState, LetsAChosenOptionDeselectTheOthers)
{
    auto& frame = make<Frame>("f", nullptr, Vector(), false);
    auto& first = make<Optionbox>("o1", &frame, Vector(), std::string("o"));
    auto& second = make<Optionbox>("o2", &frame, Vector(2.0F, 0.0F), std::string("o"));
    frame.addChild(&first);
    frame.addChild(&second);
    ASSERT_TRUE(first.active);

    frame.onPointer(2.1F, 0.1F);
    EXPECT_TRUE(frame.onMouseButtons(true, false, false));

    EXPECT_FALSE(first.active);
    EXPECT_TRUE(second.active);
}

TEST_F(FrameSize, IsThatOfItsContentAndSixMargins)
{
    auto& frame = make<Frame>("f", nullptr, Vector(), false);
    auto& label = make<Label>("l", &frame, Vector(1.0F, 0.5F), std::string("ab"));
    frame.addChild(&label);

    EXPECT_TRUE(frame.fitChildren());

    // The label ends at (1.25, 0.875), and 6 margins are 0.375.
    EXPECT_EQ(frame.dimensions.x, 1.625F);
    EXPECT_EQ(frame.dimensions.y, 1.25F);
}

TEST_F(FrameSize, GivesTheAreaForChildWindowsFromItsWidthAndItsLineWidth)
{
    auto& frame = make<Frame>("f", nullptr, Vector(1.0F, 2.0F), true);
    frame.dimensions = Vector(4.0F, 3.0F);

    const Vector rect = frame.getClientRect();

    EXPECT_FLOAT_EQ(rect.x, 1.04F);
    EXPECT_FLOAT_EQ(rect.y, 2.04F);
    EXPECT_FLOAT_EQ(rect.z, 4.96F);
    EXPECT_FLOAT_EQ(rect.w, 2.585F) << "5 less 0.04, 2 pixels and 1.5 font heights";
}

TEST_F(FrameSize, CentresAChildAsIfItHadATitle)
{
    auto& frame = make<Frame>("f", nullptr, Vector(), false);
    auto& label = make<Label>("l", &frame, Vector(), std::string("ab"));
    frame.dimensions = Vector(2.0F, 2.0F);

    frame.centreChild(&label, true, true);

    // (2 - 0.375) / 2 - 0.25 / 2, and (2 - 0.5 - 0.375) / 2 - 0.375 / 2.
    EXPECT_EQ(label.position.x, 0.6875F);
    EXPECT_EQ(label.position.y, 0.375F);
}

TEST_F(FramePointer, ReachesTheChildrenOfABorderedFrameLessThreeMargins)
{
    auto& frame = make<Frame>("f", nullptr, Vector(1.0F, 2.0F), true);
    auto& label = make<Label>("l", &frame, Vector(), std::string("ab"));
    frame.children = {&label};

    EXPECT_TRUE(frame.onPointer(3.0F, 5.0F));

    EXPECT_EQ(label.mouse.x, 1.8125F);
    EXPECT_EQ(label.mouse.y, 2.8125F);
    EXPECT_EQ(frame.mouse.x, 3.0F);
}

TEST_F(FramePointer, ReachesTheChildrenOfAPlainFrameLessItsPosition)
{
    auto& frame = make<Frame>("f", nullptr, Vector(1.0F, 2.0F), false);
    auto& label = make<Label>("l", &frame, Vector(), std::string("ab"));
    frame.children = {&label};

    frame.onPointer(3.0F, 5.0F);

    EXPECT_EQ(label.mouse.x, 2.0F);
    EXPECT_EQ(label.mouse.y, 3.0F);
}

TEST_F(FramePointer, LeavesHoverAsItIs)
{
    auto& frame = make<Frame>("f", nullptr, Vector(), true);
    frame.dimensions = Vector(1.0F, 1.0F);

    frame.onPointer(0.5F, 0.5F);
    EXPECT_FALSE(frame.hover);

    frame.hover = true;
    frame.onPointer(5.0F, 5.0F);
    EXPECT_TRUE(frame.hover);
}

TEST_F(FrameDrawingGLTest, MakesTheseCallsWithABorder)
{
    auto& frame = make<Frame>("f", nullptr, Vector(1.0F, 2.0F), true);
    frame.dimensions = Vector(2.0F, 1.0F);
    // It never lights up.
    frame.glow = 1.0F;

    EXPECT_EQ(callsOfRender(frame), R"(
glPushMatrix()
glTranslatef(2, 2.5, 0)
glDisable(GL_DEPTH_TEST)
glDisable(GL_TEXTURE_2D)
glLineWidth(2)
glColor4f(0.5, 0.25, 0.125, 0.5)
glEnable(GL_BLEND)
glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)
GL_POLYGON -1,-0.5[0,0] -1,0.375[0,0.875] -0.875,0.5[0.125,1] 1,0.5[1,1] 1,-0.375[1,0.125] 0.875,-0.5[1,0] -1,-0.5[0,0]
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glDisable(GL_TEXTURE_2D)
glPopMatrix()
glPushMatrix()
glTranslatef(1.1875, 2.1875, 0)
glPopMatrix()
)");
}

TEST_F(FrameDrawingGLTest, DrawsNothingOfItsOwnWithoutABorder)
{
    auto& frame = make<Frame>("f", nullptr, Vector(1.0F, 2.0F), false);
    auto& label = make<Label>("l", &frame, Vector(), std::string("ab"));
    frame.dimensions = Vector(2.0F, 1.0F);
    frame.children = {&label};

    EXPECT_EQ(callsOfRender(frame), R"(
glPushMatrix()
glTranslatef(2, 2.5, 0)
glDisable(GL_DEPTH_TEST)
glDisable(GL_TEXTURE_2D)
glLineWidth(2)
glDisable(GL_TEXTURE_2D)
glPopMatrix()
glPushMatrix()
glTranslatef(1, 2, 0)
)" + std::string(callsOfChildLabel) + "glPopMatrix()\n");
}

TEST_F(FrameDrawingGLTest, DrawsAnOpenBoxAfterItsSiblings)
{
    auto& frame = make<Frame>("f", nullptr, Vector(), false);
    auto& box = make<Combobox>("c", &frame, Vector());
    auto& label = make<Label>("l", &frame, Vector(), std::string("last"));
    frame.children = {&box, &label};
    box.addText("item");

    const std::string shut = callsOfRender(frame);
    EXPECT_LT(shut.find("print \"item\""), shut.find("print \"last\""));

    box.onPointer(0.1F, 0.1F);
    box.onMouseButtons(true, false, false);
    const std::string open = callsOfRender(frame);
    EXPECT_GT(open.find("print \"item\""), open.find("print \"last\""));
}
} // namespace
} // namespace tamor::test
