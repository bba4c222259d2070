#include "widgets/Button.h"

#include "tests/gui/GuiTest.h"
#include "tests/widgets/RenderedCalls.h"

namespace tamor::test
{
namespace
{
using ButtonSize = GuiTest;
using ButtonState = GuiTest;
using ButtonDrawingGLTest = GuiGLTest;

TEST_F(ButtonSize, IsTheCaptionAndOneFontWidthByOneAndAHalfFontHeights)
{
    const auto& button = make<Button>("ok", nullptr, Vector(1.0F, 2.0F), std::string("OK"));

    // Two characters of 1/16 and a font width of 1/8; 1.5 times 1/4.
    EXPECT_EQ(button.dimensions.x, 0.25F);
    EXPECT_EQ(button.dimensions.y, 0.375F);
    EXPECT_EQ(button.dimensions.z, 0.0F);
    EXPECT_EQ(button.dimensions.w, 1.0F);
    EXPECT_EQ(button.image, 0U);
    EXPECT_EQ(button.text, "OK");
}

TEST_F(ButtonSize, IsWhatIsAskedForWithTheThemesTexture)
{
    const auto& button = make<Button>("quill", nullptr, Vector(), Vector(0.3F, 0.2F, 0.0F, 1.0F));

    EXPECT_EQ(button.dimensions.x, 0.3F);
    EXPECT_EQ(button.dimensions.y, 0.2F);
    EXPECT_EQ(button.image, 7U);
    EXPECT_EQ(button.text, "");
}

TEST_F(ButtonSize, MeasuresACaptionAsAFormat)
{
    const auto& button = make<Button>("percent", nullptr, Vector(), std::string("100%%"));

    // "100%" is four characters.
    EXPECT_EQ(button.dimensions.x, 0.375F);
}

TEST_F(ButtonSize, StaysWhenTheCaptionChanges)
{
    auto& button = make<Button>("ok", nullptr, Vector(), std::string("OK"));

    EXPECT_TRUE(button.setCaption("a longer one"));

    EXPECT_EQ(button.dimensions.x, 0.25F);
    EXPECT_EQ(button.text, "a longer one");
}

TEST_F(ButtonState, TellsItsClassAndIgnoresDeselection)
{
    auto& button = make<Button>("b", nullptr, Vector(), std::string("OK"));
    button.active = true;

    EXPECT_EQ(button.typeName(), "Button");
    EXPECT_FALSE(button.isExclusive());
    EXPECT_TRUE(button.deselect(nullptr));
    EXPECT_TRUE(button.isActive());
}

TEST_F(ButtonState, IsHoveredWhileThePointerIsOverIt)
{
    auto& button = make<Button>("b", nullptr, Vector(), std::string("OK"));

    point(button, 0.1F, 0.1F, false);
    EXPECT_TRUE(button.hover);
    EXPECT_FALSE(button.active);

    point(button, 0.25F, 0.1F, false);
    EXPECT_FALSE(button.hover) << "its edge is outside";
}

TEST_F(ButtonState, ClicksOnThePress)
{
    auto& button = make<Button>("b", nullptr, Vector(), std::string("OK"));
    point(button, 0.1F, 0.1F, false);

    EXPECT_FALSE(button.onMouseButtons(true, false, false));

    EXPECT_TRUE(button.isActive());
    EXPECT_TRUE(button.wasClicked());
    EXPECT_FALSE(button.wasClicked()) << "reading a click clears it";
}

TEST_F(ButtonState, TakesTheLeftButtonAlone)
{
    auto& button = make<Button>("b", nullptr, Vector(), std::string("OK"));
    button.onPointer(0.1F, 0.1F);

    button.onMouseButtons(false, true, true);

    EXPECT_FALSE(button.isActive());
    EXPECT_FALSE(button.wasClicked());
    EXPECT_TRUE(button.prevMiddle);
    EXPECT_TRUE(button.prevRight);
}

TEST_F(ButtonState, StaysHeldAndHoveredWhereverThePointerGoes)
{
    auto& button = make<Button>("b", nullptr, Vector(), std::string("OK"));
    point(button, 0.1F, 0.1F, true);

    point(button, 9.0F, 9.0F, true);

    EXPECT_TRUE(button.hover);
    EXPECT_TRUE(button.active);
}

TEST_F(ButtonState, IsIdleAfterTheReleaseUntilThePointerMoves)
{
    auto& button = make<Button>("b", nullptr, Vector(), std::string("OK"));
    point(button, 0.1F, 0.1F, true);

    point(button, 0.1F, 0.1F, false);
    EXPECT_FALSE(button.active);
    EXPECT_FALSE(button.hover);

    button.onPointer(0.1F, 0.1F);
    EXPECT_TRUE(button.hover);
}

TEST_F(ButtonState, IgnoresASecondPressWithNoPointerEventBetween)
{
    auto& button = make<Button>("b", nullptr, Vector(), std::string("OK"));
    point(button, 0.1F, 0.1F, true);
    button.onMouseButtons(false, false, false);
    button.wasClicked();

    button.onMouseButtons(true, false, false);

    EXPECT_FALSE(button.wasClicked());
    EXPECT_FALSE(button.active);
}

TEST_F(ButtonState, IgnoresAPressThatBeganOutside)
{
    auto& button = make<Button>("b", nullptr, Vector(), std::string("OK"));
    point(button, 9.0F, 9.0F, true);

    point(button, 0.1F, 0.1F, true);

    EXPECT_FALSE(button.active);
    EXPECT_FALSE(button.hover) << "the buttons write what is held into it";
    EXPECT_FALSE(button.wasClicked());
}

TEST_F(ButtonState, APointerEventWithLeftUpTakesAnUnreadClickBack)
{
    auto& button = make<Button>("b", nullptr, Vector(), std::string("OK"));
    point(button, 0.1F, 0.1F, true);
    point(button, 0.1F, 0.1F, false);
    ASSERT_TRUE(button.clicked) << "the release itself leaves it";

    point(button, 0.1F, 0.1F, false);

    EXPECT_FALSE(button.wasClicked());
}

struct Look
{
    bool isHeld;
    float glow;
    const char* move; ///< what a held button makes besides
    const char* bodyColour;
    const char* edgeColour;
};

TEST_F(ButtonDrawingGLTest, MakesTheseCallsWithACaption)
{
    auto& button = make<Button>("ok", nullptr, Vector(1.0F, 2.0F), std::string("OK"));
    const Look looks[] = {
        {false, 0.0F, "", "glColor3f(0.375, 0.25, 0.125)\n", "glColor3f(0.5, 0.25, 0.125)\n"},
        {true, 1.0F, "glTranslatef(0.0625, -0.125, 0)\n", "glColor3f(0.75, 0.5, 0.25)\n",
         "glColor3f(1, 0.5, 0.25)\n"},
    };
    // It is 0.25 by 0.375 with a cut of 3 * 0.125 of its height.
    const std::string plate =
        "GL_POLYGON -0.125,-0.1875[0,0] -0.125,0.046875[0,0.625] 0.015625,0.1875[0.375,1] "
        "0.125,0.1875[1,1] 0.125,-0.046875[1,0.375] -0.015625,-0.1875[1,0] -0.125,-0.1875[0,0]\n";
    for (const Look& look : looks) {
        button.active = look.isHeld;
        button.glow = look.glow;

        EXPECT_EQ(callsOfRender(button), std::string(R"(
glLineWidth(2)
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glEnable(GL_BLEND)
glDisable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
)") + look.move + R"(glTranslatef(1.125, 2.1875, 0)
glPushMatrix()
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
)" + look.bodyColour + plate + R"(glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)
)" + look.edgeColour + R"(glDisable(GL_TEXTURE_2D)
)" + plate + R"(glPopMatrix()
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor3f(0.5, 0.25, 1)
glTranslatef(-0.0625, -0.104167, 0)
print "OK"
glPopMatrix()
)") << look.isHeld;
    }
}

TEST_F(ButtonDrawingGLTest, MakesTheseCallsWithAnImage)
{
    auto& button = make<Button>("quill", nullptr, Vector(), Vector(0.5F, 0.5F));

    EXPECT_EQ(callsOfRender(button), R"(
glLineWidth(2)
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glEnable(GL_BLEND)
glDisable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
glEnable(GL_TEXTURE_2D)
glBindTexture(GL_TEXTURE_2D, 7)
glTranslatef(0.25, 0.25, 0)
glPushMatrix()
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor3f(0.375, 0.25, 0.125)
glEnable(GL_TEXTURE_2D)
GL_POLYGON -0.25,-0.25[0,0] -0.25,0.0625[0,0.625] -0.0625,0.25[0.375,1] 0.25,0.25[1,1] 0.25,-0.0625[1,0.375] 0.0625,-0.25[1,0] -0.25,-0.25[0,0]
glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)
glColor3f(0.5, 0.25, 0.125)
glDisable(GL_TEXTURE_2D)
GL_POLYGON -0.25,-0.25[0,0] -0.25,0.0625[0,0.625] -0.0625,0.25[0.375,1] 0.25,0.25[1,1] 0.25,-0.0625[1,0.375] 0.0625,-0.25[1,0] -0.25,-0.25[0,0]
glPopMatrix()
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor3f(0.5, 0.25, 1)
glTranslatef(-0.1875, -0.166667, 0)
print ""
glPopMatrix()
)");
}
} // namespace
} // namespace tamor::test
