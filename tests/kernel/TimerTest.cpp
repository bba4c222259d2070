#include "kernel/Timer.h"

#include "tests/support/CapturedErrors.h"

#include <SDL.h>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace
{
/// The subsystems that were asked for, and those that were closed.
std::vector<Uint32> started;
std::vector<Uint32> closed;
bool startFails = false;
} // namespace

// These stand before SDL's own, which they call: no way is known to make SDL's timers fail.

extern "C" void SDL_QuitSubSystem(Uint32 flags)
{
    closed.push_back(flags);
    using Function = void (*)(Uint32);
    reinterpret_cast<Function>(dlsym(RTLD_NEXT, "SDL_QuitSubSystem"))(flags);
}

extern "C" int SDL_InitSubSystem(Uint32 flags)
{
    started.push_back(flags);
    if (startFails) {
        SDL_SetError("no timers today");
        return -1;
    }
    using Function = int (*)(Uint32);
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, "SDL_InitSubSystem"))(flags);
}

namespace tamor
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

class TimerTest : public testing::Test
{
protected:
    TimerTest()
    {
        SDL_QuitSubSystem(SDL_INIT_TIMER);
        started.clear();
        closed.clear();
    }

    ~TimerTest() override
    {
        startFails = false;
        collectAll();
        // The sweep ends a process, and this one goes on to further tests.
        shuttingDown = false;
    }
};

TEST_F(TimerTest, StartsTheTimerSubsystemUnlessItRuns)
{
    const test::CapturedErrors errors;

    new Timer;
    EXPECT_EQ(SDL_WasInit(SDL_INIT_TIMER), SDL_INIT_TIMER);
    new Timer;

    EXPECT_THAT(started, ElementsAre(0x100001U));
    EXPECT_THAT(closed, IsEmpty());
    EXPECT_EQ(errors.text(), "");
}

TEST_F(TimerTest, CountsAllTheSameWhenTheSubsystemDoesNotStart)
{
    startFails = true;
    const test::CapturedErrors errors;

    auto* const timer = new Timer;

    EXPECT_EQ(errors.text(), "SDL_InitSubSystem() failed. SDL Error: no timers today\n");
    EXPECT_THAT(started, ElementsAre(0x100001U));
    EXPECT_THAT(closed, ElementsAre(0x1U));
    const std::uint32_t ticks = timer->getTicks();
    EXPECT_LE(ticks, SDL_GetTicks() - timer->startTicks);
}

TEST_F(TimerTest, CountsFromItsConstruction)
{
    auto* const timer = new Timer;

    const std::uint32_t before = SDL_GetTicks();
    const std::uint32_t ticks = timer->getTicks();
    const std::uint32_t after = SDL_GetTicks();

    EXPECT_GE(ticks, before - timer->startTicks);
    EXPECT_LE(ticks, after - timer->startTicks);
}

TEST_F(TimerTest, CountsAcrossTheEndOfSDLsClock)
{
    auto* const timer = new Timer;

    timer->startTicks = SDL_GetTicks() + 5000;

    EXPECT_GE(timer->getTicks(), 0U - 5000U);
}
} // namespace
} // namespace tamor
