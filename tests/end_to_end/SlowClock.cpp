/// \file
/// Lets time pass a hundred times slower for the program that it is preloaded into.
#include <SDL.h>
#include <dlfcn.h>

/// Stands in front of SDL's function.
extern "C" Uint32 SDL_GetTicks()
{
    return reinterpret_cast<Uint32 (*)()>(dlsym(RTLD_NEXT, "SDL_GetTicks"))() / 100;
}
