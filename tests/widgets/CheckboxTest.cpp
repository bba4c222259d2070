#include "widgets/Checkbox.h"

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/GLRecorder.h"
#include "tests/widgets/RenderedCalls.h"
#include "widgets/Frame.h"
#include "widgets/Optionbox.h"
#include "widgets/Textbox.h"

namespace tamor::test
{
namespace
{
using CheckboxSize = GuiTest;
using CheckboxState = GuiTest;
using CheckboxDrawingGLTest = GuiGLTest;
using OptionboxState = GuiTest;
using OptionboxGroup = GuiTest;
using OptionboxDrawingGLTest = GuiGLTest;

// --- Checkbox ------------------------------------------------------------------------------------

TEST_F(CheckboxSize, HoldsTheIconAndTheCaptionWithABlank)
{
    const auto& box = make<Checkbox>("c", nullptr, Vector(), std::string("abc"));

    // Four characters of 1/16, the icon of 1/2 and a font width of 1/8; the icon and two font
    // heights are 1/2.
    EXPECT_EQ(box.dimensions.x, 0.875F);
    EXPECT_EQ(box.dimensions.y, 0.5F);
    EXPECT_EQ(box.text, "abc");
    EXPECT_FALSE(box.active);
}

TEST_F(CheckboxSize, IsAsHighAsTheLargerOfIconAndTwoFontHeights)
{
    theme.iconSize = 0.25F;
    EXPECT_EQ(make<Checkbox>("c", nullptr, Vector(), std::string("a")).dimensions.y, 0.5F);

    theme.iconSize = 0.75F;
    EXPECT_EQ(make<Checkbox>("c", nullptr, Vector(), std::string("a")).dimensions.y, 0.75F);
}

TEST_F(CheckboxSize, IsTheIconWithoutACaption)
{
    const auto& box = make<Checkbox>("c", nullptr, Vector(), std::string());

    EXPECT_EQ(box.dimensions.x, 0.5F);
    EXPECT_EQ(box.dimensions.y, 0.5F);
}

TEST_F(CheckboxState, TogglesAtEachPress)
{
    auto& box = make<Checkbox>("c", nullptr, Vector(), std::string("abc"));
    EXPECT_EQ(box.typeName(), "Checkbox");
    EXPECT_FALSE(box.isExclusive());

    box.onPointer(0.1F, 0.1F);
    EXPECT_TRUE(box.onMouseButtons(true, false, false));
    EXPECT_TRUE(box.isActive());
    EXPECT_EQ(box.fade, 1.0F);

    box.fade = 0.0F;
    EXPECT_FALSE(box.onMouseButtons(false, false, false));
    EXPECT_TRUE(box.onMouseButtons(true, false, false));
    EXPECT_FALSE(box.isActive());
    EXPECT_EQ(box.fade, 1.0F);
}

TEST_F(CheckboxState, TogglesOnceHoweverLongThePressIsHeld)
{
    auto& box = make<Checkbox>("c", nullptr, Vector(), std::string("abc"));
    point(box, 0.1F, 0.1F, true);

    box.onPointer(0.1F, 0.1F);
    EXPECT_FALSE(box.onMouseButtons(true, false, false));

    EXPECT_TRUE(box.active);
}

TEST_F(CheckboxState, IgnoresAPressElsewhereAndOtherButtons)
{
    auto& box = make<Checkbox>("c", nullptr, Vector(), std::string("abc"));

    point(box, 5.0F, 0.1F, true);
    EXPECT_FALSE(box.active);
    point(box, 0.1F, 0.1F, true);
    EXPECT_FALSE(box.active) << "the press began outside";
    box.onPointer(0.1F, 0.1F);
    EXPECT_FALSE(box.onMouseButtons(false, true, true));
    EXPECT_FALSE(box.active);
    EXPECT_TRUE(box.prevMiddle);
    EXPECT_TRUE(box.prevRight);
}

TEST_F(CheckboxState, IgnoresDeselection)
{
    auto& box = make<Checkbox>("c", nullptr, Vector(), std::string("abc"));
    box.active = true;

    EXPECT_TRUE(box.deselect(nullptr));

    EXPECT_TRUE(box.active);
}

TEST_F(CheckboxState, FadesWithTime)
{
    auto& box = make<Checkbox>("c", nullptr, Vector(), std::string("abc"));
    point(box, 0.1F, 0.1F, true);

    box.update(2); // 0.25 a millisecond
    EXPECT_EQ(box.fade, 0.5F);
    box.update(2);
    box.update(2);
    EXPECT_EQ(box.fade, 0.0F);
}

TEST_F(CheckboxDrawingGLTest, MakesTheseCallsWhenOff)
{
    auto& box = make<Checkbox>("c", nullptr, Vector(1.0F, 2.0F), std::string("abc"));

    EXPECT_EQ(callsOfRender(box), R"(
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glEnable(GL_BLEND)
glEnable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
glBindTexture(GL_TEXTURE_2D, 7)
glColor3f(0.375, 0.25, 0.125)
GL_QUADS 1,2[0.5,0] 1,2.5[0.5,0.5] 1.5,2.5[0.75,0.5] 1.5,2[0.75,0]
glColor3f(0.5, 0.25, 1)
glTranslatef(1.5, 2.125, 0)
print " abc"
glPopMatrix()
)");
}

TEST_F(CheckboxDrawingGLTest, MakesTheseCallsWhenOnAndLit)
{
    auto& box = make<Checkbox>("c", nullptr, Vector(1.0F, 2.0F), std::string());
    box.active = true;
    box.glow = 1.0F;

    EXPECT_EQ(callsOfRender(box), R"(
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glEnable(GL_BLEND)
glEnable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
glBindTexture(GL_TEXTURE_2D, 7)
glColor3f(0.75, 0.5, 0.25)
GL_QUADS 1,2[0.5,0] 1,2.5[0.5,0.5] 1.5,2.5[0.75,0.5] 1.5,2[0.75,0]
glColor4f(0.75, 0.5, 0.25, 1)
GL_QUADS 1,2[0.75,0] 1,2.5[0.75,0.5] 1.5,2.5[1,0.5] 1.5,2[1,0]
glColor3f(0.5, 0.25, 1)
glTranslatef(1.5, 2.125, 0)
print " "
glPopMatrix()
)");
}

struct Fade
{
    bool active;
    float fade;
    const char* colour; ///< of the mark, or null if there is none
};

TEST_F(CheckboxDrawingGLTest, FadesTheMarkInAndOut)
{
    theme.litBrightness = 0.5F;
    auto& box = make<Checkbox>("c", nullptr, Vector(), std::string("abc"));
    const Fade rows[] = {
        {true, 1.0F, "glColor4f(0, 0, 0, 0)"},
        {true, 0.75F, "glColor4f(0.09375, 0.0625, 0.03125, 0.125)"},
        {true, 0.0F, "glColor4f(0.375, 0.25, 0.125, 0.5)"},
        {false, 1.0F, "glColor4f(0.375, 0.25, 0.125, 0.5)"},
        {false, 0.25F, "glColor4f(0.09375, 0.0625, 0.03125, 0.125)"},
        {false, 0.0001F, nullptr},
        {false, 0.0F, nullptr},
    };
    for (const Fade& row : rows) {
        box.active = row.active;
        box.fade = row.fade;

        GLRecorder recorder;
        box.render();

        const std::vector<std::string> colours = recorder.calls({"glColor4f"});
        if (row.colour == nullptr)
            EXPECT_TRUE(colours.empty()) << row.fade;
        else
            EXPECT_EQ(colours, std::vector<std::string>{row.colour}) << row.fade;
    }
}

// --- Optionbox -----------------------------------------------------------------------------------

TEST_F(OptionboxState, IsTickedByAPressAndNotUntickedByAnother)
{
    auto& box = make<Optionbox>("o", nullptr, Vector(), std::string("abc"));
    EXPECT_EQ(box.typeName(), "Optionbox");
    EXPECT_TRUE(box.isExclusive());
    EXPECT_EQ(box.dimensions.x, 0.875F);

    box.onPointer(0.1F, 0.1F);
    EXPECT_TRUE(box.onMouseButtons(true, false, false));
    EXPECT_TRUE(box.active);
    EXPECT_EQ(box.fade, 1.0F);

    box.fade = 0.0F;
    EXPECT_FALSE(box.onMouseButtons(false, false, false));
    EXPECT_FALSE(box.onMouseButtons(true, false, false));
    EXPECT_TRUE(box.active);
    EXPECT_EQ(box.fade, 0.0F);
}

TEST_F(OptionboxState, IgnoresAPressThatBeganOutside)
{
    auto& box = make<Optionbox>("o", nullptr, Vector(), std::string("abc"));
    point(box, 5.0F, 5.0F, true);

    box.onPointer(0.1F, 0.1F);
    EXPECT_FALSE(box.onMouseButtons(true, true, true));

    EXPECT_FALSE(box.active);
    EXPECT_TRUE(box.prevMiddle);
    EXPECT_TRUE(box.prevRight);
}

TEST_F(OptionboxState, IsUntickedByDeselectionWhoeverWasChosen)
{
    auto& box = make<Optionbox>("o", nullptr, Vector(), std::string("abc"));
    box.active = true;

    EXPECT_TRUE(box.deselect(&box));
    EXPECT_FALSE(box.active);
    EXPECT_EQ(box.fade, 1.0F);

    box.fade = 0.0F;
    EXPECT_TRUE(box.deselect(nullptr));
    EXPECT_EQ(box.fade, 0.0F) << "what is off stays off without a fade";
}

TEST_F(OptionboxGroup, TicksItsFirstAgainWithoutAFadeWhenAChildIsAdded)
{
    auto& frame = make<Frame>("f", nullptr, Vector(), false);
    auto& first = make<Optionbox>("o1", &frame, Vector(), std::string("a"));
    auto& second = make<Optionbox>("o2", &frame, Vector(1.0F, 0.0F), std::string("b"));
    auto& third = make<Optionbox>("o3", &frame, Vector(2.0F, 0.0F), std::string("c"));
    frame.addChild(&first);
    frame.addChild(&second);
    point(frame, 1.1F, 0.1F, true);
    ASSERT_TRUE(second.active);
    ASSERT_FALSE(first.active);

    frame.addChild(&third);

    EXPECT_TRUE(first.active);
    EXPECT_EQ(first.fade, 0.0F);
    EXPECT_FALSE(second.active);
    EXPECT_EQ(second.fade, 1.0F);
    EXPECT_FALSE(third.active);
}

TEST_F(OptionboxGroup, IsNoneAtTheTopLevel)
{
    auto& first = make<Optionbox>("o1", nullptr, Vector(), std::string("a"));
    auto& second = make<Optionbox>("o2", nullptr, Vector(1.0F, 0.0F), std::string("b"));
    GLWidget::topLevel = {&first, &second};

    GLWidget::mouseMoved(Vector(420.0F, 270.0F));
    GLWidget::mouseButtons(true, false, false);
    GLWidget::mouseButtons(false, false, false);
    GLWidget::mouseMoved(Vector(720.0F, 270.0F));
    GLWidget::mouseButtons(true, false, false);

    EXPECT_TRUE(first.active);
    EXPECT_TRUE(second.active);
}

TEST_F(OptionboxGroup, HasATextBoxAmongItsMembers)
{
    const CapturedErrors errors;
    auto& frame = make<Frame>("f", nullptr, Vector(), false);
    auto& option = make<Optionbox>("o", &frame, Vector(), std::string("a"));
    auto& text = make<Textbox>("t", &frame, Vector(1.0F, 0.0F), 4, 1);
    frame.addChild(&option);
    frame.addChild(&text);
    ASSERT_TRUE(option.active);

    point(frame, 1.1F, 0.1F, true);
    EXPECT_TRUE(text.hover);
    EXPECT_FALSE(option.active) << "a click into the text box unticks the option";

    point(frame, 0.1F, 0.1F, false);
    point(frame, 0.1F, 0.1F, true);
    EXPECT_TRUE(option.active);
    EXPECT_FALSE(text.hover) << "and a tick takes its focus";
}

TEST_F(OptionboxDrawingGLTest, MakesTheseCallsWithIconsOfItsOwn)
{
    auto& box = make<Optionbox>("o", nullptr, Vector(1.0F, 2.0F), std::string("abc"));
    box.active = true;
    box.fade = 0.5F;

    EXPECT_EQ(callsOfRender(box), R"(
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glEnable(GL_BLEND)
glEnable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
glBindTexture(GL_TEXTURE_2D, 7)
glColor3f(0.375, 0.25, 0.125)
GL_QUADS 1,2[0,0] 1,2.5[0,0.5] 1.5,2.5[0.25,0.5] 1.5,2[0.25,0]
glColor4f(0.375, 0.25, 0.125, 0.5)
GL_QUADS 1,2[0.25,0] 1,2.5[0.25,0.5] 1.5,2.5[0.5,0.5] 1.5,2[0.5,0]
glColor3f(0.5, 0.25, 1)
glTranslatef(1.5, 2.125, 0)
print " abc"
glPopMatrix()
)");
}

struct FadeRow
{
    float fade;
    bool isDrawn;
};

TEST_F(CheckboxDrawingGLTest, DrawsAFadingMarkAboveATenThousandth)
{
    auto& box = make<Checkbox>("c", nullptr, Vector(1.0F, 2.0F), std::string("a"));
    for (const FadeRow& row : {FadeRow{0.0001F, false}, FadeRow{0.000101F, true},
                               FadeRow{0.00005F, false}, FadeRow{0.0005F, true}}) {
        box.fade = row.fade;

        const std::string calls = callsOfRender(box);

        EXPECT_EQ(calls.find("glColor4f(") != std::string::npos, row.isDrawn) << row.fade;
    }
}
} // namespace
} // namespace tamor::test
