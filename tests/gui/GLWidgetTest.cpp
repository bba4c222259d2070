#include "gui/GLWidget.h"

#include "tests/gui/ProbeWidget.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/TemporaryDirectory.h"
#include "textures/Font.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

namespace tamor::test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using GLWidgetFind = ProbeTest;
using GLWidgetConstruction = ProbeTest;
using GLWidgetConstructionGLTest = ProbeGLTest;
using GLWidgetBase = ProbeTest;
using GLWidgetUpdate = ProbeTest;
using GLWidgetAddChild = ProbeTest;
using GLWidgetFitChildren = ProbeTest;
using GLWidgetDrawingGLTest = ProbeGLTest;

// --- The registry --------------------------------------------------------------------------------

TEST_F(GLWidgetFind, GivesNullForTheEmptyNameAndAddsAnEntryForIt)
{
    EXPECT_EQ(GLWidget::find(""), nullptr);

    EXPECT_THAT(GLWidget::widgets, ElementsAre(Pair("", nullptr)));
}

TEST_F(GLWidgetFind, GivesNullForAnUnknownNameAndAddsANullEntry)
{
    ProbeWidget known("known");

    EXPECT_EQ(GLWidget::find("unknown"), nullptr);

    EXPECT_THAT(GLWidget::widgets, ElementsAre(Pair("known", &known), Pair("unknown", nullptr)));
}

TEST_F(GLWidgetFind, GivesTheWidgetBuiltLastUnderTheName)
{
    const ProbeWidget first("twin");
    ProbeWidget second("twin");

    EXPECT_EQ(GLWidget::find("twin"), &second);
    EXPECT_EQ(first.name, "twin");
}

TEST_F(GLWidgetFind, StillGivesADeletedWidgetsPlaceUntilSomebodyClearsIt)
{
    auto* widget = new ProbeWidget("gone");
    delete widget;

    EXPECT_EQ(GLWidget::widgets.count("gone"), 1U);
    EXPECT_EQ(GLWidget::widgets.begin()->second, widget);
}

// --- Construction --------------------------------------------------------------------------------

TEST_F(GLWidgetConstruction, LeavesEveryFieldIdle)
{
    ProbeWidget parent("parent");
    Theme own;

    ProbeWidget widget("child", &parent, {0.25F, -0.5F}, &own);

    EXPECT_EQ(widget.parent, &parent);
    EXPECT_THAT(widget.lines, IsEmpty());
    EXPECT_EQ(widget.selection, 0U);
    EXPECT_EQ(widget.elapsed, 0);
    EXPECT_EQ(widget.depth, 0.0F);
    EXPECT_EQ(widget.glow, 0.0F);
    EXPECT_EQ(widget.fade, 0.0F);
    EXPECT_FALSE(widget.prevLeft || widget.prevMiddle || widget.prevRight);
    EXPECT_EQ(widget.position.x, 0.25F);
    EXPECT_EQ(widget.position.y, -0.5F);
    EXPECT_EQ(widget.dimensions.x, 0.0F);
    EXPECT_EQ(widget.dimensions.y, 0.0F);
    EXPECT_EQ(widget.dimensions.w, 1.0F);
    EXPECT_EQ(widget.mouse.x, 0.0F);
    EXPECT_EQ(widget.mouse.w, 1.0F);
    EXPECT_FALSE(widget.hover || widget.active || widget.clicked);
    EXPECT_EQ(widget.text, "");
    EXPECT_EQ(widget.theme, &own);
    EXPECT_EQ(widget.name, "child");
    EXPECT_THAT(widget.children, IsEmpty());
}

TEST_F(GLWidgetConstruction, TakesTheDefaultThemeForANullOne)
{
    const ProbeWidget widget("plain");

    EXPECT_EQ(widget.theme, &theme);
}

TEST_F(GLWidgetConstruction, AttachesTheWidgetToNothing)
{
    ProbeWidget parent("parent");

    const ProbeWidget child("child", &parent);

    EXPECT_THAT(parent.children, IsEmpty());
    EXPECT_THAT(GLWidget::topLevel, IsEmpty());
}

