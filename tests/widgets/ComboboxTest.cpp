#include "widgets/Combobox.h"

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/widgets/RenderedCalls.h"
#include "widgets/Button.h"
#include "widgets/Frame.h"

#include <gmock/gmock.h>

namespace tamor::test
{
namespace
{
using testing::ElementsAre;

using ComboboxParts = GuiTest;
using ComboboxSize = GuiTest;
using ComboboxPointer = GuiTest;

/// A box at (0, 0) with three items. It is 1.0625 by 0.75, and each row of its list 0.5 high.
template <class Base>
class BoxOfThree : public Base
{
protected:
    void SetUp() override
    {
        Base::SetUp();
        box = &this->template make<Combobox>("c", nullptr, Vector());
        for (const char* item : {"one", "two", "four"})
            box->addText(item);
    }

    void press(float x, float y) { point(*box, x, y, true); }
    void release(float x, float y) { point(*box, x, y, false); }

    Seen<Combobox>* box = nullptr;
};

using ComboboxState = BoxOfThree<GuiTest>;
using ComboboxChoice = BoxOfThree<GuiTest>;

TEST_F(ComboboxParts, IsShutAndOwnsAButton)
{
    auto& box = make<Combobox>("combo1", nullptr, Vector(1.0F, 2.0F));

    EXPECT_EQ(box.typeName(), "Combobox");
    EXPECT_FALSE(box.open);
    EXPECT_FALSE(box.toggled);
    EXPECT_EQ(box.highlight, -1);
    EXPECT_EQ(box.getDepth(), 0.0F);
    EXPECT_FALSE(box.isExclusive());
    EXPECT_TRUE(box.deselect(nullptr));
    EXPECT_THAT(namesOfChildren(box), ElementsAre("__combo1dropbox"));
    GLWidget& button = *GLWidget::find("__combo1dropbox");
    EXPECT_EQ(button.typeName(), "Button");
    EXPECT_EQ(seen(button).text, " ");
    EXPECT_EQ(seen(button).parent, &box);
    EXPECT_EQ(seen(button).position.x, 0.0F);
}

TEST_F(ComboboxParts, ReadTheButtonsThemeOnce)
{
    const TemporaryDirectory directory;
    directory.write(
        "combo_button.theme",
        "1 1 1\n1 1 1\n1 1 1\n0 0 0\n1\n1\n2\n0\n0.1\n0\n1 1\n1 1\n0 0 0\n1\nNULL\n1\n");
    GLWidget::themes.erase("combo_button.theme");
    const CapturedErrors errors;
    make<Combobox>("a", nullptr, Vector());
    const std::string once = errors.text();
    Theme* const read = GLWidget::themes["combo_button.theme"];
    ASSERT_NE(read, nullptr);

    make<Combobox>("b", nullptr, Vector());

    EXPECT_EQ(once.substr(0, 33), "reading theme combo_button.theme\n");
    EXPECT_EQ(errors.text(), once);
    EXPECT_EQ(GLWidget::themes["combo_button.theme"], read);
    EXPECT_EQ(seen(*GLWidget::find("__adropbox")).theme, read);
    EXPECT_EQ(seen(*GLWidget::find("__bdropbox")).theme, read);
}

TEST_F(ComboboxSize, IsTheButtonAndSixMargins)
{
    const auto& box = make<Combobox>("c", nullptr, Vector(1.0F, 2.0F));

    // The button's blank of 1/16 and a font width of 1/8, by 0.375.
    EXPECT_EQ(box.dimensions.x, 0.5625F);
    EXPECT_EQ(box.dimensions.y, 0.75F);
}

TEST_F(ComboboxSize, FollowsTheWidestItemAndNeverShrinks)
{
    auto& box = make<Combobox>("c", nullptr, Vector());

    EXPECT_TRUE(box.addText("four"));
    EXPECT_EQ(box.dimensions.x, 1.0625F) << "4/16, two font widths, the button, 6 margins";
    EXPECT_TRUE(box.addText("a"));
    EXPECT_EQ(box.dimensions.x, 1.0625F);
    EXPECT_TRUE(box.addText("eightish"));
    EXPECT_EQ(box.dimensions.x, 1.3125F);
    EXPECT_EQ(box.dimensions.y, 0.75F);
    EXPECT_THAT(box.lines, ElementsAre("four", "a", "eightish"));
}

TEST_F(ComboboxSize, IsMeasuredWithItsOwnMargin)
{
    theme.margin = 0.125F;
    auto& box = make<Combobox>("c", nullptr, Vector());
    EXPECT_EQ(box.dimensions.x, 0.9375F) << "the button's 0.1875 and 6 margins";
    EXPECT_EQ(box.dimensions.y, 1.125F);

    box.addText("four");

    EXPECT_EQ(box.dimensions.x, 1.4375F);
}

TEST_F(ComboboxSize, MeasuresTheItemsBeforeAnewWhereSomethingHasChanged)
{
    auto& box = make<Combobox>("c", nullptr, Vector());
    box.addText("four");
    ASSERT_EQ(box.dimensions.x, 1.0625F);

    GLWidget::font.scaleX = 0.25F;
    box.addText("a");
    EXPECT_EQ(box.dimensions.x, 1.3125F) << "another scale: 4/8 for the first item";
    GLWidget::font.advance.fill(1.0F);
    box.addText("a");
    EXPECT_EQ(box.dimensions.x, 1.8125F) << "another font: 4/4";
    theme.fontSize.x = 0.25F;
    box.addText("a");
    EXPECT_EQ(box.dimensions.x, 2.0625F);
    theme.margin = 0.125F;
    box.addText("a");
    EXPECT_EQ(box.dimensions.x, 2.4375F);
    seen(*box.children[0]).dimensions.x = 0.25F;
    box.addText("a");
    EXPECT_EQ(box.dimensions.x, 2.5F);
    box.dimensions.x = 0.0F;
    box.addText("a");
    EXPECT_EQ(box.dimensions.x, 2.5F) << "the widest counts, whatever the width was before";
}

TEST_F(ComboboxSize, StaysNegativeWithNegativeMargins)
{
    theme.margin = -1.0F;
    auto& box = make<Combobox>("c", nullptr, Vector());

    box.addText("four");

    EXPECT_EQ(box.dimensions.x, -5.3125F) << "0.25 and two font widths, the button, 6 margins";
}

TEST_F(ComboboxSize, IsNotSeenByAParentThatWasFittedBefore)
{
    auto& frame = make<Frame>("f", nullptr, Vector(), false);
    auto& box = make<Combobox>("c", &frame, Vector());
    frame.addChild(&box);
    frame.fitChildren();
    const float width = frame.dimensions.x;

    box.addText("a very wide item indeed");

    EXPECT_GT(box.dimensions.x, width);
    EXPECT_EQ(frame.dimensions.x, width);
}

TEST_F(ComboboxPointer, ReachesTheButtonWithoutTheInnerMargin)
{
    auto& box = make<Combobox>("c", nullptr, Vector(1.0F, 2.0F));

    EXPECT_TRUE(box.onPointer(1.125F, 2.25F));

    const auto& button = *box.children.front();
    EXPECT_EQ(box.mouse.x, 1.125F);
    EXPECT_TRUE(button.isHovered()) << "at (0.125, 0.25) of its 0.1875 by 0.375";
    EXPECT_FALSE(box.hover);
}

TEST_F(ComboboxPointer, LeavesHoverAlone)
{
    auto& box = make<Combobox>("c", nullptr, Vector());
    box.hover = true;

    box.onPointer(9.0F, 9.0F);

    EXPECT_TRUE(box.hover);
}

TEST_F(ComboboxState, OpensAndShutsAtPressesOnTheBox)
{
    box->onPointer(0.75F, 0.375F);
    EXPECT_TRUE(box->onMouseButtons(true, false, false));
    EXPECT_TRUE(box->open);
    EXPECT_EQ(box->getDepth(), -1.0F);
    EXPECT_FALSE(box->prevLeft) << "the press is stored as none";
    EXPECT_TRUE(box->toggled);

    release(0.75F, 0.375F);
    EXPECT_TRUE(box->open);
    EXPECT_FALSE(box->toggled);

    press(0.75F, 0.375F);
    EXPECT_FALSE(box->open);
    EXPECT_EQ(box->getDepth(), 0.0F);
}

TEST_F(ComboboxState, OpensAtAPressOnItsButton)
{
    press(0.1F, 0.1F);

    EXPECT_TRUE(box->open);
    EXPECT_TRUE(box->children.front()->isActive());
}

TEST_F(ComboboxState, TogglesOnceHoweverLongThePressIsHeld)
{
    press(0.75F, 0.375F);
    press(0.75F, 0.375F);
    press(0.75F, 0.375F);

    EXPECT_TRUE(box->open);
    EXPECT_TRUE(box->prevLeft);
    EXPECT_TRUE(box->toggled) << "until the release";
}

TEST_F(ComboboxState, IgnoresAPressThatBeganOutside)
{
    press(5.0F, 5.0F);

    press(0.75F, 0.375F);

    EXPECT_FALSE(box->open);
}

/// A box of 1.0625 by 0.75 at (1, 2), as the one above; its list reaches down to (1, 0.5).
class ComboboxAwayFromTheOrigin : public GuiTest
{
protected:
    void SetUp() override
    {
        GuiTest::SetUp();
        box = &make<Combobox>("c", nullptr, Vector(1.0F, 2.0F));
        for (const char* item : {"one", "two", "four"})
            box->addText(item);
    }

