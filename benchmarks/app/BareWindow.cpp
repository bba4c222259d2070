/// \file
/// The least program that shows a frame: an SDL window with OpenGL, cleared and swapped. The peer
/// of the demonstration's start.
#include <GL/gl.h>
#include <SDL.h>

int main()
{
    if (SDL_Init(SDL_INIT_VIDEO | SDL_INIT_TIMER) != 0)
        return 1;
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    if (SDL_SetVideoMode(800, 600, 24, SDL_OPENGL) == nullptr)
        return 1;
    for (;;) {
        SDL_PumpEvents();
        SDL_GL_SwapBuffers();
        glClear(GL_COLOR_BUFFER_BIT);
    }
}
