#include "platform/GLee.h"

#include "tests/support/TestWindow.h"

#include "models/internal/BufferNames.h"
#include "shaders/ShaderProgram.h"
#include "tests/support/VirtualDisplay.h"
#include "textures/TextureRegistry.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>

namespace tamor::test
{
namespace
{
/// What the engine keeps for the life of a process belongs to a context, and a test has one of its
/// own.
void forgetObjectsOfTheLastContext()
{
    textureRegistry.clear();
    textureRefCounts.clear();
    vertexShaders.clear();
    fragmentShaders.clear();
    bufferNamesMade = false;
}
} // namespace

void openTestWindow(int width, int height)
{
    useTestDisplay();
    forgetObjectsOfTheLastContext();
    const bool isOpen = SDL_InitSubSystem(SDL_INIT_VIDEO | SDL_INIT_NOPARACHUTE) == 0 &&
                        SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1) == 0 &&
                        SDL_SetVideoMode(width, height, 24, SDL_OPENGL) != nullptr && GLeeInit();
    if (!isOpen) {
        std::fprintf(stderr, "no test window: %s\n", SDL_GetError());
        std::exit(2);
    }
    glViewport(0, 0, width, height);
}

void closeTestWindow()
{
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

void WindowTest::SetUp()
{
    openTestWindow(windowWidth, windowHeight);
}

void WindowTest::TearDown()
{
    closeTestWindow();
}
} // namespace tamor::test

// Drivers stay in memory when their window closes: the leak check can only name what they left
// behind, and so pass over it, while they are there.
extern "C" int dlclose(void* /*library*/) noexcept
{
    return 0;
}