    Seen<Combobox>* box = nullptr;
};

struct RowPoint
{
    float x;
    float y;
    std::int32_t row;
};

TEST_F(ComboboxAwayFromTheOrigin, HighlightsRowsStrictlyInsideTheList)
{
    box->open = true;
    const RowPoint rows[] = {
        {1.5F, 1.75F, 0},   {1.5F, 1.5F, 1},      {1.5F, 1.25F, 1},     {1.5F, 0.75F, 2},
        {1.5F, 1.9375F, 0}, {1.5F, 2.0F, -1},     {1.5F, 0.53125F, 2},  {1.5F, 0.5F, -1},
        {1.0F, 1.25F, -1},  {1.03125F, 1.25F, 1}, {2.0625F, 1.25F, -1}, {2.03125F, 1.25F, 1},
        {0.5F, 1.25F, -1},  {2.5F, 1.25F, -1},    {1.5F, -0.25F, -1},   {1.5F, 2.5F, -1},
    };
    for (const RowPoint& row : rows) {
        point(*box, row.x, row.y, false);
        EXPECT_EQ(box->highlight, row.row) << row.x << ", " << row.y;
    }
    EXPECT_TRUE(box->open);
}

TEST_F(ComboboxAwayFromTheOrigin, ChoosesTheRowUnderThePress)
{
    box->open = true;

    point(*box, 1.5F, 0.75F, true);

    EXPECT_EQ(box->getSelection(), 2U);
    EXPECT_FALSE(box->open);
}

struct PressPoint
{
    float x;
    float y;
    bool isInside;
};

TEST_F(ComboboxAwayFromTheOrigin, OpensAtPressesStrictlyInside)
{
    // Beside the button, which reaches to (1.1875, 2.375).
    const PressPoint rows[] = {
        {1.5F, 2.5F, true},     {1.0F, 2.5F, false}, {2.0625F, 2.5F, false},
        {2.03125F, 2.5F, true}, {1.5F, 2.0F, false}, {1.5F, 2.75F, false},
        {1.5F, 2.71875F, true}, {0.5F, 0.5F, false}, {1.03125F, 2.5F, true},
        {1.5F, 2.03125F, true},
    };
    for (const PressPoint& row : rows) {
        box->open = false;
        point(*box, 9.0F, 9.0F, false);
        point(*box, row.x, row.y, true);
        EXPECT_EQ(box->open, row.isInside) << row.x << ", " << row.y;
    }
}

struct BoxPoint
{
    float x;
    float y;
    bool isInside;
};

TEST_F(ComboboxState, TakesPressesStrictlyInside)
{
    const BoxPoint rows[] = {
        {0.5F, 0.375F, true}, {0.0F, 0.5F, false},  {1.0625F, 0.375F, false},
        {0.5F, 0.0F, false},  {0.5F, 0.75F, false},
    };
    for (const BoxPoint& row : rows) {
        box->open = false;
        release(9.0F, 9.0F);
        press(row.x, row.y);
        EXPECT_EQ(box->open, row.isInside) << row.x << ", " << row.y;
    }
}

TEST_F(ComboboxState, StaysOpenAfterAPressElsewhere)
{
    press(0.75F, 0.375F);
    release(0.75F, 0.375F);

    press(5.0F, -0.75F);
    release(5.0F, -0.75F);
    press(0.5F, -1.5F);
    release(0.5F, -1.5F);

    EXPECT_TRUE(box->open) << "beside the list, and on its lower edge";
    EXPECT_EQ(box->selection, 0U);
}

TEST_F(ComboboxState, HighlightsTheRowUnderThePointerAtButtonEvents)
{
    press(0.75F, 0.375F);
    release(0.75F, 0.375F);
    EXPECT_EQ(box->highlight, -1);

    release(0.5F, -0.25F);
    EXPECT_EQ(box->highlight, 0);
    release(0.5F, -0.5F);
    EXPECT_EQ(box->highlight, 1) << "a row begins at its upper edge";
    release(0.5F, -1.4375F);
    EXPECT_EQ(box->highlight, 2);
    release(0.5F, -1.5F);
    EXPECT_EQ(box->highlight, -1) << "the end of the list is outside";
    release(0.5F, -0.75F);
    box->onPointer(0.5F, -0.25F);
    EXPECT_EQ(box->highlight, 1) << "the pointer alone changes nothing";
}

TEST_F(ComboboxState, HighlightsNothingWhileShut)
{
    box->highlight = 2;

    release(0.5F, -0.25F);

    EXPECT_EQ(box->highlight, -1);
}

TEST_F(ComboboxChoice, IsMadeByASecondPress)
{
    press(0.75F, 0.375F);
    release(0.75F, 0.375F);
    release(0.5F, -0.75F);

    press(0.5F, -0.75F);

    EXPECT_EQ(box->getSelection(), 1U);
    EXPECT_EQ(box->selectedText(), "two");
    EXPECT_FALSE(box->open);
    EXPECT_EQ(box->highlight, 1) << "it stays, and is not drawn";
    release(0.5F, -0.75F);
    EXPECT_EQ(box->highlight, -1);
}

TEST_F(ComboboxChoice, IsMadeByDraggingFromTheBoxToARow)
{
    press(0.75F, 0.375F);
    press(0.75F, 0.25F);
    press(0.5F, -1.25F);
    EXPECT_TRUE(box->open);
    EXPECT_EQ(box->highlight, 2);

    release(0.5F, -1.25F);

    EXPECT_EQ(box->selection, 2U);
    EXPECT_FALSE(box->open);
}

TEST_F(ComboboxChoice, IsMadeAtOnceByAPressThatFindsThePointerOnARow)
{
    press(0.75F, 0.375F);

    press(0.5F, -1.25F);

    EXPECT_EQ(box->selection, 2U);
    EXPECT_FALSE(box->open);
}

TEST_F(ComboboxChoice, TheReleaseOfTheOpeningPressChoosesNothing)
{
    press(0.75F, 0.375F);

    release(0.5F, -0.75F);

    EXPECT_TRUE(box->open);
    EXPECT_EQ(box->selection, 0U);
    EXPECT_EQ(box->highlight, 1);
}

TEST_F(ComboboxChoice, IsRefusedForAnItemThatIsNotThere)
{
    box->setSelected(2);
    EXPECT_EQ(box->selection, 2U);

    box->setSelected(3);

    EXPECT_EQ(box->selection, 2U);
    box->lines.clear();
    EXPECT_EQ(box->selectedText(), "");
}

TEST_F(ComboboxState, HasNoRowsWithoutItems)
{
    box->lines.clear();
    EXPECT_EQ(box->selectedText(), "");
    press(0.75F, 0.375F);
    ASSERT_TRUE(box->open);

    release(0.5F, -0.1F);
    press(0.5F, 0.0F);

    EXPECT_EQ(box->highlight, -1);
    EXPECT_TRUE(box->open);
}

class ComboboxDrawingGLTest : public GuiGLTest
{
protected:
    Seen<Combobox>& boxOfTwo()
    {
        auto& box = make<Combobox>("c", nullptr, Vector(1.0F, 2.0F));
        box.addText("ab");
        box.addText("cdef");
        return box;
    }
};

TEST_F(ComboboxDrawingGLTest, MakesTheseCallsWhenShut)
{
    EXPECT_EQ(callsOfRender(boxOfTwo()), R"(
glPushMatrix()
glTranslatef(1.53125, 2.375, 0)
glDisable(GL_DEPTH_TEST)
glDisable(GL_TEXTURE_2D)
glLineWidth(2)
glEnable(GL_BLEND)
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor4f(0.375, 0.25, 0.125, 0.5)
GL_POLYGON -0.53125,-0.375 -0.53125,0.28125 -0.4375,0.375 0.53125,0.375 0.53125,-0.28125 0.4375,-0.375 -0.53125,-0.375
glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)
glColor4f(0.5, 0.25, 0.125, 0.5)
glDisable(GL_TEXTURE_2D)
GL_POLYGON -0.53125,-0.375 -0.53125,0.28125 -0.4375,0.375 0.53125,0.375 0.53125,-0.28125 0.4375,-0.375 -0.53125,-0.375
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glPopMatrix()
glPushMatrix()
glTranslatef(1.1875, 2.1875, 0)
glPushMatrix()
glLineWidth(3)
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glEnable(GL_BLEND)
glDisable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
glTranslatef(0.09375, 0.1875, 0)
glPushMatrix()
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor3f(0.0625, 0.1875, 0.25)
GL_POLYGON -0.09375,-0.1875[0,0] -0.09375,0.117188[0,0.8125] -0.0234375,0.1875[0.1875,1] 0.09375,0.1875[1,1] 0.09375,-0.117188[1,0.1875] 0.0234375,-0.1875[1,0] -0.09375,-0.1875[0,0]
glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)
glColor3f(0.0625, 0.25, 0.125)
glDisable(GL_TEXTURE_2D)
GL_POLYGON -0.09375,-0.1875[0,0] -0.09375,0.117188[0,0.8125] -0.0234375,0.1875[0.1875,1] 0.09375,0.1875[1,1] 0.09375,-0.117188[1,0.1875] 0.0234375,-0.1875[1,0] -0.09375,-0.1875[0,0]
glPopMatrix()
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor3f(0.125, 0.5, 0.75)
glTranslatef(-0.03125, -0.104167, 0)
print " "
glPopMatrix()
glPopMatrix()
glTranslatef(0.25, 0.0833333, 0)
print "ab"
glPopMatrix()
)");
}

