/// \file
/// The one record for everything that happens, and the words for its kinds.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tamor
{
/// What a catcher subscribes to: bit n of its mask stands for class n.
enum DeliveryClass : std::int32_t
{
    CLASS_RESOURCES = 0,   ///< files to load at the start, and to release at the end
    CLASS_WINDOW = 1,      ///< the opening of the window, and a wish to end
    CLASS_GRAPHICS = 2,    ///< the same of what needs OpenGL
    CLASS_SETUP = 3,       ///< once, when all is loaded
    CLASS_UPDATE = 4,      ///< each frame: the time that has passed
    CLASS_RENDER = 5,      ///< each frame: to draw
    CLASS_MOUSE = 6,       ///< the pointer and its buttons
    CLASS_RENDER_DONE = 7, ///< each frame: it was drawn
    CLASS_KEYBOARD = 8,    ///< each frame: the keys
};

constexpr std::size_t deliveryClassCount = 9; ///< of `DeliveryClass`, numbered from 0

/// What an event tells. Behind each: its class, its sender, and the fields that it fills.
enum EventKind : std::int32_t
{
    EV_LOAD_RESOURCES = 16,          ///< resources; the kernel, once at the start
    EV_OPEN_WINDOW = 17,             ///< window; the kernel, once at the start; `window`
    EV_LOAD_GRAPHICS_RESOURCES = 18, ///< graphics; the kernel, once at the start
    EV_INITIAL_SETUP = 19,           ///< setup; the kernel, once at the start
    EV_UPDATE = 20,                  ///< update; the kernel, each frame; `delta`
    EV_RENDER = 21,                  ///< render; the kernel, each frame; `delta`
    EV_RENDER_DONE = 22,             ///< render done; who draws, each frame
    EV_MOUSE = 23,    ///< mouse; the input, when the mouse did something; `mouse`, `keyboard`
    EV_KEYBOARD = 24, ///< keyboard; the input, each frame; `keyboard`
    EV_QUIT = 25,     ///< window; who asks for the end
    EV_RELEASE_RESOURCES = 26, ///< graphics, then resources; the kernel, once at the end
};

/// The pointer and its buttons. Positions are in window pixels from the top left.
struct MouseState
{
    std::int32_t x = 0; ///< grows to the right
    std::int32_t y = 0; ///< grows downwards
    std::int32_t z = 0; ///< always 0
    /// Motion since the previous `EV_MOUSE`, upwards counted positive. Nobody may read these in an
    /// event of another kind.
    std::int32_t dx = 0;
    std::int32_t dy = 0;     ///< see `dx`
    std::int32_t dz = 0;     ///< always 0
    std::uint8_t left = 0;   ///< 1 while the button is held
    std::uint8_t middle = 0; ///< 1 while the button is held
    std::uint8_t right = 0;  ///< 1 while the button is held
};

/// Length of the tables of keys: SDL's symbols are below it.
constexpr std::size_t keyCount = 512;

/// The keys, indexed by SDL key symbol and by the character of the key, both at once: 27 is Escape,
/// 119 the key W, 32 the space bar.
struct KeyboardState
{
    std::array<std::uint8_t, keyCount> held{};    ///< 1 while the key is down
    std::array<std::uint8_t, keyCount> pressed{}; ///< 1 in a frame in which the key counts as typed
    std::int32_t modifiers = 0;                   ///< as `SDL_GetModState` gives them
};

/// What the window is to be. Sizes are in pixels.
struct WindowParameters
{
    std::string title;         ///< on the frame that the desktop draws
    std::int32_t width = 800;  ///< of what is drawn in, without the frame
    std::int32_t height = 600; ///< of what is drawn in, without the frame
    std::int32_t depth = 24;   ///< bits a pixel
    bool fullscreen = false;   ///< then the display takes the size, and there is no frame
};

/// An event. There is one record for all kinds; each kind fills the fields that it needs.
///
/// It is copied at every step of its delivery, so that a receiver may keep, change or forward its
/// copy without any effect on others.
struct Event
{
    std::int32_t kind = 0;   ///< an `EventKind`; a new record is of no kind
    MouseState mouse;        ///< in `EV_MOUSE`
    KeyboardState keyboard;  ///< in `EV_KEYBOARD`
    std::int32_t delta = 0;  ///< milliseconds since the previous frame
    WindowParameters window; ///< in `EV_OPEN_WINDOW`
};
} // namespace tamor
