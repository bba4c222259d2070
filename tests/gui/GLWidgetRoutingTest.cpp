#include "gui/GLWidget.h"

#include "tests/gui/ProbeWidget.h"
#include "tests/support/GLRecorder.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

#include <array>
#include <functional>
#include <utility>

namespace tamor::test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

using GLWidgetMouseMoved = ProbeTest;
using GLWidgetMouseButtons = ProbeTest;
using GLWidgetKeysChanged = ProbeTest;
using GLWidgetUpdateAll = ProbeTest;
using GLWidgetRelease = ProbeTest;
using GLWidgetRenderAllGLTest = ProbeGLTest;
using GLWidgetRenderChildrenGLTest = ProbeGLTest;

// --- Pixels to GUI units -------------------------------------------------------------------------

struct PixelCase
{
    const char* name;
    float pixelX;
    float pixelY;
    float x;
    float y;
};

class GLWidgetMouseMovedTo : public ProbeTest, public testing::WithParamInterface<PixelCase>
{};

TEST_P(GLWidgetMouseMovedTo, BecomesGuiUnitsFromTheCentreUpward)
{
    ProbeWidget widget("any");
    GLWidget::topLevel = {&widget};
    GLWidget::viewport = {0, 0, 800, 600};

    EXPECT_TRUE(GLWidget::mouseMoved({GetParam().pixelX, GetParam().pixelY}));

    // Half a pixel of a window that is 2 units high in 600 pixels is 0.0017.
    EXPECT_NEAR(widget.mouse.x, GetParam().x, 0.00001F);
    EXPECT_NEAR(widget.mouse.y, GetParam().y, 0.00001F);
    EXPECT_EQ(widget.mouse.z, 0.0F);
    EXPECT_EQ(widget.mouse.w, 1.0F);
}

INSTANTIATE_TEST_SUITE_P(Pixels, GLWidgetMouseMovedTo,
                         testing::Values(PixelCase{"Centre", 400.0F, 300.0F, 0.0F, 0.0F},
                                         PixelCase{"TopLeft", 0.0F, 0.0F, -1.3333333F, 1.0F},
                                         PixelCase{"BottomRight", 800.0F, 600.0F, 1.3333333F,
                                                   -1.0F},
                                         PixelCase{"Quarter", 200.0F, 450.0F, -0.6666667F, -0.5F}),
                         [](const auto& test) { return test.param.name; });

TEST_F(GLWidgetMouseMoved, KeepsThePlaceBeforeTheWidgetItselfIsAsked)
{
    /// A class of a host's own that keeps nothing.
    class Careless : public ProbeWidget
    {
    public:
        using ProbeWidget::ProbeWidget;
        bool onPointer(float /*x*/, float /*y*/) override { return true; }
    };
    Careless widget("careless");
    GLWidget::topLevel = {&widget};
    GLWidget::viewport = {0, 0, 800, 400};

    GLWidget::mouseMoved({600.0F, 100.0F});

    EXPECT_EQ(widget.mouse.x, 1.0F);
    EXPECT_EQ(widget.mouse.y, 0.5F);
}

TEST_F(GLWidgetMouseMoved, RoundsAtEveryStep)
{
    ProbeWidget widget("any");
    GLWidget::topLevel = {&widget};
    GLWidget::viewport = {0, 0, 1366, 768};

    GLWidget::mouseMoved({215.0F, 97.0F});

    // Regrouped, the terms give -1.21875 and 0.747395813.
    EXPECT_EQ(widget.mouse.x, -1.21874988F);
    EXPECT_EQ(widget.mouse.y, 0.747395873F);
}

TEST_F(GLWidgetMouseMoved, ComputesHoverOfWidgetAndChildren)
{
    GLWidget::viewport = {0, 0, 800, 600};
    ProbeWidget parent("parent", nullptr, {-0.5F, -0.5F});
    parent.dimensions = {1.0F, 1.0F};
    ProbeWidget child("child", &parent, {0.25F, 0.25F});
    child.dimensions = {0.25F, 0.25F};
    parent.addChild(&child);
    GLWidget::topLevel = {&parent};

    GLWidget::mouseMoved({400.0F, 300.0F});

    // The base class hands the position down as it is: only containers translate.
    EXPECT_TRUE(parent.hover);
    EXPECT_FALSE(child.hover);
    EXPECT_EQ(child.mouse.x, 0.0F);
}

