#pragma once

#include <SDL.h>

namespace tamor::test
{
/// Whether SDL is SDL 2 under the interface of SDL 1.2, as it is from version 1.2.50 on. Its words of a
/// failure are others.
inline bool isSDL2()
{
    return SDL_Linked_Version()->patch >= 50;
}

/// What SDL says where it finds no display of X.
inline const char* wordsOfNoDisplay()
{
    return isSDL2() ? "x11 not available" : "No available video device";
}

/// What SDL says when the driver "dummy", which has no OpenGL, is to open a window with it.
inline const char* wordsOfNoOpenGL()
{
    return isSDL2()
               ? "OpenGL support is either not configured in SDL or not available in current SDL "
                 "video driver (dummy) or platform"
               : "OpenGL not available";
}
} // namespace tamor::test