TEST_F(ComboboxDrawingGLTest, MakesTheseCallsForTheOpenList)
{
    auto& box = boxOfTwo();
    const std::string shut = callsOfRender(box);
    box.open = true;
    box.highlight = 1;

    const std::string open = callsOfRender(box);

    // Between the plate and the button; the rest is as when shut.
    const std::string list = R"(glPointSize(5)
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor4f(0.375, 0.25, 0.125, 0.75)
GL_POLYGON 0.53125,-0.375 0.53125,-1.375 -0.53125,-1.375 -0.53125,-0.375 0.4375,-0.375 0.53125,-0.28125
glPointSize(5)
glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)
glColor4f(0.5, 0.25, 0.125, 0.75)
glDisable(GL_TEXTURE_2D)
GL_POLYGON 0.53125,-0.375 0.53125,-1.375 -0.53125,-1.375 -0.53125,-0.375 0.4375,-0.375 0.53125,-0.28125
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glPushMatrix()
glTranslatef(-0.09375, -0.75, 0)
glColor4f(0.5, 0.25, 1, 1)
print "ab"
glPopMatrix()
glPushMatrix()
glTranslatef(-0.09375, -1.25, 0)
glColor4f(0.5, 0.25, 0.125, 0.75)
GL_QUADS 0,-0.0833333 0,0.25 0.25,0.25 0.25,-0.0833333
glColor4f(0.5, 0.25, 1, 1)
print "cdef"
glPopMatrix()
)";
    const std::string behindPlate = "glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)\nglPopMatrix()\n";
    const std::size_t place = shut.find(behindPlate) + behindPlate.find("glPopMatrix");
    EXPECT_EQ(open, shut.substr(0, place) + list + shut.substr(place));
}

