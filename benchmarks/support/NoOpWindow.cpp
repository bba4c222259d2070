#include "benchmarks/support/NoOpWindow.h"

#include <GL/gl.h>
#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace tamor::bench
{
void openNoOpWindow()
{
    static bool isOpen = false;
    if (isOpen)
        return;
    // Without threads of the driver's own, the processor time of this one is all there is.
    for (const auto& [name, value] : {std::pair{"GALLIUM_NOOP", "1"},
                                      {"LIBGL_ALWAYS_SOFTWARE", "1"},
                                      {"GALLIUM_THREAD", "0"},
                                      {"LP_NUM_THREADS", "0"},
                                      {"SDL_VIDEODRIVER", "x11"}})
        setenv(name, value, 1);
    isOpen = SDL_Init(SDL_INIT_VIDEO | SDL_INIT_NOPARACHUTE) == 0 &&
             SDL_SetVideoMode(800, 600, 24, SDL_OPENGL) != nullptr;
    if (!isOpen) {
        std::fprintf(stderr, "no window: %s; run this by scripts/bench\n", SDL_GetError());
        std::exit(2);
    }
}

std::vector<float> feedbackOf(const std::function<void()>& draw)
{
    std::vector<float> values(std::size_t{1} << 20U);
    glFeedbackBuffer(static_cast<GLsizei>(values.size()), GL_3D_COLOR_TEXTURE, values.data());
    glRenderMode(GL_FEEDBACK);
    draw();
    const GLint count = glRenderMode(GL_RENDER);
    if (count >= 0) // or else there was more
        values.resize(static_cast<std::size_t>(count));
    return values;
}
} // namespace tamor::bench