TEST_F(GLWidgetConstruction, ClearsTheDrawingFlag)
{
    GLWidget::drawing = true;

    const ProbeWidget widget("any");

    EXPECT_FALSE(GLWidget::drawing);
}

TEST_F(GLWidgetConstructionGLTest, SetsScaleViewportAndMessageResult)
{
    theme.fontSize = {0.25F, 0.5F};
    GLWidget::messageResult = 4;
    glViewport(3, 5, 640, 480);

    const ProbeWidget widget("any");

    EXPECT_EQ(GLWidget::font.scaleX, 0.25F);
    EXPECT_EQ(GLWidget::font.scaleY, 0.5F);
    EXPECT_EQ(GLWidget::messageResult, 0);
    EXPECT_THAT(GLWidget::viewport, ElementsAre(3, 5, 640, 480));
}

TEST_F(GLWidgetConstructionGLTest, RegistersTheBuiltInThemeWhereNoneIsLoaded)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;
    GLWidget::themes.clear();

    const ProbeWidget widget("any");

    ASSERT_NE(widget.theme, nullptr);
    EXPECT_EQ(widget.theme, GLWidget::themes["default"]);
    EXPECT_EQ(widget.theme->margin, 0.005F);
    EXPECT_TRUE(widget.theme->glowEnabled);
    EXPECT_EQ(GLWidget::font.scaleX, 0.04F);
}

// --- What the base class does --------------------------------------------------------------------

TEST_F(GLWidgetBase, AppendsTextToItsLines)
{
    ProbeWidget widget("any");

    EXPECT_TRUE(widget.addText("one"));
    EXPECT_TRUE(widget.addText("two"));

    EXPECT_THAT(widget.lines, ElementsAre("one", "two"));
}

TEST_F(GLWidgetBase, MovesAndTellsTheNewPositionWithItsOwnW)
{
    ProbeWidget widget("any", nullptr, {1.0F, 2.0F, 3.0F, 7.0F});

    const Vector result = widget.move({0.5F, -0.5F, 0.25F, 100.0F});

    EXPECT_EQ(widget.position.x, 1.5F);
    EXPECT_EQ(widget.position.y, 1.5F);
    EXPECT_EQ(widget.position.z, 3.25F);
    EXPECT_EQ(widget.position.w, 7.0F);
    EXPECT_EQ(result.x, 1.5F);
    EXPECT_EQ(result.w, 7.0F);
}

TEST_F(GLWidgetBase, HasTheRectangleOfPositionAndDimensions)
{
    ProbeWidget widget("any", nullptr, {0.25F, -0.5F});
    widget.dimensions = {0.5F, 0.125F};

    const Vector rectangle = widget.getRect();

    EXPECT_EQ(rectangle.x, 0.25F);
    EXPECT_EQ(rectangle.y, -0.5F);
    EXPECT_EQ(rectangle.z, 0.75F);
    EXPECT_EQ(rectangle.w, -0.375F);
}

TEST_F(GLWidgetBase, HasNoClientRectangle)
{
    const ProbeWidget widget("any", nullptr, {1.0F, 1.0F});

    const Vector rectangle = widget.getClientRect();

    EXPECT_EQ(rectangle.x, 0.0F);
    EXPECT_EQ(rectangle.y, 0.0F);
    EXPECT_EQ(rectangle.z, 0.0F);
    EXPECT_EQ(rectangle.w, 1.0F);
}

TEST_F(GLWidgetBase, DropsATabAndAChildForATab)
{
    ProbeWidget widget("any");
    ProbeWidget child("child");

    EXPECT_TRUE(widget.addTab(0, "title"));
    EXPECT_TRUE(widget.addToTab(0, &child));

    EXPECT_THAT(widget.children, IsEmpty());
}

TEST_F(GLWidgetBase, CallsItselfGLWidget)
{
    const ProbeWidget widget("any");

    EXPECT_EQ(widget.typeName(), "GLWidget");
}

TEST_F(GLWidgetBase, TellsAClickOnce)
{
    ProbeWidget widget("any");
    widget.clicked = true;

    EXPECT_TRUE(widget.wasClicked());
    EXPECT_FALSE(widget.wasClicked());
}

