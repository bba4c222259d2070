// Linked into each listing, which stays as it is in the manual: after a few frames it keeps
// two pixels and asks the program to end, as the user does by closing the window.

#include <GL/gl.h>
#include <SDL.h>
#include <dlfcn.h>

#include <array>
#include <fstream>

namespace
{
constexpr int framesBeforeEnd = 3;

void keepTwoPixels()
{
    std::array<GLint, 4> viewport;
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    std::array<unsigned char, 3> pixel;
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    std::ofstream file("middle-and-corner.txt");
    for (const auto& place : {std::array{viewport[2] / 2, viewport[3] / 2},
                              std::array{viewport[2] - 1, viewport[3] - 1}}) {
        glReadPixels(place[0], place[1], 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel.data());
        file << int{pixel[0]} << ' ' << int{pixel[1]} << ' ' << int{pixel[2]} << '\n';
    }
}
} // namespace

/// Stands in front of SDL's function.
extern "C" void SDL_GL_SwapBuffers()
{
    static int frames = 0;
    if (frames++ == framesBeforeEnd) {
        keepTwoPixels();
        SDL_Event quit{};
        quit.type = SDL_QUIT;
        SDL_PushEvent(&quit);
    }
    using SwapBuffers = void (*)();
    reinterpret_cast<SwapBuffers>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"))();
}
