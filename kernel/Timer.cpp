#include "kernel/Timer.h"

#include <SDL.h>

#include <iostream>

namespace tamor
{
Timer::Timer()
{
    if (SDL_WasInit(SDL_INIT_TIMER) == 0 &&
        SDL_InitSubSystem(SDL_INIT_TIMER | SDL_INIT_NOPARACHUTE) < 0) {
        std::cerr << "SDL_InitSubSystem() failed. SDL Error: " << SDL_GetError() << std::endl;
        SDL_QuitSubSystem(SDL_INIT_TIMER);
    }
    startTicks = SDL_GetTicks();
}

std::uint32_t Timer::getTicks() const
{
    return SDL_GetTicks() - startTicks;
}
} // namespace tamor