TEST_F(GLWidgetBase, ReadsItsStateThroughAccessors)
{
    ProbeWidget widget("any");
    widget.active = true;
    widget.selection = 3;
    widget.value = 0.25F;
    widget.hover = true;
    widget.depth = -1.0F;

    EXPECT_TRUE(widget.isActive());
    EXPECT_EQ(widget.getSelection(), 3U);
    EXPECT_EQ(widget.getValue(), 0.25F);
    EXPECT_TRUE(widget.isHovered());
    EXPECT_EQ(widget.getDepth(), -1.0F);
}

TEST_F(GLWidgetBase, KeepsItsSizeWhenTheCaptionChanges)
{
    ProbeWidget widget("any");
    widget.dimensions = {0.5F, 0.25F};

    EXPECT_TRUE(widget.setCaption("a far longer caption"));

    EXPECT_EQ(widget.text, "a far longer caption");
    EXPECT_EQ(widget.dimensions.x, 0.5F);
    EXPECT_EQ(widget.dimensions.y, 0.25F);
}

TEST_F(GLWidgetBase, BecomesActiveWithoutAFade)
{
    ProbeWidget widget("any");
    widget.fade = 0.5F;

    widget.setActive();

    EXPECT_TRUE(widget.active);
    EXPECT_EQ(widget.fade, 0.0F);
}

TEST_F(GLWidgetBase, BecomesLitAtOnce)
{
    ProbeWidget widget("any");

    widget.setLit();

    EXPECT_TRUE(widget.hover);
    EXPECT_EQ(widget.glow, 1.0F);
}

// --- A host's own class ----------------------------------------------------------------------------

/// Overrides every operation, in the order of their slots, with the types that a host writes.
class HostsWidget : public GLWidget
{
public:
    HostsWidget(const std::string& newName, GLWidget* newParent, Vector newPosition,
                Theme* newTheme)
        : GLWidget(newName, newParent, newPosition, newTheme)
    {}
    ~HostsWidget() override = default;
    bool addText(const std::string& line) override { return GLWidget::addText(line + "!"); }
    bool centreChild(GLWidget* /*child*/, bool /*alongX*/, bool /*alongY*/) override
    {
        return true;
    }
    bool onMouseButtons(bool /*left*/, bool /*middle*/, bool /*right*/) override { return true; }
    bool onMouseMove(float /*pixelX*/, float /*pixelY*/) override { return true; }
    bool onKeys(const std::uint8_t* /*pressed*/) override { return true; }
    bool onPointer(float /*x*/, float /*y*/) override { return true; }
    bool update(std::int32_t /*milliseconds*/) override { return true; }
    bool render() override { return true; }
    Vector move(Vector delta) override { return GLWidget::move(delta * 2.0F); }
    bool isExclusive() const override { return true; }
    std::string typeName() const override { return "HostsWidget"; }
    bool addChild(GLWidget* /*child*/) override { return true; }
    Vector getRect() const override { return {0.0F, 0.0F, 1.0F, 2.0F}; }
    Vector getClientRect() const override { return {}; }
    bool fitChildren() override { return true; }
    bool deselect(GLWidget* /*chosen*/) override { return true; }
    bool addTab(std::int32_t /*index*/, const std::string& /*title*/) override { return true; }
    bool addToTab(std::int32_t /*index*/, GLWidget* /*child*/) override { return true; }
    bool hitTest() const override { return true; }
};

TEST_F(GLWidgetBase, CanBeOverriddenInEveryOperation)
{
    Seen<HostsWidget> widget("host", nullptr, {1.0F, 2.0F}, &theme);
    GLWidget& base = widget;

    base.addText("text");
    const Vector moved = base.move({0.25F, -0.25F});

    EXPECT_THAT(widget.lines, ElementsAre("text!"));
    EXPECT_EQ(moved.x, 1.5F);
    EXPECT_EQ(moved.y, 1.5F);
    EXPECT_EQ(base.typeName(), "HostsWidget");
}

// --- Hit test ------------------------------------------------------------------------------------

struct HitCase
{
    const char* name;
    float x;
    float y;
    bool isHit;
};

class GLWidgetHitTestAt : public ProbeTest, public testing::WithParamInterface<HitCase>
{};

