#include "benchmarks/textures/NoOpWindow.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>

namespace tamor::bench
{
void openNoOpWindow()
{
    static bool isOpen = false;
    if (isOpen)
        return;
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    setenv("GALLIUM_NOOP", "1", 1);
    isOpen = SDL_Init(SDL_INIT_VIDEO) == 0 && SDL_SetVideoMode(800, 600, 0, SDL_OPENGL) != nullptr;
    if (!isOpen) {
        std::fprintf(stderr, "no window: %s\n", SDL_GetError());
        std::exit(1);
    }
}
} // namespace tamor::bench