TEST_F(GLWidgetMouseMoved, ReachesEveryTopLevelWidgetWhateverLiesAboveIt)
{
    GLWidget::viewport = {0, 0, 800, 600};
    ProbeWidget lower("lower", nullptr, {-0.5F, -0.5F});
    ProbeWidget upper("upper", nullptr, {-0.5F, -0.5F});
    lower.dimensions = upper.dimensions = {1.0F, 1.0F};
    GLWidget::topLevel = {&lower, &upper};

    GLWidget::mouseMoved({400.0F, 300.0F});

    EXPECT_THAT(ProbeWidget::log, ElementsAre("lower pointer", "upper pointer"));
    EXPECT_TRUE(lower.hover);
    EXPECT_TRUE(upper.hover);
}

TEST_F(GLWidgetMouseMoved, IsHarmlessBeforeAnyViewportIsKnown)
{
    ProbeWidget widget("any");
    GLWidget::topLevel = {&widget};
    GLWidget::viewport = {};

    EXPECT_TRUE(GLWidget::mouseMoved({10.0F, 10.0F}));

    EXPECT_FALSE(widget.hover);
}

// --- Buttons -------------------------------------------------------------------------------------

TEST_F(GLWidgetMouseButtons, ReachEveryTopLevelWidgetInOrder)
{
    ProbeWidget first("first");
    ProbeWidget second("second");
    first.answer = true;
    GLWidget::topLevel = {&first, &second};

    EXPECT_TRUE(GLWidget::mouseButtons(true, false, true));

    EXPECT_THAT(ProbeWidget::log, ElementsAre("first buttons", "second buttons"));
    EXPECT_TRUE(second.prevLeft);
    EXPECT_FALSE(second.prevMiddle);
    EXPECT_TRUE(second.prevRight);
}

TEST_F(GLWidgetMouseButtons, DeselectNobodyAtTheTopLevel)
{
    ProbeWidget first("first");
    ProbeWidget second("second");
    first.exclusive = second.exclusive = true;
    first.answer = true;
    GLWidget::topLevel = {&first, &second};

    GLWidget::mouseButtons(true, false, false);

    EXPECT_THAT(ProbeWidget::log, ElementsAre("first buttons", "second buttons"));
}

class GLWidgetPassButtonsToChildren : public ProbeTest
{
protected:
    void SetUp() override
    {
        ProbeTest::SetUp();
        for (ProbeWidget* child : {&one, &two, &three})
            parent.children.push_back(child);
    }

    // The widgets are built before SetUp, so they bring a theme.
    Theme own;
    ProbeWidget parent{"parent", nullptr, {}, &own};
    ProbeWidget one{"one", &parent, {}, &own};
    ProbeWidget two{"two", &parent, {}, &own};
    ProbeWidget three{"three", &parent, {}, &own};
};

TEST_F(GLWidgetPassButtonsToChildren, DeselectsAllOthersWhenAnExclusiveChildAnswersTrue)
{
    two.exclusive = true;
    two.answer = true;

    parent.passButtonsToChildren(true, false, false);

    EXPECT_THAT(ProbeWidget::log, ElementsAre("one buttons", "two buttons", "three buttons",
                                              "one deselect", "three deselect"));
    EXPECT_EQ(one.chosenOther, &two);
    EXPECT_EQ(three.chosenOther, &two);
}

TEST_F(GLWidgetPassButtonsToChildren, ChoosesTheLastOfSeveral)
{
    one.exclusive = two.exclusive = true;
    one.answer = two.answer = true;

    parent.passButtonsToChildren(true, false, false);

    EXPECT_THAT(ProbeWidget::log, ElementsAre("one buttons", "two buttons", "three buttons",
                                              "one deselect", "three deselect"));
    EXPECT_EQ(one.chosenOther, &two);
}

TEST_F(GLWidgetPassButtonsToChildren, IgnoresTheAnswerOfAChildThatIsNotExclusive)
{
    one.answer = true;
    two.exclusive = true;

    parent.passButtonsToChildren(true, false, false);

    EXPECT_THAT(ProbeWidget::log, ElementsAre("one buttons", "two buttons", "three buttons"));
}

