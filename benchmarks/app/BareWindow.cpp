/// \file
/// The least program that shows a frame: an SDL window with OpenGL, cleared and swapped. A peer of
/// the demonstration's start.
#include "benchmarks/app/FirstWindow.h"

#include <GL/gl.h>

int main()
{
    if (!tamor::bench::openFirstWindow())
        return 1;
    for (;;) {
        SDL_PumpEvents();
        SDL_GL_SwapBuffers();
        glClear(GL_COLOR_BUFFER_BIT);
    }
}
