#include "widgets/GLWindow.h"

#include "tests/gui/GuiTest.h"
#include "tests/widgets/RenderedCalls.h"
#include "widgets/Button.h"
#include "widgets/Frame.h"
#include "widgets/Label.h"
#include "widgets/Optionbox.h"

namespace tamor::test
{
namespace
{
using GLWindowState = GuiTest;
using GLWindowSize = GuiTest;
using GLWindowHover = GuiTest;
using GLWindowDrawingGLTest = GuiGLTest;

class GLWindowDrag : public GuiTest
{
protected:
    /// A top-level window of 2 by 2 at (0, 0), with the pointer on its strip at (1, 1.75).
    Seen<GLWindow>& windowWithPointerOnStrip(bool isDraggable)
    {
        auto& window = make<GLWindow>("w", nullptr, Vector(), std::string(), isDraggable);
        window.dimensions = Vector(2.0F, 2.0F);
        window.onPointer(1.0F, 1.75F);
        return window;
    }
};

// The strip of a window is the top 0.5 of it: two font heights of the test's theme.

TEST_F(GLWindowState, BeginsStillWithoutASize)
{
    const auto& window =
        make<GLWindow>("w", nullptr, Vector(1.0F, 2.0F), std::string("Title"), true);

    EXPECT_EQ(window.typeName(), "GLWindow");
    EXPECT_EQ(window.text, "Title");
    EXPECT_EQ(window.dimensions.x, 0.0F);
    EXPECT_EQ(window.dimensions.y, 0.0F);
    EXPECT_FALSE(window.dragging);
    EXPECT_TRUE(window.draggable);
    EXPECT_EQ(window.backdrop, 0U);
    EXPECT_EQ(window.lastMouse.x, 0.0F);
    EXPECT_EQ(window.lastMouse.w, 1.0F);
}

TEST_F(GLWindowState, PassesDeselectionToEveryChild)
{
    auto& window = make<GLWindow>("w", nullptr, Vector(), std::string(), true);
    auto& option = make<Optionbox>("o", &window, Vector(), std::string("o"));
    window.children = {&option};
    option.active = true;

    EXPECT_TRUE(window.deselect(nullptr));

    EXPECT_FALSE(option.active);
}

TEST_F(GLWindowSize, IsNothingWithoutChildrenAndTitle)
{
    auto& window = make<GLWindow>("w", nullptr, Vector(), std::string(), true);

    window.fitChildren();
    window.onPointer(0.1F, 0.0F);

    EXPECT_EQ(window.dimensions.y, 0.0F);
    EXPECT_EQ(window.dimensions.x, 0.25F) << "two font widths";
    EXPECT_FALSE(window.hitTest());
}

TEST_F(GLWindowSize, TakesItsWidthFromALongTitleAndItsHeightFromASmallChild)
{
    auto& window =
        make<GLWindow>("w", nullptr, Vector(), std::string("a title of 24 characters"), true);
    auto& label = make<Label>("l", &window, Vector(0.0F, 1.0F), std::string("ab"));

    EXPECT_TRUE(window.addChild(&label));
    EXPECT_EQ(window.dimensions.x, 1.75F) << "24 / 16 and two font widths";
    EXPECT_EQ(window.dimensions.y, 0.0F);

    EXPECT_TRUE(window.fitChildren());
    EXPECT_EQ(window.dimensions.x, 1.75F);
    EXPECT_EQ(window.dimensions.y, 2.25F) << "the label's top at 1.375, 6 margins, the strip";
}

TEST_F(GLWindowSize, NeverShrinks)
{
    auto& window = make<GLWindow>("w", nullptr, Vector(), std::string("ab"), true);
    auto& label = make<Label>("l", &window, Vector(), std::string("ab"));
    window.dimensions = Vector(5.0F, 6.0F);
    window.addChild(&label);

    window.fitChildren();

    EXPECT_EQ(window.dimensions.x, 5.0F);
    EXPECT_EQ(window.dimensions.y, 6.0F);
}

TEST_F(GLWindowSize, GivesTheAreaForChildWindowsAsAFrameDoes)
{
    auto& window = make<GLWindow>("w", nullptr, Vector(1.0F, 2.0F), std::string(), true);
    window.dimensions = Vector(4.0F, 3.0F);

    const Vector rect = window.getClientRect();

    EXPECT_FLOAT_EQ(rect.x, 1.04F);
    EXPECT_FLOAT_EQ(rect.y, 2.04F);
    EXPECT_FLOAT_EQ(rect.z, 4.96F);
    EXPECT_FLOAT_EQ(rect.w, 2.585F);
}

struct StripPoint
{
    float x;
    float y;
    bool isOver;
};

TEST_F(GLWindowHover, IsThePointerStrictlyOverTheStrip)
{
    auto& window = make<GLWindow>("w", nullptr, Vector(1.0F, 2.0F), std::string(), true);
    window.dimensions = Vector(2.0F, 2.0F);

    const StripPoint rows[] = {
        {2.0F, 3.75F, true},     {2.0F, 3.5F, false},    {2.0F, 4.0F, false},
        {1.0F, 3.75F, false},    {3.0F, 3.75F, false},   {2.0F, 3.0F, false},
        {2.0F, 3.53125F, true},  {2.0F, 3.96875F, true}, {1.03125F, 3.75F, true},
        {2.96875F, 3.75F, true},
    };
    for (const StripPoint& row : rows) {
        EXPECT_TRUE(window.onPointer(row.x, row.y));
        EXPECT_EQ(window.hover, row.isOver) << row.x << ", " << row.y;
    }
}

TEST_F(GLWindowHover, NeverIsInAWindowThatCannotBeDragged)
{
    auto& window = make<GLWindow>("w", nullptr, Vector(1.0F, 2.0F), std::string(), false);
    window.dimensions = Vector(2.0F, 2.0F);
    window.glow = 0.5F;

    window.onPointer(2.0F, 3.75F);
    window.update(1);
    EXPECT_FALSE(window.hover);
    EXPECT_EQ(window.glow, 0.25F);

    window.update(1);
    window.update(1);
    EXPECT_EQ(window.glow, 0.0F);
}

TEST_F(GLWindowHover, StaysTrueWhileAChildIsHovered)
{
    auto& window = make<GLWindow>("w", nullptr, Vector(), std::string(), true);
    auto& label = make<Label>("l", &window, Vector(), std::string("abcd"));
    window.children = {&label};
    window.dimensions = Vector(2.0F, 2.0F);
    window.onPointer(1.0F, 1.75F);
    ASSERT_TRUE(window.hover);

    window.onPointer(0.3F, 0.3F);
    ASSERT_TRUE(label.hover);
    EXPECT_TRUE(window.hover);

    window.onPointer(1.0F, 1.0F);
    EXPECT_FALSE(window.hover);
}

TEST_F(GLWindowHover, GivesTheChildrenThePointerLessThreeMargins)
{
    auto& window = make<GLWindow>("w", nullptr, Vector(1.0F, 2.0F), std::string(), true);
    auto& frame = make<Frame>("f", &window, Vector(0.5F, 0.5F), true);
    auto& button = make<Button>("b", &frame, Vector(), std::string("b"));
    window.children = {&frame};
    frame.children = {&button};

    window.onPointer(3.0F, 5.0F);

    EXPECT_EQ(frame.mouse.x, 1.8125F);
    EXPECT_EQ(button.mouse.x, 1.125F) << "less both positions and both margins";
    EXPECT_EQ(button.mouse.y, 2.125F);
}

TEST_F(GLWindowDrag, BeginsWithAPressOnTheStrip)
{
    auto& window = windowWithPointerOnStrip(true);

    EXPECT_TRUE(window.onMouseButtons(true, false, false));

    EXPECT_TRUE(window.dragging);
    EXPECT_FALSE(window.prevLeft) << "a window stores no buttons";
}

TEST_F(GLWindowDrag, DoesNotBeginElsewhere)
{
    auto& window = windowWithPointerOnStrip(true);
    window.onPointer(1.0F, 1.0F);

    EXPECT_TRUE(window.onMouseButtons(true, false, false));

    EXPECT_FALSE(window.dragging);
}

TEST_F(GLWindowDrag, DoesNotBeginInAWindowThatCannotBeDragged)
{
    auto& window = windowWithPointerOnStrip(false);
    window.hover = true;

    window.onMouseButtons(true, false, false);

    EXPECT_FALSE(window.dragging);
}

TEST_F(GLWindowDrag, DoesNotBeginOverAChild)
{
    auto& window = windowWithPointerOnStrip(true);
    auto& button = make<Button>("b", &window, Vector(0.5F, 1.3F), std::string("b"));
    window.children = {&button};
    window.hover = true;
    button.hover = true;

    EXPECT_FALSE(window.onMouseButtons(true, false, false));

    EXPECT_FALSE(window.dragging);
    EXPECT_TRUE(button.active) << "the child has its press";
}

TEST_F(GLWindowDrag, StartsWithAButtonThatWasDownBefore)
{
    auto& window = windowWithPointerOnStrip(true);
    point(window, 9.0F, 9.0F, true);

    point(window, 1.0F, 1.75F, true);

    EXPECT_TRUE(window.dragging);
}

TEST_F(GLWindowDrag, MovesByThePointersMotionAndStaysHovered)
{
    auto& window = windowWithPointerOnStrip(true);
    window.onMouseButtons(true, false, false);

    window.onPointer(4.0F, 0.75F);

    EXPECT_EQ(window.position.x, 3.0F);
    EXPECT_EQ(window.position.y, -1.0F);
    EXPECT_EQ(window.position.w, 1.0F);
    EXPECT_TRUE(window.hover);
}

TEST_F(GLWindowDrag, GivesTheChildrenThePointerInTheMovedWindow)
{
    auto& window = windowWithPointerOnStrip(true);
    auto& label = make<Label>("l", &window, Vector(), std::string("ab"));
    window.children = {&label};
    window.onMouseButtons(true, false, false);

    window.onPointer(4.0F, 1.75F);

    EXPECT_EQ(label.mouse.x, 0.8125F);
    EXPECT_EQ(label.mouse.y, 1.5625F);
}

TEST_F(GLWindowDrag, KeepsAWindowThatThePointerOvertakes)
{
    auto& window = windowWithPointerOnStrip(true);
    window.onMouseButtons(true, false, false);
    // Off the strip and back by hand: what a move that was refused leaves.
    window.position = Vector(-5.0F, -5.0F);

    window.onPointer(1.0F, 1.75F);
    EXPECT_TRUE(window.hover);
    window.onMouseButtons(true, false, false);

    EXPECT_TRUE(window.dragging);
}

TEST_F(GLWindowDrag, EndsWithTheRelease)
{
    auto& window = windowWithPointerOnStrip(true);
    window.onMouseButtons(true, false, false);

    EXPECT_TRUE(window.onMouseButtons(false, false, false));
    EXPECT_FALSE(window.dragging);

    window.onPointer(4.0F, 1.75F);
    EXPECT_EQ(window.position.x, 0.0F);
    EXPECT_FALSE(window.hover);
}

TEST_F(GLWindowDrag, DoesNotEndOverAChild)
{
    auto& window = windowWithPointerOnStrip(true);
    auto& label = make<Label>("l", &window, Vector(), std::string("ab"));
    window.children = {&label};
    window.onMouseButtons(true, false, false);
    label.hover = true;

    EXPECT_FALSE(window.onMouseButtons(false, false, false));

    EXPECT_TRUE(window.dragging);
}

TEST_F(GLWindowDrag, IsBoundedByTheParent)
{
    auto& parent = make<GLWindow>("p", nullptr, Vector(), std::string(), true);
    parent.dimensions = Vector(10.0F, 10.0F);
    theme.lineWidth = 0.0F;
    // The bounds are now (0.1, 0.1) to (9.9, 9.525).
    auto& window = make<GLWindow>("w", &parent, Vector(1.0F, 1.0F), std::string(), true);
    window.dimensions = Vector(2.0F, 2.0F);
    window.onPointer(2.0F, 2.75F);
    window.onMouseButtons(true, false, false);

    window.onPointer(1.125F, 2.75F);
    EXPECT_EQ(window.position.x, 0.125F) << "still inside";

    window.onPointer(1.0625F, 2.75F);
    EXPECT_EQ(window.position.x, 0.125F) << "0.0625 is left of the bounds";
    window.onPointer(9.5F, 2.75F);
    EXPECT_EQ(window.position.x, 0.125F) << "8.5625 ends right of the bounds";
    window.onPointer(9.5F, 2.0F);
    EXPECT_EQ(window.position.y, 0.25F) << "0.25 is inside";
    window.onPointer(9.5F, 1.75F);
    EXPECT_EQ(window.position.y, 0.25F) << "0 is below the bounds";
    window.onPointer(9.5F, 9.75F);
    EXPECT_EQ(window.position.y, 0.25F) << "8.25 ends above the bounds";
}

TEST_F(GLWindowDrag, IsRefusedOnEachOfTheBounds)
{
    // Without a line, a font and a share of a width of 0, the bounds are (1, 2) to (1, 6) and
    // the window is to be nothing but a point.
    struct Row
    {
        float x;
        float y;
        float width;
        float height;
        bool isAllowed;
    };
    auto& parent = make<Frame>("p", nullptr, Vector(1.0F, 2.0F), false);
    parent.dimensions = Vector(0.0F, 4.0F);
    theme.lineWidth = 0.0F;
    theme.fontSize.y = 0.0F;
    const Vector bounds = parent.getClientRect();
    ASSERT_EQ(bounds.x, 1.0F);
    ASSERT_EQ(bounds.w, 6.0F);
    auto& window = make<GLWindow>("w", &parent, Vector(), std::string(), true);
    const Row rows[] = {
        // A negative width puts the right edge left of the bound, as the left edge is right of it.
        {1.5F, 3.0F, -1.0F, 1.0F, true},  {1.0F, 3.0F, -1.0F, 1.0F, false},
        {1.5F, 2.0F, -1.0F, 1.0F, false}, {1.5F, 3.0F, -0.5F, 1.0F, false},
        {1.5F, 3.0F, -1.0F, 3.0F, false}, {1.5F, 3.0F, -1.0F, 2.5F, true},
        {1.5F, 2.5F, -1.0F, 1.0F, true},
    };
    for (const Row& row : rows) {
        window.position = Vector(row.x - 0.25F, row.y);
        window.dimensions = Vector(row.width, row.height);
        window.dragging = true;
        window.lastMouse = Vector(0.0F, 0.0F);

        window.onPointer(0.25F, 0.0F);

        EXPECT_EQ(window.position.x, row.isAllowed ? row.x : row.x - 0.25F)
            << row.x << ", " << row.y << ", " << row.width << ", " << row.height;
    }
}

TEST_F(GLWindowDrag, DoesNotJumpWhenThePointerReturns)
{
    auto& parent = make<GLWindow>("p", nullptr, Vector(), std::string(), true);
    parent.dimensions = Vector(10.0F, 10.0F);
    theme.lineWidth = 0.0F;
    auto& window = make<GLWindow>("w", &parent, Vector(1.0F, 1.0F), std::string(), true);
    window.dimensions = Vector(2.0F, 2.0F);
    window.onPointer(2.0F, 2.75F);
    window.onMouseButtons(true, false, false);
    window.onPointer(-50.0F, 2.75F);
    ASSERT_EQ(window.position.x, 1.0F);
    EXPECT_EQ(window.lastMouse.x, -50.0F);

    window.onPointer(-49.5F, 2.75F);

    EXPECT_EQ(window.position.x, 1.5F) << "the motion since the pointer's last place";
}

TEST_F(GLWindowDrag, CannotMoveAChildWindowWithALineOfTwoPixels)
{
    auto& parent = make<GLWindow>("p", nullptr, Vector(), std::string(), true);
    parent.dimensions = Vector(2.0F, 2.0F);
    auto& window = make<GLWindow>("w", &parent, Vector(0.5F, 0.5F), std::string(), true);
    window.dimensions = Vector(1.0F, 1.0F);
    window.onPointer(1.0F, 1.25F);
    window.onMouseButtons(true, false, false);

    window.onPointer(1.125F, 1.25F);

    EXPECT_EQ(window.position.x, 0.5F);
}

TEST_F(GLWindowDrawingGLTest, MakesTheseCalls)
{
    auto& window = make<GLWindow>("w", nullptr, Vector(1.0F, 2.0F), std::string("Title"), true);
    auto& label = make<Label>("l", &window, Vector(), std::string("ab"));
    window.children = {&label};
    window.dimensions = Vector(2.0F, 4.0F);
    window.backdrop = 3;

    // The rule is at the smaller of 2 - 0.375 and -2 + 0.875 * 4.
    EXPECT_EQ(callsOfRender(window), R"(
glPushMatrix()
glTranslatef(2, 4, 0)
glDisable(GL_DEPTH_TEST)
glDisable(GL_TEXTURE_2D)
glLineWidth(0.125)
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor4f(0.375, 0.25, 0.125, 0.5)
GL_POLYGON -1,-2[0,0] -1,1.5[0,0.875] -0.5,2[0.125,1] 1,2[1,1] 1,-1.5[1,0.125] 0.5,-2[1,0] -1,-2[0,0]
glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)
glColor4f(0.5, 0.25, 0.125, 0.5)
glDisable(GL_TEXTURE_2D)
glEnable(GL_BLEND)
GL_POLYGON -1,-2[0,0] -1,1.5[0,0.875] -0.5,2[0.125,1] 1,2[1,1] 1,-1.5[1,0.125] 0.5,-2[1,0] -1,-2[0,0]
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glDisable(GL_TEXTURE_2D)
glColor4f(0.5, 0.25, 0.125, 0.5)
GL_LINES -1,1.5 1,1.5
glColor3f(0.5, 0.25, 1)
glTranslatef(-0.5, 1.70833, 0)
print "Title"
glPopMatrix()
glPushMatrix()
glTranslatef(1.1875, 2.1875, 0)
)" + std::string(callsOfChildLabel) + "glPopMatrix()\n");
    EXPECT_EQ(window.backdrop, 0U);
}

TEST_F(GLWindowDrawingGLTest, PutsTheRuleBelowTheTitleInALowWindow)
{
    auto& window = make<GLWindow>("w", nullptr, Vector(), std::string("T"), true);
    window.dimensions = Vector(2.0F, 1.0F);
    window.glow = 1.0F;

    const std::string calls = callsOfRender(window);

    // The smaller of 0.5 - 0.375 and -0.5 + 0.875.
    EXPECT_NE(calls.find("glColor4f(1, 0.5, 0.25, 0.5)\nGL_LINES -1,0.125 1,0.125\n"),
              std::string::npos)
        << calls;
}
} // namespace
} // namespace tamor::test