TEST_F(GLWidgetPassButtonsToChildren, GivesAllThreeButtons)
{
    parent.passButtonsToChildren(false, true, true);

    EXPECT_FALSE(three.prevLeft);
    EXPECT_TRUE(three.prevMiddle);
    EXPECT_TRUE(three.prevRight);
}

TEST_F(GLWidgetPassButtonsToChildren, TellsWhetherAChildIsHovered)
{
    EXPECT_FALSE(parent.isChildHovered());
    two.hover = true;
    EXPECT_TRUE(parent.isChildHovered());
}

// --- Keys ----------------------------------------------------------------------------------------

TEST_F(GLWidgetKeysChanged, ReachEveryWidgetOfTheTreeWithTheSameArray)
{
    ProbeWidget parent("parent");
    ProbeWidget child("child", &parent);
    ProbeWidget other("other");
    ProbeWidget outside("outside", &parent);
    parent.addChild(&child);
    GLWidget::topLevel = {&parent, &other};
    const std::array<std::uint8_t, 512> pressed{};

    EXPECT_TRUE(GLWidget::keysChanged(pressed.data()));

    EXPECT_THAT(ProbeWidget::log, ElementsAre("parent keys", "child keys", "other keys"));
    EXPECT_EQ(child.keys, pressed.data());
    EXPECT_EQ(outside.keys, nullptr);
}

// --- Time ----------------------------------------------------------------------------------------

TEST_F(GLWidgetUpdateAll, ReachesEveryWidgetOfTheTree)
{
    ProbeWidget parent("parent");
    ProbeWidget child("child", &parent);
    ProbeWidget other("other");
    parent.addChild(&child);
    GLWidget::topLevel = {&parent, &other};

    EXPECT_TRUE(GLWidget::updateAll(20));

    EXPECT_THAT(ProbeWidget::log, ElementsAre("parent update", "child update", "other update"));
    EXPECT_EQ(other.elapsed, 20);
}

TEST_F(GLWidgetUpdateAll, LeavesHoverAsItWasWithoutMouseActivity)
{
    ProbeWidget widget("any");
    widget.hover = true;
    GLWidget::topLevel = {&widget};

    GLWidget::updateAll(20);

    EXPECT_TRUE(widget.hover);
    EXPECT_THAT(ProbeWidget::log, ElementsAre("any update"));
}

TEST_F(GLWidgetRelease, KeepsEverything)
{
    ProbeWidget widget("any");
    GLWidget::topLevel = {&widget};

    EXPECT_TRUE(GLWidget::release());

    EXPECT_THAT(GLWidget::topLevel, ElementsAre(&widget));
    EXPECT_EQ(GLWidget::find("any"), &widget);
    EXPECT_EQ(GLWidget::themes.count("default"), 1U);
}

// --- A top level that grows during a walk -----------------------------------------------------------

/// Opens another widget whenever it is asked for something.
class Opener : public ProbeWidget
{
public:
    using ProbeWidget::ProbeWidget;

    bool onMouseButtons(bool left, bool middle, bool right) override
    {
        open();
        return ProbeWidget::onMouseButtons(left, middle, right);
    }
    bool onPointer(float x, float y) override
    {
        open();
        return ProbeWidget::onPointer(x, y);
    }
    bool onKeys(const std::uint8_t* pressed) override
    {
        open();
        return ProbeWidget::onKeys(pressed);
    }
    bool update(std::int32_t milliseconds) override
    {
        open();
        return ProbeWidget::update(milliseconds);
    }
    bool render() override
    {
        open();
        return true;
    }
    bool fitChildren() override
    {
        open();
        return ProbeWidget::fitChildren();
    }

private:
    void open()
    {
        log.push_back(name);
        GLWidget::topLevel.push_back(&opened);
        GLWidget::topLevel.shrink_to_fit();
    }

    ProbeWidget opened{"opened", nullptr, {}, theme};
};

using GLWidgetTopLevelGLTest = ProbeGLTest;