TEST_F(ComboboxDrawingGLTest, NeverLightsTheHighlightUp)
{
    auto& box = boxOfTwo();
    box.open = true;
    box.highlight = 0;
    box.glow = 1.0F;

    EXPECT_NE(callsOfRender(box).find("glColor4f(0.5, 0.25, 0.125, 0.75)\nGL_QUADS"),
              std::string::npos);
}

TEST_F(ComboboxDrawingGLTest, DrawsTheChosenItem)
{
    auto& box = boxOfTwo();
    box.setSelected(1);

    const std::string calls = callsOfRender(box);

    EXPECT_NE(calls.find("print \"cdef\"\n"), std::string::npos);
    EXPECT_EQ(calls.find("print \"ab\"\n"), std::string::npos);
}

TEST_F(ComboboxDrawingGLTest, DrawsAListWithoutItemsAsALine)
{
    auto& box = make<Combobox>("c", nullptr, Vector());
    box.open = true;

    const std::string calls = callsOfRender(box);

    EXPECT_NE(calls.find("GL_POLYGON 0.28125,-0.375 0.28125,-0.375 -0.28125,-0.375 "
                         "-0.28125,-0.375 0.1875,-0.375 0.28125,-0.28125\n"),
              std::string::npos)
        << calls;
}
} // namespace
} // namespace tamor::test
