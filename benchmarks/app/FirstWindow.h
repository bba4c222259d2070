/// \file
/// The window of the programs that the demonstration's start is compared with.
#pragma once

#include <SDL.h>

namespace tamor::bench
{
/// Opens a window of the demonstration's size with OpenGL.
/// \return false if there is none
inline bool openFirstWindow()
{
    if (SDL_Init(SDL_INIT_VIDEO | SDL_INIT_TIMER) != 0)
        return false;
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    return SDL_SetVideoMode(800, 600, 24, SDL_OPENGL) != nullptr;
}
} // namespace tamor::bench