TEST_F(GLWidgetTopLevelGLTest, MayGrowWhileItIsWalked)
{
    const std::array<std::uint8_t, 512> pressed{};
    const std::pair<const char*, std::function<void()>> walks[] = {
        {"pointer",
         [] {
             GLWidget::mouseMoved({1.0F, 1.0F});
         }},
        {"buttons", [] { GLWidget::mouseButtons(true, false, false); }},
        {"keys", [&] { GLWidget::keysChanged(pressed.data()); }},
        {"update", [] { GLWidget::updateAll(1); }},
        {"render", [] { GLWidget::renderAll(); }},
    };
    for (const auto& [what, walk] : walks) {
        Opener opener("opener");
        ProbeWidget last("last");
        GLWidget::topLevel = {&opener, &last};
        GLWidget::topLevel.shrink_to_fit();
        ProbeWidget::log.clear();

        walk();

        // What was opened is reached too: a press that opens a box is no press on its buttons.
        EXPECT_EQ(ProbeWidget::log.front(), "opener") << what;
        ASSERT_GE(ProbeWidget::log.size(), 3U) << what;
        EXPECT_EQ(ProbeWidget::log.end()[-2], std::string("last ") + what);
        EXPECT_EQ(ProbeWidget::log.back(), std::string("opened ") + what);
        GLWidget::topLevel.clear();
    }
}

// --- Drawing -------------------------------------------------------------------------------------

TEST_F(GLWidgetRenderAllGLTest, SetsUpTheProjectionAndPutsItBack)
{
    GLWidget::viewport = {0, 0, 1000, 500};
    GLRecorder recorder;

    EXPECT_TRUE(GLWidget::renderAll());

    EXPECT_THAT(recorder.calls(),
                ElementsAre("glMatrixMode(GL_PROJECTION)", "glPushMatrix()", "glLoadIdentity()",
                            "glOrtho(-2, 2, -1, 1, -1, 1)", "glMatrixMode(GL_MODELVIEW)",
                            "glPushAttrib(GL_ENABLE_BIT)", "glDisable(GL_LIGHTING)",
                            "glDisable(GL_COLOR_MATERIAL)", "glEnable(GL_TEXTURE_2D)",
                            "glDisable(GL_BLEND)", "glEnable(GL_DEPTH_TEST)", "glPopAttrib()",
                            "glMatrixMode(GL_PROJECTION)", "glPopMatrix()",
                            "glMatrixMode(GL_MODELVIEW)"));
}

TEST_F(GLWidgetRenderAllGLTest, DrawsTheTopLevelInOrderWhileDrawingIsSet)
{
    ProbeWidget lower("lower");
    ProbeWidget upper("upper");
    GLWidget::topLevel = {&lower, &upper};

    GLWidget::renderAll();

    EXPECT_THAT(ProbeWidget::log, ElementsAre("lower render", "upper render"));
    EXPECT_FALSE(GLWidget::drawing);
}

TEST_F(GLWidgetRenderAllGLTest, LeavesTheEnableBitsAsTheyWere)
{
    glEnable(GL_LIGHTING);
    glEnable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_TEXTURE_2D);

    GLWidget::renderAll();

    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
}

TEST_F(GLWidgetRenderAllGLTest, IsHarmlessBeforeAnyViewportIsKnown)
{
    EXPECT_TRUE(GLWidget::renderAll());
}

TEST_F(GLWidgetRenderChildrenGLTest, DrawsRaisedChildrenLastEachInAMatrixOfItsOwn)
{
    ProbeWidget parent("parent");
    ProbeWidget raised("raised", &parent);
    ProbeWidget plain("plain", &parent);
    raised.depth = -1.0F;
    parent.children = {&raised, &plain};
    GLRecorder recorder;

    parent.renderChildren();

    EXPECT_THAT(recorder.calls(),
                ElementsAre("glPushMatrix()", "glPopMatrix()", "glPushMatrix()", "glPopMatrix()"));
    EXPECT_THAT(ProbeWidget::log,
                ElementsAre("plain render outside renderAll", "raised render outside renderAll"));
}

TEST_F(GLWidgetRenderChildrenGLTest, DrawsAChildAtTheLimitInNeitherPass)
{
    ProbeWidget parent("parent");
    ProbeWidget child("child", &parent);
    child.depth = -0.5F;
    parent.children = {&child};

    parent.renderChildren();

    EXPECT_THAT(ProbeWidget::log, IsEmpty());
}
} // namespace
} // namespace tamor::test
