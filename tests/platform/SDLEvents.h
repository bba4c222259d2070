/// \file
/// SDL events as tests put them into the queue.
#pragma once

#include <SDL.h>

#include <vector>

namespace tamor::test
{
inline SDL_Event keyEvent(Uint8 type, int symbol, Uint16 character)
{
    SDL_Event event{};
    event.type = type;
    event.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.key.keysym.sym = static_cast<SDLKey>(symbol);
    event.key.keysym.unicode = character;
    return event;
}

inline SDL_Event motionEvent(Uint16 x, Uint16 y)
{
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = x;
    event.motion.y = y;
    return event;
}

inline SDL_Event buttonEvent(Uint8 type, Uint8 button, Uint16 x, Uint16 y)
{
    SDL_Event event{};
    event.type = type;
    event.button.button = button;
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.button.x = x;
    event.button.y = y;
    return event;
}

inline SDL_Event plainEvent(Uint8 type)
{
    SDL_Event event{};
    event.type = type;
    return event;
}

inline SDL_Event focusEvent()
{
    SDL_Event event = plainEvent(SDL_ACTIVEEVENT);
    event.active.gain = 1;
    event.active.state = SDL_APPINPUTFOCUS;
    return event;
}

/// Empties SDL's queue. Returns the types of what was in it.
inline std::vector<int> takeEvents()
{
    std::vector<int> types;
    SDL_Event event;
    SDL_PumpEvents();
    while (SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_ALLEVENTS) == 1)
        types.push_back(event.type);
    return types;
}

inline void putEvents(std::vector<SDL_Event> events)
{
    SDL_PeepEvents(events.data(), static_cast<int>(events.size()), SDL_ADDEVENT, SDL_ALLEVENTS);
}
} // namespace tamor::test
