#include "kernel/Event.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamor
{
namespace
{
TEST(Event, StartsOfNoKindWithTheWindowThatIsWanted)
{
    const Event event;

    EXPECT_EQ(event.kind, 0);
    EXPECT_EQ(event.delta, 0);
    EXPECT_EQ(event.window.title, "");
    EXPECT_EQ(event.window.width, 800);
    EXPECT_EQ(event.window.height, 600);
    EXPECT_EQ(event.window.depth, 24);
    EXPECT_FALSE(event.window.fullscreen);
}

TEST(Event, StartsWithNothingPressed)
{
    const Event event;

    EXPECT_EQ(event.mouse.x, 0);
    EXPECT_EQ(event.mouse.y, 0);
    EXPECT_EQ(event.mouse.z, 0);
    EXPECT_EQ(event.mouse.left, 0);
    EXPECT_EQ(event.mouse.middle, 0);
    EXPECT_EQ(event.mouse.right, 0);
    EXPECT_EQ(event.keyboard.modifiers, 0);
    EXPECT_EQ(event.keyboard.held.size(), 512U);
    EXPECT_EQ(event.keyboard.pressed.size(), 512U);
    const auto areZero = [](const auto& keys) {
        return std::count(keys.begin(), keys.end(), 0) == 512;
    };
    EXPECT_TRUE(areZero(event.keyboard.held));
    EXPECT_TRUE(areZero(event.keyboard.pressed));
}

TEST(Event, ACopyHoldsAllAndIsIndependent)
{
    Event event;
    event.kind = EV_MOUSE;
    event.mouse.dx = 3;
    event.keyboard.held[27] = 1;
    event.window.title = "a title that is too long to stand inside the string itself";

    Event copy(event);
    event.window.title[0] = 'A';

    EXPECT_EQ(copy.kind, EV_MOUSE);
    EXPECT_EQ(copy.mouse.dx, 3);
    EXPECT_EQ(copy.keyboard.held[27], 1);
    EXPECT_EQ(copy.window.title[0], 'a');
}

TEST(EventKind, CodesRunFrom16To26)
{
    EXPECT_EQ(EV_LOAD_RESOURCES, 16);
    EXPECT_EQ(EV_OPEN_WINDOW, 17);
    EXPECT_EQ(EV_LOAD_GRAPHICS_RESOURCES, 18);
    EXPECT_EQ(EV_INITIAL_SETUP, 19);
    EXPECT_EQ(EV_UPDATE, 20);
    EXPECT_EQ(EV_RENDER, 21);
    EXPECT_EQ(EV_RENDER_DONE, 22);
    EXPECT_EQ(EV_MOUSE, 23);
    EXPECT_EQ(EV_KEYBOARD, 24);
    EXPECT_EQ(EV_QUIT, 25);
    EXPECT_EQ(EV_RELEASE_RESOURCES, 26);
}
} // namespace
} // namespace tamor
