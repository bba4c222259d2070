#include "platform/GLee.h"

#include "platform/GLRender.h"

#include "platform/internal/EventQueue.h"

#include <GL/glu.h>
#include <SDL.h>

#include <iostream>

namespace tamor
{
namespace
{
constexpr std::int32_t subscription = 1 << CLASS_WINDOW | 1 << CLASS_UPDATE | 1 << CLASS_RENDER;
constexpr std::int32_t priority = 700;

constexpr double fieldOfView = 45.0; // degrees, vertical
constexpr double nearPlane = 1.0;
constexpr double farPlane = 10000.0;

bool failVideo(const char* words)
{
    std::cerr << words << SDL_GetError() << std::endl;
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
    return false;
}
} // namespace

GLRender::GLRender(const ObjectRef<Kernel>& kernel)
{
    kernel->addCatcher(ObjectRef<EventCatcher>(this), subscription, priority);
}

bool GLRender::handleEvent(Event event)
{
    switch (event.kind) {
    case EV_OPEN_WINDOW:
        return openWindow(event.window.title, event.window.width, event.window.height,
                          event.window.depth, event.window.fullscreen);
    case EV_UPDATE:
        return checkForQuit();
    case EV_RENDER:
        SDL_GL_SwapBuffers();
        return true;
    case EV_QUIT:
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        return true;
    default:
        return true;
    }
}

bool GLRender::openWindow(const std::string& title, std::int32_t width, std::int32_t height,
                          std::int32_t depth, bool fullscreen)
{
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0 &&
        SDL_InitSubSystem(SDL_INIT_VIDEO | SDL_INIT_NOPARACHUTE) < 0)
        return failVideo("SDL_Init() failed. SDL Error: ");
    SDL_ShowCursor(fullscreen ? 0 : 1);

    const SDL_VideoInfo* const info = SDL_GetVideoInfo();
    if (info == nullptr)
        return failVideo("SDL_GetVideoInfo() failed. SDL Error: ");
    Uint32 flags = SDL_HWPALETTE | SDL_ASYNCBLIT | SDL_OPENGL | SDL_HWSURFACE;
    if (fullscreen)
        flags |= SDL_FULLSCREEN;
    if (info->blit_hw != 0)
        flags |= SDL_HWACCEL;
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    if (SDL_SetVideoMode(width, height, depth, flags) == nullptr)
        return failVideo("SDL_SetVideoMode() Failed. SDL_Error: ");
    SDL_WM_SetCaption(title.c_str(), nullptr);

    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    gluPerspective(fieldOfView, static_cast<double>(width) / static_cast<double>(height), nearPlane,
                   farPlane);
    glMatrixMode(GL_MODELVIEW);
    glClearColor(0, 0, 1, 0);

    if (!GLeeInit()) {
        std::cerr << "error initialising GLee" << std::endl;
        return false;
    }
    return true;
}

bool GLRender::checkForQuit()
{
    SDL_PumpEvents();
    std::vector<SDL_Event> others;
    SDL_Event event;
    Uint8 lastType = SDL_NOEVENT;
    while (SDL_PollEvent(&event) != 0) {
        // What was taken up to now is lost: the loop is at its end.
        if (event.type == SDL_QUIT)
            return false;
        lastType = event.type;
        others.push_back(event);
    }
    putBackEvents(others, lastType);
    return true;
}
} // namespace tamor
