// Linked into each listing, which stays as it is in the manual: plays the user, who does what
// "input.txt" says, a line a frame, and then closes the window. A line is "move X Y", "press",
// "release" or "wait". The last picture is kept as "window.ppm". A frame takes 100 milliseconds of the
// program's clock, so that each picture is the same on every machine.

#include "examples/Screenshot.h"

#include <SDL.h>
#include <dlfcn.h>

#include <fstream>
#include <string>

namespace
{
constexpr int framesBeforeEnd = 3;

/// Gives SDL what the line says that the mouse does.
void playLine(std::ifstream& file, const std::string& action)
{
    static Uint16 x = 0;
    static Uint16 y = 0;
    SDL_Event event{};
    if (action == "move") {
        file >> x >> y;
        event.type = SDL_MOUSEMOTION;
        event.motion.x = x;
        event.motion.y = y;
    } else if (action == "press" || action == "release") {
        const bool isDown = action == "press";
        event.type = isDown ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.state = isDown ? SDL_PRESSED : SDL_RELEASED;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.x = x;
        event.button.y = y;
    } else {
        return;
    }
    SDL_PushEvent(&event);
}

int frames = 0;
} // namespace

/// Stands in front of SDL's function.
extern "C" Uint32 SDL_GetTicks()
{
    return static_cast<Uint32>(100 * frames);
}

/// Stands in front of SDL's function.
extern "C" void SDL_GL_SwapBuffers()
{
    static std::ifstream input("input.txt");
    static int framesWithoutInput = 0;
    ++frames;
    std::string action;
    if (input >> action) {
        playLine(input, action);
    } else if (framesWithoutInput++ == framesBeforeEnd) {
        writeScreenshot("window.ppm");
        SDL_Event quit{};
        quit.type = SDL_QUIT;
        SDL_PushEvent(&quit);
    }
    using SwapBuffers = void (*)();
    reinterpret_cast<SwapBuffers>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"))();
}
