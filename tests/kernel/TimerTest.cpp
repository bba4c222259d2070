#include "kernel/Timer.h"

#include "tests/support/CapturedErrors.h"

#include <SDL.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

namespace
{
int starts = 0;
bool startFails = false;
} // namespace

/// Stands before SDL's own, which it calls: no way is known to make SDL's timers fail.
extern "C" int SDL_InitSubSystem(Uint32 flags)
{
    ++starts;
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
class TimerTest : public testing::Test
{
protected:
    TimerTest()
    {
        SDL_QuitSubSystem(SDL_INIT_TIMER);
        starts = 0;
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
    EXPECT_EQ(starts, 1);
    new Timer;
    EXPECT_EQ(starts, 1);

    EXPECT_EQ(errors.text(), "");
}

TEST_F(TimerTest, CountsAllTheSameWhenTheSubsystemDoesNotStart)
{
    startFails = true;
    const test::CapturedErrors errors;

    auto* const timer = new Timer;

    EXPECT_EQ(errors.text(), "SDL_InitSubSystem() failed. SDL Error: no timers today\n");
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