TEST_P(GLWidgetHitTestAt, CountsThePointerStrictlyInside)
{
    ProbeWidget widget("any", nullptr, {0.25F, 0.5F});
    widget.dimensions = {0.5F, 0.25F};
    widget.mouse = {GetParam().x, GetParam().y};

    EXPECT_EQ(widget.hitTest(), GetParam().isHit);
}

INSTANTIATE_TEST_SUITE_P(Places, GLWidgetHitTestAt,
                         testing::Values(HitCase{"Middle", 0.5F, 0.625F, true},
                                         HitCase{"LeftEdge", 0.25F, 0.625F, false},
                                         HitCase{"RightEdge", 0.75F, 0.625F, false},
                                         HitCase{"BottomEdge", 0.5F, 0.5F, false},
                                         HitCase{"TopEdge", 0.5F, 0.75F, false},
                                         HitCase{"JustInside", 0.2501F, 0.5001F, true},
                                         HitCase{"Left", 0.0F, 0.625F, false},
                                         HitCase{"Above", 0.5F, 1.0F, false}),
                         [](const auto& test) { return test.param.name; });

// --- Animation -----------------------------------------------------------------------------------

TEST_F(GLWidgetUpdate, SumsTheMilliseconds)
{
    ProbeWidget widget("any");

    EXPECT_TRUE(widget.update(16));
    EXPECT_TRUE(widget.update(17));

    EXPECT_EQ(widget.elapsed, 33);
}

TEST_F(GLWidgetUpdate, GoesOnWithItsSumBehindTheLargestNumber)
{
    ProbeWidget widget("any");
    widget.elapsed = 2147483647;

    widget.update(2);

    EXPECT_EQ(widget.elapsed, -2147483647);
}

TEST_F(GLWidgetUpdate, LightsUpUnderThePointerAndSettlesAtOne)
{
    GLWidget::glowRate = 0.25F;
    ProbeWidget widget("any");
    widget.hover = true;

    widget.update(1);
    EXPECT_EQ(widget.glow, 0.25F);
    widget.update(3);
    EXPECT_EQ(widget.glow, 1.0F);
    widget.update(1);
    EXPECT_EQ(widget.glow, 1.0F);
}

TEST_F(GLWidgetUpdate, LetsGlowOvershootForOneFrame)
{
    GLWidget::glowRate = 0.5F;
    ProbeWidget widget("any");
    widget.hover = true;

    widget.update(3);
    EXPECT_EQ(widget.glow, 1.5F);
    widget.update(3);
    EXPECT_EQ(widget.glow, 1.0F);

    widget.hover = false;
    widget.update(3);
    EXPECT_EQ(widget.glow, -0.5F);
    widget.update(3);
    EXPECT_EQ(widget.glow, 0.0F);
}

TEST_F(GLWidgetUpdate, EndsTheGlowBelowATenThousandth)
{
    GLWidget::glowRate = 0.5F;
    ProbeWidget widget("any");
    widget.glow = 0.00005F;

    widget.update(1);

    EXPECT_EQ(widget.glow, 0.0F);
}

TEST_F(GLWidgetUpdate, GlowsAllTheTimeWhereTheThemeHasNoGlow)
{
    theme.glowEnabled = false;
    GLWidget::glowRate = 0.5F;
    ProbeWidget widget("any");

    widget.update(0);
    EXPECT_EQ(widget.glow, 1.0F);
    EXPECT_EQ(widget.brightness(), 1.0F);

    widget.update(100);
    EXPECT_EQ(widget.glow, 1.0F);
}

TEST_F(GLWidgetUpdate, RunsTheFadeDownToZero)
{
    GLWidget::glowRate = 0.25F;
    ProbeWidget widget("any");
    widget.fade = 1.0F;

    widget.update(3);
    EXPECT_EQ(widget.fade, 0.25F);
    widget.update(2);
    EXPECT_EQ(widget.fade, -0.25F);
    widget.update(2);
    EXPECT_EQ(widget.fade, 0.0F);
}

