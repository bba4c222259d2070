#include "widgets/Slider.h"

#include "tests/gui/GuiTest.h"
#include "tests/widgets/RenderedCalls.h"
#include "widgets/Label.h"

namespace tamor::test
{
namespace
{
using SliderState = GuiTest;
using SliderArea = GuiTest;
using SliderDrag = GuiTest;
using SliderDrawingGLTest = GuiGLTest;

// The knob is 0.5 wide in the test's theme, so that the area reaches 0.25 around the line.

TEST_F(SliderState, BeginsInTheMiddle)
{
    auto& slider = make<Slider>("s", nullptr, Vector(1.0F, 2.0F), Vector(0.5F, 0.0F));

    EXPECT_EQ(slider.typeName(), "Slider");
    EXPECT_EQ(slider.getValue(), 0.5F);
    EXPECT_EQ(slider.dimensions.x, 0.5F);
    EXPECT_EQ(slider.dimensions.y, 0.0F);
    EXPECT_EQ(slider.extent.x, 0.5F);
    EXPECT_EQ(slider.lastMouse.x, -5.0F);
    EXPECT_EQ(slider.lastMouse.y, -5.0F);
    EXPECT_EQ(slider.lastMouse.w, 1.0F);
    EXPECT_FALSE(slider.dragging);
    EXPECT_FALSE(slider.isExclusive());
    EXPECT_TRUE(slider.deselect(nullptr));
}

TEST_F(SliderArea, LeavesRoomForTheKnob)
{
    const auto& vertical = make<Slider>("v", nullptr, Vector(1.0F, 2.0F), Vector(0.0F, 3.0F));
    const auto& horizontal = make<Slider>("h", nullptr, Vector(1.0F, 2.0F), Vector(3.0F, 0.0F));
    const auto& diagonal = make<Slider>("d", nullptr, Vector(1.0F, 2.0F), Vector(3.0F, 1.0F));

    const Vector v = vertical.getRect();
    EXPECT_EQ(v.x, 0.75F);
    EXPECT_EQ(v.y, 2.0F);
    EXPECT_EQ(v.z, 1.25F);
    EXPECT_EQ(v.w, 5.5F) << "a whole knob above the line";
    const Vector h = horizontal.getRect();
    EXPECT_EQ(h.x, 1.0F);
    EXPECT_EQ(h.y, 1.75F);
    EXPECT_EQ(h.z, 4.5F) << "a whole knob right of the line";
    EXPECT_EQ(h.w, 2.25F);
    const Vector d = diagonal.getRect();
    EXPECT_EQ(d.x, 1.0F);
    EXPECT_EQ(d.y, 1.75F);
    EXPECT_EQ(d.z, 4.5F);
    EXPECT_EQ(d.w, 3.25F);
}

TEST_F(SliderArea, IsHalfAKnobAroundTheLine)
{
    auto& slider = make<Slider>("s", nullptr, Vector(1.0F, 2.0F), Vector(3.0F, 0.0F));
    struct Row
    {
        float x;
        float y;
        bool isInside;
    };
    const Row rows[] = {
        {2.0F, 2.0F, true},    {0.8125F, 2.0F, true}, {0.75F, 2.0F, false},
        {4.1875F, 2.0F, true}, {4.25F, 2.0F, false},  {2.0F, 2.1875F, true},
        {2.0F, 2.25F, false},  {2.0F, 1.8125F, true}, {2.0F, 1.75F, false},
    };
    for (const Row& row : rows) {
        slider.onPointer(row.x, row.y);
        EXPECT_EQ(slider.hitTest(), row.isInside) << row.x << ", " << row.y;
        EXPECT_EQ(slider.hover, row.isInside);
    }
    EXPECT_EQ(slider.position.x, 1.0F);
}

TEST_F(SliderState, GoesThroughItsStates)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(2.0F, 0.0F));

    point(slider, 1.0F, 0.0F, false);
    EXPECT_TRUE(slider.hover);
    EXPECT_FALSE(slider.dragging);

    EXPECT_TRUE(slider.onMouseButtons(true, false, false));
    EXPECT_TRUE(slider.dragging);
    EXPECT_TRUE(slider.prevLeft);

    point(slider, 1.0F, 9.0F, true);
    EXPECT_TRUE(slider.dragging) << "outside the area, still dragging";
    EXPECT_TRUE(slider.hover);
    EXPECT_EQ(slider.value, 0.5F);

