#include "tools/view/Window.h"

#include <SDL.h>

#include <array>

namespace tamor::view
{
namespace
{
// As many events of the mouse as are looked at in a frame.
constexpr int mostEvents = 64;
} // namespace

Window::Window(const ObjectRef<Kernel>& kernel, int newWidth, int newHeight, std::string newTitle)
    : GLRender(kernel), width(newWidth), height(newHeight), title(std::move(newTitle))
{}

bool Window::handleEvent(Event event)
{
    event.window.width = width;
    event.window.height = height;
    event.window.title = title;
    return GLRender::handleEvent(event);
}

Wheel::Wheel(const ObjectRef<Kernel>& kernel)
{
    kernel->addCatcher(this, 1 << CLASS_UPDATE, 0);
}

bool Wheel::handleEvent(Event)
{
    SDL_PumpEvents();
    std::array<SDL_Event, mostEvents> events;
    const int count = SDL_PeepEvents(events.data(), mostEvents, SDL_PEEKEVENT,
                                     SDL_EVENTMASK(SDL_MOUSEBUTTONDOWN));
    for (int i = 0; i < count; i++) {
        const Uint8 button = events[static_cast<std::size_t>(i)].button.button;
        notches += button == SDL_BUTTON_WHEELUP ? 1 : button == SDL_BUTTON_WHEELDOWN ? -1 : 0;
    }
    return true;
}

int Wheel::take()
{
    const int taken = notches;
    notches = 0;
    return taken;
}
} // namespace tamor::view