TEST_F(GLWidgetUpdate, EndsGlowAndFadeAtATenThousandth)
{
    GLWidget::glowRate = 0.00005F;
    ProbeWidget widget("any");

    widget.fade = widget.glow = 0.0001F;
    widget.update(1);
    EXPECT_EQ(widget.fade, 0.0F);
    EXPECT_EQ(widget.glow, 0.0F);

    widget.fade = widget.glow = 0.000125F;
    widget.update(1);
    EXPECT_EQ(widget.fade, 0.000125F - 0.00005F);
    EXPECT_EQ(widget.glow, 0.000125F - 0.00005F);
}

TEST_F(GLWidgetUpdate, ReachesEveryChildInOrder)
{
    ProbeWidget parent("parent");
    ProbeWidget first("first", &parent);
    ProbeWidget second("second", &parent);
    parent.addChild(&first);
    parent.addChild(&second);

    parent.update(5);

    EXPECT_THAT(ProbeWidget::log, ElementsAre("parent update", "first update", "second update"));
    EXPECT_EQ(second.elapsed, 5);
}

TEST_F(GLWidgetUpdate, BrightnessGoesFromDimToLitWithTheGlow)
{
    theme.dimBrightness = 0.5F;
    theme.litBrightness = 2.0F;
    ProbeWidget widget("any");

    EXPECT_EQ(widget.brightness(), 0.5F);
    widget.glow = 0.5F;
    EXPECT_EQ(widget.brightness(), 1.25F);
    widget.glow = 1.0F;
    EXPECT_EQ(widget.brightness(), 2.0F);
}

// --- The tree ------------------------------------------------------------------------------------

TEST_F(GLWidgetAddChild, AppendsInOrderAndAsksNothingOfPlainChildren)
{
    ProbeWidget parent("parent");
    ProbeWidget first("first", &parent);
    ProbeWidget second("second", &parent);

    EXPECT_TRUE(parent.addChild(&first));
    EXPECT_TRUE(parent.addChild(&second));

    EXPECT_THAT(parent.children, ElementsAre(&first, &second));
    EXPECT_FALSE(first.active);
    EXPECT_THAT(ProbeWidget::log, IsEmpty());
}

TEST_F(GLWidgetAddChild, ChoosesTheFirstExclusiveChildAgain)
{
    ProbeWidget parent("parent");
    ProbeWidget plain("plain", &parent);
    ProbeWidget one("one", &parent);
    ProbeWidget two("two", &parent);
    ProbeWidget three("three", &parent);
    one.exclusive = two.exclusive = three.exclusive = true;
    parent.addChild(&plain);
    parent.addChild(&one);
    parent.addChild(&two);
    one.active = false;
    two.active = true;
    ProbeWidget::log.clear();

    parent.addChild(&three);

    EXPECT_TRUE(one.active);
    EXPECT_FALSE(plain.active);
    EXPECT_THAT(ProbeWidget::log, ElementsAre("two deselect", "three deselect"));
    EXPECT_EQ(two.chosenOther, &one);
    EXPECT_EQ(three.chosenOther, &one);
}

TEST_F(GLWidgetAddChild, ChoosesAgainAlsoWhenAPlainChildIsAdded)
{
    ProbeWidget parent("parent");
    ProbeWidget one("one", &parent);
    ProbeWidget two("two", &parent);
    ProbeWidget plain("plain", &parent);
    one.exclusive = two.exclusive = true;
    parent.addChild(&one);
    parent.addChild(&two);
    one.active = false;
    one.fade = 1.0F;
    ProbeWidget::log.clear();

    parent.addChild(&plain);

    EXPECT_TRUE(one.active);
    EXPECT_EQ(one.fade, 0.0F);
    EXPECT_THAT(ProbeWidget::log, ElementsAre("two deselect"));
}

TEST_F(GLWidgetAddChild, AsksAtEachAdditionWhichChildIsExclusive)
{
    ProbeWidget parent("parent");
    ProbeWidget quiet("quiet", &parent);
    ProbeWidget sudden("sudden", &parent);
    ProbeWidget last("last", &parent);
    // One child came another way, and it changes its answer.
    parent.children.push_back(&quiet);
    parent.addChild(&sudden);
    ASSERT_THAT(ProbeWidget::log, IsEmpty());
    quiet.exclusive = sudden.exclusive = true;

    parent.addChild(&last);

    EXPECT_TRUE(quiet.active);
    EXPECT_THAT(ProbeWidget::log, ElementsAre("sudden deselect"));
    EXPECT_EQ(sudden.chosenOther, &quiet);
}