    point(slider, 1.0F, 0.0F, false);
    EXPECT_FALSE(slider.dragging);
    EXPECT_FALSE(slider.hover) << "until the next pointer event";
    slider.onPointer(1.0F, 0.0F);
    EXPECT_TRUE(slider.hover);
}

TEST_F(SliderState, IgnoresAPressThatBeganOutside)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(2.0F, 0.0F));
    point(slider, 9.0F, 9.0F, true);

    point(slider, 1.0F, 0.0F, true);

    EXPECT_FALSE(slider.dragging);
}

TEST_F(SliderState, LeavesAPressOnAChildToTheChild)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(2.0F, 0.0F));
    auto& label = make<Label>("l", &slider, Vector(), std::string("ab"));
    slider.children = {&label};
    slider.hover = true;

    slider.onPointer(0.1F, 0.1F);
    EXPECT_TRUE(label.hover);
    EXPECT_EQ(label.mouse.x, 0.1F) << "unchanged";
    EXPECT_TRUE(slider.hover) << "and its own hover is left alone";

    EXPECT_FALSE(slider.onMouseButtons(true, false, false));
    EXPECT_FALSE(slider.dragging);
    EXPECT_FALSE(slider.prevLeft);
}

TEST_F(SliderDrag, RaisesTheValueByTheShareOfTheLength)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(0.5F, 0.0F));
    point(slider, 0.2F, 0.0F, true);

    slider.onPointer(0.3F, 0.0F);

    EXPECT_NEAR(slider.value, 0.7F, 1e-6F) << "0.1 of a length of 0.5; two roundings";
}

TEST_F(SliderDrag, FollowsTheMotionUpward)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(0.0F, 2.0F));
    point(slider, 0.0F, 1.0F, true);

    slider.onPointer(0.2F, 0.5F);
    EXPECT_EQ(slider.value, 0.25F);
    slider.onPointer(0.0F, 1.5F);
    EXPECT_EQ(slider.value, 0.75F);
}

TEST_F(SliderDrag, RoundsItsScaleWithTheAspect)
{
    auto& across = make<Slider>("h", nullptr, Vector(1.0F, 2.0F), Vector(0.171F, 0.0F));
    auto& upward = make<Slider>("v", nullptr, Vector(1.0F, 2.0F), Vector(0.0F, 0.182F));
    point(across, 1.0625F, 2.0F, true);
    point(upward, 1.0F, 2.0625F, true);

    across.onPointer(1.125F, 2.0F);
    upward.onPointer(1.0F, 2.125F);

    // In exact arithmetic 0.5 + 0.0625 / 0.171 and 0.5 + 0.0625 / 0.182, which single precision
    // gives as 0.865497112 and 0.843406558.
    EXPECT_EQ(across.value, 0.865497053F);
    EXPECT_EQ(upward.value, 0.843406618F);
}

TEST_F(SliderDrag, IsRelativeToTheLastPlaceNotToTheKnob)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(2.0F, 0.0F));
    point(slider, 0.25F, 0.0F, true);
    EXPECT_EQ(slider.value, 0.5F) << "the press itself moves nothing";

    slider.onPointer(0.5F, 0.0F);

    EXPECT_EQ(slider.value, 0.625F);
}

TEST_F(SliderDrag, RefusesToReachAnEnd)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(2.0F, 0.0F));
    point(slider, 1.0F, 0.0F, true);

    slider.onPointer(2.0F, 0.0F);
    EXPECT_EQ(slider.value, 0.5F) << "exactly 1 is refused";
    slider.onPointer(1.0F, 0.0F);
    EXPECT_EQ(slider.value, 0.5F) << "and exactly 0";
    slider.onPointer(1.9375F, 0.0F);
    EXPECT_EQ(slider.value, 0.96875F);
    slider.onPointer(2.125F, 0.0F);
    EXPECT_EQ(slider.value, 0.96875F) << "beyond 1 is refused";
}

TEST_F(SliderDrag, ComesAsNearAsTheLastStepAllows)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(2.0F, 0.0F));
    point(slider, 1.0F, 0.0F, true);

    for (int step = 1; step <= 16; ++step)
        slider.onPointer(1.0F + static_cast<float>(step) * 0.0625F, 0.0F);

    EXPECT_EQ(slider.value, 0.96875F) << "15 steps of 1/32; the 16th would be 1";
}

