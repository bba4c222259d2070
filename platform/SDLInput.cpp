#include "platform/SDLInput.h"

#include "platform/internal/EventQueue.h"

#include <SDL.h>

#include <cstring>
#include <iostream>
#include <vector>

namespace tamor
{
namespace
{
constexpr std::int32_t subscription =
    1 << CLASS_RESOURCES | 1 << CLASS_WINDOW | 1 << CLASS_UPDATE | 1 << CLASS_RENDER_DONE;
constexpr std::int32_t priority = 500;

constexpr std::int32_t repeatDelay = 700;   // milliseconds
constexpr std::int32_t repeatInterval = 30; // milliseconds

/// Where a grabbed pointer is taken back to, whatever the size of the window.
constexpr std::int32_t grabX = 200;
constexpr std::int32_t grabY = 200;

/// Advances a key by a frame of `delta` milliseconds.
/// \return whether the key counts as typed in this frame
bool advance(KeyRecord& key, std::int32_t delta)
{
    key.repeatTime += delta;
    switch (key.state) {
    case KeyRecord::PRESSED:
        key.state = KeyRecord::HELD;
        return true;
    case KeyRecord::HELD:
        key.holdTime += delta;
        if (key.holdTime <= repeatDelay)
            return false;
        key.state = KeyRecord::REPEATING;
        return true;
    case KeyRecord::REPEATING:
        if (key.repeatTime <= repeatInterval)
            return false;
        key.repeatTime = 0;
        return true;
    default:
        key.holdTime = 0;
        key.repeatTime = 0;
        return false;
    }
}

/// The key's symbol as a number. It is not read as SDL's enumeration, which an event from elsewhere
/// may go past.
std::uint32_t symbolOf(const SDL_keysym& key)
{
    std::uint32_t symbol = 0;
    static_assert(sizeof key.sym == sizeof symbol);
    std::memcpy(&symbol, &key.sym, sizeof symbol);
    return symbol;
}
} // namespace

SDLInput::SDLInput(const ObjectRef<Kernel>& newKernel, bool newGrabMouse)
    : kernel(newKernel), grabMouse(newGrabMouse)
{
    kernel->addCatcher(ObjectRef<EventCatcher>(this), subscription, priority);
}

bool SDLInput::handleEvent(Event event)
{
    switch (event.kind) {
    case EV_UPDATE:
        return pollInput(event.delta);
    case EV_LOAD_RESOURCES:
        return initialise();
    case EV_RELEASE_RESOURCES:
        SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
        return true;
    default:
        return true;
    }
}

bool SDLInput::initialise()
{
    if (SDL_WasInit(SDL_INIT_JOYSTICK) == 0 &&
        SDL_Init(SDL_INIT_JOYSTICK | SDL_INIT_NOPARACHUTE) < 0) {
        std::cerr << "SDL_Init() failed. SDL Error: " << SDL_GetError() << std::endl;
        SDL_Quit();
        return false;
    }
    for (KeyRecord& key : keys)
        key.state = KeyRecord::UP;
    buttonLeft = false;
    buttonMiddle = false;
    buttonRight = false;
    // SDL forgets this when its video subsystem starts later, as it does in the demonstration: then
    // a real keyboard's events carry no character.
    SDL_EnableUNICODE(1);
    return true;
}

bool SDLInput::pollInput(std::int32_t delta)
{
    const bool mouseActive = readEvents();

    Event event;
    event.kind = EV_KEYBOARD;
    event.keyboard.modifiers = static_cast<std::int32_t>(SDL_GetModState());
    for (std::size_t index = 0; index < keyCount; ++index) {
        event.keyboard.held[index] = keys[index].state != KeyRecord::UP ? 1 : 0;
        event.keyboard.pressed[index] = advance(keys[index], delta) ? 1 : 0;
    }
    if (!kernel->sendEvent(ObjectRef<EventCatcher>(this), event))
        return false;

    if (mouseActive && !sendMouse(event))
        return false;

    if (grabMouse) {
        lastX = grabX;
        lastY = grabY;
        SDL_WarpMouse(grabX, grabY);
        SDL_ShowCursor(0);
    }
    return true;
}

/// Empties SDL's queue. Returns whether the mouse did something.
bool SDLInput::readEvents()
{
    bool mouseActive = false;
    SDL_PumpEvents();
    std::vector<SDL_Event> others;
    SDL_Event event;
    Uint8 lastType = SDL_NOEVENT;
    while (SDL_PollEvent(&event) != 0) {
        lastType = event.type;
        switch (event.type) {
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            setKey(event.key.keysym.unicode, event.type == SDL_KEYDOWN);
            setKey(symbolOf(event.key.keysym), event.type == SDL_KEYDOWN);
            break;
        case SDL_MOUSEMOTION:
            mouseX = event.motion.x;
            mouseY = event.motion.y;
            mouseActive = true;
            break;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            mouseX = event.button.x;
            mouseY = event.button.y;
            mouseActive = true;
            setButton(event.button.button, event.button.state == SDL_PRESSED);
            break;
        default:
            others.push_back(event);
            break;
        }
    }
    putBackEvents(others, lastType);
    return mouseActive;
}

/// Makes an `EV_MOUSE` of the frame's record and sends it, but for the first activity of all, which
/// only gives the position that motion is counted from.
bool SDLInput::sendMouse(Event& event)
{
    const bool isFirst = lastY == -1;
    event.kind = EV_MOUSE;
    event.mouse.dx = mouseX - lastX;
    event.mouse.dy = lastY - mouseY;
    event.mouse.dz = 0;
    event.mouse.x = mouseX;
    event.mouse.y = mouseY;
    event.mouse.z = 0;
    lastX = mouseX;
    lastY = mouseY;
    event.mouse.left = buttonLeft ? 1 : 0;
    event.mouse.middle = buttonMiddle ? 1 : 0;
    event.mouse.right = buttonRight ? 1 : 0;
    return isFirst || kernel->sendEvent(ObjectRef<EventCatcher>(this), event);
}

/// An index past the table is ignored.
void SDLInput::setKey(std::uint32_t index, bool isDown)
{
    if (index >= keys.size())
        return;
    if (isDown) {
        keys[index].state = KeyRecord::PRESSED;
        return;
    }
    keys[index].state = KeyRecord::UP;
    keys[index].holdTime = 0;
}

void SDLInput::setButton(std::uint32_t button, bool isDown)
{
    if (button == SDL_BUTTON_LEFT)
        buttonLeft = isDown;
    else if (button == SDL_BUTTON_MIDDLE)
        buttonMiddle = isDown;
    else if (button == SDL_BUTTON_RIGHT)
        buttonRight = isDown;
}
} // namespace tamor