TEST_F(GLWidgetAddChild, DoesNotLetAChildThatWasAddedTwiceDeselectItself)
{
    ProbeWidget parent("parent");
    ProbeWidget one("one", &parent);
    ProbeWidget two("two", &parent);
    one.exclusive = two.exclusive = true;
    parent.addChild(&one);
    parent.addChild(&two);
    ProbeWidget::log.clear();

    parent.addChild(&one);

    EXPECT_TRUE(one.active);
    EXPECT_THAT(ProbeWidget::log, ElementsAre("two deselect"));
}

// The parent is 1 by 0.5 less 6 margins of 0.0625, and two font heights of 0.0625 upward; the child
// is 0.25 by 0.125.
class GLWidgetCentreChild : public ProbeTest
{
protected:
    void SetUp() override
    {
        ProbeTest::SetUp();
        theme.margin = 0.03125F;
        theme.fontSize = {0.0625F, 0.0625F};
    }
};

TEST_F(GLWidgetCentreChild, AlongXMovesByHalfTheRoom)
{
    ProbeWidget parent("parent", nullptr, {5.0F, 5.0F});
    parent.dimensions = {1.0F, 0.5F};
    ProbeWidget child("child", &parent);
    child.dimensions = {0.25F, 0.125F};

    EXPECT_TRUE(parent.centreChild(&child, true, false));

    EXPECT_EQ(child.position.x, 0.28125F);
    EXPECT_EQ(child.position.y, 0.0F);
}

TEST_F(GLWidgetCentreChild, AlongYLeavesRoomForATitle)
{
    ProbeWidget parent("parent", nullptr, {5.0F, 5.0F});
    parent.dimensions = {1.0F, 0.5F};
    ProbeWidget child("child", &parent);
    child.dimensions = {0.25F, 0.125F};

    EXPECT_TRUE(parent.centreChild(&child, false, true));

    EXPECT_EQ(child.position.x, 0.0F);
    EXPECT_EQ(child.position.y, 0.03125F);
}

TEST_F(GLWidgetCentreChild, AlongBothAddsToWhereTheChildStands)
{
    ProbeWidget parent("parent", nullptr, {5.0F, 5.0F});
    parent.dimensions = {1.0F, 0.5F};
    ProbeWidget child("child", &parent, {1.0F, 2.0F});
    child.dimensions = {0.25F, 0.125F};

    EXPECT_TRUE(parent.centreChild(&child, true, true));

    EXPECT_EQ(child.position.x, 1.28125F);
    EXPECT_EQ(child.position.y, 2.03125F);
}

TEST_F(GLWidgetFitChildren, GrowsByTheChildAndSixMargins)
{
    theme.margin = 0.03125F;
    ProbeWidget parent("parent", nullptr, {3.0F, 3.0F});
    ProbeWidget child("child", &parent, {0.0F, 0.25F});
    child.dimensions = {0.5F, 0.125F};
    parent.addChild(&child);

    EXPECT_TRUE(parent.fitChildren());

    EXPECT_EQ(parent.dimensions.x, 0.6875F);
    EXPECT_EQ(parent.dimensions.y, 0.5625F);
}

TEST_F(GLWidgetFitChildren, NeverShrinks)
{
    ProbeWidget parent("parent");
    parent.dimensions = {4.0F, 5.0F};
    ProbeWidget child("child", &parent);
    child.dimensions = {0.5F, 0.125F};
    parent.addChild(&child);

    parent.fitChildren();

    EXPECT_EQ(parent.dimensions.x, 4.0F);
    EXPECT_EQ(parent.dimensions.y, 5.0F);
}

TEST_F(GLWidgetFitChildren, FitsTheChildrenFirst)
{
    theme.margin = 0.03125F;
    ProbeWidget parent("parent");
    ProbeWidget middle("middle", &parent);
    ProbeWidget leaf("leaf", &middle);
    leaf.dimensions = {0.5F, 0.25F};
    middle.addChild(&leaf);
    parent.addChild(&middle);

    parent.fitChildren();

    EXPECT_EQ(middle.dimensions.x, 0.6875F);
    EXPECT_EQ(parent.dimensions.x, 0.875F);
}