TEST_F(SliderDrag, HasNoEffectOutsideTheAreaAndGoesOnInside)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(2.0F, 0.0F));
    point(slider, 1.0F, 0.0F, true);

    slider.onPointer(1.5F, 1.0F);
    EXPECT_EQ(slider.value, 0.5F);
    slider.onPointer(1.25F, 0.0F);
    EXPECT_EQ(slider.value, 0.375F) << "from the last place outside";
}

TEST_F(SliderDrag, TakesAPlaceAtMinusFiveForNone)
{
    auto& slider = make<Slider>("s", nullptr, Vector(-6.0F, 0.0F), Vector(2.0F, 0.0F));
    point(slider, -5.0F, 0.0F, true);
    ASSERT_TRUE(slider.dragging);

    slider.onPointer(-4.75F, 0.0F);
    EXPECT_EQ(slider.value, 0.5F);
    slider.onPointer(-4.5F, 0.0F);
    EXPECT_EQ(slider.value, 0.625F);
}

TEST_F(SliderDrag, TakesAPlaceAtMinusFiveUpwardForNoneToo)
{
    auto& slider = make<Slider>("s", nullptr, Vector(0.0F, -6.0F), Vector(0.0F, 2.0F));
    point(slider, 0.0F, -5.0F, true);

    slider.onPointer(0.0F, -4.75F);
    EXPECT_EQ(slider.value, 0.5F);
    slider.onPointer(0.0F, -4.5F);
    EXPECT_EQ(slider.value, 0.625F);
}

TEST_F(SliderDrag, DoesNothingOnADiagonal)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(2.0F, 2.0F));
    point(slider, 1.0F, 1.0F, true);

    slider.onPointer(1.5F, 1.5F);

    EXPECT_TRUE(slider.dragging);
    EXPECT_EQ(slider.value, 0.5F);
}

TEST_F(SliderDrag, KeepsTheValueOfASliderWithoutALength)
{
    auto& slider = make<Slider>("s", nullptr, Vector(), Vector(0.0F, 0.0F));
    point(slider, 0.0F, 0.0F, true);

    slider.onPointer(0.1F, 0.1F);
    slider.onPointer(0.1F, 0.1F);

    EXPECT_TRUE(slider.dragging);
    EXPECT_EQ(slider.value, 0.5F);
}

struct DrawnSlider
{
    Vector extent;
    float value;
    float glow;
    const char* colour;
    const char* line;
    const char* knob; ///< where it is drawn, and how it is turned
};

TEST_F(SliderDrawingGLTest, MakesTheseCalls)
{
    const DrawnSlider rows[] = {
        {{2.0F, 0.0F},
         0.25F,
         0.0F,
         "0.375, 0.25, 0.125",
         "1.25,1.875 3.25,1.875",
         "glTranslatef(1.75, 1.875, 0)\n"},
        {{0.0F, 2.0F},
         0.25F,
         1.0F,
         "0.75, 0.5, 0.25",
         "1,2 1,4.125",
         "glTranslatef(1, 2.5, 0)\nglRotatef(90, 0, 0, 1)\n"},
        {{2.0F, 1.0F},
         0.5F,
         0.0F,
         "0.375, 0.25, 0.125",
         "1.25,1.875 3.25,2.875",
         "glTranslatef(2.25, 2.375, 0)\n"},
    };
    for (const DrawnSlider& row : rows) {
        auto& slider = make<Slider>("s", nullptr, Vector(1.0F, 2.0F), row.extent);
        slider.value = row.value;
        slider.glow = row.glow;

        EXPECT_EQ(callsOfRender(slider), std::string(R"(
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glEnable(GL_BLEND)
glDisable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
glColor4f()") + row.colour + R"(, 0.5)
glLineWidth(2)
glTranslatef(0, 0.125, 0)
GL_LINES )" + row.line + R"(
glBindTexture(GL_TEXTURE_2D, 7)
glEnable(GL_TEXTURE_2D)
)" + row.knob + R"(GL_QUADS -0.25,-0.25[0,0.5] -0.25,0.25[0,1] 0.25,0.25[0.25,1] 0.25,-0.25[0.25,0.5]
glPopMatrix()
)");
    }
}
} // namespace
} // namespace tamor::test