// --- Drawing -------------------------------------------------------------------------------------

TEST_F(GLWidgetDrawingGLTest, PlateIsARectangleWithoutTwoCorners)
{
    ProbeWidget widget("any");
    widget.dimensions = {2.0F, 1.0F};
    GLRecorder recorder;

    widget.drawPlate(0.25F);

    EXPECT_THAT(recorder.calls(),
                ElementsAre("glBegin(GL_POLYGON)", "glVertex2f(-1, -0.5)", "glVertex2f(-1, 0.25)",
                            "glVertex2f(-0.75, 0.5)", "glVertex2f(1, 0.5)", "glVertex2f(1, -0.25)",
                            "glVertex2f(0.75, -0.5)", "glVertex2f(-1, -0.5)", "glEnd()"));
}

TEST_F(GLWidgetDrawingGLTest, PlateHasTextureCoordinatesWhereTheyAreAskedFor)
{
    ProbeWidget widget("any");
    widget.dimensions = {2.0F, 1.0F};
    GLRecorder recorder;

    widget.drawPlate(0.25F, 0.125F);

    EXPECT_THAT(recorder.calls(),
                ElementsAre("glBegin(GL_POLYGON)", "glTexCoord2f(0, 0)", "glVertex2f(-1, -0.5)",
                            "glTexCoord2f(0, 0.875)", "glVertex2f(-1, 0.25)",
                            "glTexCoord2f(0.125, 1)", "glVertex2f(-0.75, 0.5)",
                            "glTexCoord2f(1, 1)", "glVertex2f(1, 0.5)", "glTexCoord2f(1, 0.125)",
                            "glVertex2f(1, -0.25)", "glTexCoord2f(1, 0)", "glVertex2f(0.75, -0.5)",
                            "glTexCoord2f(0, 0)", "glVertex2f(-1, -0.5)", "glEnd()"));
}

TEST_F(GLWidgetDrawingGLTest, IconIsASquareOfTheTexture)
{
    GLRecorder recorder;

    ProbeWidget::drawIcon({0.125F, 0.25F, 0.5F, 0.75F}, 1.0F, 2.0F, 0.5F);

    EXPECT_THAT(recorder.calls(),
                ElementsAre("glBegin(GL_QUADS)", "glTexCoord2f(0.125, 0.25)", "glVertex2f(1, 2)",
                            "glTexCoord2f(0.125, 0.75)", "glVertex2f(1, 2.5)",
                            "glTexCoord2f(0.5, 0.75)", "glVertex2f(1.5, 2.5)",
                            "glTexCoord2f(0.5, 0.25)", "glVertex2f(1.5, 2)", "glEnd()"));
}

TEST_F(GLWidgetDrawingGLTest, ColoursAreScaledAndAlphaIsNot)
{
    GLRecorder recorder;

    ProbeWidget::setColour({1.0F, 0.5F, 0.25F, 0.125F});
    ProbeWidget::setColour({1.0F, 0.5F, 0.25F, 0.125F}, 0.5F);
    ProbeWidget::setColour({1.0F, 0.5F, 0.25F, 0.125F}, 0.5F, 0.75F);

    EXPECT_THAT(recorder.calls(),
                ElementsAre("glColor3f(1, 0.5, 0.25)", "glColor3f(0.5, 0.25, 0.125)",
                            "glColor4f(0.5, 0.25, 0.125, 0.75)"));
}

TEST_F(GLWidgetDrawingGLTest, TranslatesToTheCentreAndFromThereToTheText)
{
    theme.fontSize = {0.25F, 0.75F};
    ProbeWidget widget("any", nullptr, {1.0F, 2.0F});
    widget.dimensions = {0.5F, 1.0F};
    GLRecorder recorder;

    widget.translateToCentre();
    widget.translateToText();

    EXPECT_THAT(recorder.calls(),
                ElementsAre("glTranslatef(1.25, 2.5, 0)", "glTranslatef(-0.125, -0.25, 0)"));
}
} // namespace
} // namespace tamor::test
